#include "actions/model/instances.h"

#include "core/log.h"
#include "documents/filter.h"
#include "documents/predicates.h"

namespace actions {
namespace {

constexpr int kInstanceRefusedMessage = 5;
constexpr int kIsInstanceMessage = 9;
constexpr int kIsGenericMessage = 59;

}  // namespace

std::optional<engine::Outcome> passInstances(const engine::Task& task, bool& generic) {
  generic = false;
  if (documents::isInstance(task.model()) == documents::kTrue) {
    if (task.attribute(L"forInstances") == L"false") {
      core::logMsgPlain(kInstanceRefusedMessage, core::kWarning);
      return engine::done;
    }
    core::logMsgId(kIsInstanceMessage, core::kNormal, 1);
  }
  generic = (task.extensionIs(L"PRT") || task.extensionIs(L"ASM")) && task.isTrue(L"forInstances") &&
            documents::isGeneric(task.model()) == documents::kTrue;
  if (generic) core::logMsgId(kIsGenericMessage, core::kNormal, 1);
  return std::nullopt;
}

}  // namespace actions
