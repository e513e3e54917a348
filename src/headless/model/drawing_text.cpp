#include "headless/model/drawing_text.h"

#include <algorithm>
#include <optional>

#include "headless/model/dimension_value.h"
#include "headless/model/drawing.h"
#include "headless/model/family.h"
#include "headless/model/models.h"
#include "headless/model/retrieve.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"

namespace headless {
namespace {

// Where a text stands, and what can be asked for it.
struct Place {
  Models& models;
  const Parameters& parameters;
  const Model& drawing;
  int sheet;
};

// "&NAME" taken apart. end is where the form ends without, endOfSuffix where it ends with what follows its colon.
struct Form {
  std::wstring_view name;
  std::optional<int> number;  // "&NAME:2"
  bool ofDrawing = false;     // "&NAME:d"
  std::size_t end = 0, endOfSuffix = 0;
};
using Value = std::optional<std::wstring>;

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

Form formAt(std::wstring_view text, std::size_t sign) {
  const auto past = [&](std::size_t at, bool (*belongs)(wchar_t)) {
    while (at < text.size() && belongs(text[at])) ++at;
    return at;
  };
  Form form;
  form.end = form.endOfSuffix = past(sign + 1, &isNamePart);
  form.name = text.substr(sign + 1, form.end - sign - 1);
  if (form.end >= text.size() || text[form.end] != L':') return form;
  const std::size_t suffix = form.end + 1, digits = past(suffix, &isDigit), word = past(suffix, &isNamePart);
  if (digits > suffix) {
    form.number = text::parseInt(text.substr(suffix, digits - suffix));
    form.endOfSuffix = digits;
  } else if (text::equalNoCase(text.substr(suffix, word - suffix), L"d")) {
    form.ofDrawing = true;
    form.endOfSuffix = word;
  }
  return form;
}

// The model that the form means: the numbered one, or the one that the drawing's texts are about.
std::optional<creo::ProDependency> modelOf(const Place& place, const Form& form) {
  if (!form.number) return modelOfTexts(place.drawing);
  const auto models = dependencies(place.drawing);
  if (*form.number < 1 || static_cast<std::size_t>(*form.number) > models.size()) return std::nullopt;
  return models[static_cast<std::size_t>(*form.number - 1)];
}

Value modelName(const Place& place, const Form& form) {
  const auto model = modelOf(place, form);
  return model ? Value(model->name) : Value();
}
Value modelTypeWord(const Place& place, const Form& form) {
  const auto model = modelOf(place, form);
  if (model && model->type == creo::ProMdlType::part) return L"PART";
  if (model && model->type == creo::ProMdlType::assembly) return L"ASSEM";
  return std::nullopt;
}
Value drawingName(const Place& place, const Form&) { return place.drawing.name; }
Value scale(const Place& place, const Form&) {
  const SheetRecord* sheet = sheetOf(*place.drawing.document, place.sheet);
  return sheet ? Value(text::shortest(sheet->scale)) : Value();
}
Value currentSheet(const Place& place, const Form&) { return std::to_wstring(place.sheet); }
Value totalSheets(const Place& place, const Form&) { return std::to_wstring(sheetCount(*place.drawing.document)); }
Value todaysDate(const Place&, const Form&) { return os::localTime(os::clock().seconds(), "%Y-%m-%d"); }

struct SystemForm {
  std::wstring_view name;
  bool takesNumber;
  Value (*value)(const Place& place, const Form& form);
};
constexpr SystemForm kSystemForms[] = {
    {L"model_name", true, &modelName},        {L"type", true, &modelTypeWord},
    {L"dwg_name", false, &drawingName},       {L"scale", false, &scale},
    {L"current_sheet", false, &currentSheet}, {L"total_sheets", false, &totalSheets},
    {L"todays_date", false, &todaysDate},
};

Value parameterText(const Place& place, creo::ProMdl owner, std::wstring_view name) {
  return shownParameter(place.parameters, owner, name);
}

// By its symbol: "&d12". An angle has its sign.
Value dimensionText(const Model& owner, std::wstring_view symbol) {
  const DimensionRecord* dimension = dimensionCalled(owner, text::toUtf8(symbol));
  const auto value = dimension ? dimensionValue(owner, *dimension) : std::nullopt;
  if (!value) return std::nullopt;
  return shownNumber(*value) + (dimension->angular ? L"\u00B0" : L"");
}

// A parameter of that name comes before a dimension.
Value namedValue(const Place& place, const Model& owner, std::wstring_view name) {
  Value value = parameterText(place, owner.handle, name);
  return value ? value : dimensionText(owner, name);
}

Value parameter(const Place& place, const Form& form) {
  if (!form.ofDrawing) {
    const auto current = modelOfTexts(place.drawing);
    const auto model = current ? retrieveModel(place.models, current->name, current->type) : creo::ProNotFound;
    if (model)
      if (Value value = namedValue(place, *place.models.find(model.value), form.name)) return value;
  }
  return namedValue(place, place.drawing, form.name);
}

// One of the numbered model, where it has it.
Value numberedParameter(const Place& place, const Form& form) {
  const auto named = form.number ? modelOf(place, form) : std::nullopt;
  const auto model = named ? retrieveModel(place.models, named->name, named->type) : creo::ProNotFound;
  return model ? namedValue(place, *place.models.find(model.value), form.name) : Value();
}

const SystemForm* systemForm(std::wstring_view name) {
  const auto* found = std::find_if(std::begin(kSystemForms), std::end(kSystemForms),
                                   [&](const auto& row) { return text::equalNoCase(row.name, name); });
  return found == std::end(kSystemForms) ? nullptr : found;
}

// What a form shows, and whether what follows its colon belongs to it.
struct Shown {
  Value value;
  bool withSuffix = false;
};
Shown shownBy(const Place& place, const Form& form) {
  if (const SystemForm* system = systemForm(form.name))
    return {system->value(place, form), system->takesNumber && form.number};
  if (Value numbered = numberedParameter(place, form)) return {std::move(numbered), true};
  return {parameter(place, form), form.ofDrawing};
}

// "{0:text}" marks a piece of a line; the sheet shows the piece alone.
std::wstring withoutBraces(std::wstring_view line) {
  std::wstring out;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == L'{') {
      std::size_t past = i + 1;
      while (past < line.size() && isDigit(line[past])) ++past;
      const std::size_t end = line.find(L'}', past);
      if (past > i + 1 && past < line.size() && line[past] == L':' && end != line.npos) {
        out += line.substr(past + 1, end - past - 1);
        i = end;
        continue;
      }
    }
    out += line[i];
  }
  return out;
}

}  // namespace

