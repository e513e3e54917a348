// Texts outside models that later attributes read as "%user:NAME%".
#include <algorithm>
#include <limits>

#include "actions/families.h"
#include "core/log.h"
#include "engine/read_number.h"
#include "engine/task.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace engine;

// The variable as a number plus the step; a new one starts at 0. Beyond the range: the nearest end.
std::wstring countedUp(std::wstring_view name, std::wstring_view step) {
  const std::wstring* old = userVariables().find(name);
  const long long sum = static_cast<long long>(old ? integerOrZero(*old) : 0) + integerOrZero(step);
  using Limits = std::numeric_limits<int>;
  return text::format(L"%d", std::clamp<long long>(sum, Limits::min(), Limits::max()));
}

Outcome setUserVariableDirect(const Task& task) {
  if (const auto ended = begin(task, {.title = L"Set user variable direct"})) return *ended;
  const Replaced name = task.text(L"name");
  if (!name.hasText()) return done;
  std::wstring value;
  if (task.isTrue(L"inc")) {
    value = countedUp(name.text, task.attribute(L"incno"));
  } else {
    Replaced replaced = task.text(L"value");
    if (!replaced.hasText()) {
      userVariables().remove(name.text);  // that of the model before would pass for this one's
      return done;
    }
    value = std::move(replaced.text);
  }
  core::logIndented(text::format(L"set %s = %s", name.text, value), core::kNormal, 1);
  userVariables().set(name.text, value);
  return done;
}

constexpr ActionFunction kActions[] = {{L"setUserVariableDirect", &setUserVariableDirect}};

}  // namespace

std::span<const ActionFunction> userVariableActions() { return kActions; }

}  // namespace actions
