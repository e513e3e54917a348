#include "os/digest.h"

#include <gtest/gtest.h>

namespace os {
namespace {

// Examples of FIPS 180-2, Appendix B.
TEST(Digest, PiecesAreOneText) {
  const auto shortOne = sha256();
  for (const char* piece : {"a", "", "bc"}) shortOne->take(piece);
  EXPECT_EQ("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad", shortOne->hex());
  const auto longOne = sha256();
  for (int i = 0; i < 1000; ++i) longOne->take(std::string(1000, 'a'));
  EXPECT_EQ("cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0", longOne->hex());
}

}  // namespace
}  // namespace os
