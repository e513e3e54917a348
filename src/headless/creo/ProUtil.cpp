#include "creo/ProUtil.h"

#include "headless/creo/operation.h"
#include "os/surroundings.h"
#include "os/text_files.h"

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
                   [](State& state) -> Got<std::wstring> { return state.models.workingFolder(); });
}

ProError ProDirectoryChange(const std::wstring& path) {
  return operation("ProDirectoryChange", [&](State& state) {
    // The active workspace's models lie in the session's folder of models.
    const std::wstring folder = state.servers.isPlace(path) ? state.models.home().path() : path;
    return state.models.changeFolder(folder) ? ProNoError : ProNotFound;
  });
}

Got<std::wstring> ProConfigoptGet(const std::wstring& option) {
  return operation("ProConfigoptGet", [&](State& state) -> Got<std::wstring> {
    auto values = state.configuration.values(option);
    if (values.empty()) return ProNotFound;
    return std::move(values.front());
  });
}

ProError ProInputFileRead(ProMdl /*model*/, const std::wstring& path, ProInputFileType type) {
  return operation("ProInputFileRead", [&](State& state) -> ProError {
    if (type != ProInputFileType::configuration) return ProBadInputs;
    const auto content = os::readText(path);
    if (!content) return ProNotFound;
    state.configuration.read(content.value);
    return ProNoError;
  });
}

}  // namespace creo
