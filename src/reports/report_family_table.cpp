// The report on a model's family table.
#include <optional>

#include "actions/families.h"
#include "core/log.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "reports/report_row.h"
#include "text/format.h"
#include "text/numbers.h"

namespace reports {
namespace {

using namespace engine;

// A table that is missing or broken has no rows.
struct FamilyFacts {
  std::optional<creo::ProFamtable> table;
  int firstOnes = 0;  // how many names are wanted
};
using InstanceTest = bool (*)(const creo::ProFaminstance& instance);

std::wstring countOf(const FamilyFacts& facts, InstanceTest letsThrough) {
  int count = 0;
  if (facts.table)
    creo::ProFamtableInstanceVisit(*facts.table, [&](const creo::ProFaminstance& instance) {
      if (letsThrough(instance)) ++count;
      return creo::ProNoError;
    });
  return text::format(L"%d", count);
}

std::wstring amount(const FamilyFacts& facts) {
  return countOf(facts, [](const creo::ProFaminstance&) { return true; });
}

std::wstring amountLocked(const FamilyFacts& facts) {
  return countOf(facts, [](const creo::ProFaminstance& instance) {
    const auto lock = creo::ProFaminstanceCheck(instance);
    return lock && lock.value == creo::ProInstanceLock::locked;
  });
}

std::wstring amountUnregenerated(const FamilyFacts& facts) {
  return countOf(facts, [](const creo::ProFaminstance& instance) {
    const auto verification = creo::ProFaminstanceIsVerified(instance);
    return !verification || verification.value != creo::ProVerification::verified;
  });
}

std::wstring firstInstances(const FamilyFacts& facts) {
  std::wstring names;
  int left = facts.firstOnes;
  if (!facts.table || left <= 0) return names;
  creo::ProFamtableInstanceVisit(*facts.table, [&](const creo::ProFaminstance& instance) {
    appendLine(names, instance.name);
    return --left > 0 ? creo::ProNoError : creo::ProStopVisit;
  });
  return names;
}

// An instance as a model. One that isn't in memory is brought there for as long as the object lives.
class InstanceModel {
 public:
  explicit InstanceModel(const creo::ProFaminstance& instance) : model_(creo::ProFaminstanceMdlGet(instance)) {
    if (model_) return;
    model_ = creo::ProFaminstanceRetrieve(instance);
    brought_ = static_cast<bool>(model_);
  }
  ~InstanceModel() {
    if (brought_) creo::ProMdlErase(model_.value);
  }
  InstanceModel(const InstanceModel&) = delete;
  InstanceModel& operator=(const InstanceModel&) = delete;
  [[nodiscard]] const creo::Got<creo::ProMdl>& got() const { return model_; }

 private:
  creo::Got<creo::ProMdl> model_;
  bool brought_ = false;
};

std::wstring hasNestedTable(const FamilyFacts& facts) {
  bool found = false;
  if (facts.table)
    creo::ProFamtableInstanceVisit(*facts.table, [&found](const creo::ProFaminstance& instance) {
      const InstanceModel model(instance);
      if (!model.got()) core::logWrite(L"Can't retrieve an instance", core::kError);
      found = model.got() && creo::ProSolidFamtableCheck(model.got().value) == creo::ProNoError;
      return found ? creo::ProStopVisit : creo::ProNoError;
    });
  return found ? L"true" : L"false";
}

Outcome reportFamilietable(const Task& task) {
  if (const auto ended = begin(task, {.title = L"Report Family table"})) return *ended;
  const auto row = ReportRow::of(task);
  if (!row) return done;
  FamilyFacts facts;
  facts.firstOnes = text::parseInt(task.attribute(L"x"));
  const auto table = creo::ProFamtableInit(task.model());
  if (table && creo::ProFamtableCheck(table.value) == creo::ProNoError)
    facts.table = table.value;
  else
    core::logWrite(L"Model has no famtable, or there are errors while read em.", core::kWarning);
  const std::wstring first = text::format(L"First %d instances", facts.firstOnes);
  const ReportColumn<FamilyFacts> columns[] = {
      {L"amount", L"No. instances", &amount},
      {L"amountlocked", L"No. locked instances", &amountLocked},
      {L"unregenInstances", L"No. unregenerated instances", &amountUnregenerated},
      {L"firstInstances", first, &firstInstances},
      {L"mlft", L"Multi level family table", &hasNestedTable},
  };
  reportColumns<FamilyFacts>(*row, task, columns, facts);
  return done;
}

constexpr actions::ActionFunction kActions[] = {{L"reportFamilietable", &reportFamilietable}};

}  // namespace
}  // namespace reports

namespace actions {
std::span<const ActionFunction> familyTableReportActions() { return reports::kActions; }
}  // namespace actions
