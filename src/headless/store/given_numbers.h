// Numbers of versions that were given once and aren't on disk any more.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "headless/store/folder.h"

namespace headless {

// For as long as one lives, no new version of a document gets a number that it knows, so that a number never means two
// contents. Without one the next number follows the highest one on disk. One at a time.
class GivenNumbers {
 public:
  // The highest number by path without it, in lower case: "d:\bracket.prt".
  using Highest = std::unordered_map<std::wstring, int>;
  explicit GivenNumbers(Highest highest);
  ~GivenNumbers();
  GivenNumbers(const GivenNumbers&) = delete;
  GivenNumbers& operator=(const GivenNumbers&) = delete;

  // The number behind the newest one that is known of, on disk and here. folder: with its closing backslash.
  static int next(std::wstring_view folder, std::wstring_view name, creo::ProMdlType type, int newestOnDisk);

 private:
  static inline const GivenNumbers* current_ = nullptr;
  Highest highest_;
};

}  // namespace headless
