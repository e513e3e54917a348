// Inside this folder only: files of other systems are read by a program of its own, kelvane-import. The library that
// reads them ends, or never ends, on some that are damaged; then that program is gone, and this process has a fault to
// tell.
#pragma once

#include <string_view>

#include "headless/geometry/exchange.h"
#include "headless/geometry/foreign_shape.h"

namespace headless::geometry {

// Why a file can't be of the format; empty for none. The library itself takes much for a file and reads part of it.
std::wstring faultOfEnds(std::string_view bytes, ExchangeFormat format);

// What a file of another system holds, as bodies of models; bodies stand as STEP texts. path: of the file in the
// machine's form, for IGES; bytes: its content, for STEP.
struct ForeignFile {
  ExchangeFormat format = ExchangeFormat::step;
  std::string path, bytes;
  std::uint64_t size = 0;
};
ExchangeRead readForeign(const ForeignFile& file, ImportAs as);

// The body that a STEP text holds.
ForeignBody foreignBody(std::string_view step);

}  // namespace headless::geometry
