// The doors of the template engine, and the frame around its passes.
#include "language/variables.h"

#include <algorithm>
#include <array>

#include "core/log.h"
#include "core/state.h"
#include "language/substitution.h"
#include "os/paths.h"
#include "text/ascii_scan.h"
#include "text/pieces.h"
#include "text/sixteen.h"

namespace language {
namespace {

constexpr std::wstring_view kProjectDirectory = L"@project_dir@";
// A text may grow to so many times its final size on the way.
constexpr std::size_t kGrowth = 10;
constexpr std::size_t kLineGrowth = 6;

// Behind the names.
bool openPercents(Substitution& call) {
  std::replace(call.text.begin(), call.text.end(), kClosedPercent, L'%');
  return true;
}

struct Pass {
  wchar_t mark;  // a text without it has nothing for this pass; 0 runs always
  bool needsModel;
  bool (*run)(Substitution& call);
};
constexpr Pass kPasses[] = {
    {L'@', false, &counterPass},
    {L'\u00A7', false, &environmentPass},
    {L'@', false, &clockPass},
    {L'@', false, &sessionPass},
    {0, true, &modelPass},
    {L'%', true, &parameterPass},
    {kClosedPercent, true, &openPercents},
    {L'$', true, &functionPass},
};

// Most texts hold no form at all.
bool holdsMarks(std::wstring_view text) {
  using text::Sixteen;
  const auto isMarked = [](const wchar_t* sixteen) {
    return Sixteen::narrowed(sixteen).anyOf('@', '%', '$', '\xA7') != 0;
  };
  std::size_t at = 0;
  for (; at + Sixteen::kSize <= text.size(); at += Sixteen::kSize)
    if (isMarked(text.data() + at)) return true;
  std::array<wchar_t, Sixteen::kSize> rest{};
  std::copy(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), rest.begin());
  return isMarked(rest.data());
}

Replaced finished(std::wstring text, bool outgrown, int status, std::size_t outSize) {
  Replaced result;
  result.status = status;
  result.written = true;
  result.tooLong = outgrown || !text::fits(text, outSize);
  if (result.tooLong) {
    core::logWrite(L"The replaced output is to large for this task", core::kError);
    result.text = L"FAILURE";
  } else {
    result.text = std::move(text);
  }
  return result;
}

}  // namespace

Replaced replaceVariables(std::wstring_view input, creo::ProMdl model, std::size_t outSize) {
  // Such a text has as many units as characters. Without a model no pass asks more than the marks say.
  if (!model && input.size() < outSize && text::isAsciiWithoutMarks(input))
    return {.status = 0, .written = true, .tooLong = false, .text = std::wstring(input)};
  const bool plain = !holdsMarks(input);
  if (plain && !model) return finished(std::wstring(input), false, 0, outSize);
  Replaced failed;
  failed.status = 1;
  Substitution call(input, model, kGrowth * std::max<std::size_t>(outSize, 1));
  for (const Pass& pass : kPasses) {
    if (pass.needsModel && !model) break;
    if (pass.mark != 0 && (plain || call.text.find(pass.mark) == call.text.npos)) continue;
    if (!pass.run(call)) return failed;
  }
  Replaced result = finished(std::move(call.text), call.outgrown, call.status, outSize);
  result.numbers = std::move(call.numbers);
  return result;
}

Replaced replaceVariablesLine(std::wstring_view input, creo::ProMdl model, std::wstring_view lineText,
                              std::size_t outSize) {
  std::wstring text(input);
  for (const std::wstring_view token : {L"@para@", L"@line@"})
    text = replaceAllText(text, token, lineText, kLineGrowth * outSize);
  return replaceVariables(text, model, outSize);
}

std::wstring replaceVariablesPath(std::wstring_view input, creo::ProMdl model, std::wstring_view subdirectory,
                                  std::size_t outSize) {
  std::wstring path(input);
  const std::size_t start = input.starts_with(L'"') ? 1 : 0;
  if (input.substr(start).starts_with(kProjectDirectory)) {
    std::wstring value = core::pluginState().openKvzPath + std::wstring(subdirectory);
    const std::wstring_view rest = input.substr(start + kProjectDirectory.size());
    if (!rest.starts_with(L'\\') && !rest.starts_with(L'/')) value += L'\\';
    path = text::replaceAll(path, kProjectDirectory, value);
  }
  Replaced replaced = replaceVariables(path, model, outSize);
  if (replaced.hasText()) path = std::move(replaced.text);
  return os::withBackslashes(path);
}

}  // namespace language
