#include "headless/model/model_functions.h"

#include <algorithm>
#include <cmath>

#include "headless/model/models_host.h"
#include "headless/model/stored_value.h"
#include "headless/store/names.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace headless {

using creo::ProMassProperty;

namespace {

using Arguments = std::vector<RelationValue>;

// One number of a body. A function asks for texts: a path, or a path, a coordinate system and a path again.
struct BodyNumber {
  std::string_view name;
  std::size_t arguments;  // 0: a name without brackets
  double (*of)(const ProMassProperty& mass);
};
constexpr BodyNumber kBodyNumbers[] = {
    {"pro_mp_mass", 0, [](const ProMassProperty& m) { return m.mass; }},
    {"pro_mp_volume", 0, [](const ProMassProperty& m) { return m.volume; }},
    {"pro_mp_area", 0, [](const ProMassProperty& m) { return m.surfaceArea; }},
    {"pro_mp_density", 0, [](const ProMassProperty& m) { return m.density; }},
    {"pro_mp_cogx", 0, [](const ProMassProperty& m) { return m.gravityCenter.x; }},
    {"pro_mp_cogy", 0, [](const ProMassProperty& m) { return m.gravityCenter.y; }},
    {"pro_mp_cogz", 0, [](const ProMassProperty& m) { return m.gravityCenter.z; }},
    {"mp_density", 0, [](const ProMassProperty& m) { return m.density; }},
    {"mp_mass", 1, [](const ProMassProperty& m) { return m.mass; }},
    {"mp_volume", 1, [](const ProMassProperty& m) { return m.volume; }},
    {"mp_surf_area", 1, [](const ProMassProperty& m) { return m.surfaceArea; }},
    {"mp_density", 1, [](const ProMassProperty& m) { return m.density; }},
    {"mp_cg_x", 3, [](const ProMassProperty& m) { return m.gravityCenter.x; }},
    {"mp_cg_y", 3, [](const ProMassProperty& m) { return m.gravityCenter.y; }},
    {"mp_cg_z", 3, [](const ProMassProperty& m) { return m.gravityCenter.z; }},
};

const BodyNumber* bodyNumber(std::string_view name, const Arguments* arguments) {
  const std::size_t count = arguments ? arguments->size() : 0;
  if (arguments && count == 0) return nullptr;
  const auto found = std::find_if(std::begin(kBodyNumbers), std::end(kBodyNumbers), [&](const BodyNumber& number) {
    return number.arguments == count && sameName(number.name, name);
  });
  return found == std::end(kBodyNumbers) ? nullptr : found;
}

// Why the arguments are no texts; empty: they are, or aren't worked out.
std::wstring notTexts(const Arguments& arguments) {
  for (const RelationValue& argument : arguments)
    if (argument.index() != 0 && !std::holds_alternative<std::string>(argument))
      return L"a number stands where a text is needed";
  return {};
}

Evaluated numberOfBody(const Model& model, const BodyNumber& wanted, const Arguments* arguments) {
  const bool isSolid = model.type() == creo::ProMdlType::part || model.type() == creo::ProMdlType::assembly;
  const auto isOwn = [](const RelationValue& entry) { return entry == RelationValue(std::string()); };
  if (arguments && !std::all_of(arguments->begin(), arguments->end(), isOwn)) return {{}, notTexts(*arguments)};
  const ModelsHost* host = model.document->host;
  if (!isSolid || !host || !host->mass) return {};
  const auto mass = host->mass(model);
  const double number = mass ? wanted.of(mass.value) : std::nan("");
  return std::isfinite(number) ? Evaluated{number, {}} : Evaluated{};
}

// By its document: the values of an instance are worked out before it is in memory, too.
std::string nameOf(const Model& model) {
  return text::toUtf8(model.row ? text::upper(text::fromUtf8(model.row->name)) : model.document->name);
}

std::string typeWord(creo::ProMdlType type) {
  return type == creo::ProMdlType::part ? "PART" : type == creo::ProMdlType::assembly ? "ASSEMBLY" : "DRAWING";
}

Evaluated materialParameter(const Model& model, const Arguments& arguments, bool heedsUnits) {
  if (std::wstring fault = notTexts(arguments); !fault.empty()) return {{}, std::move(fault)};
  if (std::any_of(arguments.begin(), arguments.end(),
                  [](const RelationValue& argument) { return argument.index() == 0; }))
    return {};
  const ModelRecord& record = model.document->record;
  const ModelsHost* host = model.document->host;
  const std::string material = arguments.size() > 1            ? std::get<std::string>(arguments[1])
                               : host && host->currentMaterial ? text::toUtf8(host->currentMaterial(model))
                                                               : record.material;
  const std::string& wanted = std::get<std::string>(arguments[0]);
  const auto present = std::find_if(record.materials.begin(), record.materials.end(),
                                    [&](const MaterialRecord& entry) { return sameName(entry.name, material); });
  if (present == record.materials.end())
    return {{}, text::format(L"the model has no material '%s'", text::fromUtf8(material))};
  for (const ParameterRecord& item : present->parameters.list)
    if (sameName(item.name, wanted))
      return {heedsUnits ? countedIn(item.value, &item, record) : relationValue(item.value), {}};
  return {{}, text::format(L"the material '%s' has no '%s'", text::fromUtf8(present->name), text::fromUtf8(wanted))};
}

}  // namespace

std::optional<Evaluated> askModel(const Model& model, std::string_view name, const Arguments* arguments,
                                  bool heedsUnits) {
  if (const BodyNumber* wanted = bodyNumber(name, arguments)) return numberOfBody(model, *wanted, arguments);
  if (!arguments) return std::nullopt;
  if (arguments->empty() && sameName(name, "rel_model_name")) return Evaluated{nameOf(model), {}};
  if (arguments->empty() && sameName(name, "rel_model_type")) return Evaluated{typeWord(model.type()), {}};
  if ((arguments->size() == 1 || arguments->size() == 2) && sameName(name, "material_param"))
    return materialParameter(model, *arguments, heedsUnits);
  return std::nullopt;
}

bool asksBody(const std::vector<std::string>& lines) {
  static const std::string word = folded("mp_");
  return std::any_of(lines.begin(), lines.end(),
                     [](const std::string& line) { return folded(line).find(word) != std::string::npos; });
}

}  // namespace headless
