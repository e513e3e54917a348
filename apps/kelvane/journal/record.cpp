#include "kelvane/journal/record.h"

#include <algorithm>
#include <array>

#include "kelvane/base/hash.h"
#include "text/whole_number.h"

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

std::string jsonOf(const Record& record) { return record.dump(-1, ' ', false, Record::error_handler_t::replace); }

// One more member of an object that has some.
void addText(std::string& json, std::string_view member, const std::string& text) {
  json.append(",\"").append(member).append("\":").append(jsonOf(text));
}

void addContent(std::string& json, std::string_view member, const std::optional<Content>& content) {
  if (!content) return;
  json.append(",\"").append(member).append("\":{\"size\":").append(std::to_string(content->size));
  addText(json, "sum", content->sum);
  if (!content->kept.empty()) addText(json, "kept", content->kept);
  json += '}';
}

std::string startOf(const char* word, int number) {
  return std::string("{\"record\":\"").append(word).append("\",\"n\":").append(std::to_string(number));
}

// open: a record without its last brace.
std::string sealed(std::string open) {
  const std::string sum = hexHash(open + '}');
  return open.append(kSumStart).append(sum).append(kSumEnd) + "\n";
}

std::optional<Content> toContent(const Record& record, const char* member) {
  const auto found = record.find(member);
  if (found == record.end() || !found->is_object()) return std::nullopt;
  const auto size = found->contains("size") ? text::wholeNumber<std::uint64_t>(found->at("size")) : std::nullopt;
  return Content{size.value_or(0), memberText(*found, "sum"), memberText(*found, "kept")};
}

}  // namespace

Content contentOf(std::string_view bytes) { return {bytes.size(), hexHash(bytes), {}}; }

std::string sealedLine(const Record& record) {
  std::string json = jsonOf(record);
  json.pop_back();
  return sealed(std::move(json));
}

std::string deedLine(const Deed& deed) {
  const auto row = std::find_if(kKinds.begin(), kKinds.end(), [&](const KindRow& r) { return r.kind == deed.kind; });
  std::string json = startOf(row->word, deed.number);
  addText(json, "path", deed.path);
  if (!deed.to.empty()) addText(json, "to", deed.to);
  addContent(json, "had", deed.had);
  addContent(json, "now", deed.now);
  if (!deed.seal.empty()) addText(json, "seal", deed.seal);
  return sealed(std::move(json));
}

std::string closedLine(const Deed& deed) {
  std::string json = startOf("closed", deed.number);
  addContent(json, "now", deed.now);
  if (!deed.seal.empty()) addText(json, "seal", deed.seal);
  return sealed(std::move(json));
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

std::optional<Deed> deedOf(const Record& record) {
  const std::string word = memberText(record, "record");
  const auto row = std::find_if(kKinds.begin(), kKinds.end(), [&](const KindRow& r) { return r.word == word; });
  if (row == kKinds.end()) return std::nullopt;
  Deed deed;
  deed.kind = row->kind;
  deed.number = memberNumber(record, "n");
  deed.path = memberText(record, "path");
  deed.to = memberText(record, "to");
  deed.had = toContent(record, "had");
  deed.now = toContent(record, "now");
  deed.seal = memberText(record, "seal");
  return deed;
}

bool isBoundary(std::string_view record) {
  return std::find(std::begin(kBoundaries), std::end(kBoundaries), record) != std::end(kBoundaries);
}

std::string memberText(const Record& record, const char* member) {
  const auto found = record.find(member);
  return found != record.end() && found->is_string() ? found->get<std::string>() : std::string();
}

int memberNumber(const Record& record, const char* member) {
  const auto found = record.find(member);
  return found != record.end() ? text::wholeNumber<int>(*found).value_or(0) : 0;
}

}  // namespace kelvane
