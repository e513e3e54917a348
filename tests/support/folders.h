// Folders of the project and of its build, with slashes and without a closing one.
#pragma once

#include <string>

namespace test {

std::string sourceFolder();
std::string binaryFolder();

}  // namespace test
