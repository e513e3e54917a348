#include "actions/model/instances.h"

#include "core/log.h"
#include "creo/ProMdl.h"
#include "documents/filter.h"
#include "documents/predicates.h"
#include "text/format.h"

namespace actions {

using core::Message;

bool announceFamily(const Task& task) {
  if (documents::isInstance(task.model()) == documents::Answer::yes)
    core::logMsgId(Message::isInstance, core::kNormal, 1);
  const bool generic = (task.extensionIs(L"PRT") || task.extensionIs(L"ASM")) && task.isTrue(L"forInstances") &&
                       documents::isGeneric(task.model()) == documents::Answer::yes;
  if (generic) core::logMsgId(Message::isGeneric, core::kNormal, 1);
  return generic;
}

void letGo(creo::ProMdl model) {
  if (creo::ProMdlErase(model) == creo::ProNoError || !creo::ProMdlTypeGet(model)) return;  // gone, if not by this
  if (creo::ProMdlErase(model) != creo::ProNoError)
    core::logWrite(text::format(L"%s stays in memory", creo::ProMdlNameGet(model).value), core::kWarning);
}

bool visitInstances(creo::ProMdl generic,
                    creo::FunctionRef<void(const creo::ProFaminstance& instance, creo::ProMdl model)> visit) {
  const auto table = creo::ProFamtableInit(generic);
  if (table.error == creo::ProNotFound) return true;
  const auto type = creo::ProMdlTypeGet(generic);
  if (!table || !type) return false;
  bool all = true;
  const creo::ProError result = creo::ProFamtableInstanceVisit(table.value, [&](const creo::ProFaminstance& instance) {
    const bool wasThere = static_cast<bool>(creo::ProMdlInit(instance.name, type.value));
    const auto model = creo::ProFaminstanceCreate(instance);
    if (!model) {
      core::logWrite(L"Can't create Instance", core::kError);
      all = false;
      return creo::ProNoError;
    }
    visit(instance, model.value);
    if (!wasThere) letGo(model.value);
    return creo::ProNoError;
  });
  return all && (result == creo::ProNoError || result == creo::ProNotFound);
}

}  // namespace actions
