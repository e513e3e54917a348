// Levels of the log's lines.
#pragma once

namespace core {

constexpr int kNormal = 0;
constexpr int kWarning = 1;
constexpr int kError = 2;
constexpr int kFilterNote = 3;  // a warning that marks its parent only if the configuration says so
constexpr int kDebug = 8;
constexpr int kTitle = 9;

}  // namespace core
