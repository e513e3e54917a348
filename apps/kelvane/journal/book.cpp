#include "kelvane/journal/book.h"

#include <algorithm>

#include "kelvane/base/backwards.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/numbers.h"
#include "text/whole_number.h"

namespace kelvane {
namespace {

constexpr std::size_t kDigits = 4;

// Takes the records of a journal one by one.
class Reader {
 public:
  explicit Reader(RunJournal& journal) : journal_(journal) {}

  void take(std::string_view line) {
    if (line.empty()) return;
    std::optional<Record> record = unsealed(line);
    if (!record) {
      ++journal_.cutLines;
      return;
    }
    const std::string kind = memberText(*record, "record");
    if (std::optional<Deed> deed = deedOf(*record)) {
      count(deed->number);
      deed->turn = journal_.turns;
      journal_.deeds.push_back(std::move(*deed));
    } else if (kind == "begin") {
      journal_.begin = std::move(*record);
    } else if (kind == "failed") {
      count(memberNumber(*record, "n"));
      std::erase_if(journal_.deeds, [n = memberNumber(*record, "n")](const Deed& d) { return d.number == n; });
    } else if (kind == "closed") {
      close(*record);
    } else if (kind == "recovered") {
      countNumbers();
      dropTurn(memberNumber(*record, "stays"));
      journal_.isRecovered = true;
      journal_.isTorn = !record->value("torn", Record()).empty();
    } else {
      if (kind == "end") count(record->value("deeds", last_) + 1);
      (kind == "end" ? journal_.end : journal_.told.emplace_back()) = std::move(*record);
      if (!isBoundary(kind)) return;
      ++journal_.turns;
      toldOfTurns_ = journal_.told.size();
    }
  }

  // What was taken back has had its numbers all the same.
  void countNumbers() {
    for (const Deed& deed : journal_.deeds) {
      if (deed.kind != DeedKind::write && deed.kind != DeedKind::rename) continue;
      if (const auto version = writtenVersion(deed.kind == DeedKind::rename ? deed.to : deed.path))
        journal_.numbers[version->stem] = std::max(journal_.numbers[version->stem], version->number);
    }
  }

 private:
  // Deeds are numbered one behind the other. One that the disk didn't take didn't happen, and is told as failed.
  void count(int number) {
    if (number > last_ + 1) journal_.lost += std::min(number - last_ - 1, journal_.cutLines - cutBefore_);
    cutBefore_ = journal_.cutLines;
    last_ = std::max(last_, number);
  }

  void close(const Record& record) {
    const int number = memberNumber(record, "n");
    for (Deed& deed : Backwards(journal_.deeds)) {
      if (deed.number != number) continue;
      deed.now = deedOf({{"record", "append"}, {"now", record.value("now", Record())}})->now;
      deed.seal = memberText(record, "seal");
      return;
    }
  }

  // The open turn was taken back, but for its deeds up to that number. What was sent was sent.
  void dropTurn(int stays) {
    std::erase_if(journal_.deeds, [&](const Deed& d) { return d.turn == journal_.turns && d.number > stays; });
    std::vector<Record>& told = journal_.told;
    const auto isDropped = [stays](const Record& record) {
      return memberText(record, "record") == "checkIn" && memberNumber(record, "n") > stays;
    };
    const auto ofTurn = told.begin() + static_cast<std::ptrdiff_t>(toldOfTurns_);
    told.erase(std::remove_if(ofTurn, told.end(), isDropped), told.end());
  }

  RunJournal& journal_;
  std::size_t toldOfTurns_ = 0;   // how many of them stood before the last boundary
  int last_ = 0, cutBefore_ = 0;  // the highest number of a deed, and how many lines were cut before it
};

}  // namespace

std::string runName(int number) {
  const std::string digits = std::to_string(number);
  return std::string(kDigits - std::min(kDigits, digits.size()), '0') + digits;
}

std::wstring Book::folderOf(const std::string& run) const { return folder_ + text::fromUtf8(run) + L"\\"; }

std::vector<std::string> Book::runs() const {
  std::vector<std::pair<int, std::string>> found;
  for (const os::Entry& entry : os::files().list(folder_).value) {
    const std::string name = text::toUtf8(entry.name);
    const int number = text::parseInt(entry.name);
    if (entry.isFolder && number > 0 && runName(number) == name) found.emplace_back(number, name);
  }
  std::sort(found.begin(), found.end());
  std::vector<std::string> names;
  names.reserve(found.size());
  for (auto& [number, name] : found) names.push_back(std::move(name));
  return names;
}

RunJournal Book::read(const std::string& run) const {
  RunJournal journal;
  journal.run = run;
  Reader reader(journal);
  std::string rest;
  const auto error = os::files().readPieces(recordsOf(run), [&](std::string_view piece) {
    rest += piece;
    std::size_t start = 0;
    for (std::size_t end; (end = rest.find('\n', start)) != rest.npos; start = end + 1)
      reader.take(std::string_view(rest).substr(start, end - start));
    rest.erase(0, start);
  });
  if (error && error != std::errc::no_such_file_or_directory)
    throw Fault("the journal " + shown(recordsOf(run)) + " can't be read: " + error.message());
  if (!rest.empty()) ++journal.cutLines;
  if (journal.begin.is_object() && journal.begin.value("format", kJournalFormat) > kJournalFormat)
    throw Fault("the journal " + shown(recordsOf(run)) + " is of a later release of this program");
  if (!journal.isRecovered) reader.countNumbers();
  return journal;
}

std::string Book::runNamed(const std::string& given) const {
  const std::vector<std::string> known = runs();
  for (const std::string& run : known)
    if (run == given || runName(text::parseInt(text::fromUtf8(given))) == run) return run;
  throw Fault("there is no run '" + given + "' in " + shown(folder_) +
              (known.empty() ? std::string() : "; the last one is " + known.back()));
}

Book::Numbers Book::storedNumbers() const {
  const std::wstring path = folder_ + L"numbers.json";
  if (!os::files().exists(path)) return {};
  const auto bytes = os::files().read(path);
  const auto stored = nlohmann::json::parse(bytes.value, nullptr, false);
  if (!bytes || !stored.is_object())
    throw Fault(shown(path) + " can't be read: " + (bytes ? "it isn't as it was written" : bytes.error.message()));
  Numbers numbers;
  numbers.run = memberNumber(stored, "run");
  const auto versions = stored.value("versions", nlohmann::json::object());
  for (const auto& [stem, number] : versions.items())
    if (const auto whole = text::wholeNumber<int>(number)) numbers.versions[stem] = *whole;
  return numbers;
}

Book::Numbers Book::numbers() const {
  Numbers numbers = storedNumbers();
  for (const std::string& run : runs()) {
    const int number = text::parseInt(text::fromUtf8(run));
    if (number <= numbers.run) continue;
    for (const auto& [stem, highest] : read(run).numbers)
      numbers.versions[stem] = std::max(numbers.versions[stem], highest);
    numbers.run = number;
  }
  return numbers;
}

std::error_code Book::writeNumbers(const Numbers& numbers) const {
  const nlohmann::json all = {{"run", numbers.run}, {"versions", numbers.versions}};
  return os::files().write(folder_ + L"numbers.json", all.dump(1) + "\n");
}

}  // namespace kelvane
