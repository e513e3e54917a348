#include <iostream>

#include "kelvane/program.h"
#include "os/program.h"

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + (argc > 0 ? 1 : 0), argv + argc);
  return kelvane::program(words, std::cout, std::cerr, {os::isTerminal(1), os::isTerminal(2)}, &std::cin);
}
