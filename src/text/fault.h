// How what can fail answers, above the two doors that have codes of their own: creo/ProTypes.h and os/result.h.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace text {

// Why something couldn't be done, in words for people. What has no value to give answers with a Fault alone.
struct Fault {
  std::wstring what;  // without a full stop: "a value holds more than 25999 characters"; empty: there is no fault
  // A file, a place in it, or both: "q:\list.xml: line 12". Nothing: whoever asked knows it.
  std::optional<std::wstring> where{};
  explicit operator bool() const { return !what.empty(); }

  // "q:\list.xml: line 12: a value holds more than 25999 characters"
  [[nodiscard]] std::wstring sentence() const { return where ? *where + L": " + what : what; }
  // The same fault in a larger place, such as the file of a line.
  [[nodiscard]] Fault within(std::wstring_view place) && {
    return {std::move(what), where ? std::wstring(place) + L": " + *where : std::wstring(place)};
  }
};

// A value, or the fault that it isn't there for. value is meaningful only without a fault, where nothing else is said.
template <class T>
struct Result {
  T value{};
  Fault fault;
  Result() = default;
  Result(T v) : value(std::move(v)) {}
  Result(Fault f) : fault(std::move(f)) {}
  explicit operator bool() const { return !fault; }
};

}  // namespace text
