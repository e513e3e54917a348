// The passes that need no model: the run counter, the environment, the clock, the session.
#include <limits>
#include <optional>

#include "core/log.h"
#include "core/state.h"
#include "creo/ProUtil.h"
#include "language/compare.h"
#include "language/substitution.h"
#include "os/paths.h"
#include "os/processes.h"
#include "os/surroundings.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/pieces.h"
#include "text/units.h"

namespace language {
namespace {

constexpr std::size_t kCounterDigits = 7;
constexpr std::size_t kClipboardSize = 64;  // UTF-16 units, the zero included; longer texts aren't taken
constexpr wchar_t kSectionSign = L'\u00A7';

struct ClockToken {
  std::wstring_view token;
  const char* pattern;
};
constexpr ClockToken kClockTokens[] = {
    {L"@date@", "%Y-%m-%d"},        {L"@datede@", "%d.%m.%Y"}, {L"@dateen@", "%d-%m-%Y"}, {L"@dateus@", "%m-%d-%Y"},
    {L"@dateusshort@", "%m-%d-%y"}, {L"@time@", "%H-%M"},      {L"@timede@", "%H:%M"},    {L"@timeen@", "%I:%M %p"},
};

using Value = std::optional<std::wstring>;  // none: the token stays

Value workingFolder() {
  auto folder = creo::ProDirectoryCurrentGet();
  return folder ? Value(std::move(folder.value)) : Value();
}
Value clipboardText() {
  Value text = os::clipboard().text();
  return text && text::fits(*text, kClipboardSize) ? text : Value();
}
Value optionFolder(const wchar_t* option) {
  const auto folder = creo::ProConfigoptGet(option);
  return folder ? Value(os::asFolder(folder.value)) : Value();
}
Value materialFolder() { return optionFolder(L"pro_material_dir"); }
Value formatFolder() { return optionFolder(L"pro_format_dir"); }

struct SessionToken {
  std::wstring_view token;
  Value (*value)();
};
constexpr SessionToken kSessionTokens[] = {
    {L"@curworkdir@", &workingFolder},
    {L"@clipboard@", &clipboardText},
    {L"@pro_material_dir@", &materialFolder},
    {L"@pro_format_dir@", &formatFolder},
};

}  // namespace

bool counterPass(Substitution& call) {
  // The comparison accepts the token in any case and counts up; only its exact form is replaced.
  if (text::lower(call.text).find(L"@number@") == call.text.npos) return true;
  if (!matches(L"*@number@*", call.text)) return true;
  int& counter = core::pluginState().numberCounter;
  const std::wstring number = text::format(L"%i", counter);
  counter = counter == std::numeric_limits<int>::max() ? std::numeric_limits<int>::min() : counter + 1;
  return call.replace(L"@number@", text::cut(number, kCounterDigits));
}

bool environmentPass(Substitution& call) {
  for (bool again = true; again;) {
    again = false;
    for (std::size_t i = call.text.find(kSectionSign); i != call.text.npos; i = call.text.find(kSectionSign, i + 1)) {
      const std::size_t close = call.closingSign(i, kSectionSign);
      if (close == call.text.npos) continue;
      const std::wstring name = call.nameBetween(i, close);
      if (name.empty()) return false;
      core::logWrite(L"FOUND Environment variable", core::kDebug);
      core::logWrite(name, core::kDebug);
      const std::wstring value(text::cut(os::environment(name).value_or(L""), text::kTextSize - 1));
      if (value.empty()) continue;
      if (!call.replace(call.text.substr(i, close - i + 1), value)) return false;
      again = true;
    }
  }
  call.text = text::replaceAll(call.text, L"\u00A7\u00A7", L"\u00A7");
  return true;
}

bool clockPass(Substitution& call) {
  std::optional<std::int64_t> now;
  for (const ClockToken& row : kClockTokens) {
    if (!call.holds(row.token)) continue;
    if (!now) now = os::clock().seconds();
    const std::wstring value = os::localTime(*now, row.pattern);
    if (!value.empty() && !call.replace(row.token, value)) return false;
  }
  return true;
}

bool sessionPass(Substitution& call) {
  for (const SessionToken& row : kSessionTokens) {
    if (!call.holds(row.token)) continue;
    const Value value = row.value();
    if (value && !call.replace(row.token, *value)) return false;
  }
  return true;
}

}  // namespace language
