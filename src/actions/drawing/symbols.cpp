// Symbols on the sheets of drawings: placed, found by place or name, moved, deleted, switched to another group.
#include <algorithm>

#include "actions/drawing/details.h"
#include "actions/output_file.h"
#include "actions/visits.h"
#include "creo/ProDtlsym.h"
#include "creo/ProWindow.h"
#include "creo/guards.h"
#include "language/compare.h"
#include "language/variables.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

using namespace language;
using creo::ProDtlsymdef;
using creo::ProDtlsymgroup;
using creo::ProDtlsyminst;
using creo::ProDtlsyminstdata;
using creo::ProError;
using creo::ProMdl;

constexpr std::wstring_view kSymbolDirectory = L"@pro_symbol_dir@";

// ---- new symbols

// What all entries of a task place; retrieved when the first one needs it.
struct Definition {
  std::wstring folder, name;
  creo::Got<ProDtlsymdef> found = creo::ProNotFound;
};

creo::Got<ProDtlsymdef> retrieve(ProMdl drawing, const Definition& wanted) {
  const auto retrieved =
      creo::ProDrawingDtlsymdefRetrieve(drawing, wanted.folder, wanted.name, creo::kNewestVersion, true);
  if (retrieved) return retrieved;
  // One that the drawing has already serves where no file brings it.
  const auto definitions = creo::ProDrawingDtlsymdefsCollect(drawing);
  for (const ProDtlsymdef& definition : definitions.value) {
    const auto name = creo::ProDtlsymdefNameGet(definition);
    if (definitions && name && text::equalNoCase(name.value, wanted.name)) return definition;
  }
  return retrieved.error;
}

// The steps of a new symbol's data; those that fail have a line, and the others go on.
ProDtlsyminstdata newSymbolData(ProMdl drawing, const ProDtlsymdef& definition, const creo::ProPoint& place) {
  int step = 0;
  const auto check = [&](ProError result) {
    ++step;
    if (result != creo::ProNoError) failDetail(text::format(L"SourceCode - add Symbol failure %d", step));
  };
  auto data = creo::ProDtlsyminstdataAlloc(drawing);
  check(data.error);
  check(creo::ProDtlsyminstdataDefSet(data.value, definition));
  check(creo::ProDtlsyminstdataGroupoptionsSet(data.value, creo::ProSymbolGroups::all, {}));
  check(creo::ProDtlsyminstdataAttachtypeSet(data.value, creo::ProDtlsymattach::free));
  const auto attachment = creo::ProDtlattachAlloc(creo::ProDtlattachType::free, 0, place);
  check(attachment.error);
  check(creo::ProDtlsyminstdataAttachmentSet(data.value, attachment.value));
  return data.value;
}

void placeSymbol(ProMdl drawing, const ProDtlsymdef& definition, const creo::ProPoint& place) {
  const auto symbol = creo::ProDtlsyminstCreate(newSymbolData(drawing, definition, place));
  const ProError shown = symbol ? creo::ProDtlsyminstShow(symbol.value) : symbol.error;
  tellResult(shown, L"Symbol instance is created and displayed", L"Symbol can't be displayed");
  // Nobody would ever see it.
  if (symbol && shown != creo::ProNoError && creo::ProDtlsyminstDelete(symbol.value) != creo::ProNoError)
    failDetail(L"The symbol that isn't shown can't be deleted");
  if (symbol) refreshTree(drawing);
  creo::ProWindowRepaint(creo::kAnyWindow);
}

void addSymbolOn(const Task& task, const SheetEntry& entry, const SheetFrame& frame, Definition& definition) {
  const auto place = placeForNew(task, entry, frame);
  if (!place) return;
  if (!definition.found) definition.found = retrieve(task.model(), definition);
  if (!definition.found)
    return failDetail(
        text::format(L"Failure while retrieving the symbol : %d", static_cast<int>(definition.found.error)));
  sayDetail(L"Symbol is retrieved");
  placeSymbol(task.model(), definition.found.value, *place);
}

Outcome addSymbol(const Task& task) {
  const Replaced name = task.text(L"symname");
  if (!name.hasText()) {
    failDetail(L"The name of the symbol can't be put together");
    return done;
  }
  const std::wstring_view path = task.attribute(L"sympath");
  const bool isOwnPath = !path.empty() && path != kSymbolDirectory;
  Definition definition{isOwnPath ? wholePath(task.path(L"sympath", L"models")) : std::wstring(path), name.text};
  const auto entries = sheetEntries(task, {L"posx_"});
  const int sheets = sheetCount(task.model());
  creo::SheetGuard current(task.model());
  for (int sheet = 1; sheet <= sheets; ++sheet) {
    if (!turnsTo(current, sheet)) continue;
    for (const SheetEntry& entry : entries) {
      if (!isForSheet(task, entry, sheet, SheetWork::adding)) continue;
      sayDetail(text::format(L"Sheet %d is worked", sheet));
      if (const auto frame = sheetFrame(task.model(), sheet)) addSymbolOn(task, entry, *frame, definition);
    }
  }
  return done;
}

