// The members of a plain record, without naming them: a record that gets another one is written and read with it.
#pragma once

#include <cstddef>
#include <tuple>
#include <type_traits>
#include <utility>

namespace trace {

// Stands for any member while they are counted.
struct AnyMember {
  template <class T>
  operator T() const;
};

template <class T, std::size_t... I>
constexpr bool canHave(std::index_sequence<I...> /*members*/) {
  return requires { T{(static_cast<void>(I), AnyMember())...}; };
}

constexpr std::size_t kMostFields = 10;
template <class T, std::size_t N = kMostFields>
constexpr std::size_t countFields() {
  if constexpr (N == 0 || canHave<T>(std::make_index_sequence<N>()))
    return N;
  else
    return countFields<T, N - 1>();
}
// How many members the record has. For one with a member that takes just anything it is said by hand; a wrong number
// doesn't compile.
template <class T>
constexpr std::size_t kFields = countFields<T>();

// The members as a tuple of references.
template <class T>
constexpr auto membersOf(T& record) {
  constexpr std::size_t count = kFields<std::remove_const_t<T>>;
  if constexpr (std::is_empty_v<T>) {
    return std::tie();
  } else if constexpr (count == 1) {
    auto& [a] = record;
    return std::tie(a);
  } else if constexpr (count == 2) {
    auto& [a, b] = record;
    return std::tie(a, b);
  } else if constexpr (count == 3) {
    auto& [a, b, c] = record;
    return std::tie(a, b, c);
  } else if constexpr (count == 4) {
    auto& [a, b, c, d] = record;
    return std::tie(a, b, c, d);
  } else if constexpr (count == 5) {
    auto& [a, b, c, d, e] = record;
    return std::tie(a, b, c, d, e);
  } else if constexpr (count == 6) {
    auto& [a, b, c, d, e, f] = record;
    return std::tie(a, b, c, d, e, f);
  } else if constexpr (count == 7) {
    auto& [a, b, c, d, e, f, g] = record;
    return std::tie(a, b, c, d, e, f, g);
  } else if constexpr (count == 8) {
    auto& [a, b, c, d, e, f, g, h] = record;
    return std::tie(a, b, c, d, e, f, g, h);
  } else {
    static_assert(count == 9, "a record of more members than are told apart");
    auto& [a, b, c, d, e, f, g, h, i] = record;
    return std::tie(a, b, c, d, e, f, g, h, i);
  }
}

}  // namespace trace
