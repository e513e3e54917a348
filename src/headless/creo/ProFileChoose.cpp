#include "creo/ProFileChoose.h"

#include <algorithm>

#include "headless/creo/operation.h"
#include "headless/proui/ui_state.h"
#include "os/surroundings.h"
#include "text/format.h"
#include "text/numbers.h"

namespace creo {

using headless::FileQuestion;
using headless::operation;
using State = headless::Session::State;

namespace {

// Without a folder the dialog starts in the working directory.
Got<std::wstring> askPath(State& state, FileQuestion question) {
  if (question.folder.empty()) question.folder = state.models.folders().working();
  const auto chosen = state.ui.state().askFile(question);
  if (!chosen) return ProUserAbort;
  std::wstring path = os::withBackslashes(*chosen);
  if (headless::canBeChosen(question.what, path)) return path;
  state.showMessage(text::format(L"'%s' can't be chosen", path));
  return ProUserAbort;
}

bool isNumber(std::wstring_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}

}  // namespace

Got<std::wstring> ProFileMdlnameOpen(const std::wstring& title, const std::wstring& filter, const std::wstring& folder,
                                     const std::wstring& proposal) {
  return operation("ProFileMdlnameOpen", [&](State& state) {
    return askPath(state, {FileQuestion::What::open, title, filter, folder, proposal});
  });
}

Got<std::wstring> ProFileMdlnameSave(const std::wstring& title, const std::wstring& filter, const std::wstring& folder,
                                     const std::wstring& proposal) {
  return operation("ProFileMdlnameSave", [&](State& state) {
    return askPath(state, {FileQuestion::What::save, title, filter, folder, proposal});
  });
}

Got<std::wstring> ProFileSave(const std::wstring& title, const std::wstring& filter, const std::wstring& folder,
                              const std::wstring& proposal) {
  return operation("ProFileSave", [&](State& state) {
    return askPath(state, {FileQuestion::What::save, title, filter, folder, proposal});
  });
}

Got<std::wstring> ProDirectoryChoose(const std::wstring& title, const std::wstring& folder) {
  return operation("ProDirectoryChoose", [&](State& state) {
    return askPath(state, {FileQuestion::What::folder, title, {}, folder, {}});
  });
}

ProFilename ProFilenameParse(const std::wstring& path) {
  ProFilename parts;
  const std::wstring whole = os::withBackslashes(path);
  parts.directory = os::folderOf(whole);
  parts.name = os::nameOf(whole);
  std::size_t dot = parts.name.rfind(L'.');
  const bool isVersion = dot != parts.name.npos && dot > 0 && isNumber(std::wstring_view(parts.name).substr(dot + 1)) &&
                         parts.name.rfind(L'.', dot - 1) != parts.name.npos;
  if (isVersion) {
    parts.version = text::parseInt(std::wstring_view(parts.name).substr(dot + 1));
    parts.name.resize(dot);
    dot = parts.name.rfind(L'.');
  }
  if (dot == parts.name.npos) return parts;
  parts.extension = parts.name.substr(dot + 1);
  parts.name.resize(dot);
  return parts;
}

}  // namespace creo
