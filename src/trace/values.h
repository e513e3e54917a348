// How values stand in a trace, and how they are read back. A kind that isn't known here doesn't compile.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <system_error>
#include <utility>
#include <variant>
#include <vector>

#include "creo/ProDtlentity.h"
#include "creo/ProElement.h"
#include "creo/ProTypes.h"
#include "text/fault.h"
#include "trace/fields.h"
#include "trace/line.h"
#include "trace/tape.h"

namespace trace {

// Their members take just anything.
template <>
inline constexpr std::size_t kFields<creo::ProElement> = 3;
template <>
inline constexpr std::size_t kFields<creo::ProDtlentitydata> = 6;
template <>
inline constexpr std::size_t kFields<text::Fault> = 2;

template <class T>
inline constexpr bool kNoForm = false;

// What is several of one kind.
template <class T>
inline constexpr bool kIsList = false;
template <class T>
inline constexpr bool kIsList<std::vector<T>> = true;
template <class T, std::size_t N>
inline constexpr bool kIsList<std::span<T, N>> = true;
template <class T, std::size_t N>
inline constexpr bool kIsList<std::array<T, N>> = true;
template <class K, class T>
inline constexpr bool kIsList<std::map<K, T>> = true;

// ---- writing

template <class T>
void put(Tape& tape, Line& line, const T& value);

template <class Tag>
void putKind(Tape& tape, Line& line, const creo::Handle<Tag>& handle) {
  line.word("mdl" + std::to_string(tape.numberOf(handle.value)));
}
inline void putKind(Tape& tape, Line& line, const std::shared_ptr<const void>& thing) {
  line.word("thing" + std::to_string(tape.numberOf(thing)));
}
template <class T>
void putKind(Tape& tape, Line& line, const std::optional<T>& value) {
  if (value)
    put(tape, line, *value);
  else
    line.word("none");
}
// Which of them it is, from 0, and that.
template <class... T>
void putKind(Tape& tape, Line& line, const std::variant<T...>& value) {
  line.open('(');
  line.number(static_cast<std::uint64_t>(value.index()));
  std::visit([&](const auto& one) { put(tape, line, one); }, value);
  line.close(')');
}
template <class A, class B>
void putKind(Tape& tape, Line& line, const std::pair<A, B>& both) {
  line.open('(');
  put(tape, line, both.first);
  put(tape, line, both.second);
  line.close(')');
}
inline void putKind(Tape& /*tape*/, Line& line, const std::wstring& text) { line.text(text); }
inline void putKind(Tape& /*tape*/, Line& line, const std::wstring_view& text) { line.text(text); }
inline void putKind(Tape& /*tape*/, Line& line, const std::string& text) { line.bytes(text); }
inline void putKind(Tape& /*tape*/, Line& line, const std::string_view& text) { line.bytes(text); }
inline void putKind(Tape& /*tape*/, Line& line, const std::error_code& code) {
  line.number(std::int64_t{code.value()});
}
inline void putKind(Tape& /*tape*/, Line& line, const std::monostate& /*nothing*/) { line.word("none"); }
inline void putKind(Tape& /*tape*/, Line& line, const double& value) { line.number(value); }
inline void putKind(Tape& /*tape*/, Line& line, const bool& value) { line.word(value ? "true" : "false"); }

template <class T>
void putRecord(Tape& tape, Line& line, const T& record) {
  line.open('(');
  std::apply([&](const auto&... member) { (put(tape, line, member), ...); }, membersOf(record));
  line.close(')');
}

template <class T>
void put(Tape& tape, Line& line, const T& value) {
  if constexpr (std::is_enum_v<T>) {
    line.number(static_cast<std::int64_t>(value));
  } else if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>) {
    if constexpr (std::is_signed_v<T>)
      line.number(std::int64_t{value});
    else
      line.number(std::uint64_t{value});
  } else if constexpr (kIsList<T>) {
    line.open('[');
    for (const auto& one : value) put(tape, line, one);
    line.close(']');
  } else if constexpr (requires { putKind(tape, line, value); }) {
    putKind(tape, line, value);
  } else if constexpr (std::is_aggregate_v<T>) {
    putRecord(tape, line, value);
  } else {
    static_assert(kNoForm<T>, "no form in a trace is known for this kind");
  }
}

