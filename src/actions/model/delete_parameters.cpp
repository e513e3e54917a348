// Actions that take parameters away.
#include <unordered_map>
#include <unordered_set>

#include "actions/model/instances.h"
#include "actions/model/parameter_values.h"
#include "actions/task.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProFamtable.h"
#include "creo/ProFeature.h"
#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "language/compare.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"

namespace actions {
namespace {

using namespace language;
using namespace creo;

constexpr int kMostEntries = 100;
constexpr std::wstring_view kNumberPattern = L"/(?i)\\d+\\.{0,1}\\d*/";

// Whether an entry names a value; one that looks like a number and isn't one as a whole ("M8") names none. Nothing: the
// kind can't be compared.
std::optional<bool> namesValue(std::wstring_view entry, const ProParamvalue& value) {
  switch (value.type) {
    case ProParamvalueType::boolean:
      return namesTruth(entry, value.boolean);
    case ProParamvalueType::string:
      return entry == value.string;
    case ProParamvalueType::integer:
      return matches(kIntegerPattern, entry) ? text::wholeInt(entry) == value.integer : matches(entry, textOf(value));
    case ProParamvalueType::real:
      return matches(kNumberPattern, entry) ? text::wholeDouble(entry) == value.real : matches(entry, textOf(value));
    case ProParamvalueType::noteId:
      core::logWrite(L"Deletion test of NoteID is not supported", core::kError);
      return std::nullopt;
    case ProParamvalueType::none:
      break;
  }
  return false;
}

// The entries of a list and how they are searched, read once for all parameters.
class Search {
 public:
  explicit Search(const Task& task) : how_(task.attribute(L"searchin")) {
    for (const int index : task.numbers(L"name_", kMostEntries)) entries_.push_back(*task.numbered(L"name_%d", index));
    if (how_ == L"1") core::logMsgId(Message::searchInName, core::kNormal, 1);
    if (how_ == L"2") core::logMsgId(Message::searchInValue, core::kNormal, 1);
  }

  [[nodiscard]] bool finds(const ProParameter& parameter) const {
    if (how_ != L"1" && how_ != L"2") {
      core::logWrite(L"Error in xml", core::kError);
      return false;
    }
    const auto value = how_ == L"2" ? ProParameterValueGet(parameter) : Got<ProParamvalue>(ProNotFound);
    if (how_ == L"2" && !value) return false;
    for (const std::wstring_view entry : entries_) {
      const auto fits = how_ == L"1" ? std::optional(matches(entry, parameter.id)) : namesValue(entry, value.value);
      if (!fits) return false;
      if (*fits) return true;
    }
    return false;
  }

