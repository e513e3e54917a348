#include "text/csv.h"

namespace text {

bool CsvRecords::next(std::string_view& record) {
  if (at_ >= bytes_.size()) return false;
  const std::size_t begin = at_;
  firstLine_ = line_ + 1;
  bool quoted = false;
  std::size_t end = bytes_.size();
  while (at_ < bytes_.size()) {
    const std::size_t lineEnd = std::min(bytes_.find('\n', at_), bytes_.size());
    const auto quotes = std::count(bytes_.begin() + static_cast<std::ptrdiff_t>(at_),
                                   bytes_.begin() + static_cast<std::ptrdiff_t>(lineEnd), '"');
    quoted ^= quotes % 2 != 0;
    at_ = lineEnd + 1;
    ++line_;
    end = lineEnd;
    if (!quoted) break;
  }
  isUnclosed_ = quoted;
  record = bytes_.substr(begin, end - begin);
  if (record.ends_with('\r')) record.remove_suffix(1);
  return true;
}

void appendCsvValue(std::wstring& value, std::wstring_view field, std::size_t most) {
  if (field.size() >= 2 && field.front() == L'"' && field.back() == L'"') field = field.substr(1, field.size() - 2);
  for (std::size_t i = 0; i < field.size() && value.size() < most; ++i) {
    const wchar_t next = i + 1 < field.size() ? field[i + 1] : L'\0';
    if (field[i] == L'\r' && next == L'\n') continue;
    value += field[i];
    if (field[i] == L'"' && next == L'"') ++i;
  }
}

}  // namespace text