// ---- reading. They leave the value as it was where a BadLine leaves them.

template <class T>
void take(Tape& tape, Reading& reading, T& value);

inline std::uint64_t numbered(Reading& reading, std::string_view word) {
  const std::string_view all = reading.word();
  if (!all.starts_with(word)) throw BadLine(std::string(word) + " is expected, not '" + std::string(all) + "'");
  return Reading(all.substr(word.size())).natural();
}
template <class Tag>
void takeKind(Tape& /*tape*/, Reading& reading, creo::Handle<Tag>& handle) {
  handle.value = numbered(reading, "mdl");
}
inline void takeKind(Tape& tape, Reading& reading, std::shared_ptr<const void>& thing) {
  thing = tape.thing(numbered(reading, "thing"));
}
template <class T>
void takeKind(Tape& tape, Reading& reading, std::optional<T>& value) {
  value.reset();
  if (reading.rest().starts_with("none")) {
    (void)reading.word();
    return;
  }
  take(tape, reading, value.emplace());
}
template <std::size_t I = 0, class... T>
void takeAlternative(Tape& tape, Reading& reading, std::uint64_t index, std::variant<T...>& value) {
  if constexpr (I < sizeof...(T)) {
    if (index == I)
      take(tape, reading, value.template emplace<I>());
    else
      takeAlternative<I + 1>(tape, reading, index, value);
  } else {
    throw BadLine("there is no alternative " + std::to_string(index));
  }
}
template <class... T>
void takeKind(Tape& tape, Reading& reading, std::variant<T...>& value) {
  reading.open('(');
  takeAlternative(tape, reading, reading.natural(), value);
  reading.close(')');
}
template <class A, class B>
void takeKind(Tape& tape, Reading& reading, std::pair<A, B>& both) {
  reading.open('(');
  take(tape, reading, both.first);
  take(tape, reading, both.second);
  reading.close(')');
}
inline void takeKind(Tape& /*tape*/, Reading& reading, std::wstring& text) { text = reading.text(); }
inline void takeKind(Tape& /*tape*/, Reading& reading, std::string& text) { text = reading.bytes(); }
inline void takeKind(Tape& /*tape*/, Reading& reading, std::error_code& code) {
  code = {static_cast<int>(reading.integer()), std::generic_category()};
}
inline void takeKind(Tape& /*tape*/, Reading& reading, std::monostate& /*nothing*/) { (void)reading.word(); }
inline void takeKind(Tape& /*tape*/, Reading& reading, double& value) { value = reading.real(); }
inline void takeKind(Tape& /*tape*/, Reading& reading, bool& value) {
  const std::string_view word = reading.word();
  if (word != "true" && word != "false") throw BadLine("true or false is expected, not '" + std::string(word) + "'");
  value = word == "true";
}

template <class T>
void takeKind(Tape& tape, Reading& reading, std::vector<T>& list) {
  list.clear();
  for (reading.open('['); !reading.at(']');) {
    T one{};
    take(tape, reading, one);
    list.push_back(std::move(one));
  }
  reading.close(']');
}
template <class K, class T>
void takeKind(Tape& tape, Reading& reading, std::map<K, T>& all) {
  std::vector<std::pair<K, T>> list;
  takeKind(tape, reading, list);
  all = {list.begin(), list.end()};
}
template <class T, std::size_t N>
void takeKind(Tape& tape, Reading& reading, std::array<T, N>& all) {
  reading.open('[');
  for (T& one : all) take(tape, reading, one);
  reading.close(']');
}

template <class T>
void take(Tape& tape, Reading& reading, T& value) {
  if constexpr (std::is_enum_v<T>) {
    value = static_cast<T>(reading.integer());
  } else if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>) {
    if constexpr (std::is_signed_v<T>)
      value = static_cast<T>(reading.integer());
    else
      value = static_cast<T>(reading.natural());
  } else if constexpr (requires { takeKind(tape, reading, value); }) {
    takeKind(tape, reading, value);
  } else if constexpr (std::is_aggregate_v<T>) {
    reading.open('(');
    std::apply([&](auto&... member) { (take(tape, reading, member), ...); }, membersOf(value));
    reading.close(')');
  } else {
    static_assert(kNoForm<T>, "no form in a trace is known for this kind");
  }
}

}  // namespace trace
