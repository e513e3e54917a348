#include "headless/store/given_numbers.h"

#include <algorithm>

#include "text/letters.h"

namespace headless {

GivenNumbers::GivenNumbers(Highest highest) : highest_(std::move(highest)) { current_ = this; }
GivenNumbers::~GivenNumbers() { current_ = nullptr; }

int GivenNumbers::next(std::wstring_view folder, std::wstring_view name, creo::ProMdlType type, int newestOnDisk) {
  if (!current_ || current_->highest_.empty()) return newestOnDisk + 1;
  const auto found = current_->highest_.find(text::lower(std::wstring(folder) + modelKey(name, type)));
  return std::max(newestOnDisk, found == current_->highest_.end() ? 0 : found->second) + 1;
}

}  // namespace headless
