// The whole program as a function: from the words of its command line to its exit code.
#pragma once

#include <string>
#include <vector>

#include "kelvane/base/console.h"

namespace kelvane {

struct Terminals {
  bool out = false, err = false, in = false;
};
// words: without the program's own name. The machine's surroundings are as before when it returns.
// in: standard input; null: there is none.
int program(const std::vector<std::string>& words, std::ostream& out, std::ostream& err, Terminals terminals = {},
            std::istream* in = nullptr);

}  // namespace kelvane
