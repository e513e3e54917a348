// Texts outside models that later attributes read as "%user:NAME%".
#include <algorithm>
#include <limits>

#include "actions/task.h"
#include "core/log.h"
#include "language/read_number.h"
#include "language/user_variables.h"
#include "language/variables.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace language;

// The variable as a number plus the step; a new one starts at 0. Beyond the range: the nearest end.
std::wstring countedUp(std::wstring_view name, std::wstring_view step) {
  const std::wstring* old = userVariables().find(name);
  const long long sum = static_cast<long long>(old ? integerOrZero(*old) : 0) + integerOrZero(step);
  using Limits = std::numeric_limits<int>;
  return text::format(L"%d", std::clamp<long long>(sum, Limits::min(), Limits::max()));
}

Outcome setUserVariableDirect(const Task& task) {
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

constexpr Attribute kAttributes[] = {
    {.name = L"name", .kind = Kind::variable, .variables = true, .need = Need::needed, .about = "the variable's name"},
    {.name = L"value", .variables = true, .need = Need::oneOf, .about = "its value"},
    {.name = L"inc",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::oneOf,
     .about = "it is counted up by incno instead"},
    {.name = L"incno", .kind = Kind::integer, .about = "the step"},
};

constexpr Action kActions[] = {
    {.key = L"setUserVariableDirect",
     .place = 12,
     .group = Group::withoutModel,
     .title = L"Set user variable direct",
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::variables, .changes = Touched::variables},
     .about = "sets a user variable, or counts it up",
     .function = &setUserVariableDirect},
};

}  // namespace

std::span<const Action> userVariableActions() { return kActions; }

}  // namespace actions
