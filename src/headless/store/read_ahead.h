// Documents that are read on a thread of their own before the session asks for them.
#pragma once

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "headless/store/records.h"
#include "os/files.h"

namespace headless {

// The thread shares a short list of documents with the session and nothing else. The files are asked for what they hold
// by both threads at once.
class ReadAhead {
 public:
  explicit ReadAhead(std::shared_ptr<os::Files> files);
  ~ReadAhead();
  ReadAhead(const ReadAhead&) = delete;
  ReadAhead& operator=(const ReadAhead&) = delete;

  // It will be asked for soon. The few that were wanted last are kept; one that can't be read is left to the session.
  // In a confined session all are.
  void want(const std::wstring& path);
  struct Document {
    ModelRecord record;
    std::size_t size = 0;  // of the file
  };
  // As the file is now, by size and time; nothing: it wasn't wanted or isn't read yet, can't be read, or has changed
  // since. It isn't kept any longer.
  std::optional<Document> take(const std::wstring& path);

 private:
  struct Stamp {
    std::uint64_t size = 0;
    os::FileTime time;
    bool isKnown = false;
  };
  struct Wanted {
    std::wstring path;
    enum class State { waits, underWay, done } state = State::waits;
    Stamp stamp;
    std::optional<Document> document{};
  };
  void work();
  [[nodiscard]] Stamp stampOf(const std::wstring& path) const;
  [[nodiscard]] std::optional<Document> read(const std::wstring& path) const;

  const std::shared_ptr<os::Files> files_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::shared_ptr<Wanted>> wanted_;  // the latest last
  bool ends_ = false;
  std::thread thread_;
};

}  // namespace headless
