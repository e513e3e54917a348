// Keys that lists still have and that do nothing: each says so. They write no title, whatever their version.
#include "actions/task.h"
#include "core/log.h"
#include "text/format.h"

namespace actions {
namespace {

Outcome announceEmpty(const Task& task) {
  core::creoLog(text::format(L"%s not implemented inside KVP", task.attribute(L"type")), core::kError);
  return done;
}

Outcome openXlsReportIsRemoved(const Task&) {
  core::logWrite(L"The 'Open XLS Report' action is removed with Kelvane 7.0. Please change to 'Open CSV Report.'",
                 core::kError);
  return done;
}

Outcome auditTrailIsRemoved(const Task&) {
  core::logWrite(L"The 'Edit model parameter from audit trail' action is removed with Kelvane 7.0.'", core::kError);
  return done;
}

// A key that writes no title and asks nothing.
constexpr Action without(std::wstring_view key, int place, Group group, std::string_view about,
                         Outcome (*function)(const Task& task)) {
  return {.key = key,
          .place = place,
          .group = group,
          .version = {},
          .conditions = {},
          .effects = {.reads = Touched::nothing},
          .about = about,
          .function = function};
}
constexpr Action empty(std::wstring_view key, int place) {
  return without(key, place, Group::withoutEffect, "does nothing", &announceEmpty);
}

constexpr Action removed(std::wstring_view key, int place, std::wstring_view successor,
                         Outcome (*function)(const Task& task)) {
  Action row = without(key, place, Group::ownModelTest, "was removed", function);
  row.isRemoved = true;
  row.successor = successor;
  return row;
}

constexpr Action kActions[] = {
    empty(L"kv_reportNewRows", 17),
    empty(L"kv_reportCloseAll", 18),
    empty(L"getRegExpCheck", 19),
    empty(L"asmFastOpen", 20),
    removed(L"openXLSReport", 157, L"openCSVReport", &openXlsReportIsRemoved),
    removed(L"editModelParameterFromPrueftrail", 158, {}, &auditTrailIsRemoved),
};

}  // namespace

std::span<const Action> actionsWithoutEffect() { return kActions; }

}  // namespace actions
