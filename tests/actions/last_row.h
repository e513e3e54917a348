// What a run on an assembly or a drawing tells of it alone: the rows of what it uses are worked before.
#pragma once

#include <string>

namespace test {

// told: as told() gives it, of a list that has a Body alone.
inline std::wstring lastRow(std::wstring text) {
  const std::size_t at = text.rfind(L"B0 ");
  return at == text.npos ? text : text.substr(at);
}

}  // namespace test
