// Tables that actions read from CSV files. A table is read once and stays in memory for the run.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "text/letters.h"

namespace language {

// A header line and rows of as many cells. Cells lie in one text, so that a million of them stay small.
class CsvTable {
 public:
  [[nodiscard]] std::size_t columnCount() const { return columns_; }
  [[nodiscard]] std::size_t rowCount() const { return columns_ == 0 ? 0 : cells_.size() / columns_ - 1; }
  // Columns and rows from 0; a cell that isn't there is empty.
  [[nodiscard]] std::wstring_view header(std::size_t column) const { return at(0, column); }
  [[nodiscard]] std::wstring_view cell(std::size_t row, std::size_t column) const { return at(row + 1, column); }
  // False where the row's record ended before that column: its cell is empty, but nobody wrote so.
  [[nodiscard]] bool holds(std::size_t row, std::size_t column) const;
  // The column whose header is that text, case-blind; columnCount() for none.
  [[nodiscard]] std::size_t column(std::wstring_view title) const;

  // The rows, ascending, whose cell of a column names one of the texts: it is that text, case-blind, or a pattern for
  // wildcardCompare that fits one. An empty cell names none. Its cost is that of the rows found and of the patterns.
  [[nodiscard]] std::vector<std::size_t> rowsFor(std::size_t column, std::span<const std::wstring> texts) const;
  // The rows, ascending, whose cell of a column is empty.
  [[nodiscard]] std::span<const std::size_t> rowsWithout(std::size_t column) const { return indexOf(column).empty; }

  // The first record makes the columns. A later one is filled up or cut to their number.
  void addRecord(const std::vector<std::wstring>& fields);

 private:
  struct Span {
    std::uint64_t begin = 0;
    std::uint32_t length = 0;
    bool isThere = false;
  };
  [[nodiscard]] std::wstring_view at(std::size_t line, std::size_t column) const;
  // Of a column: rows by their cell, those whose cell is a pattern, and those whose cell is empty.
  struct ColumnIndex {
    std::unordered_map<std::wstring, std::vector<std::size_t>, text::HashNoCase, text::EqualNoCase> rows;
    std::vector<std::size_t> patterns, empty;
  };
  const ColumnIndex& indexOf(std::size_t column) const;
  std::size_t columns_ = 0;
  std::wstring text_;
  std::vector<Span> cells_;                                       // line by line, the header first
  mutable std::unordered_map<std::size_t, ColumnIndex> indexes_;  // by column, made when first asked for
};

// Reads a table of CSV text. encoding: the suffix of the file mode, ",ccs=UTF-8" or empty for Windows-1252; a mark
// of UTF-8 or UTF-16 says so all the same. Records that hold nothing but separators, ";" and blanks are passed over.
// Cells are cut to 259 units, with one warning line for all, and CR LF in one is a line feed. A record that isn't UTF-8
// where the file should be is read as Windows-1252, with one warning line for all. A record with a quote that is never
// closed takes in the rest of the file: it is left out, with an error line that names the line where it begins. file:
// stands before these lines' texts, by its name; empty: nothing does.
CsvTable parseCsv(std::string_view bytes, wchar_t separator, std::wstring_view encoding, std::wstring_view file = {});

// The table of a file, read at the first call. tableIndex: its number, for csvTable. 0, or 2, with a line, where the
// file can't be read or is none of text, as a workbook.
int readCSVtoTable(std::size_t& tableIndex, std::wstring_view path, wchar_t separator, std::wstring_view encoding);
const CsvTable& csvTable(std::size_t tableIndex);
// Forgets all tables; their numbers begin anew.
void freeCsvTables();

// A whole text file, UTF-8 with or without mark. Nothing, with a line: it can't be opened.
std::optional<std::wstring> readTextFile(std::wstring_view path);

}  // namespace language
