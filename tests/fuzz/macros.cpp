// Macros: steps on a drawing, an assembly or a part that is open.
#include <stdexcept>

#include "creo/ProMacro.h"
#include "fuzz/place.h"
#include "fuzz/target.h"
#include "text/encoding.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static fuzz::Place place;
  std::string_view bytes = fuzz::bytesOf(data, size);
  const unsigned way = fuzz::choice(bytes);
  headless::Session& session = place.freshSession();
  if (way % 4 == 1) session.open(L"GEAR", creo::ProMdlType::drawing);
  if (way % 4 == 2) session.open(L"GEAR", creo::ProMdlType::part);
  if (way % 4 == 3) session.open(L"INPUT_SHAFT", creo::ProMdlType::assembly);
  session.settle();
  const bool isLoaded = creo::ProMacroLoad(text::fromUtf8(bytes)) == creo::ProNoError;
  if (isLoaded && way & 4U) (void)creo::ProMacroExecute();
  try {
    session.settle();
  } catch (const std::runtime_error&) {  // a loop, which is promised to end so
  }
  return 0;
}
