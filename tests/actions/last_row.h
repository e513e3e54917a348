// What a run on an assembly or a drawing tells of it alone: the rows of what it uses are worked before.
#pragma once

#include <string>

namespace test {

// told: as told() gives it, of a list that has a Body alone.
inline std::wstring lastRow(std::wstring told) {
  const std::size_t at = told.rfind(L"B0 ");
  return at == told.npos ? told : told.substr(at);
}

}  // namespace test
