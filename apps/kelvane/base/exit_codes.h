// Exit codes of all verbs.
#pragma once

namespace kelvane {

constexpr int kFine = 0;      // done, or yes
constexpr int kErrors = 1;    // errors, differences, or no
constexpr int kCouldNot = 2;  // bad arguments, damaged package, no such list; standard error says why in one line
constexpr int kInterrupted = 130;
constexpr int kTerminated = 143;

}  // namespace kelvane
