// Trail files, played as the action does it.
#include <stdexcept>

#include "creo/ProMacro.h"
#include "fuzz/place.h"
#include "fuzz/target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static fuzz::Place place;
  headless::Session& session = place.freshSession();
  session.open(L"GEAR", creo::ProMdlType::part);
  session.settle();
  (void)place.file("trail.txt", fuzz::bytesOf(data, size));
  (void)creo::ProMacroLoad(
      L"~ Command `ProCmdUtilTrailTrain` ;~ Update `file_open` `Inputname` `d:\\\\trail.txt`;~ Activate `file_open` "
      L"`Open`;");
  try {
    session.settle();
  } catch (const std::runtime_error&) {  // a loop, which is promised to end so
  }
  return 0;
}
