#include "os/console.h"

namespace os {

std::vector<std::string> commandLineWords(int argc, char** argv) { return {argv + (argc > 0 ? 1 : 0), argv + argc}; }

void printUtf8() {}

}  // namespace os
