// Saving the model under work.
#include "actions/task.h"
#include "core/log.h"
#include "creo/ProMdl.h"

namespace actions {
namespace {

Outcome saveModel(const Task& task) {
  if (creo::ProMdlSave(task.model()) != creo::ProNoError) core::logWrite(L"Failure while save model", core::kError);
  return done;
}

constexpr Action kActions[] = {
    {.key = L"saveModel",
     .place = 37,
     .title = Message::saveModel,
     .effects = {.reads = Touched::model | Touched::users | Touched::options,
                 .changes = Touched::model | Touched::users | Touched::family},
     .about = "saves the model, after what it uses and what was changed of that",
     .function = &saveModel},
};

}  // namespace

std::span<const Action> saveActions() { return kActions; }

}  // namespace actions
