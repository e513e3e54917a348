// Runs whose journal is looked at, folders that are compared byte for byte, and a disk that ends its process or fills.
#pragma once

#include <sys/wait.h>

#include <csignal>
#include <map>

#include "kelvane/run/run_fixture.h"
#include "os/clock.h"
#include "os/files_wrapper.h"
#include "os/paths.h"
#include "text/pieces.h"

namespace test {

// Counts what changes below a folder, and has something happen at one of these changes.
class FatefulFiles : public os::FilesWrapper {
 public:
  enum class Fate { none, killBefore, killHalfway, killBehind, fullFrom };
  FatefulFiles(std::shared_ptr<os::Files> under, std::string folder, Fate fate, int at)
      : FilesWrapper(*under), owned_(std::move(under)), folder_(std::move(folder)), fate_(fate), at_(at) {}
  [[nodiscard]] int changes() const { return changes_; }

  std::error_code write(std::wstring_view path, std::string_view bytes) override {
    return change(
        path, [&] { return under_.write(path, bytes); }, [&] { leaveHalf(path, bytes); });
  }
  std::error_code create(std::wstring_view path, std::string_view bytes) override {
    return change(
        path, [&] { return under_.create(path, bytes); }, [&] { leaveHalf(path, bytes); });
  }
  std::error_code remove(std::wstring_view path) override {
    return change(path, [&] { return under_.remove(path); });
  }
  std::error_code rename(std::wstring_view from, std::wstring_view to) override {
    return change(from, [&] { return under_.rename(from, to); });
  }
  std::error_code createFolders(std::wstring_view path) override {
    return change(path, [&] { return under_.createFolders(path); });
  }
  os::Result<std::unique_ptr<os::Appender>> append(std::wstring_view path) override {
    auto opened = under_.append(path);
    if (opened) opened.value = std::make_unique<FatefulAppender>(*this, std::wstring(path), std::move(opened.value));
    return opened;
  }

 private:
  class FatefulAppender : public os::Appender {
   public:
    FatefulAppender(FatefulFiles& files, std::wstring path, std::unique_ptr<os::Appender> under)
        : files_(files), path_(std::move(path)), under_(std::move(under)) {}
    std::error_code write(std::string_view bytes) override {
      const auto half = bytes.substr(0, bytes.size() / 2);
      return files_.change(
          path_, [&] { return under_->write(bytes); }, [&] { (void)under_->write(half); });
    }

   private:
    FatefulFiles& files_;
    std::wstring path_;
    std::unique_ptr<os::Appender> under_;
  };

  // What the disk has of a file before it gets its name.
  void leaveHalf(std::wstring_view path, std::string_view bytes) const {
    if (fate_ != Fate::killHalfway) return;
    const std::filesystem::path target = os::mounts().machine(path);
    writeBytes(target.parent_path() / (".kvd-" + std::to_string(::getpid()) + "-999.tmp"),
               std::string(bytes.substr(0, bytes.size() / 2)));
  }

  template <class Change>
  std::error_code change(std::wstring_view path, Change carryOut, const std::function<void()>& halfway = {}) {
    if (!os::mounts().machine(path).starts_with(folder_)) return carryOut();
    const bool isTime = ++changes_ == at_;
    if (fate_ == Fate::fullFrom && changes_ >= at_) {
      if (halfway) halfway();
      return std::make_error_code(std::errc::no_space_on_device);
    }
    if (isTime && fate_ == Fate::killHalfway && halfway) halfway();
    if (isTime && (fate_ == Fate::killBefore || fate_ == Fate::killHalfway)) ::raise(SIGKILL);
    const std::error_code error = carryOut();
    if (isTime && fate_ == Fate::killBehind) ::raise(SIGKILL);
    return error;
  }

