// Materials that take their values from a table: a row each, by the model's name.
#include <algorithm>

#include "actions/model/materials.h"
#include "actions/model/parameter_edit.h"
#include "actions/table_file.h"
#include "core/messages.h"
#include "creo/ProMaterial.h"
#include "creo/ProModelitem.h"
#include "language/workbook.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace language;

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

void error(std::wstring_view text) { core::logWrite(text, core::kError); }

// What the columns of a table mean; all others are named by a parameter.
struct Columns {
  std::size_t model, current, material;
  explicit Columns(const CsvTable& table)
      : model(std::min(known(table, L"file name"), known(table, L"filename"))),
        current(known(table, L"current material")),
        material(known(table, L"PTC_MATERIAL_NAME")) {}
  [[nodiscard]] bool isParameter(std::size_t column) const {
    return column != model && column != current && column != material;
  }

 private:
  static std::size_t known(const CsvTable& table, std::wstring_view title) {
    const std::size_t column = table.column(title);
    return column < table.columnCount() ? column : kNone;
  }
};

// A material that the part doesn't hold is read from its file first. False, with a line: it isn't the current one.
bool makeCurrent(creo::ProMdl part, const std::wstring& name) {
  if (isCurrentMaterial(part, name).value_or(false)) return true;
  const auto materials = materialsOf(part);
  if (!materials) return false;
  if (!isAmong(*materials, name)) {
    const creo::ProError result = creo::ProMaterialfileRead(part, name);
    const bool isMissing = result == creo::ProNotFound || result == creo::ProBadInputs;
    if (result != creo::ProNoError)
      return error(text::format(core::msgText(isMissing ? Message::namedFileUnread : Message::namedFileFaulty), name)),
             false;
  }
  if (creo::ProMaterialCurrentSet({part, name}) != creo::ProNoError)
    return error(text::format(core::msgText(Message::namedMaterialNotSet), name)), false;
  core::logIndented(text::format(core::msgText(Message::namedMaterialSet), name), core::kNormal, 1);
  return true;
}

// The material that a row is about. Nothing, with a line: there is none.
std::optional<creo::ProModelitem> materialOfRow(creo::ProMdl part, const std::wstring& name) {
  if (name.empty()) return currentMaterial(part, core::kError);
  const auto item = creo::ProModelitemByNameInit(part, creo::ProItemType::material, name);
  if (item) return item.value;
  error(text::format(L"The part has no material '%s'", name));
  return std::nullopt;
}

void editRow(const Task& task, const CsvTable& table, const Columns& columns, std::size_t row) {
  const auto cell = [&](std::size_t column) { return std::wstring(table.cell(row, column)); };
  const std::wstring current = columns.current == kNone ? std::wstring() : cell(columns.current);
  if (!current.empty() && !makeCurrent(task.model(), current)) return;
  std::optional<creo::ProModelitem> material;
  for (std::size_t column = 0; column < table.columnCount(); ++column) {
    const std::wstring title(table.header(column));
    if (!columns.isParameter(column) || title.empty() || table.cell(row, column).empty()) continue;
    if (!material) material = materialOfRow(task.model(), columns.material == kNone ? L"" : cell(columns.material));
    if (!material) return;
    if (const auto parameter = creo::ProParameterInit(*material, title))
      setParameterTo(task, parameter.value, {.value = cell(column)});
    else
      error(text::format(L"The material '%s' has no parameter '%s'", material->name, title));
  }
}

Outcome editMaterialFromFile(const Task& task) {
  const CsvTable* table = tableOf(task);
  if (!table) return done;
  const Columns columns(*table);
  if (columns.model == kNone) {
    error(text::format(L"%s: there is no column '%s'", task.attribute(L"path"), L"file name"));
    return done;
  }
  const std::array names = {task.subject().name, task.subject().name + L".PRT"};
  for (const std::size_t row : table->rowsFor(columns.model, names)) editRow(task, *table, columns, row);
  return done;
}

constexpr Action kActions[] = {
    {.key = L"editMaterialFromFile",
     .place = 111,
     .group = Group::ownModelTest,
     .title = L"Edit material from file",
     .conditions = {kFilter, kNotInstance, kOnlyParts},
     .attributes = kTableFile,
     .effects = {.reads = Touched::model | Touched::files | Touched::options | Touched::programs,
                 .changes = Touched::model | Touched::files},
     .about = "gives the materials of a part the values of a table",
     .function = &editMaterialFromFile},
};

}  // namespace

std::span<const Action> editMaterialActions() { return kActions; }

}  // namespace actions
