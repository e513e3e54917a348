#include "actions/drawing/code_text.h"

#include <algorithm>

#include "core/log.h"
#include "language/read_number.h"
#include "language/variables.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/numbers.h"

namespace actions {

using namespace language;

namespace {

constexpr wchar_t kLastOfLatin1 = 0xff;
constexpr int kStructuredAppend = 3;  // the mode behind which an action's numbers lag one behind libqrencode's

// What the model is called. A text keeps such a token where Creo doesn't answer, which nobody sees in a code.
constexpr std::wstring_view kNames[] = {L"@mdln@",    L"@filename@", L"@common@",  L"@mdltype@",
                                        L"@mdlpath@", L"@filepath@", L"@mdlpathr@"};

// False, with an error line: a name that the line asks for couldn't be had.
bool holdsItsNames(const Task::Numbered& line, const std::wstring& text) {
  for (const std::wstring_view name : kNames) {
    if (line.value.find(name) == line.value.npos || text.find(name) == text.npos) continue;
    core::logWrite(text::format(L"The code can't be made, as %s of its line %d can't be read", name, line.number),
                   core::kError);
    return false;
  }
  return true;
}

}  // namespace

std::optional<std::string> codeText(const Task& task) {
  std::string whole;
  bool isFirst = true;
  for (const Task::Numbered& line : task.numberedAll(L"value", text::parseInt(task.attribute(L"valuec")))) {
    const Replaced replaced = replaceVariables(line.value, task.model());
    if (!replaced) {
      core::logWrite(L"There happened a failure inside the variable replacement. Please check your used variables",
                     core::kError);
      return std::nullopt;
    }
    if (!holdsItsNames(line, replaced.text)) return std::nullopt;
    const auto isBeyond = [](wchar_t c) { return c > kLastOfLatin1; };
    if (std::any_of(replaced.text.begin(), replaced.text.end(), isBeyond)) {
      core::logWrite(text::format(L"The code can't hold a character of its line %d: %s", line.number, replaced.text),
                     core::kError);
      return std::nullopt;
    }
    if (!isFirst) whole += '\n';
    isFirst = false;
    whole += text::toLatin1(replaced.text);
  }
  return whole;
}

std::optional<barcode::QrCode> qrCodeOf(const Task& task) {
  const auto text = codeText(task);
  if (!text) return std::nullopt;
  int mode = text::parseInt(task.attribute(L"encoding"));
  if (mode > kStructuredAppend) mode = std::min(mode, 1000) + 1;
  const auto make = statesLetters(task) ? &barcode::latin1QrCode : &barcode::qrCode;
  auto code = make(*text, text::parseInt(task.attribute(L"eclevel")), mode,
                   text::parseInt(task.attribute(L"casesensitive")) != 0);
  if (!code) core::logWrite(L"Can't create the QR code", core::kError);
  return code;
}

std::optional<double> codeLength(const Task& task, std::wstring_view name) {
  if (const auto length = language::numberIn(task.attribute(name)); length && *length > 0) return length;
  core::logWrite(text::format(L"%s isn't a positive number: %s", name, task.attribute(name)), core::kError);
  return std::nullopt;
}

}  // namespace actions
