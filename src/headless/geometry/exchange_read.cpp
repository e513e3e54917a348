// Files of other systems are looked at, then given to the program that reads them.
#include "headless/geometry/exchange.h"
#include "headless/geometry/foreign.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace headless::geometry {
namespace {

ExchangeRead refused(std::wstring fault) {
  ExchangeRead read;
  read.fault = std::move(fault);
  return read;
}

}  // namespace

ExchangeRead readExchange(const std::wstring& path, ExchangeFormat format, ImportAs as) {
  auto bytes = os::files().read(path);
  if (!bytes) return refused(L"the file can't be read: " + text::fromUtf8(bytes.error.message()));
  if (auto fault = faultOfEnds(bytes.value, format); !fault.empty()) return refused(std::move(fault));
  ForeignFile file;
  file.format = format;
  file.size = bytes.value.size();
  // The library takes an IGES file from the disk alone.
  if (format == ExchangeFormat::step)
    file.bytes = std::move(bytes.value);
  else
    file.path = os::mounts().machine(path);
  return readForeign(file, as);
}

}  // namespace headless::geometry
