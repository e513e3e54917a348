// What the handler of a signal may do: without memory of its own, without locks.
#pragma once

namespace os {

// Puts the bytes of a file in the place of what the other one holds. Paths in the machine's form. False: it can't be
// done, or not whole.
bool copyInHandler(const char* from, const char* to) noexcept;
// Writes to standard error.
void tellInHandler(const char* text) noexcept;

}  // namespace os
