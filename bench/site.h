// A site on the memory disk: parts below one assembly, a package, a session with the plug-in loaded.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>

#include "headless/proui/ui.h"
#include "headless/session.h"
#include "kelvane/package/packing.h"
#include "kelvane/package/source.h"
#include "os/surroundings.h"

namespace bench {

namespace fs = std::filesystem;

inline void write(const fs::path& path, const std::string& bytes) {
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
}

// The text of a list's sections.
struct List {
  std::string head, body;
};

// Parts of a believable size below one assembly, and a package with these lists.
class Site {
 public:
  Site(int models, const std::map<std::string, List>& lists)
      : root_(fs::path("/dev/shm") / ("kelvane-bench-" + std::to_string(getpid()))) {
    fs::remove_all(root_);
    std::string components;
    for (int i = 0; i < models; ++i) {
      const std::string name = "PART_" + std::to_string(i);
      std::string parameters;
      for (int p = 0; p < 20; ++p) {
        parameters += std::string(p ? "," : "") + R"({"name":"PARAMETER_)" + std::to_string(p) +
                      R"(","type":"string","value":"some text of a usual length"})";
      }
      write(root_ / "models" / (name + ".prt.1"), R"({"format":1,"parameters":[)" + parameters + "]}\n");
      components += std::string(i ? "," : "") + R"({"name":")" + name + R"(","type":"prt"})";
    }
    write(root_ / "models/TOP.asm.1", R"({"format":1,"components":[)" + components + "]}\n");
    for (const auto& [name, list] : lists)
      write(root_ / "package/actionlists" / name,
            "<l><h>" + list.head + "</h><b>" + list.body + "</b><f></f><e></e></l>");
    write(root_ / "package/system/index.kvane", "1\nbench\n");
    write(root_ / "packages/bench.kvz", kelvane::packed(*kelvane::openPackage(root_ / "package")));
    write(root_ / "conf/kvd_main.cfg",
          "kvd_kvz_path=p:\\\nkvd_temp_path=t:\\\nkvd_no_user_cfg=1\nkvd_auto_unset_already_reworked_models=0\n"
          "kvd_write_history_in_models=0\n");
    fs::create_directories(root_ / "temp");
    os::mounts().set(L'd', root_ / "models");
    os::mounts().set(L'p', root_ / "packages");
    os::mounts().set(L't', root_ / "temp");
    os::mounts().set(L'c', root_);
    os::mounts().set(L'i', KVD_INSTALLATION);
    os::setEnvironment(L"KVD_CONF_DIR", L"c:\\");
    headless::SessionOptions options;
    options.modelFolder = L"d:\\";
    options.textFolder = L"i:\\text\\";
    session_ = std::make_unique<headless::Session>(options);
    session_->loadPlugin();
  }
  ~Site() {
    session_.reset();
    fs::remove_all(root_);
  }
  Site(const Site&) = delete;
  Site& operator=(const Site&) = delete;

  headless::Session& session() { return *session_; }
  // The tool open on the assembly, its table filled.
  void openTool() {
    session_->open(L"TOP", creo::ProMdlType::assembly);
    session_->settle();
    session_->runCommand("KVANEVisitParametersCmd");
    session_->settle();
  }
  void choose(const std::string& list) {
    session_->ui().choose("kvanerunner", "kvaneActionlistChooser", list);
    session_->settle();
  }
  void start() {
    session_->ui().press("kvanerunner", "kvaneStart");
    session_->settle();
  }
  // Bytes of all documents.
  [[nodiscard]] double documents() const {
    double all = 0;
    for (const auto& entry : fs::directory_iterator(root_ / "models")) all += static_cast<double>(entry.file_size());
    return all;
  }

 private:
  fs::path root_;
  std::unique_ptr<headless::Session> session_;
};

}  // namespace bench