// ---- symbols that are there

bool hasName(const Task& task, const SheetEntry& entry, const ProDtlsyminstdata& data) {
  const std::wstring_view pattern = task.numbered(L"symname_%d", entry.number).value_or(L"");
  if (pattern.empty()) return false;
  const auto name = creo::ProDtlsymdefNameGet(data.definition);
  if (!name) return false;
  sayDetail(text::format(L"check %s => %s", pattern, name.value));
  return matches(pattern, name.value);
}

void moveSymbolTo(const Task& task, const SheetEntry& entry, const SheetFrame& frame, const ProDtlsyminst& symbol,
                  ProDtlsyminstdata& data) {
  const auto attachment = movedTo(task, entry, frame, data.attachment);
  ProError result = attachment.error;
  if (attachment) result = creo::ProDtlsyminstdataAttachmentSet(data, attachment.value);
  if (result == creo::ProNoError) result = creo::ProDtlsyminstModify(symbol, data);
  tellResult(result, L"Symbol is moved", L"Can't move the symbol");
}

// The first group whose name fits.
std::optional<ProDtlsymgroup> groupNamed(const ProDtlsyminst& symbol, std::wstring_view pattern) {
  const auto groups = creo::ProDtlsyminstSymgroupsCollect(symbol);
  if (!creo::isTold(groups)) cantRead(L"The groups of the symbol");
  if (!groups) return std::nullopt;
  sayDetail(L"Found group");
  for (const ProDtlsymgroup& group : groups.value) {
    const auto name = creo::ProDtlsymgroupNameGet(group);
    if (!creo::isTold(name)) cantRead(L"The name of a group");
    if (!name) continue;
    sayDetail(name.value);
    if (matches(pattern, name.value)) return group;
  }
  return std::nullopt;
}

// It, behind the groups around it, outermost first; empty for none, and with an error line where they can't be told.
std::vector<ProDtlsymgroup> groupsFor(const ProDtlsyminst& symbol, std::wstring_view pattern) {
  std::vector<ProDtlsymgroup> chain;
  if (const auto group = groupNamed(symbol, pattern)) chain.push_back(*group);
  while (!chain.empty()) {
    const auto parent = creo::ProDtlsymgroupParentGet(chain.back());
    if (!creo::isTold(parent)) {
      cantRead(L"The group around a group");
      return {};
    }
    if (!parent) break;
    sayDetail(L"get it");
    chain.push_back(parent.value);
  }
  std::reverse(chain.begin(), chain.end());
  return chain;
}

void changeGroup(const Task& task, const SheetEntry& entry, const ProDtlsyminst& symbol, ProDtlsyminstdata& data) {
  sayDetail(L"Change group");
  const auto attribute = task.numbered(L"nvariant_%d", entry.number);
  const Replaced pattern = replaceVariables(attribute.value_or(L""), task.model());
  if (!pattern.hasText()) return failDetail(text::format(L"nvariant_%d can't be put together", entry.number));
  const auto groups = groupsFor(symbol, pattern.text);
  if (groups.empty()) return;
  ProError result = creo::ProDtlsyminstdataGroupoptionsSet(data, creo::ProSymbolGroups::custom, groups);
  if (result == creo::ProNoError) result = creo::ProDtlsyminstModify(symbol, data);
  tellResult(result, L"Symbol is changed", L"Can't change the symbol");
}

void workSymbol(const Task& task, const SheetEntry& entry, const SheetFrame& frame, const ProDtlsyminst& symbol,
                ProDtlsyminstdata& data, DetailWork work) {
  switch (work) {
    case DetailWork::move:
      return moveSymbolTo(task, entry, frame, symbol, data);
    case DetailWork::remove:
      return tellResult(creo::ProDtlsyminstDelete(symbol), L"Symbol is deleted", L"Can't delete the symbol");
    case DetailWork::changeGroup:
      return changeGroup(task, entry, symbol, data);
  }
}

Outcome workSymbols(const Task& task, std::initializer_list<std::wstring_view> stems, DetailWork work) {
  eachSheetAndEntry(task, stems, [&](const SheetFrame& frame, const SheetEntry& entry) {
    const auto wanted = wantedPlace(task, entry, frame);
    const auto visited = creo::ProDrawingDtlsyminstVisit(task.model(), frame.sheet, [&](const ProDtlsyminst& symbol) {
      auto data = creo::ProDtlsyminstDataGet(symbol);
      if (!data) failDetail(L"A symbol can't be read");
      if (!data) return creo::ProNoError;
      const bool isThere = wanted && standsAt(frame, data.value.attachment, *wanted);
      if (!hasName(task, entry, data.value) && !isThere) return creo::ProNoError;
      sayDetail(L"found a symbol");
      workSymbol(task, entry, frame, symbol, data.value, work);
      return creo::ProNoError;
    });
    isWhole(visited, L"The symbols");
  });
  return done;
}

