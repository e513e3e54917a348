#include <iostream>

#include "kelvane/program.h"
#include "os/console.h"
#include "os/program.h"

int main(int argc, char** argv) {
  os::printUtf8();
  return kelvane::program(os::commandLineWords(argc, argv), std::cout, std::cerr,
                          {os::isTerminal(1), os::isTerminal(2), os::isTerminal(0)}, &std::cin);
}