 private:
  std::wstring_view how_;
  std::vector<std::wstring_view> entries_;
};

ProError removeColumn(ProMdl model, const ProParameter& parameter) {
  const auto table = ProFamtableInit(model);
  if (!table) return ProNoFamtable;
  const auto item = ProParameterToFamtableItem(parameter);
  if (!item) return item.error;
  // Asked for first: Creo's answer to one that is no column is that of a failure.
  bool isColumn = false;
  const ProError visited = ProFamtableItemVisit(table.value, [&](const ProFamtableItem& column) {
    isColumn = isColumn || (column.type == item.value.type && text::equalNoCase(column.name, item.value.name));
    return ProNoError;
  });
  if (!isColumn && (visited == ProNoError || visited == ProNotFound)) return ProNoFamtable;
  return ProFamtableItemRemove(table.value, item.value);
}

void deleteColumn(ProMdl model, const ProParameter& parameter) {
  const ProError result = removeColumn(model, parameter);
  if (result == ProNoError)
    core::logMsgId(Message::deletedFromTable, core::kNormal, 2);
  else if (result == ProNotFound)
    core::logMsgPlain(Message::deleteFromTableFailed, core::kError);
  else
    core::logMsgPlain(Message::parameterNotInTable, core::kWarning);
}

// True: it is gone.
bool deleteWhole(const ProParameter& parameter) {
  if (ProParameterDelete(parameter) == ProNoError) {
    core::logMsgId(Message::deleted, core::kNormal, 2);
    return true;
  }
  Message message = Message::parameterNotDeleted;
  if (const auto driver = ProParameterDriverGet(parameter)) {
    if (driver.value == ProParameterDriver::parameter) message = Message::neededByParameter;
    if (driver.value == ProParameterDriver::function) message = Message::neededByFunction;
    if (driver.value == ProParameterDriver::relation) message = Message::neededByRelation;
  }
  core::logWrite(text::format(core::msgText(message), parameter.id), core::kError);
  return false;
}

// Works an owner's parameters; work says whether it deleted its one. That moves the later ones of that name up by one.
ProError visitAndDelete(const ProModelitem& owner, FunctionRef<bool(const ProParameter&)> work) {
  std::unordered_map<std::wstring, int, text::HashNoCase, text::EqualNoCase> gone;
  return ProParameterVisit(owner, [&](const ProParameter& found) {
    ProParameter parameter = found;
    if (const auto before = gone.find(found.id); before != gone.end()) parameter.ordinal -= before->second;
    if (work(parameter)) ++gone[found.id];
    return ProNoError;
  });
}

// All of an owner's parameters that the search finds go, or their columns alone.
ProError deleteFound(const Task& task, const Search& search, const ProModelitem& owner) {
  const bool onlyColumn = task.isTrue(L"oiFamtab");
  return visitAndDelete(owner, [&](const ProParameter& parameter) {
    if (!search.finds(parameter)) return false;
    core::logIndented(parameter.id, core::kNormal, 2);
    if (!onlyColumn) return deleteWhole(parameter);
    deleteColumn(task.model(), parameter);
    return false;
  });
}

bool went(ProError visited) { return visited == ProNoError || visited == ProNotFound; }

Outcome deleteModelParameter(const Task& task) {
  announceFamily(task);
  const auto owner = ProMdlToModelitem(task.model());
  if (!owner) {
    core::logWrite(L"Failure while ProMdlToMdlitem", core::kError);
    return failed;
  }
  return went(deleteFound(task, Search(task), owner.value)) ? done : failed;
}

Outcome deleteFeatureParameter(const Task& task) {
  announceFamily(task);
  const Search search(task);
  const ProError visited = ProSolidFeatVisit(task.model(), [&](const ProFeature& feature) {
    const ProError result = deleteFound(task, search, {ProItemType::feature, feature.id, feature.owner, {}});
    return went(result) ? ProNoError : result;
  });
  return went(visited) ? done : failed;
}

// Of parameters of one name the first stays.
Outcome deleteDoubleDefinedParameters(const Task& task) {
  const auto owner = ProMdlToModelitem(task.model());
  if (!owner) return done;
  std::unordered_set<std::wstring> seen;
  visitAndDelete(owner.value, [&](const ProParameter& parameter) {
    if (seen.insert(parameter.id).second) return false;
    core::logIndented(L"delete " + parameter.id, core::kNormal, 1);
    if (ProParameterDelete(parameter) == ProNoError) return true;
    core::logWrite(text::format(core::msgText(Message::parameterNotDeleted), parameter.id), core::kError);
    return false;
  });
  return done;
}

constexpr Attribute kSearched[] = {
    {.name = L"searchin",
     .kind = Kind::word,
     .words = L"1|2",
     .need = Need::needed,
     .about = "1: the entries are patterns for names; 2: they are compared with values"},
    {.name = L"name_%d", .kind = Kind::pattern, .need = Need::needed, .most = kMostEntries, .about = "an entry"},
    {.name = L"oiFamtab", .kind = Kind::flag, .words = L"true", .about = "only the column of the family table goes"},
};
constexpr auto kAttributes = joined(kSearched, kInstancesToo);

constexpr Effects kDeletes{.changes = Touched::model | Touched::family};

constexpr Action kActions[] = {
    {.key = L"deleteModelParameter",
     .place = 96,
     .title = Message::deleteModelParameter,
     .conditions = {kFilter, kInstancesAsTold},
     .attributes = kAttributes,
     .effects = kDeletes,
     .about = "deletes parameters of the model, or their columns",
     .function = &deleteModelParameter},
    {.key = L"deleteKEParameter",
     .place = 99,
     .title = Message::deleteFeatureParameter,
     .conditions = {kFilter, kInstancesAsTold},
     .attributes = kAttributes,
     .effects = kDeletes,
     .about = "deletes parameters of features, or their columns",
     .function = &deleteFeatureParameter},
    {.key = L"deleteDoubleDefinedParameters",
     .place = 107,
     .title = L"delete double defined parameters",
     .effects = kDeletes,
     .about = "deletes parameters whose name an earlier one has",
     .function = &deleteDoubleDefinedParameters},
};

}  // namespace

std::span<const Action> deleteParameterActions() { return kActions; }

}  // namespace actions