bool isNamePart(wchar_t c) {
  return isDigit(c) || c == L'_' || (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || c > 0x7F;
}

std::optional<std::wstring> shownParameter(const Parameters& parameters, creo::ProMdl owner, std::wstring_view name) {
  const auto found = parameters.find({std::wstring(name), {creo::ProItemType::model, 0, owner, {}}, 0});
  if (!found) return std::nullopt;
  const creo::ProParamvalue value = Parameters::value(found.value);
  switch (value.type) {
    case creo::ProParamvalueType::string:
      return value.string;
    case creo::ProParamvalueType::real:
      return text::shortest(value.real);
    case creo::ProParamvalueType::boolean:
      return value.boolean ? L"YES" : L"NO";
    case creo::ProParamvalueType::integer:
    case creo::ProParamvalueType::noteId:
      return std::to_wstring(value.integer);
    case creo::ProParamvalueType::none:
      break;
  }
  return std::nullopt;
}

std::wstring displayedText(Models& models, const Parameters& parameters, const Model& drawing, int sheet,
                           std::wstring_view stored) {
  const Place place{models, parameters, drawing, sheet};
  const std::wstring line = withoutBraces(stored);
  std::wstring out;
  std::size_t done = 0;
  for (std::size_t sign = line.find(L'&'); sign != line.npos; sign = line.find(L'&', std::max(done, sign + 1))) {
    const Form form = formAt(line, sign);
    if (form.name.empty()) continue;
    const Shown shown = shownBy(place, form);
    if (!shown.value) continue;
    out.append(line, done, sign - done).append(*shown.value);
    done = shown.withSuffix ? form.endOfSuffix : form.end;
  }
  return out.append(line, done);
}

std::wstring boundToModel(std::wstring_view line, int number) {
  std::wstring out;
  std::size_t done = 0;
  for (std::size_t sign = line.find(L'&'); sign != line.npos; sign = line.find(L'&', sign + 1)) {
    const Form form = formAt(line, sign);
    const SystemForm* system = systemForm(form.name);
    const bool isBound = form.end != form.endOfSuffix;
    if (form.name.empty() || isBound || (system && !system->takesNumber)) continue;
    out.append(line, done, form.end - done).append(L":" + std::to_wstring(number));
    done = form.end;
  }
  return out.append(line, done);
}

}  // namespace headless
