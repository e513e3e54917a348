#include "headless/model/drawing.h"

#include <algorithm>
#include <utility>

#include "headless/model/family.h"
#include "headless/store/folder.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace headless {

using creo::ProMdlType;
using creo::ProSheetSize;

namespace {

// Landscape. ISO 216 in mm, ASME Y14.1 in inches.
struct SizeFacts {
  ProSheetSize size;
  double width, height;
};
constexpr SizeFacts kSizes[] = {
    {ProSheetSize::a0, 1189, 841}, {ProSheetSize::a1, 841, 594}, {ProSheetSize::a2, 594, 420},
    {ProSheetSize::a3, 420, 297},  {ProSheetSize::a4, 297, 210}, {ProSheetSize::a, 11, 8.5},
    {ProSheetSize::b, 17, 11},     {ProSheetSize::c, 22, 17},    {ProSheetSize::d, 34, 22},
    {ProSheetSize::e, 44, 34},     {ProSheetSize::f, 40, 28},
};

}  // namespace

std::string modelLabel(std::wstring_view name, ProMdlType type) {
  return text::toUtf8(std::wstring(name) + L"." + text::lower(creo::typeExtension(type)));
}

bool isLabelOf(const std::string& label, std::wstring_view name, ProMdlType type) {
  const auto file = documentFile(text::fromUtf8(label));
  return file && file->type == type && modelName(file->name).name == name;
}

std::optional<creo::ProDependency> currentModelOf(const Model& drawing) {
  const std::string& label = drawing.document->record.currentModel;
  auto models = dependencies(drawing);
  if (models.empty()) return std::nullopt;
  const auto found = std::find_if(models.begin(), models.end(),
                                  [&](const auto& model) { return isLabelOf(label, model.name, model.type); });
  return found == models.end() ? models.front() : *found;
}

std::optional<creo::ProDependency> modelOfTexts(const Model& drawing) {
  const auto& former = drawing.document->modelOfTexts;
  const auto models = former ? dependencies(drawing) : std::vector<creo::ProDependency>();
  const bool isThere = std::any_of(models.begin(), models.end(), [&](const creo::ProDependency& used) {
    return used.name == former->name && used.type == former->type;
  });
  return isThere ? former : currentModelOf(drawing);
}

int sheetCount(const ModelDocument& drawing) { return std::max(1, static_cast<int>(drawing.record.sheets.size())); }

int currentSheetOf(const ModelDocument& drawing) {
  return std::clamp(drawing.record.currentSheet, 1, sheetCount(drawing));
}

const SheetRecord* sheetOf(const ModelDocument& drawing, int number) {
  static const SheetRecord blankSheet;
  if (number < 1 || number > sheetCount(drawing)) return nullptr;
  return drawing.record.sheets.empty() ? &blankSheet : &drawing.record.sheets[static_cast<std::size_t>(number - 1)];
}

creo::ProSheetDimensions sheetDimensions(const SheetRecord& sheet) {
  creo::ProSheetDimensions out{.size = sheet.size};
  for (const SizeFacts& facts : kSizes) {
    if (facts.size != sheet.size) continue;
    out.width = facts.width;
    out.height = facts.height;
  }
  if (sheet.portrait) std::swap(out.width, out.height);
  if (sheet.width != 0) out.width = sheet.width;
  if (sheet.height != 0) out.height = sheet.height;
  return out;
}

std::wstring sheetName(const SheetRecord& sheet, int number) {
  return sheet.name.empty() ? L"SHEET" + std::to_wstring(number) : text::fromUtf8(sheet.name);
}

double scaleOnSheet(const ModelDocument& drawing, int sheet, std::wstring_view name, ProMdlType type) {
  const auto& views = drawing.record.views;
  const auto view = std::find_if(views.begin(), views.end(), [&](const ViewRecord& entry) {
    return entry.sheet == sheet && isLabelOf(entry.model, name, type);
  });
  if (view != views.end() && view->scale != 0) return view->scale;
  const SheetRecord* record = sheetOf(drawing, sheet);
  return record ? record->scale : 1;
}

TableRecord* tableOf(ModelDocument& drawing, int id) {
  auto& tables = drawing.record.tables;
  // Ids ascend as long as nobody wrote them by hand.
  const auto guess = std::lower_bound(tables.begin(), tables.end(), id,
                                      [](const TableRecord& table, int wanted) { return table.id < wanted; });
  if (guess != tables.end() && guess->id == id) return &*guess;
  const auto found =
      std::find_if(tables.begin(), tables.end(), [id](const TableRecord& entry) { return entry.id == id; });
  return found == tables.end() ? nullptr : &*found;
}

const SegmentRecord* segmentOf(const TableRecord& table, int segment) {
  if (segment == -1 && table.segments.size() == 1) segment = 0;
  if (segment < 0 || static_cast<std::size_t>(segment) >= table.segments.size()) return nullptr;
  return &table.segments[static_cast<std::size_t>(segment)];
}

SegmentRecord* segmentOf(TableRecord& table, int segment) {
  return const_cast<SegmentRecord*>(segmentOf(std::as_const(table), segment));
}

CellRecord* cellOf(TableRecord& table, int column, int row) {
  const auto key = [](int r, int c) {
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(r)) << 32U | static_cast<std::uint32_t>(c);
  };
  // Cells come behind those that are there; none goes.
  for (std::size_t& i = table.cellsIndexed; i < table.cells.size(); ++i)
    table.cellPlaces.try_emplace(key(table.cells[i].row, table.cells[i].column), i);
  const auto found = table.cellPlaces.find(key(row, column));
  return found == table.cellPlaces.end() ? nullptr : &table.cells[found->second];
}

}  // namespace headless
