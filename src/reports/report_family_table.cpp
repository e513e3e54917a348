// The report on a model's family table.
#include <array>
#include <optional>

#include "core/log.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "reports/report_row.h"
#include "text/format.h"
#include "text/numbers.h"

namespace reports {
namespace {

using namespace actions;

// A table that is missing or broken has no rows.
struct FamilyFacts {
  std::optional<creo::ProFamtable> table;
  int firstOnes = 0;  // how many names are wanted
};
using InstanceTest = bool (*)(const creo::ProFaminstance& instance);

std::wstring countOfThose(const FamilyFacts& facts, InstanceTest letsThrough) {
  int count = 0;
  creo::ProError visited = creo::ProNotFound;
  if (facts.table)
    visited = creo::ProFamtableInstanceVisit(*facts.table, [&](const creo::ProFaminstance& instance) {
      if (letsThrough(instance)) ++count;
      return creo::ProNoError;
    });
  return countOf(visited, count);
}

std::wstring amount(const FamilyFacts& facts) {
  return countOfThose(facts, [](const creo::ProFaminstance&) { return true; });
}

std::wstring amountLocked(const FamilyFacts& facts) {
  return countOfThose(facts, [](const creo::ProFaminstance& instance) {
    const auto lock = creo::ProFaminstanceCheck(instance);
    return lock && lock.value == creo::ProInstanceLock::locked;
  });
}

std::wstring amountUnregenerated(const FamilyFacts& facts) {
  return countOfThose(facts, [](const creo::ProFaminstance& instance) {
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
  creo::ProError visited = creo::ProNotFound;
  if (facts.table)
    visited = creo::ProFamtableInstanceVisit(*facts.table, [&found](const creo::ProFaminstance& instance) {
      const InstanceModel model(instance);
      if (!model.got()) core::logWrite(L"Can't retrieve an instance", core::kError);
      found = model.got() && creo::ProSolidFamtableCheck(model.got().value) == creo::ProNoError;
      return found ? creo::ProStopVisit : creo::ProNoError;
    });
  if (visited == creo::ProNoError || visited == creo::ProNotFound) return L"false";
  return found ? L"true" : L"";
}

constexpr ReportColumn<FamilyFacts> kColumns[] = {
    {L"amount", L"No. instances", &amount, "how many instances there are"},
    {L"amountlocked", L"No. locked instances", &amountLocked, "how many of them are locked"},
    {L"unregenInstances", L"No. unregenerated instances", &amountUnregenerated, "how many aren't verified"},
    {L"firstInstances", L"First %d instances", &firstInstances, "the names of the first x instances"},
    {L"mlft", L"Multi level family table", &hasNestedTable, "whether an instance has a table of its own"},
};
constexpr std::size_t kFirstInstances = 3;  // of these; its title has how many
static_assert(kColumns[kFirstInstances].attribute == L"firstInstances");

Outcome reportFamilietable(const Task& task) {
  const auto row = ReportRow::of(task);
  if (!row) return done;
  FamilyFacts facts;
  facts.firstOnes = text::parseInt(task.attribute(L"x"));
  const auto table = creo::ProFamtableInit(task.model());
  if (table && creo::ProFamtableCheck(table.value) == creo::ProNoError)
    facts.table = table.value;
  else
    core::logWrite(L"Model has no famtable, or there are errors while read em.", core::kWarning);
  const std::wstring first = text::format(kColumns[kFirstInstances].title, facts.firstOnes);
  auto columns = std::to_array(kColumns);
  columns[kFirstInstances].title = first;
  reportColumns<FamilyFacts>(*row, task, columns, facts);
  return done;
}

constexpr Attribute kFirstOnes[] = {
    {.name = L"x", .kind = Kind::integer, .about = "how many names firstInstances gives"},
};
constexpr auto kAttributes = reportAttributes(kColumns, kFirstOnes);

constexpr Action kActions[] = {
    {.key = L"reportFamilietable",
     .place = 24,
     .title = L"Report Family table",
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::family, .changes = Touched::reports | Touched::session},
     .about = "reports on the model's family table",
     .function = &reportFamilietable},
};

}  // namespace

std::span<const actions::Action> familyTableReportActions() { return kActions; }

}  // namespace reports
