// The journal of the run that works now: records are added, and what is about to be replaced is kept.
#pragma once

#include <chrono>
#include <memory>
#include <unordered_map>

#include "kelvane/journal/book.h"
#include "kelvane/journal/elsewhere.h"
#include "os/files.h"

namespace kelvane {

class Journal {
 public:
  // When records must outlive a loss of power.
  enum class Flush {
    beforeFinal,  // before each deed that nothing else would tell of: what replaces, removes or renames
    eachSecond    // what is lost is asked for again
  };
  // Begins the next run of the folder; facts: the members of its record `begin`. disk isn't owned. A Fault where the
  // journal can't be begun; nothing of it is left then.
  Journal(const Book& book, os::Files& disk, const Record& facts, Flush flush = Flush::beforeFinal);
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;

  [[nodiscard]] const std::string& run() const { return run_; }
  // Highest numbers that versions had before this run.
  [[nodiscard]] const GivenVersions& versionsBefore() const { return numbers_.versions; }

  // Adds a record. An error means that it isn't there, and isn't half there for who reads.
  std::error_code add(const Record& record);
  // Numbers a deed and adds it; what doesn't happen then is told by `failed`.
  std::error_code announce(Deed& deed);
  void failed(const Deed& deed);
  // An `append` is over; its `now` tells what the file holds.
  std::error_code closed(Deed deed);
  // Adds a boundary: what stands before it stays.
  std::error_code reach(const Record& boundary);
  // What stands now may have to stay or come back within its turn: it is kept before it is replaced.
  void keepFromHere() { ++turn_; }
  // The records so far would outlive a loss of power.
  std::error_code flush();
  // The record `end`, with its time and how many deeds there were; flushed.
  std::error_code end(Record record);

  // Keeps the content of a file that is about to be replaced, removed or changed. asCopy: for a file that is changed in
  // place. Nothing for a file that isn't there. What this run wrote since the last boundary
  // or `keepFromHere` needn't be kept.
  os::Result<std::optional<Content>> keep(const std::wstring& path, const std::string& written, bool asCopy);
  // What stands at that path from now on is the run's own.
  void wrote(const std::string& written, const Content& now) { own_[written] = {turn_, now}; }
  void gone(const std::string& written) { own_.erase(written); }

 private:
  struct Own {
    int turn = 0;
    Content content;
  };
  void begin(const Record& facts);
  void seal(Deed& deed);
  std::error_code addLine(const std::string& line);
  std::error_code keepAs(const std::wstring& path, const std::wstring& place, const std::string& bytes, bool asCopy);

  Book book_;
  os::Files& disk_;
  Flush when_;
  std::string run_;
  Book::Numbers numbers_;
  Elsewhere elsewhere_;
  std::optional<Seals> seals_;
  std::unique_ptr<os::Appender> records_;
  bool isTorn_ = false;                  // the last record wasn't written whole
  int deeds_ = 0, kept_ = 0, turn_ = 0;  // turn_: boundaries, and where what stood is to be kept
  std::chrono::steady_clock::time_point flushed_;
  std::unordered_map<std::string, Own> own_;
};

// Local time for records: "2024-05-31 17:04:59".
std::string journalTime();

}  // namespace kelvane
