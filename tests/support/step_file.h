// A small STEP file.
#pragma once

#include <string>

namespace test {

// A tetrahedron with legs of 30, 40 and 50 mm along the axes from the origin: a volume of 10000.
std::string stepTetrahedron();

}  // namespace test
