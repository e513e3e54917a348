// What an attribute of a list's or a filter's element is, as data.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace core {

// How the value of an attribute is read, after its variables have their values.
enum class Kind : std::uint8_t {
  text,      // any text
  pattern,   // with * and ?, or an expression in slashes
  word,      // one of `words`
  flag,      // compared with the one word in `words`: "true" or "false"
  present,   // that it stands there counts, whatever it is
  integer,   // in `range`
  number,    // in `range`
  numbers,   // some of them in one text, with signs between them
  file,      // a path: a file that is read; `folder`: where the package has it
  model,     // a path: a model document
  newModel,  // the name that a new model gets, without an ending
  folder,    // a path: a folder
  written,   // a path: a file or folder that is written
  program,   // a program that is started
  address,   // an address that is asked
  feature,   // a code of a feature type
  relation,  // a line of relations or of a program, where slashes are a comment
  macro,     // a line of Creo's macros
  unit,      // a unit's name
  reporter,  // the name of an opened report
  variable,  // the name of a user variable that gets a value
  cell,      // numbers of row, column and line with signs between them
  format,    // a format of one floating number
  measure,   // a number of digits and a point, as a sheet's sides are compared with
  index,     // an integer, or "*" for all
};

// Must the attribute stand there? A list that lacks one runs as it always did; the checker tells.
enum class Need : std::uint8_t { optional, needed, oneOf };

// Stands for the number in the name of a counted attribute: "name_%d".
constexpr std::wstring_view kNumberSign = L"%d";

// Which numbers of a counted attribute are read.
enum class Numbers : std::uint8_t {
  bounded,     // 0 up to `most` - 1, with gaps
  toFirstGap,  // the same, up to the first that isn't there
  counted,     // 0 up to what the attribute `counter` says
};

struct Range {
  double least = 0, most = 0;
  [[nodiscard]] constexpr bool isThere() const { return least < most; }
};

struct Attribute {
  std::wstring_view name;  // a counted one has "%d" where its number stands
  Kind kind = Kind::text;
  std::wstring_view words = {};  // with '|' between them; an empty word is one too
  bool variables = false;        // templates are put together before it is read
  Need need = Need::optional;
  Numbers numbers = Numbers::bounded;
  int most = 100;
  std::wstring_view counter = {};
  Range range = {};
  std::wstring_view folder = {};  // of the package, for "@project_dir@"
  std::wstring_view with = {};    // of a program: the attribute with its arguments
  std::string_view about = {};    // a sentence for people
};

// The attributes of several lists in one: constexpr auto kAttributes = joined(kTarget, kSheets).
template <std::size_t... Sizes>
constexpr auto joined(const Attribute (&... lists)[Sizes]) {
  std::array<Attribute, (Sizes + ...)> all;
  std::size_t at = 0;
  const auto add = [&](std::span<const Attribute> list) {
    for (const Attribute& attribute : list) all[at++] = attribute;
  };
  (add(lists), ...);
  return all;
}

// The attribute that a name in a list means; null: none of these. "name_7" is "name_%d".
const Attribute* findAttribute(std::span<const Attribute> attributes, std::wstring_view name);

}  // namespace core
