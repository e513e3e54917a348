// Inside this folder only: failures of the library as exceptions.
#pragma once

#include <Standard_Failure.hxx>
#include <stdexcept>

namespace headless::geometry {

// The library's failures are no std::exception, which all others rely on.
template <class Work>
void guarded(Work work) {
  try {
    work();
  } catch (const Standard_Failure& failure) {
    throw std::runtime_error(failure.GetMessageString());
  }
}

}  // namespace headless::geometry
