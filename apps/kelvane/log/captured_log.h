// The plug-in's log, kept in memory, for verbs that ask the plug-in without loading it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "os/files_wrapper.h"

namespace kelvane {

// A warning or an error of the log.
struct TroubleLine {
  int level = 0;
  std::string text;  // without level, place and action
};

// The folder of the log, under a letter that nothing is mounted under.
constexpr const wchar_t* kLogFolder = L"l:\\";

// While it lives log lines go nowhere else. The plug-in's state is that of its start, before and after.
class CapturedLog {
 public:
  CapturedLog();
  ~CapturedLog();
  CapturedLog(const CapturedLog&) = delete;
  CapturedLog& operator=(const CapturedLog&) = delete;
  // The plug-in started with that content of kvd_main.cfg keeps its log here too: `kvd_temp_path` is its folder.
  void configure(const std::string& config);
  // What was written since the last call: warnings and errors.
  std::vector<TroubleLine> takeTrouble();

 private:
  std::shared_ptr<os::Files> disk_;
  std::string bytes_, config_;
};

}  // namespace kelvane