Outcome moveSymbol(const Task& task) { return workSymbols(task, {L"nposx_"}, DetailWork::move); }
Outcome deleteSymbol(const Task& task) { return workSymbols(task, {L"posx_", L"symname_"}, DetailWork::remove); }
Outcome changeSymbolGroup(const Task& task) {
  return workSymbols(task, {L"posx_", L"symname_"}, DetailWork::changeGroup);
}

// ---- definitions

Outcome updateSymbolDefinitions(const Task& task) {
  if (task.has(L"path")) return done;
  const auto definitions = creo::ProDrawingDtlsymdefsCollect(task.model());
  if (!creo::isTold(definitions)) failDetail(L"The symbol definitions of the drawing can't be read");
  for (const ProDtlsymdef& definition : definitions.value) {
    const auto name = creo::ProDtlsymdefNameGet(definition);
    if (!name) cantRead(L"The name of a symbol definition");
    if (!name) continue;
    const auto updated = creo::ProDrawingDtlsymdefRetrieve(task.model(), L"", name.value, creo::kNewestVersion, true);
    sayDetail(text::format(updated ? L"Update for %s found." : L"No update for %s found.", name.value));
  }
  return done;
}

// ---- rows

constexpr Attribute kSymbol[] = {
    {.name = L"symname", .variables = true, .need = Need::needed, .about = "the symbol's name"},
    {.name = L"sympath",
     .kind = Kind::folder,
     .variables = true,
     .folder = L"models",
     .about = "its folder; empty or @pro_symbol_dir@: that of the option, then the working folder"},
};
constexpr Attribute kName[] = {
    {.name = L"symname_%d",
     .kind = Kind::pattern,
     .need = Need::oneOf,
     .about = "or the name of the definition that they have"},
};
constexpr Attribute kGroup[] = {
    {.name = L"nvariant_%d",
     .kind = Kind::pattern,
     .variables = true,
     .need = Need::needed,
     .about = "the group's name; the first group that fits is shown"},
};
constexpr Attribute kUpdateAttributes[] = {
    {.name = L"path", .kind = Kind::present, .about = "a task that has it does nothing"},
};
constexpr auto kAddAttributes = joined(kSymbol, kPlaceOfNew, kSheet);
constexpr auto kFindAttributes = joined(kWantedPlace, kName, kWantedFormat, kSheet);
constexpr auto kMoveAttributes = joined(kWantedPlace, kName, kWantedFormat, kSheet, kNewPlace);
constexpr auto kGroupAttributes = joined(kWantedPlace, kName, kWantedFormat, kSheet, kGroup);

constexpr Action kActions[] = {
    {.key = L"addSymbol",
     .place = 70,
     .title = L"Add symbol",
     .conditions = kOnDrawings,
     .attributes = kAddAttributes,
     .effects = {.reads = Touched::model | Touched::files | Touched::options, .changes = Touched::model},
     .about = "places a symbol on sheets of a drawing",
     .function = &addSymbol},
    {.key = L"moveSymbol",
     .place = 71,
     .title = L"Move Symbol",
     .conditions = kOnDrawings,
     .attributes = kMoveAttributes,
     .effects = {.changes = Touched::model},
     .about = "moves placed symbols of a drawing",
     .function = &moveSymbol},
    {.key = L"changeSymbolGroup",
     .place = 72,
     .title = L"Change Symbol Group",
     .conditions = kOnDrawings,
     .attributes = kGroupAttributes,
     .effects = {.changes = Touched::model},
     .about = "makes placed symbols show one group of their definition",
     .function = &changeSymbolGroup},
    {.key = L"deleteSymbol",
     .place = 73,
     .title = L"Delete Symbol",
     .conditions = kOnDrawings,
     .attributes = kFindAttributes,
     .effects = {.changes = Touched::model},
     .about = "deletes placed symbols of a drawing; their definitions stay",
     .function = &deleteSymbol},
    {.key = L"updateSymbolDefinitions",
     .place = 74,
     .title = L"Update symbol definitions",
     .conditions = kOnDrawings,
     .attributes = kUpdateAttributes,
     .effects = {.reads = Touched::model | Touched::files | Touched::options, .changes = Touched::model},
     .about = "brings the symbol definitions of a drawing up to what their files say",
     .function = &updateSymbolDefinitions},
};

}  // namespace

std::span<const Action> symbolActions() { return kActions; }

}  // namespace actions
