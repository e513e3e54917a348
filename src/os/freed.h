// Frees what a C library made, for unique_ptr.
#pragma once

namespace os {

template <auto Free>
struct Freed {
  template <class T>
  void operator()(T* entry) const {
    Free(entry);
  }
};

}  // namespace os
