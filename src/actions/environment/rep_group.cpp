// groupActions on a simplified representation of the model.
#include "actions/environment/group_modes.h"
#include "core/log.h"
#include "creo/ProMdl.h"
#include "creo/ProSimprep.h"
#include "creo/ProSolid.h"
#include "language/variables.h"
#include "text/format.h"

namespace actions {

using namespace language;

namespace {

// A model that was in memory in a higher representation stays in that one: an assembly is put into the one that the
// group wants, a part can't be.
void putInto(creo::ProMdl model, const std::wstring& rep) {
  const auto wanted = creo::ProSimprepInit(rep, 0, model);
  const auto active = creo::ProSimprepActiveGet(model);
  if (wanted && active && wanted.value.id == active.value.id) return;
  if (!wanted || creo::ProSimprepActivate(wanted.value) != creo::ProNoError)
    core::logWrite(
        text::format(L"The tasks don't work on the representation %s: a higher one of the model is in memory", rep),
        core::kWarning);
}

}  // namespace

void runOnRepresentation(const Task& task) {
  const Replaced rep = task.text(L"simprepname");
  if (!rep.hasText()) return;
  const auto name = creo::ProMdlNameGet(task.model());
  const auto type = creo::ProMdlTypeGet(task.model());
  const bool isAssembly = type && type.value == creo::ProMdlType::assembly;
  const auto model = isAssembly ? creo::ProAssemblySimprepMdlnameRetrieve(name.value, rep.text)
                                : creo::ProSimprepMdlnameRetrieve(name.value, type.value, rep.text);
  if (!model) {
    core::logWrite(text::format(L"Simp rep not found : %d", static_cast<int>(model.error)), core::kError);
  } else {
    putInto(model.value, rep.text);
    creo::ProSolidRegenerate(model.value, creo::kRegenerateForce);
    runTasksOn(task, model.value, task.subject().name, task.subject().extension);
    if (isAssembly) creo::ProMdlnameRetrieve(name.value, type.value);
  }
  creo::ProMdlDisplay(task.model());
}

}  // namespace actions
