// Parameters of models, features and materials, as an instance or a plain model has them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "creo/ProParameter.h"
#include "headless/model/family.h"
#include "headless/model/model.h"

namespace headless {

class Models;  // models.h

// The first parameter of that name that the document, or a row of it, has; null for none.
ParameterRecord* findParameter(const ModelDocument& document, const RowRecord* row, std::string_view name);

// What a row makes of a parameter: what relations make of it there, else its own value, or that of the rows and the
// model above it. ProNotFound: the model has no such parameter.
creo::Got<creo::ProParamvalue> parameterOfRow(const std::shared_ptr<ModelDocument>& document, RowRecord& row,
                                              std::string_view name);
// Gives the row a value in a column that is there. ProBadInputs: of another kind than the parameter, no finite number,
// or one that its restriction doesn't allow.
creo::ProError setParameterOfRow(ModelDocument& document, RowRecord& row, std::string_view name,
                                 const creo::ProParamvalue& value);

// A parameter where it is kept.
struct ParameterPlace {
  Model* model = nullptr;
  ParameterList* list = nullptr;
  std::size_t at = 0;
  RowRecord* row = nullptr;  // whose own parameter it is
  bool ofModel = false;      // not a feature's or material's
  [[nodiscard]] ParameterRecord& record() const { return list->list[at]; }
  // The generic's parameter, seen from an instance.
  [[nodiscard]] bool isInherited() const { return ofModel && model->row && row != model->row; }
};

// A parameter that was deleted, for putting it back. Owner and rows are told by their names: they may have gone.
struct RemovedParameter {
  creo::ProModelitem owner;
  std::size_t at = 0;    // its place in its list
  bool wasAlone = true;  // no other one had its name
  ParameterRecord record;
  std::vector<TakenColumn> columns;
  ModelDocument::Marks before;
  std::size_t changes = 0;  // of the document, right behind the deletion
};

// The operations of creo/ProParameter.h, with its results.
class Parameters {
 public:
  explicit Parameters(Models& models) : models_(models) {}
  creo::Got<std::vector<creo::ProParameter>> all(const creo::ProModelitem& owner) const;
  [[nodiscard]] creo::Got<ParameterPlace> find(const creo::ProParameter& parameter) const;
  creo::Got<creo::ProParameter> first(const creo::ProModelitem& owner, std::wstring_view name) const;
  creo::Got<creo::ProParameter> create(const creo::ProModelitem& owner, const std::wstring& name,
                                       const creo::ProParamvalue& value, const std::wstring& units);
  creo::ProError remove(const creo::ProParameter& parameter);
  creo::ProError undoRemoval(const creo::ProModelitem& owner, const creo::ProParameter* successor);
  creo::ProError takeRemains(const creo::ProParameter& parameter);
  // In the parameter's own units.
  creo::ProError set(const creo::ProParameter& parameter, const creo::ProParamvalue& value);
  creo::ProError setInModel(const creo::ProParameter& parameter, creo::ProParamvalue value);
  creo::ProError describe(const creo::ProParameter& parameter, const std::wstring& description);
  creo::ProError designate(const creo::ProParameter& parameter, bool on);
  // The model's value, in the parameter's own units.
  [[nodiscard]] static creo::ProParamvalue value(const ParameterPlace& place);
  // The same in the model's units. ProGeneralError: too large.
  [[nodiscard]] static creo::Got<creo::ProParamvalue> valueInModel(const ParameterPlace& place);
  [[nodiscard]] static creo::ProParameterDriver driver(const ParameterPlace& place);

 private:
  // The lists that make up an owner's parameters, in order; ProBadInputs for an owner that has gone.
  struct Part {
    ParameterList* list = nullptr;
    RowRecord* row = nullptr;
  };
  struct Owner {
    Model* model = nullptr;
    bool ofModel = false;
    std::vector<Part> parts;
  };
  [[nodiscard]] creo::Got<Owner> owner(const creo::ProModelitem& item) const;
  // The list that a new parameter goes into, made where there is none.
  static Part newPart(const Owner& owner, const creo::ProModelitem& item);
  // Runs a change on a parameter's record; change says whether it changed anything. ProGeneralError: it is a locked
  // instance's own.
  template <class Change>
  creo::ProError onRecord(const creo::ProParameter& parameter, Change change);
  static void touch(const ParameterPlace& place);

  Models& models_;
  std::unique_ptr<RemovedParameter> removed_;  // the one that was deleted last
};

}  // namespace headless
