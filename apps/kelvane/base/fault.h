// What ends a verb at once: it couldn't do what it was asked, and one line says why.
#pragma once

#include <stdexcept>
#include <string>

namespace kelvane {

// The program shows the text on standard error and exits with kCouldNot.
class Fault : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace kelvane
