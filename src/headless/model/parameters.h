// Parameters of models, features and materials, as an instance or a plain model has them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "creo/ProParameter.h"
#include "headless/model/models.h"

namespace headless {

// The first parameter of that name that the document, or a row of it, has; null for none.
ParameterRecord* findParameter(const ModelDocument& document, const RowRecord* row, std::string_view name);

// What a row makes of a parameter: its own value, or that of the rows and the model above it. ProNotFound: the model
// has no such parameter.
creo::Got<creo::ProParamvalue> parameterOfRow(const ModelDocument& document, const RowRecord& row,
                                              std::string_view name);
// Gives the row a value in a column that is there. ProBadInputs: of another kind than the parameter, or no
// finite number.
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
  creo::ProError set(const creo::ProParameter& parameter, const creo::ProParamvalue& value);
  creo::ProError describe(const creo::ProParameter& parameter, const std::wstring& description);
  creo::ProError designate(const creo::ProParameter& parameter, bool on);
  // The model's value, in the parameter's own units.
  [[nodiscard]] static creo::ProParamvalue value(const ParameterPlace& place);
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
  static void touch(const ParameterPlace& place);

  Models& models_;
};

}  // namespace headless
