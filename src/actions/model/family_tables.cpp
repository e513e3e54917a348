// Actions on whole family tables: verify, unlock, delete instances.
#include "actions/model/family_tables.h"
#include "actions/model/instances.h"

#include <unordered_set>

#include "actions/table_file.h"
#include "actions/task.h"
#include "actions/visits.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProFaminstance.h"
#include "creo/ProMaterial.h"
#include "creo/ProMdl.h"
#include "creo/ProPart.h"
#include "creo/ProSolid.h"
#include "language/compare.h"
#include "text/format.h"
#include "text/numbers.h"

namespace actions {

using namespace creo;

namespace {

using namespace language;

std::wstring fileLabel(const std::wstring& name, ProMdlType type) { return name + L'.' + typeExtension(type); }

// A part without a density keeps none: one that nobody stated would count as if somebody had.
void stateDensity(ProMdl part, const std::wstring& label) {
  const auto density = ProPartDensityGet(part);
  if (density.error == ProNotFound) return;
  if (!density || ProPartDensitySet(part, density.value) != ProNoError)
    core::logWrite(text::format(L"Failure while set the density of '%s'", label), core::kError);
}

}  // namespace

void stateDensities(ProMdl model) {
  std::unordered_set<std::wstring> seen;
  std::vector<ProMdl> waiting;
  const auto meet = [&](ProMdl current, const std::wstring& name, ProMdlType type) {
    const bool isSolid = type == ProMdlType::part || type == ProMdlType::assembly;
    const std::wstring label = fileLabel(name, type);
    if (!isSolid || !seen.insert(label).second) return;
    waiting.push_back(current);
    if (type == ProMdlType::part) stateDensity(current, label);
  };
  meet(model, ProMdlNameGet(model).value, ProMdlTypeGet(model).value);
  while (!waiting.empty()) {
    const ProMdl visited = waiting.back();
    waiting.pop_back();
    for (const ProDependency& used : usedBy(visited))
      if (const auto there = ProMdlInit(used.name, used.type)) meet(there.value, used.name, used.type);
  }
  core::logIndented(
      text::format(L"looked on the temporary density at %d parts / assemblies", static_cast<int>(seen.size())),
      core::kNormal, 1);
}

bool regenerated(ProMdl instance) {
  ProError result = ProSolidRegenerate(instance, kRegenerateNoFlags);
  if (result == ProRegenAgain) result = ProSolidRegenerate(instance, kRegenerateNoFlags);
  return result == ProNoError || result == ProUnattachedFeats;
}

Got<ProFamtable> tableOf(ProMdl model) {
  if (ProSolidFamtableCheck(model) != ProNoError) return ProNotFound;
  return ProFamtableInit(model);
}

namespace {

constexpr std::wstring_view kInstances = L"The instances";

// How a verification goes.
struct Verification {
  bool regenerates = false;
  bool onlyUnverified = false;
};

void verifyModel(ProMdl model, const Verification& how);

// Whatever becomes of one instance, the others are looked at.
void verifyInstance(const ProFaminstance& instance, const Verification& how) {
  if (how.onlyUnverified) {
    const auto state = ProFaminstanceIsVerified(instance);
    if (state && state.value == ProVerification::verified) return;
  }
  const auto model = ProFaminstanceCreate(instance);
  if (!model) return core::logWrite(instance.name + core::msgText(Message::instanceNotCreated), core::kError);
  std::wstring line = instance.name + core::msgText(Message::instanceCreated);
  bool good = true;
  if (how.regenerates) {
    good = regenerated(model.value);
    line += core::msgText(good ? Message::instanceRegenerated : Message::instanceNotRegenerated);
  }
  verifyModel(model.value, how);
  letGo(model.value);
  if (good)
    core::logIndented(line, core::kNormal, 1);
  else
    core::logWrite(line, core::kError);
}

void verifyModel(ProMdl model, const Verification& how) {
  const auto table = tableOf(model);
  if (!table) return;
  const ProError visited = ProFamtableInstanceVisit(table.value, [&](const ProFaminstance& instance) {
    verifyInstance(instance, how);
    return ProNoError;
  });
  isWhole(visited, kInstances);
}

Outcome verifyFamilietable(const Task& task) {
  if (!tableOf(task.model())) return done;
  const Verification how{.regenerates = task.isTrue(L"twice"), .onlyUnverified = task.isTrue(L"onlyunverified")};
  stateDensities(task.model());
  verifyModel(task.model(), how);
  return done;
}

Outcome conflateFamilietable(const Task& task) {
  if (!tableOf(task.model())) core::logWrite(L"The model has no family table", core::kDebug);
  return done;
}

void unlockIn(ProMdl model) {
  const auto table = tableOf(model);
  if (!table) return;
  const ProError visited = ProFamtableInstanceVisit(table.value, [](const ProFaminstance& instance) {
    const auto lock = ProFaminstanceCheck(instance);
    if (lock && lock.value == ProInstanceLock::locked) {
      if (ProFaminstanceLock(instance, ProInstanceLock::none) == ProNoError)
        core::logIndented(text::format(core::msgText(Message::unlockInstance), instance.name), core::kNormal, 1);
      else
        core::logWrite(text::format(L"Failure while unlock instance '%s'", instance.name), core::kError);
    }
    if (const auto inner = ProFaminstanceMdlGet(instance)) unlockIn(inner.value);
    return ProNoError;
  });
  isWhole(visited, kInstances);
}

Outcome unlockAllInstances(const Task& task) {
  unlockIn(task.model());
  return done;
}

// What a deletion looks for, by the instance's name or, as files are called, with its generic's.
class InstanceSearch {
 public:
  explicit InstanceSearch(const Task& task) {
    for (const auto& entry : task.numberedAll(L"name_", text::parseInt(task.attribute(L"namec"))))
      patterns_.push_back(entry.value);
  }
  [[nodiscard]] bool finds(const ProFaminstance& instance) const {
    const std::wstring generic = ProMdlNameGet(instance.owner).value;
    const bool isPart = ProMdlTypeGet(instance.owner).value == ProMdlType::part;
    const std::wstring whole = text::format(isPart ? L"%s<%s>.prt" : L"%s<%s>.asm", instance.name, generic);
    for (const std::wstring_view pattern : patterns_)
      if (matches(pattern, instance.name) || matches(pattern, whole)) return true;
    return false;
  }

