#include "run/model_table.h"

#include <memory>
#include <optional>
#include <unordered_set>

#include "actions/run_names.h"
#include "core/log.h"
#include "core/state.h"
#include "creo/ProMdl.h"
#include "creo/ProUITable.h"
#include "documents/action_list.h"
#include "documents/filter.h"
#include "documents/predicates.h"
#include "os/paths.h"
#include "run/check_out.h"
#include "run/filter_names.h"
#include "run/history.h"
#include "run/model_rows.h"
#include "run/model_walk.h"
#include "run/row_name.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/units.h"

namespace run {
namespace {

constexpr std::size_t kExtensionField = 10, kNameField = 80;
constexpr const char *kPartFilter = "kvanePrtFilter", *kAssemblyFilter = "kvaneAsmFilter",
                     *kDrawingFilter = "kvaneDrwFilter", *kInstanceFilter = "kvaneInstFilter",
                     *kCurrentFilter = "kvaneCurModFilter";
constexpr const char* kHighlightButtons[] = {"HighlightFileBtn_MenuRMBLog", "HighlightFileBtn_MenuRMBChooser",
                                             "HighlightSelectedBtn_MenuRMBChooser"};

// A document with the block of it that decides. A file that can't be read leaves `broken`.
struct FilterSource {
  std::unique_ptr<core::XmlDocument> document;
  const core::XmlNode* block = nullptr;
  bool broken = false;
  std::wstring path{};  // for what is told of it
  bool isTold = false;
};

// What a walk's outcome rests on; the visited models of one basis say nothing under another.
struct Basis {
  WalkFlags walk;
  bool part = true, assembly = true, drawing = true, instance = false, listFilter = false;
  bool operator==(const Basis&) const = default;
};

struct Table {
  ModelRows rows;
  FilterSource globalFilter, listFilter;
  std::optional<Basis> basis;
  std::unordered_set<std::string> visited, starts;  // row names
  int holds = 0;                                    // that live
  bool behind = false;

  void forgetWalks() {
    basis.reset();
    visited = {};
    starts = {};
  }
};
Table& table() {
  static Table instance;
  return instance;
}

// For as long as one lives the table is being filled.
class Filling {
 public:
  Filling() { ++count_; }
  ~Filling() { --count_; }
  Filling(const Filling&) = delete;
  Filling& operator=(const Filling&) = delete;
  [[nodiscard]] static bool goesOn() { return count_ > 0; }

