// printf for wide texts, expanded here: %s means a wide text on every system, numbers are written in the C locale,
// and a pattern that comes from a list is data, never a danger.
#pragma once

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace text {

// One argument. Texts are referred to, not copied: a format's arguments live as long as the call.
class Arg {
 public:
  template <class T>
  requires std::is_integral_v<T> Arg(T v) : value_(static_cast<long long>(v)) {}
  Arg(wchar_t c) : value_(c) {}
  Arg(double v) : value_(v) {}
  Arg(std::wstring_view v) : value_(v) {}
  Arg(const std::wstring& v) : value_(std::wstring_view(v)) {}
  Arg(const wchar_t* v) : value_(v ? std::wstring_view(v) : std::wstring_view()) {}
  using Value = std::variant<long long, wchar_t, double, std::wstring_view>;
  [[nodiscard]] const Value& value() const { return value_; }

 private:
  Value value_;
};

// Expands %s %d %i %u %c %f %e %g %x %X %lld %lli and %%, with the flags "-+ 0#", a width (at most 4096) and a
// precision (at most 512); those of texts count UTF-16 units. A placeholder without an argument, with one of another
// kind or with a larger width stays as it stands (numbers of the other kind are no fit either, but %c takes a
// character's number); it takes its argument all the same. Anything else behind a "%" is plain text and takes none.
// Surplus arguments are ignored.
std::wstring formatList(std::wstring_view pattern, std::span<const Arg> args);

template <class... Args>
std::wstring format(std::wstring_view pattern, const Args&... args) {
  if constexpr (sizeof...(Args) == 0) {
    return formatList(pattern, {});
  } else {
    const Arg list[] = {Arg(args)...};
    return formatList(pattern, list);
  }
}

}  // namespace text
