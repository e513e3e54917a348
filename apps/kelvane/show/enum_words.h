// The words that documents have for the values of an enumeration.
#pragma once

#include <string>

#include "headless/store/enum_texts.h"

namespace kelvane {

// As documents write it; empty for a value that they have no word for.
template <class E>
std::string word(E value) {
  for (const auto& [name, one] : headless::EnumTexts<E>::texts)
    if (one == value) return std::string(name);
  return {};
}

}  // namespace kelvane
