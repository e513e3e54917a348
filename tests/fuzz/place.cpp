#include "fuzz/place.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "os/doors.h"
#include "os/files_wrapper.h"
#include "support/folders.h"
#include "text/encoding.h"

namespace fuzz {
namespace {

namespace fs = std::filesystem;

// Whatever would change a file is refused.
class UnchangedFiles : public os::FilesWrapper {
 public:
  using FilesWrapper::FilesWrapper;
  std::error_code write(std::wstring_view, std::string_view) override { return denied(); }
  std::error_code create(std::wstring_view, std::string_view) override { return denied(); }
  os::Result<std::unique_ptr<os::Appender>> append(std::wstring_view) override { return {nullptr, denied()}; }
  std::error_code createFolders(std::wstring_view) override { return denied(); }
  std::error_code remove(std::wstring_view) override { return denied(); }
  std::error_code rename(std::wstring_view, std::wstring_view) override { return denied(); }
  std::error_code removeFolder(std::wstring_view, std::wstring_view) override { return denied(); }

 private:
  static std::error_code denied() { return std::make_error_code(std::errc::permission_denied); }
};

}  // namespace

Place::Place() : real_(os::surroundings().files) {
  std::string pattern = fs::temp_directory_path() / "kelvane-fuzz-XXXXXX";
  if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
  folder_ = pattern;
  for (const auto& entry : fs::directory_iterator(test::sourceFolder() + "/examples/workspace"))
    if (entry.is_regular_file()) fs::copy(entry.path(), fs::path(folder_) / entry.path().filename());
  os::mounts().set(L'd', folder_);
  os::mounts().set(L'i', test::sourceFolder() + "/installation");
  os::surroundings().files = std::make_shared<UnchangedFiles>(*real_);
  os::surroundings().clipboard = std::make_shared<os::FixedClipboard>();
  os::doors().programs = os::Door::closed;
  // What lives as long as the process is made before this object is, and so outlives it and its session.
  freshSession().open(L"GEAR", creo::ProMdlType::drawing);
  session_->settle();
  session_.reset();
}

Place::~Place() {
  session_.reset();
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

headless::Session& Place::freshSession() {
  session_.reset();
  headless::SessionOptions options;
  options.modelFolder = L"d:\\";
  options.textFolder = L"i:\\text\\";
  session_ = std::make_unique<headless::Session>(options);
  return *session_;
}

std::wstring Place::file(const std::string& name, std::string_view bytes) const {
  std::ofstream(folder_ + "/" + name, std::ios::binary) << bytes;
  return L"d:\\" + text::fromUtf8(name);
}

}  // namespace fuzz
