// A model document as records. docs/model-document.md describes each member for users; the tables are in document.cpp.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "creo/ProExtdata.h"
#include "creo/ProFamtable.h"
#include "creo/ProParameter.h"
#include "headless/store/fields.h"

namespace headless {

constexpr int kDocumentFormat = 1;

struct ParameterRecord : Open {
  std::string name;
  creo::ProParamvalueType type = creo::ProParamvalueType::none;
  Scalar value;
  std::string units, description;
  bool designated = false;
  creo::ProParameterDriver driver = creo::ProParameterDriver::none;
};
// A double's value may stand there without its point; any other value must be of its type.
bool fitsType(const Scalar& value, creo::ProParamvalueType type);
using ParameterList = NamedList<ParameterRecord>;

// A slot that nothing was written to has no value.
struct SlotRecord : Open {
  creo::ProExtdataType type{};
  Scalar value;
};
using SlotList = Members<SlotRecord>;
using ExternalData = Members<SlotList>;

struct FeatureRecord : Open {
  int id = 0, number = 0, type = 0;
  std::string name, status;
  std::vector<int> dimensions;
  std::unique_ptr<ParameterList> parameters;
};

struct DimensionRecord : Open {
  int id = 0;
  std::string symbol;
  Scalar value;
  bool reference = false;
};

struct MaterialRecord : Open {
  std::string name;
  ParameterList parameters;
};

struct ColumnRecord : Open {
  creo::ProFamitemType type = creo::ProFamitemType::unused;
  std::string name;
};

struct FamilyTableRecord;
struct RowRecord : Open {
  std::string name;
  std::vector<Member<Scalar>> values;  // by column; a column that isn't there has the generic's value
  std::unique_ptr<ParameterList> parameters;
  std::unique_ptr<ExternalData> externalData;
  std::unique_ptr<FamilyTableRecord> familyTable;
  // Not written: where the row hangs, and whether it differs from what is on disk.
  RowRecord* parent = nullptr;
  bool changed = false;
};
struct FamilyTableRecord : Open {
  NamedList<ColumnRecord> items;
  std::vector<std::unique_ptr<RowRecord>> instances;  // rows stay where they are while the table grows
};

// A model that another one uses. The name may be "NAME<GENERIC>".
struct UsedModelRecord : Open {
  std::string name;
  creo::ProMdlType type = creo::ProMdlType::unused;
  int feature = 0;    // components only
  RawJson placement;  // components only
};

struct ModelRecord : Open {
  int format = kDocumentFormat;
  bool readOnly = false, skeleton = false;
  std::string units, material;
  ParameterList parameters;
  std::vector<FeatureRecord> features;
  std::vector<DimensionRecord> dimensions;
  std::vector<MaterialRecord> materials;
  std::vector<std::string> relations;
  std::unique_ptr<FamilyTableRecord> familyTable;
  std::vector<UsedModelRecord> components, models;
  RawJson sheets, solid;
  ExternalData externalData;
};

}  // namespace headless
