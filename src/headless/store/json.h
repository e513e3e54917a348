// JSON as a tree that knows where each value stood, so that a fault can name its line and an unknown member can be kept
// as it was written. Trees live while a document is read, compared or printed; models in memory are records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "headless/store/text_fault.h"

namespace headless {

enum class JsonKind : std::uint8_t { null, boolean, integer, real, text, array, object };

struct Json {
  JsonKind kind = JsonKind::null;
  bool boolean = false;
  std::uint32_t begin = 0, end = 0;  // of the value in its source; both 0 in a tree that wasn't read
  std::int64_t integer = 0;
  double real = 0;          // of an integer too
  std::string text;         // of a text; of a real number as it was written
  std::string name;         // of a member
  std::vector<Json> items;  // an array's values, an object's members, in their order

  [[nodiscard]] bool is(JsonKind k) const { return kind == k; }
  [[nodiscard]] bool isNumber() const { return kind == JsonKind::integer || kind == JsonKind::real; }
  // The first member of that name, or null.
  [[nodiscard]] const Json* member(std::string_view wanted) const;
};

using JsonFault = TextFault;

// Deeper nesting is refused, as nothing that walks a tree may exhaust the stack.
constexpr int kJsonDepth = 200;

// A byte-order mark is passed over. `into` is meaningful only without a fault.
JsonFault parseJson(std::string_view source, Json& into);
// The line, from 1, of an offset.
std::size_t lineAt(std::string_view source, std::size_t offset);

// One value in one line: {"name": "A", "value": 2.5}.
std::string compactJson(const Json& value);
// Pretty, two blanks a level; the first line isn't indented, the others are by `level` levels.
std::string prettyJson(const Json& value, int level = 0);
// A quoted text; control characters are escaped.
void appendQuoted(std::string& out, std::string_view text);
// What stands where a number that isn't finite should be written: no text that holds it is JSON.
constexpr char kNoNumber = '\x1A';
// The shortest text that reads back as the same number, always with a point or an exponent; kNoNumber for one that
// isn't finite.
std::string realText(double value);

}  // namespace headless
