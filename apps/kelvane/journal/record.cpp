#include "kelvane/journal/record.h"

#include <algorithm>
#include <array>

#include "kelvane/base/hash.h"

namespace kelvane {
namespace {

struct KindRow {
  DeedKind kind;
  const char* word;
};
constexpr std::array<KindRow, 5> kKinds{{{DeedKind::write, "write"},
                                         {DeedKind::append, "append"},
                                         {DeedKind::remove, "remove"},
                                         {DeedKind::rename, "rename"},
                                         {DeedKind::folder, "folder"}}};
constexpr std::string_view kBoundaries[] = {"model", "taken", "end"};
constexpr std::string_view kSumStart = R"(,"sum":")", kSumEnd = R"("})";

Record toRecord(const Content& content) {
  Record record = {{"size", content.size}, {"sum", content.sum}};
  if (!content.kept.empty()) record["kept"] = content.kept;
  return record;
}

std::optional<Content> toContent(const Record& record, const char* member) {
  const auto found = record.find(member);
  if (found == record.end() || !found->is_object()) return std::nullopt;
  return Content{found->value("size", std::uint64_t{0}), memberText(*found, "sum"), memberText(*found, "kept")};
}

}  // namespace

Content contentOf(std::string_view bytes) { return {bytes.size(), hexHash(bytes), {}}; }

std::string sealedLine(const Record& record) {
  std::string line = record.dump(-1, ' ', false, Record::error_handler_t::replace);
  const std::string sum = hexHash(line);
  line.pop_back();
  return line.append(kSumStart).append(sum).append(kSumEnd) + "\n";
}

std::optional<Record> unsealed(std::string_view line) {
  const std::size_t at = line.rfind(kSumStart);
  if (at == line.npos || !line.ends_with(kSumEnd)) return std::nullopt;
  const std::string_view sum = line.substr(at + kSumStart.size(), line.size() - at - kSumStart.size() - kSumEnd.size());
  std::string text(line.substr(0, at));
  text += '}';
  if (hexHash(text) != sum) return std::nullopt;
  Record record = Record::parse(text, nullptr, false);
  if (!record.is_object()) return std::nullopt;
  return record;
}

Record recordOf(const Deed& deed) {
  const auto row = std::find_if(kKinds.begin(), kKinds.end(), [&](const KindRow& r) { return r.kind == deed.kind; });
  Record record = {{"record", row->word}, {"n", deed.number}, {"path", deed.path}};
  if (!deed.to.empty()) record["to"] = deed.to;
  if (deed.had) record["had"] = toRecord(*deed.had);
  if (deed.now) record["now"] = toRecord(*deed.now);
  return record;
}

std::optional<Deed> deedOf(const Record& record) {
  const std::string word = memberText(record, "record");
  const auto row = std::find_if(kKinds.begin(), kKinds.end(), [&](const KindRow& r) { return r.word == word; });
  if (row == kKinds.end()) return std::nullopt;
  Deed deed;
  deed.kind = row->kind;
  deed.number = record.value("n", 0);
  deed.path = memberText(record, "path");
  deed.to = memberText(record, "to");
  deed.had = toContent(record, "had");
  deed.now = toContent(record, "now");
  return deed;
}

bool isBoundary(std::string_view record) {
  return std::find(std::begin(kBoundaries), std::end(kBoundaries), record) != std::end(kBoundaries);
}

std::string memberText(const Record& record, const char* member) {
  const auto found = record.find(member);
  return found != record.end() && found->is_string() ? found->get<std::string>() : std::string();
}

}  // namespace kelvane
