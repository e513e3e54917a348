#include "support/folders.h"

namespace test {

std::string sourceFolder() { return KVD_SOURCE_DIR; }
std::string binaryFolder() { return KVD_BINARY_DIR; }

}  // namespace test
