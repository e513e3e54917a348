#include "creo/ProUtil.h"

#include "headless/creo/message_dialog.h"
#include "headless/creo/operation.h"
#include "headless/creo/program_file.h"
#include "headless/exports/export_file.h"
#include "headless/model/detail_options.h"
#include "os/surroundings.h"
#include "os/text_files.h"
#include "text/format.h"

namespace creo {

using headless::operation;
using State = headless::Session::State;

Got<std::wstring> ProToolkitApplTextPathGet() {
  return operation("ProToolkitApplTextPathGet",
                   [](State& state) -> Got<std::wstring> { return state.options.textFolder; });
}

int ProWcharSizeGet() {
  return operation("ProWcharSizeGet", [](State& state) { return state.options.wideCharSize; });
}

Got<std::wstring> ProDirectoryCurrentGet() {
  return operation("ProDirectoryCurrentGet",
                   [](State& state) -> Got<std::wstring> { return state.models.folders().working(); });
}

ProError ProDirectoryChange(const std::wstring& path) {
  return operation("ProDirectoryChange", [&](State& state) {
    // The active workspace's models lie in the session's folder of models.
    const std::wstring folder = state.servers.isPlace(path) ? state.models.folders().home().path() : path;
    return state.models.folders().change(folder) ? ProNoError : ProNotFound;
  });
}

Got<std::wstring> ProConfigoptGet(const std::wstring& option) {
  return operation("ProConfigoptGet", [&](State& state) -> Got<std::wstring> {
    auto values = state.configuration.values(option);
    if (values.empty()) return ProNotFound;
    return std::move(values.front());
  });
}

Got<std::vector<std::wstring>> ProConfigoptArrayGet(const std::wstring& option) {
  return operation("ProConfigoptArrayGet", [&](State& state) -> Got<std::vector<std::wstring>> {
    auto values = state.configuration.values(option);
    if (values.empty()) return ProNotFound;
    return values;
  });
}

ProError ProConfigoptSet(const std::wstring& option, const std::wstring& value) {
  return operation("ProConfigoptSet", [&](State& state) -> ProError {
    if (value.find_first_of(L"\r\n") != value.npos) return ProBadInputs;
    return state.configuration.set(option, value) ? ProNoError : ProNotFound;
  });
}

namespace {

// Creo's own message dialog tells of lines that were left out; its only button goes on.
ProError readDetails(State& state, ProMdl handle, const std::wstring& path, std::wstring_view content) {
  headless::Model* model = state.models.find(handle ? handle : state.windows.model(state.windows.active()));
  if (!model || model->type() != ProMdlType::drawing) return ProBadInputs;
  const std::size_t refused = headless::readDetailOptions(*model->document, content);
  if (refused == 0) return ProNoError;
  headless::messageDialog(
      state, {{}, L"Drawing Options", text::format(L"%d lines of %s are no options", refused, path), {L"OK"}});
  return ProNoError;
}

}  // namespace

ProError ProInputFileRead(ProMdl model, const std::wstring& path, ProInputFileType type) {
  return operation("ProInputFileRead", [&](State& state) -> ProError {
    const bool isDetails = type == ProInputFileType::detailOptions;
    if (isDetails && os::nameOf(path) != path) return ProBadInputs;
    const auto content = os::readText(headless::exportPath(state.models, path));
    if (!content) return ProNotFound;
    if (isDetails) return readDetails(state, model, path, content.value);
    if (type == ProInputFileType::program) return headless::readProgram(state, model, path, content.value);
    state.configuration.read(content.value);
    return ProNoError;
  });
}

}  // namespace creo
