// "did you mean": the known word that a wrong one was probably meant to be.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace kelvane {

// The word with the fewest edits (insert, delete, replace, swap of neighbours; case is no difference), if they are at
// most a third of the length; of equals the one that shares the longer start, then the first. Empty when none is near.
std::string nearest(std::string_view wrong, std::span<const std::string> known);
// The same where no other word is as near, and it takes `most` edits or fewer.
std::string nearestAlone(std::string_view wrong, std::span<const std::string> known, std::size_t most);
// "; did you mean 'x'?", or nothing.
std::string didYouMean(std::string_view wrong, std::span<const std::string> known);

}  // namespace kelvane
