#include "sweep/outcome.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "core/log_levels.h"
#include "headless/store/folder.h"
#include "kelvane/log/lines.h"
#include "os/surroundings.h"
#include "support/world.h"
#include "text/encoding.h"

namespace sweep {
namespace fs = std::filesystem;
namespace {

constexpr const char* kLog = "kelvane.log";
constexpr const char* kJournal = "kelvane.journal/";

// All but what the run writes of itself, its log and its journal.
std::map<std::string, std::string> filesIn(const std::string& folder) {
  std::map<std::string, std::string> all;
  if (!fs::exists(folder)) return all;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    const std::string path = entry.path().string().substr(folder.size() + 1);
    if (path != kLog && !path.starts_with(kJournal)) all.emplace(path, test::readBytes(entry.path().string()));
  }
  return all;
}

void addLog(Outcome& outcome, const std::string& bytes) {
  for (const kelvane::LogLine& line : kelvane::logLines(text::fromUtf8(bytes))) {
    if (line.level == core::kError) outcome.errors.insert(text::toUtf8(line.text));
    if (line.level == core::kWarning || line.level == core::kFilterNote)
      outcome.warnings.insert(text::toUtf8(line.text));
  }
}

// The program's own lines; progress and results go elsewhere.
void addLines(Outcome& outcome, const std::string& err) {
  std::istringstream lines(err);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("error:") || line.starts_with("kelvane:")) outcome.errors.insert(line);
    if (line.starts_with("warning:")) outcome.warnings.insert(line);
  }
}

template <class Set>
std::vector<std::string> missingIn(const Set& all, const Set& from) {
  std::vector<std::string> more;
  std::set_difference(from.begin(), from.end(), all.begin(), all.end(), std::back_inserter(more));
  return more;
}

std::string listed(const std::vector<std::string>& all) {
  std::string text;
  for (std::size_t i = 0; i < all.size() && i < 3; ++i) text += (text.empty() ? "" : "; ") + all[i];
  if (all.size() > 3) text += "; and " + std::to_string(all.size() - 3) + " more";
  return text;
}

std::vector<std::string> differingFiles(const Outcome& plain, const Outcome& failed) {
  std::vector<std::string> all;
  for (const auto& [path, bytes] : plain.files) {
    const auto other = failed.files.find(path);
    if (other == failed.files.end())
      all.push_back(path + " is missing");
    else if (other->second != bytes)
      all.push_back(path + " differs");
  }
  for (const auto& [path, bytes] : failed.files)
    if (!plain.files.contains(path)) all.push_back(path + " is new");
  return all;
}

// A fact of the end that neither the plain run leaves nor this one had before its work. A run that never began its work
// has changed nothing.
std::vector<std::string> notPutBack(const Outcome& plain, const Outcome& failed, const std::set<std::string>& before) {
  std::vector<std::string> all;
  for (const std::string& fact : failed.state)
    if (!before.empty() && !plain.state.contains(fact) && !before.contains(fact)) all.push_back(fact);
  for (const std::string& path : missingIn(plain.working, failed.working)) all.push_back("file " + path);
  return all;
}

}  // namespace

Outcome outcomeAt(const std::string& place, int code, const std::string& err) {
  Outcome outcome;
  outcome.code = code;
  for (const char* folder : {"models", "collected", "vault"})
    for (auto& [path, bytes] : filesIn(place + "/" + folder))
      outcome.files.emplace(std::string(folder) + "/" + path, std::move(bytes));
  for (const auto& [path, bytes] : filesIn(place + "/cache")) outcome.working.insert(path);
  addLog(outcome, test::readBytes(place + "/models/" + kLog));
  addLines(outcome, err);
  const os::SurroundingsGuard surroundings;
  os::mounts().set(L'd', place + "/models");
  for (const headless::FolderDocument& document : headless::readFolder(L"d:\\"))
    if (!document.fault.empty()) outcome.damaged.push_back(text::toUtf8(document.fault));
  return outcome;
}

const char* wordOf(Verdict verdict) {
  constexpr const char* kWords[kVerdicts] = {"same",    "told", "warned", "silent", "exit",
                                             "damaged", "left", "hang",   "crash"};
  return kWords[static_cast<std::size_t>(verdict)];
}

Judgement judge(const Outcome& plain, const Outcome& failed, const std::set<std::string>& before) {
  if (!failed.damaged.empty()) return {Verdict::damaged, listed(failed.damaged)};
  if (const auto left = notPutBack(plain, failed, before); !left.empty()) return {Verdict::left, listed(left)};
  const auto errors = missingIn(plain.errors, failed.errors), warnings = missingIn(plain.warnings, failed.warnings);
  if (!errors.empty()) return {failed.code == 0 ? Verdict::exit : Verdict::told, listed(errors)};
  if (!warnings.empty()) return {Verdict::warned, listed(warnings)};
  auto differences = differingFiles(plain, failed);
  if (failed.code != plain.code)
    differences.push_back("exit code " + std::to_string(failed.code) + " for " + std::to_string(plain.code));
  return {differences.empty() ? Verdict::same : Verdict::silent, listed(differences)};
}

}  // namespace sweep
