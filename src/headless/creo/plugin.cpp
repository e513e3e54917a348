// Starting and ending the plug-in. It stands alone, so that a program without the plug-in can be linked.
#include <cwchar>

#include "creo/entry.h"
#include "headless/creo/state.h"

namespace headless {

int Session::loadPlugin() {
  if (state_->unloadPlugin) return 0;
  wchar_t error[creo::kErrorBufferSize] = {};
  char program[] = "creo";
  char* arguments[] = {program, nullptr};
  int result = -1;
  const std::wstring fault = guarded([&] {
    result = user_initialize_plus(1, arguments, state_->options.version.c_str(), state_->options.build.c_str(), error);
  });
  error[creo::kErrorBufferSize - 1] = 0;
  state_->startError = fault.empty() ? error : fault;
  if (result == 0) state_->unloadPlugin = [] { user_terminate_plus(); };
  return result;
}

}  // namespace headless
