#include "creo/ProMessage.h"

#include "headless/creo/message_dialog.h"
#include "headless/creo/operation.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

ProError ProMessageDisplay(const std::wstring& file, const std::string& key, const std::wstring& argument) {
  return operation("ProMessageDisplay", [&](State& state) -> ProError {
    const std::wstring* text = state.messageFiles.find(file, text::fromUtf8(key));
    if (!text) return ProNotFound;
    state.showMessage(text::replaceAll(*text, L"%0s", argument));
    return ProNoError;
  });
}

// The lines stay in the session's record; on a screen the area would be empty now.
ProError ProMessageClear() {
  return operation("ProMessageClear", [](State&) { return ProNoError; });
}

Got<std::wstring> ProMessageToBuffer(const std::wstring& file, const std::string& key) {
  return operation("ProMessageToBuffer", [&](State& state) -> Got<std::wstring> {
    const std::wstring* text = state.messageFiles.find(file, text::fromUtf8(key));
    if (!text) return ProNotFound;
    return *text;
  });
}

namespace {

// What a dialog shows of a text: "&&" is "&", and a single one marks a letter.
std::wstring shownText(std::wstring_view text) {
  std::wstring shown;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'&' && ++i == text.size()) break;
    shown += text[i];
  }
  return shown;
}

}  // namespace

Got<int> ProUIMessageDialogDisplay(const std::wstring& title, const std::wstring& text,
                                   const std::vector<std::wstring>& buttons) {
  return operation("ProUIMessageDialogDisplay", [&](State& state) -> Got<int> {
    if (buttons.empty()) return ProBadInputs;
    const int pressed = headless::messageDialog(state, {{}, title, shownText(text), buttons});
    if (pressed < 0 || pressed >= static_cast<int>(buttons.size())) return ProBadInputs;
    return pressed;
  });
}

}  // namespace creo