 private:
  std::vector<std::wstring_view> patterns_;
};

struct Deletion {
  int found = 0;
  int left = 0;  // of these: what only was counted
};

// The first instance of a table that is found goes. Behind it the table's others are only counted.
void deleteIn(ProMdl model, const InstanceSearch& search, Deletion& deletion, bool onlyCounts = false) {
  const auto table = tableOf(model);
  if (!table) return;
  const ProError visited = ProFamtableInstanceVisit(table.value, [&](const ProFaminstance& instance) {
    if (!search.finds(instance)) {
      if (const auto inner = ProFaminstanceMdlGet(instance)) deleteIn(inner.value, search, deletion, onlyCounts);
      return ProNoError;
    }
    ++deletion.found;
    if (onlyCounts) {
      ++deletion.left;
      return ProNoError;
    }
    core::logIndented(L"Delete " + instance.name, core::kNormal, 1);
    if (ProFaminstanceRemove(instance) != ProNoError) {
      core::logWrite(text::format(L"Failure while delete instance '%s'", instance.name), core::kError);
      return ProNoError;
    }
    onlyCounts = true;
    return ProNoError;
  });
  isWhole(visited, kInstances);
}

Outcome deleteFamilyTableInstance(const Task& task) {
  if (!tableOf(task.model())) return done;
  Deletion deletion;
  deleteIn(task.model(), InstanceSearch(task), deletion);
  if (deletion.found == 0) core::logIndented(L"No instance fits", core::kNormal, 1);
  if (deletion.left > 0)
    core::logWrite(text::format(L"One instance of a table is deleted at a time: %d more fit and stay", deletion.left),
                   core::kWarning);
  return done;
}

constexpr Attribute kVerifyAttributes[] = {
    {.name = L"twice",
     .kind = Kind::flag,
     .words = L"true",
     .about = "each instance is regenerated too, and its verification kept"},
    {.name = L"onlyunverified",
     .kind = Kind::flag,
     .words = L"true",
     .about = "instances that are verified are left out, with their own tables"},
};
constexpr Attribute kDeleteAttributes[] = {
    {.name = L"namec", .kind = Kind::integer, .need = Need::needed, .about = "how many numbers are looked at, from 0"},
    {.name = L"name_%d",
     .kind = Kind::pattern,
     .need = Need::needed,
     .numbers = Numbers::counted,
     .counter = L"namec",
     .about = "a pattern for the instance's name, or for its name with its generic's"},
};

constexpr Action kActions[] = {
    {.key = L"verifyFamilietable",
     .place = 43,
     .title = Message::verifyFamilyTable,
     .attributes = kVerifyAttributes,
     .effects = {.reads = Touched::model | Touched::users | Touched::family,
                 .changes = Touched::model | Touched::users | Touched::family | Touched::session},
     .about = "creates each instance of a generic and says which fail",
     .function = &verifyFamilietable},
    {.key = L"conflateFamilietable",
     .place = 44,
     .title = L"Conflate family table",
     .about = "looks whether the model is a generic; the table stays as it is",
     .function = &conflateFamilietable},
    {.key = L"unlockAllInstances",
     .place = 53,
     .title = Message::unlockInstances,
     .effects = {.reads = Touched::model | Touched::family, .changes = Touched::model | Touched::family},
     .about = "unlocks the locked instances of a generic",
     .function = &unlockAllInstances},
    {.key = L"deleteFamilyTableInstance",
     .place = 62,
     .title = Message::deleteInstance,
     .attributes = kDeleteAttributes,
     .effects = {.reads = Touched::model | Touched::family, .changes = Touched::model | Touched::family},
     .about = "deletes the first instance of a generic whose name fits",
     .function = &deleteFamilyTableInstance},
};

}  // namespace

std::span<const Action> familyTableActions() { return kActions; }

}  // namespace actions
