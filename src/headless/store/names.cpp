#include "headless/store/names.h"

namespace headless {
namespace {

// Calls f with each byte of the folded name: Ä, Ö and Ü are C3 84, C3 96 and C3 9C, their small forms 0x20 higher.
template <class F>
void eachFolded(std::string_view name, F f) {
  char before = 0;
  for (char c : name) {
    if (c >= 'A' && c <= 'Z') {
      c = static_cast<char>(c - 'A' + 'a');
    } else if (before == '\xC3' && (c == '\x84' || c == '\x96' || c == '\x9C')) {
      c = static_cast<char>(static_cast<unsigned char>(c) + 0x20);
    }
    f(c);
    before = c;
  }
}

}  // namespace

std::string folded(std::string_view name) {
  std::string out;
  out.reserve(name.size());
  eachFolded(name, [&](char c) { out += c; });
  return out;
}

bool sameName(std::string_view a, std::string_view b) {
  if (a == b) return true;
  return a.size() == b.size() && folded(a) == folded(b);
}

std::size_t nameHash(std::string_view name) {
  std::uint64_t hash = 0xcbf29ce484222325u;
  eachFolded(name, [&](char c) { hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3u; });
  return static_cast<std::size_t>(hash ^ (hash >> 32));
}

}  // namespace headless
