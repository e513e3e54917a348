#include "kelvane/log/captured_log.h"

#include "core/log.h"
#include "core/state.h"
#include "language/comparison_watch.h"
#include "os/processes.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

constexpr std::wstring_view kConfigFile = L"l:\\conf\\kvd_main.cfg";

class MemoryAppender : public os::Appender {
 public:
  explicit MemoryAppender(std::string& into) : into_(into) {}
  std::error_code write(std::string_view bytes) override {
    into_ += bytes;
    return {};
  }

 private:
  std::string& into_;
};

class LogInMemory : public os::FilesWrapper {
 public:
  LogInMemory(os::Files& under, std::string& into, const std::string& config)
      : FilesWrapper(under), into_(into), config_(config) {}
  os::Result<std::string> read(std::wstring_view path) override {
    return path == kConfigFile ? os::Result<std::string>{config_, {}} : FilesWrapper::read(path);
  }
  // Beside the log the plug-in tries whether it can write.
  std::error_code write(std::wstring_view path, std::string_view bytes) override {
    return path.starts_with(kLogFolder) ? std::error_code() : FilesWrapper::write(path, bytes);
  }
  bool exists(std::wstring_view path) override { return !path.starts_with(kLogFolder) && FilesWrapper::exists(path); }
  os::Result<std::unique_ptr<os::Appender>> append(std::wstring_view path) override {
    if (!path.starts_with(kLogFolder)) return FilesWrapper::append(path);
    os::Result<std::unique_ptr<os::Appender>> result;
    result.value = std::make_unique<MemoryAppender>(into_);
    return result;
  }

 private:
  std::string& into_;
  const std::string& config_;
};

}  // namespace

CapturedLog::CapturedLog() : disk_(os::surroundings().files) {
  core::logReset();
  core::pluginState().reset();
  core::pluginState().tempPath = kLogFolder;
  language::forgetWhatWasGivenUp();
  os::surroundings().files = std::make_shared<LogInMemory>(*disk_, bytes_, config_);
}

void CapturedLog::configure(const std::string& config) {
  config_ = config + "kvd_temp_path=" + text::toUtf8(kLogFolder) + "\n";
  os::setEnvironment(L"KVD_CONF_DIR", kLogFolder);
}

CapturedLog::~CapturedLog() {
  core::logReset();
  core::pluginState().reset();
  os::surroundings().files = disk_;
}

std::vector<TroubleLine> CapturedLog::takeTrouble() {
  std::vector<TroubleLine> lines;
  for (const std::wstring& wide : text::lines(text::fromUtf8(std::exchange(bytes_, {})))) {
    const std::string line = text::toUtf8(wide);
    if (!line.starts_with("1(") && !line.starts_with("2(")) continue;
    // "2(ERR)  0  -  - text": section and number, then action and model, which are empty here.
    std::size_t at = line.find(" - ");
    if (at != line.npos) at = line.find("- ", at + 3);
    TroubleLine& taken = lines.emplace_back();
    taken.level = line[0] - '0';
    taken.text = at == line.npos ? line : line.substr(at + 2);
    taken.text.erase(0, taken.text.find_first_not_of(' '));
  }
  return lines;
}

}  // namespace kelvane
