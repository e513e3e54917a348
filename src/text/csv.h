// The form of delimited text: records that end at a line feed outside quotes, fields between separators outside quotes.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace text {

// Records are taken from bytes: quotes and line ends mean the same in every charset that is read.
class CsvRecords {
 public:
  explicit CsvRecords(std::string_view bytes) : bytes_(bytes) {}

  // The next record without its line end. False at the end.
  bool next(std::string_view& record);
  // Does the record that was given last hold a quote that is never closed? It takes in the rest then.
  [[nodiscard]] bool isUnclosed() const { return isUnclosed_; }
  // The line where that record begins, from 1.
  [[nodiscard]] std::size_t firstLine() const { return firstLine_; }

 private:
  std::string_view bytes_;
  std::size_t at_ = 0, line_ = 0, firstLine_ = 0;
  bool isUnclosed_ = false;
};

// Hands over the fields of a record one by one, as they stand.
template <class Take>
void eachCsvField(std::wstring_view record, wchar_t separator, Take take) {
  std::size_t begin = 0;
  bool quoted = false;
  for (std::size_t i = 0; i <= record.size(); ++i) {
    if (i < record.size() && record[i] == L'"') quoted = !quoted;
    if (i < record.size() && (quoted || record[i] != separator)) continue;
    take(record.substr(begin, i - begin));
    begin = i + 1;
  }
}

// Appends what a field says: its surrounding quotes go, doubled ones become one, and so does CR LF, which is how a file
// writes a line feed. What is over `most` characters is left out.
void appendCsvValue(std::wstring& value, std::wstring_view field, std::size_t most = std::wstring::npos);

}  // namespace text
