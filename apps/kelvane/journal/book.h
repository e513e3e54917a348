// The journals of a folder of models, read: which runs there are, what each did, and the numbers that versions have
// had.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "kelvane/journal/paths.h"
#include "kelvane/journal/record.h"

namespace kelvane {

// The highest number that a document has had, by stem (paths.h).
using GivenVersions = std::unordered_map<std::string, int>;

constexpr int kJournalFormat = 1;

// One run's journal.
struct RunJournal {
  std::string run;           // "0003"
  Record begin;              // null: it was cut short before it was whole, and nothing was done under it
  Record end;                // null: there is none
  std::vector<Deed> deeds;   // those that happened and weren't taken back by a recovery, in their order
  std::vector<Record> told;  // rows, model, left, checkIn, sent, taken, in their order
  GivenVersions numbers;     // of what it announced, also if it was taken back
  int turns = 0;             // boundaries; deeds of that turn lie behind the last one
  bool isRecovered = false;
  bool isTorn = false;  // the recovery removed versions that weren't whole
  int cutLines = 0;
  int lost = 0;  // deeds whose records were whole once, by the numbers of later ones and the record `end`
  [[nodiscard]] bool isOpen() const { return end.is_null() && !isRecovered; }
  [[nodiscard]] std::string verb() const { return memberText(begin, "verb"); }
};

class Book {
 public:
  // models: the mounted folder, "d:\".
  explicit Book(const std::wstring& models) : models_(models), folder_(models + std::wstring(kJournalFolder)) {}

  [[nodiscard]] const std::wstring& models() const { return models_; }
  [[nodiscard]] const std::wstring& folder() const { return folder_; }
  [[nodiscard]] std::wstring folderOf(const std::string& run) const;
  [[nodiscard]] std::wstring recordsOf(const std::string& run) const { return folderOf(run) + L"run.jsonl"; }
  [[nodiscard]] std::wstring keptOf(const std::string& run) const { return folderOf(run) + L"before\\"; }

  // Oldest first; none where there is no journal.
  [[nodiscard]] std::vector<std::string> runs() const;
  // A Fault where the file can't be read, or is of a later format.
  [[nodiscard]] RunJournal read(const std::string& run) const;
  // The run of that number, "3" or "0003"; a Fault where there is none.
  [[nodiscard]] std::string runNamed(const std::string& given) const;

  // The number for the next run, and those of versions, from numbers.json and the journals that it doesn't know yet. A
  // Fault where it is there and can't be read: numbers might come twice.
  struct Numbers {
    int run = 0;  // the last one that is counted
    GivenVersions versions;
  };
  [[nodiscard]] Numbers numbers() const;
  // Those of numbers.json alone; the journals of its runs have an end.
  [[nodiscard]] Numbers storedNumbers() const;
  [[nodiscard]] std::error_code writeNumbers(const Numbers& numbers) const;

 private:
  std::wstring models_, folder_;
};

// "0003"
std::string runName(int number);

}  // namespace kelvane