 private:
  static inline int count_ = 0;
};

const std::string& dialog() { return core::pluginState().dialogName; }

FilterSource load(const std::wstring& path) {
  FilterSource source;
  source.path = path;
  auto loaded = core::xmlLoadFile(path);
  source.broken = !loaded;
  if (source.broken) core::creoLog(L"<KVD> sourceData - " + loaded.fault.sentence());
  source.document = std::move(loaded.value);
  return source;
}

bool isAbsentOrTrue(const core::XmlNode& block, std::wstring_view name) {
  const core::XmlAttr* attribute = core::attrFind(block.attributes, name);
  return !attribute || attribute->value == L"true";
}

// Whether the list's filter judges while no filter file does.
bool listFilterIsOn() {
  const core::XmlNode* block = table().listFilter.block;
  const int mode = core::pluginState().useGlobFilterNow;
  if (!block || mode == 0) return false;
  return mode > 0 || (isAbsentOrTrue(*block, L"active") && isAbsentOrTrue(*block, L"exists"));
}

// Once, when it judges for the first time: choosing a list passes others on its way.
void tellOfMissingGroups(FilterSource& filter) {
  if (filter.isTold || !filter.block || !documents::lacksGroups(*filter.block)) return;
  filter.isTold = true;
  core::logWrite(text::format(L"The filter of the list %s holds no items, every model passes it", filter.path),
                 core::kWarning);
}

bool globalFilterIsOn() { return table().globalFilter.broken || table().globalFilter.block; }

void setCheck(const std::string& inDialog, const char* button, bool on) {
  if (on)
    table().rows.check(creo::ProUICheckbuttonSet(inDialog, button), L"ProUICheckbuttonSet");
  else
    table().rows.check(creo::ProUICheckbuttonUnset(inDialog, button), L"ProUICheckbuttonUnset");
}

bool readCheck(const char* button, bool otherwise) {
  const auto state = creo::ProUICheckbuttonGetState(dialog(), button);
  table().rows.check(state.error, L"ProUICheckbuttonGetState");
  return state ? state.value : otherwise;
}

bool typeIsShown(creo::ProMdlType type, const Basis& basis) {
  if (!hasRows(type)) return false;
  if (type == creo::ProMdlType::part) return basis.part;
  return type == creo::ProMdlType::assembly ? basis.assembly : basis.drawing;
}

FamilyRole roleOf(creo::ProMdl model, bool isInstance, bool fromDependency) {
  if (isInstance) return FamilyRole::instance;
  if (documents::isGeneric(model) != documents::Answer::yes) return FamilyRole::plain;
  return fromDependency ? FamilyRole::genericAsDependency : FamilyRole::generic;
}

bool isInstance(creo::ProMdl model, creo::ProMdlType type) {
  return type != creo::ProMdlType::drawing && documents::isInstance(model) == documents::Answer::yes;
}

RowVerdict judge(creo::ProMdl model, creo::ProMdlType type, const Basis& basis) {
  if (!typeIsShown(type, basis)) return RowVerdict::typeIsOff;
  if (table().globalFilter.broken) return RowVerdict::filterUnreadable;
  const core::XmlNode* block = filterInForce();
  if (block && documents::evaluateFilter(*block, creo::typeExtension(type), model, true) != documents::kFilterHolds)
    return table().globalFilter.block ? RowVerdict::filterRefuses : RowVerdict::listFilterRefuses;
  if (!basis.instance && isInstance(model, type)) return RowVerdict::instancesAreOff;
  return isAlreadyReworked(model) ? RowVerdict::alreadyReworked : RowVerdict::selected;
}

void addRow(const WalkedModel& walked, const Basis& basis) {
  ModelRows& rows = table().rows;
  if (!typeIsShown(walked.type, basis)) return;
  if (rows.contains(walked.row)) {
    core::creoLog(L"<KVD> sourceData - is in already");
    return;
  }
  core::creoLog(L"<KVD> sourceData - is not in", core::kDebug);
  const creo::ProMdl model = documents::retrieveByFileName(walked.row, creo::typeExtension(walked.type));
  bool added = static_cast<bool>(model);
  if (added) {
    const RowVerdict verdict = judge(model, walked.type, basis);
    if (verdict != RowVerdict::selected && verdict != RowVerdict::alreadyReworked) return;
    const FamilyRole role = walked.type == creo::ProMdlType::drawing
                                ? FamilyRole::plain
                                : roleOf(model, isInstance(model, walked.type), walked.fromDependency);
    added = rows.insert({walked.row, model, walked.type, role, verdict == RowVerdict::selected});
  }
  if (!added) core::creoLog(L"<KVD> sourceData - Failure while ProTKGDUIStatusTableRowAdd");
}

Basis currentBasis() {
  const auto& state = core::pluginState();
  const TypeFilters filters = readTypeFilters();
  Basis basis;
  basis.walk = {state.addInstances != 0, state.addDrawings != 0, state.addInherited != 0, filters.currentOnly,
                filters.currentOnly && filters.instance};
  basis.part = filters.part;
  basis.assembly = filters.assembly;
  basis.drawing = filters.drawing;
  basis.instance = filters.instance;
  basis.listFilter = listFilterIsOn();
  return basis;
}

void enableHighlighting(bool on) {
  for (const char* button : kHighlightButtons) {
    if (on)
      table().rows.check(creo::ProUIPushbuttonEnable(dialog(), button), L"ProUIPushbuttonEnable");
    else
      table().rows.check(creo::ProUIPushbuttonDisable(dialog(), button), L"ProUIPushbuttonDisable");
  }
}

// Clears and rebuilds from a start, unless that is held back.
void refill(creo::ProMdl start) {
  if (table().holds > 0) {
    table().behind = true;
    return;
  }
  clearModelTable();
  rebuildModelTable(start);
}

std::wstring pathInPackage(std::wstring_view folder, std::string_view name) {
  return os::joined(core::pluginState().openKvzPath, folder) + text::fromUtf8(name);
}

}  // namespace

TableHold::TableHold() { ++table().holds; }
TableHold::~TableHold() { --table().holds; }

bool tableIsBehind() { return table().behind; }

bool tableIsBeingFilled() { return Filling::goesOn(); }

creo::ProError countTableFor(creo::ProMdl model) {
  const auto type = creo::ProMdlTypeGet(model);
  const auto name = creo::ProMdlNameGet(model);
  if (!type || !name) {
    core::creoLog(L"<KVD> sourceData - Failure while ProMdlTypeGet");
    return type ? name.error : type.error;
  }
  core::pluginState().currentExt = text::cut(creo::typeExtension(type.value), kExtensionField - 1);
  core::pluginState().currentName = text::cut(name.value, kNameField - 1);
  return creo::ProNoError;
}

creo::ProError rebuildModelTable(creo::ProMdl start) {
  const Filling filling;
  Table& t = table();
  t.rows.resetStatus();
  const Basis basis = currentBasis();
  if (!start) {
    const auto current = creo::ProMdlCurrentGet();
    if (!current) return current.error;
    start = current.value;
  }
  if (const creo::ProError unknown = countTableFor(start)) return unknown;
  const auto type = creo::ProMdlTypeGet(start);
  const auto name = creo::ProMdlNameGet(start);

  if (t.listFilter.block && core::pluginState().useGlobFilterNow != 0)
    setCheck(kFilterDialog, "kvaneFilterGlobal", basis.listFilter);
  enableHighlighting(type.value == creo::ProMdlType::assembly);
  if (filterInForce() == t.listFilter.block) tellOfMissingGroups(t.listFilter);

  const std::string startRow = rowName(name.value, type.value);
  if (t.basis != basis || t.starts.contains(startRow)) t.forgetWalks();
  t.basis = basis;
  t.starts.insert(startRow);
  walkModels(start, basis.walk, t.visited, [&basis](const WalkedModel& walked) { addRow(walked, basis); });

  const bool filtered = globalFilterIsOn() || basis.listFilter;
  t.rows.check(creo::ProUIPushbuttonBitmapSet(dialog(), "kvaneExtFilter",
                                              filtered ? "act_filter24.png" : "act_filterdeac24.png"),
               L"ProUIPushbuttonBitmapSet");
  return t.rows.status();
}

const core::XmlNode* filterInForce() {
  if (globalFilterIsOn()) return table().globalFilter.block;
  return listFilterIsOn() ? table().listFilter.block : nullptr;
}

RowVerdict judgeModel(creo::ProMdl model) {
  const auto type = creo::ProMdlTypeGet(model);
  return type ? judge(model, type.value, currentBasis()) : RowVerdict::typeIsOff;
}

void clearModelTable() {
  table().behind = false;
  table().rows.clear();
  table().forgetWalks();
}

void refreshModelTable() { refill({}); }

void setTypeFilters(bool part, bool assembly, bool drawing, bool instance, bool currentOnly) {
  setCheck(dialog(), kPartFilter, part);
  setCheck(dialog(), kAssemblyFilter, assembly);
  setCheck(dialog(), kDrawingFilter, drawing);
  setCheck(dialog(), kInstanceFilter, instance);
  setCheck(dialog(), kCurrentFilter, currentOnly);
}

TypeFilters readTypeFilters() {
  TypeFilters filters;
  filters.part = readCheck(kPartFilter, filters.part);
  filters.assembly = readCheck(kAssemblyFilter, filters.assembly);
  filters.drawing = readCheck(kDrawingFilter, filters.drawing);
  filters.instance = readCheck(kInstanceFilter, filters.instance);
  filters.currentOnly = readCheck(kCurrentFilter, filters.currentOnly);
  return filters;
}

void setGlobalFilter(std::string_view name) {
  FilterSource& filter = table().globalFilter;
  filter = {};
  table().forgetWalks();
  if (name.empty()) return;
  core::creoLog(L"glob Filter");
  const std::wstring path = pathInPackage(L"filters\\", name);
  filter = load(path);
  if (!filter.broken) filter.block = documents::filterFileBlock(*filter.document);
  // An empty file, as a copy that broke off leaves it, isn't a filter that lets every model pass.
  filter.broken = !filter.block;
  if (filter.broken)
    core::logWrite(text::format(L"The filter %s can't be read, no model passes it", path), core::kError);
  else if (!documents::holdsItems(*filter.block))
    core::logWrite(text::format(L"The filter %s holds no items, every model passes it", path), core::kWarning);
}

void loadGlobalFilter(std::string_view name) {
  setGlobalFilter(name);
  refreshModelTable();
}

void dropGlobalFilter(creo::ProMdl start) {
  setGlobalFilter({});
  refill(start);
}

void loadListFilter(std::string_view name) {
  FilterSource& filter = table().listFilter;
  filter = load(pathInPackage(L"actionlists\\", name));
  if (filter.document) filter.block = documents::actionList(*filter.document).filter;
  table().forgetWalks();
  if (!actions::runGoesOn()) refreshModelTable();
}

void checkOutSelected() { checkOutRows(table().rows); }

void resetModelTable() {
  const int holds = table().holds;  // whoever holds still does
  table() = Table();
  table().holds = holds;
}

}  // namespace run
