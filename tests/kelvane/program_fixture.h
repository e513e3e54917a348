// The program as a function, with a folder of its own for everything that it writes.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "kelvane/program.h"
#include "os/processes.h"
#include "support/folders.h"
#include "support/world.h"
#include "text/encoding.h"

namespace test {

struct Ended {
  int code = 0;
  std::string out, err;
};

class ProgramTest : public testing::Test {
 protected:
  ProgramTest() {
    os::setEnvironment(L"XDG_CACHE_HOME", text::fromUtf8(path("cache")));
    os::setEnvironment(L"XDG_CONFIG_HOME", text::fromUtf8(path("config_home")));
    os::setEnvironment(L"KELVANE_INSTALLATION", text::fromUtf8(sourceFolder() + "/installation"));
  }

  static Ended kelvane(const std::vector<std::string>& words) {
    std::ostringstream out, err;
    const int code = kelvane::program(words, out, err);
    return {code, out.str(), err.str()};
  }

  [[nodiscard]] std::string path(const std::string& name) const { return folder_.path() + "/" + name; }
  static std::string example(const std::string& name) { return sourceFolder() + "/examples/" + name; }

  void file(const std::string& name, const std::string& content) const {
    std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
    writeBytes(path(name), content);
  }
  // A model beside others in "models".
  ModelBuilder part(std::wstring name) const { return {models(), std::move(name), creo::ProMdlType::part}; }
  ModelBuilder assembly(std::wstring name) const { return {models(), std::move(name), creo::ProMdlType::assembly}; }
  [[nodiscard]] std::string models() const { return path("models"); }

  // A package folder "standards" with that list; single quotes stand for double ones. A body may bring the list's end.
  void list(const std::string& name, const std::string& body, const std::string& foot = "") const {
    std::string xml = "<list>\n<head/>\n<body>\n" + body + "\n";
    if (!body.ends_with("</list>")) xml += "</body>\n<filter/>\n<foot>" + foot + "</foot>\n</list>\n";
    std::replace(xml.begin(), xml.end(), '\'', '"');
    file("standards/actionlists/" + name, xml);
    file("standards/system/index.kvane", "Package\nFor a test\n");
  }

  // Without the journal, whose tests look at it themselves.
  [[nodiscard]] std::vector<std::string> filesIn(const std::string& name) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path(name))) {
      const std::string file = entry.path().filename().string();
      if (file != "kelvane.journal") names.push_back(file);
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  TempFolder folder_;
};

// The line of the recap without its time.
inline std::string recapOf(const Ended& ended) {
  std::size_t at = ended.out.rfind("  models=");
  if (at == std::string::npos) return "no recap: " + ended.out + ended.err;
  at = ended.out.rfind('\n', at) + 1;
  return ended.out.substr(at, ended.out.find("  seconds=", at) - at);
}

}  // namespace test
