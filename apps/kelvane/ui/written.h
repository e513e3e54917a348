// The files that lists wrote in this session, for a person to open: reports, sheets, pictures, logs. No documents of
// models, and nothing that was only unpacked.
#pragma once

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "kelvane/run/recorded_files.h"
#include "os/processes.h"

namespace kelvane::view {

// Keeps what the tool asks the machine to open: the person sits before a browser, not before this machine's screen.
class Opener : public os::Processes {
 public:
  explicit Opener(std::shared_ptr<os::Processes> under) : under_(std::move(under)) {}
  [[nodiscard]] const std::vector<std::wstring>& opened() const { return opened_; }

 private:
  std::error_code doOpen(std::wstring_view path) override;
  os::Result<int> doRun(std::wstring_view command, std::wstring_view folder) override {
    return under_->run(command, folder);
  }
  std::error_code doStart(std::wstring_view program, std::wstring_view arguments, std::wstring_view folder) override {
    return under_->start(program, arguments, folder);
  }

  std::shared_ptr<os::Processes> under_;
  std::vector<std::wstring> opened_;
};

class Written {
 public:
  // Records the session's files, and what the tool opens, for as long as it lives.
  Written();
  ~Written();
  Written(const Written&) = delete;
  Written& operator=(const Written&) = delete;

  // A document of a model; it is none of the files.
  void noteModel(const std::wstring& path) { models_.insert(path); }
  // Takes up what was written since the last call; not `kept`: forgets it, as a choice only unpacks.
  void gather(bool kept);
  // A file that is offered too, such as a log that was begun before. Empty: none.
  void offer(const std::wstring& path);
  // The newest last: {"id": 3, "name": "masses.csv", "folder": "/home/...", "size": 1024}.
  [[nodiscard]] nlohmann::json files() const;
  // What the tool opened, the newest last: {"number": 2, "name": ..., "id": 3 or null}.
  [[nodiscard]] nlohmann::json opened() const;

  struct Place {
    std::string machine;  // path
    std::string name;
  };
  // Nothing for an id that none of the files has.
  [[nodiscard]] std::optional<Place> place(std::size_t id) const;

 private:
  [[nodiscard]] bool isOffered(const std::wstring& path) const;

  std::shared_ptr<os::Files> disk_;
  std::shared_ptr<os::Processes> processes_;
  std::shared_ptr<RecordedFiles> recorded_;
  std::shared_ptr<Opener> opener_;
  std::unordered_set<std::wstring> models_;
  std::vector<std::wstring> files_;  // by id
  std::unordered_map<std::wstring, std::size_t, text::HashNoCase, text::EqualNoCase> ids_;
};

}  // namespace kelvane::view
