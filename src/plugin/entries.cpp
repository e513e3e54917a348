// What Creo calls: the start and the end of the plug-in. No exception leaves them.
#include <algorithm>
#include <exception>

#include "core/log.h"
#include "creo/entry.h"
#include "plugin/recording.h"
#include "plugin/start.h"
#include "text/encoding.h"
#include "trace/entered.h"

namespace {

// Creo shows the text when the start has failed.
void fillErrorBuffer(wchar_t* buffer, std::wstring_view fault) {
  if (!buffer) return;
  const std::size_t length = std::min<std::size_t>(fault.size(), creo::kErrorBufferSize - 1);
  std::copy_n(fault.begin(), length, buffer);
  buffer[length] = L'\0';
}

int start(const char* version, const char* build, wchar_t* errbuf) {
  try {
    const text::Fault fault = plugin::startPlugin(version, build);
    if (!fault) return 0;
    fillErrorBuffer(errbuf, fault.what);
    return -1;
  } catch (const std::exception& fault) {
    const std::wstring text = text::fromUtf8(fault.what());
    fillErrorBuffer(errbuf, text);
    core::creoLog(text);
    return -1;
  }
}

void end() {
  try {
    plugin::endPlugin();
  } catch (const std::exception& fault) {
    core::creoLog(text::fromUtf8(fault.what()));
  }
}

}  // namespace

extern "C" int user_initialize_plus(int /*argc*/, char** /*argv*/, const char* version, const char* build,
                                    wchar_t* errbuf) {
  const char* const release = version ? version : "";
  const char* const code = build ? build : "";
  plugin::beginRecording();
  const int result = trace::entered(
      "start", [&] { return start(release, code, errbuf); }, std::string_view(release), std::string_view(code));
  if (!plugin::isRecording() || result != 0) plugin::endRecording();
  return result;
}

extern "C" void user_terminate_plus() {
  trace::entered("end", &end);
  plugin::endRecording();
}
