// Documents that a thread of its own has read. Nothing here needs a session, so that ThreadSanitizer's build is small.
#include "headless/store/read_ahead.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "os/surroundings.h"
#include "text/encoding.h"

namespace headless {
namespace {

class Folder {
 public:
  Folder() { std::filesystem::create_directory(path_); }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  const std::string path_ = testing::TempDir() + "kelvane-read-ahead-" +
                            std::to_string(std::chrono::steady_clock::now().time_since_epoch().count());
};

TEST(ReadAheadDocuments, AreTakenAsTheFileIsNowOrNotAtAll) {
  const os::SurroundingsGuard surroundings;
  const Folder folder;
  os::mounts().set(L'd', folder.path());
  const auto file = [&](const std::string& name, const std::string& content) {
    std::ofstream(folder.path() + "/" + name, std::ios::binary) << content;
  };
  for (const char* name : {"a.prt.1", "b.prt.1", "c.prt.1"}) file(name, "{\"format\": 1, \"commonName\": \"first\"}");
  file("bad.prt.1", "{");
  ReadAhead ahead(os::surroundings().files);
  EXPECT_FALSE(ahead.take(L"d:\\a.prt.1")) << "nobody wanted it";
  // They are read in this order: when the last one is there, so were the others.
  const std::vector<std::wstring> paths = {L"d:\\b.prt.1", L"d:\\c.prt.1", L"d:\\bad.prt.1", L"d:\\a.prt.1"};
  for (const std::wstring& path : paths) ahead.want(path);
  std::optional<ReadAhead::Document> taken;
  for (int i = 0; i < 1000 && !taken; ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    taken = ahead.take(paths.back());
    if (!taken) ahead.want(paths.back());
  }
  file("b.prt.1", "{\"format\": 1, \"commonName\": \"another length\"}");
  std::filesystem::remove(folder.path() + "/c.prt.1");
  ASSERT_TRUE(taken);
  EXPECT_EQ("first", taken->record.commonName);
  for (const std::wstring& path : paths) EXPECT_FALSE(ahead.take(path)) << text::toUtf8(path);
  // However fast they come, what is asked for is whole.
  for (int i = 0; i < 200; ++i) {
    ahead.want(paths.back());
    if (const auto again = ahead.take(paths.back())) EXPECT_EQ("first", again->record.commonName);
  }
}

}  // namespace
}  // namespace headless