  std::shared_ptr<os::Files> owned_;
  std::string folder_;
  Fate fate_;
  int at_, changes_ = 0;
};
using Fate = FatefulFiles::Fate;

class JournalFixture : public RunFixture {
 protected:
  JournalFixture() { os::surroundings().clock = std::make_shared<os::FixedClock>(1'700'000'000); }

  void SetUp() override {
    RunFixture::SetUp();
    const std::string of = " version='3' forPRT='true' forASM='true' forEF='false'";
    // For the models that have a parameter.
    const auto having = [](const std::string& task, const std::string& parameter) {
      return text::replaceAll(text::replaceAll(task, "forEF='false'", "forEF='true'"), "/>", ">") +
             "<filter><i type='parameter' filtertype='true' param='" + parameter + "' value='*'/></filter></task>";
    };
    const std::string rename = having("<task type='renameModel'" + of + " name='%NEW%'/>", "NEW");
    const std::string step = having(
        "<task type='exportStep' version='4' forPRT='true' forEF='false'"
        " folderFromModel='true' file='@mdln@' config='' overwriteExisting='true'/>",
        "BODY");
    list("rename.xml", rename + kAddNorm + kSave);
    list("copy.xml", "<task type='copyModel'" + of + " name='@mdln@_OLD'/>" + kAddNorm + kSave);
    list("step.xml", step);
    list("all.xml", rename + kAddNorm + kSave + step);
    const std::string checkIn = having("<task type='checkinModel'" + of + "/>", "IN");
    list("in.xml", checkIn);
    list("release.xml", rename + kAddNorm + kSave + checkIn + step);
    const std::string row = "<task type='reportModeldata'" + of + " reporter='audit' mdlname='true'/>";
    list("report.xml", "<task type='openCSVReport' version='3' name='audit' file='audit.csv'/>" + row);
  }

  // Three parts in an assembly; one of them has the name that it gets, one is to be checked in.
  void gearbox() {
    part(L"GEAR").with(L"NEW", L"WHEEL").with(L"MASS", 2.5);
    part(L"PIN").with(L"MASS", 0.5).with(L"IN", L"yes");
    ASSERT_EQ(0, kelvane({"new", models(), "BLOCK.PRT", "--box", "1,2,3", "--param", "BODY=yes"}).code);
    assembly(L"BOX").uses(L"GEAR", creo::ProMdlType::part).uses(L"PIN", creo::ProMdlType::part);
  }

  using Contents = std::map<std::string, std::string>;
  // Names and contents below a folder, the journal aside.
  [[nodiscard]] Contents contents(const std::string& folder = "models") const {
    Contents all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path(folder))) {
      const std::string name = std::filesystem::relative(entry.path(), path(folder)).string();
      if (name.starts_with("kelvane.journal")) continue;
      all[name] = entry.is_directory() ? "a folder" : readBytes(entry.path().string());
    }
    return all;
  }
  // "-gear.prt.2 +wheel.prt.2": what the second lacks or has otherwise, and what it has beyond.
  static std::string difference(const Contents& a, const Contents& b) {
    std::string all;
    for (const auto& [name, bytes] : a)
      if (!b.contains(name) || b.at(name) != bytes) all += " -" + name;
    for (const auto& [name, bytes] : b)
      if (!a.contains(name) || a.at(name) != bytes) all += " +" + name;
    return all;
  }

  Ended undo(const std::vector<std::string>& more = {}, const std::string& folder = "models") {
    std::vector<std::string> words = {"undo", path(folder)};
    words.insert(words.end(), more.begin(), more.end());
    return kelvane(words);
  }

  // The program, with that folder on a fateful disk, in a process of its own that may be killed. False: it was.
  [[nodiscard]] bool survives(const std::vector<std::string>& words, const std::string& folder, Fate fate,
                              int at) const {
    const pid_t child = ::fork();
    if (child == 0) {
      os::surroundings().files = std::make_shared<FatefulFiles>(os::surroundings().files, path(folder), fate, at);
      const Ended ended = kelvane(words);
      ::_exit(ended.code);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status);
  }

 private:
  os::SurroundingsGuard surroundings_;
};

}  // namespace test
