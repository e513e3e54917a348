// Saving the model under work.
#include "actions/families.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "engine/task.h"

namespace actions {
namespace {

using namespace engine;

constexpr int kTitle = 357;

Outcome saveModel(const Task& task) {
  if (const auto ended = begin(task, {.title = core::msgText(kTitle)})) return *ended;
  if (creo::ProMdlSave(task.model()) != creo::ProNoError) core::logWrite(L"Failure while save model", core::kError);
  return done;
}

constexpr ActionFunction kActions[] = {{L"saveModel", &saveModel}};

}  // namespace

std::span<const ActionFunction> saveActions() { return kActions; }

}  // namespace actions
