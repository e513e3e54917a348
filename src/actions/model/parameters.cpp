// Actions on parameters of models.
#include "actions/families.h"
#include "actions/model/instances.h"
#include "actions/model/parameter_list.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "engine/task.h"

namespace actions {
namespace {

using namespace engine;

constexpr int kAddTitle = 58;
constexpr std::wstring_view kNoOwner = L"Failure while ProMdlToMdlitem";

Outcome addModelParameter(const Task& task) {
  if (const auto ended = begin(task, {.title = core::msgText(kAddTitle)})) return *ended;
  bool generic = false;
  if (const auto ended = passInstances(task, generic)) return *ended;
  const auto owner = creo::ProMdlToModelitem(task.model());
  if (!owner) {
    core::logWrite(kNoOwner, core::kError);
    return done;
  }
  addParametersFromAction(task,
                          {.model = task.model(), .owner = owner.value, .addToFamilyTable = generic, .logDepth = 1});
  return done;
}

constexpr ActionFunction kActions[] = {{L"addModelParameter", &addModelParameter}};

}  // namespace

std::span<const ActionFunction> parameterActions() { return kActions; }

}  // namespace actions
