// Variables outside models, and the template engine that puts values into texts.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "creo/ProParameter.h"
#include "text/letters.h"
#include "text/units.h"

namespace language {

// Named texts that outlive runs and last as long as the Creo process. Names compare without regard to case; order is
// that of their first setting. Names and values are cut to 259 units.
class UserVariableTable {
 public:
  void set(std::wstring_view name, std::wstring_view value);
  // What stood for another model must not answer for the next one: a name without a value isn't declared any more.
  // Nothing where it was never set.
  void remove(std::wstring_view name);
  // Null when it isn't set.
  [[nodiscard]] const std::wstring* find(std::wstring_view name) const;
  [[nodiscard]] std::size_t count() const { return names_.size(); }
  [[nodiscard]] const std::vector<std::wstring>& names() const { return names_; }
  [[nodiscard]] const std::vector<std::wstring>& values() const { return values_; }
  void clear();

 private:
  std::vector<std::wstring> names_, values_;
  std::unordered_map<std::wstring, std::size_t, text::HashNoCase, text::EqualNoCase> index_;
};
UserVariableTable& userVariables();

// A number that a parameter with units gave a text: the number alone stands there.
struct NumberWithUnits {
  std::wstring token;  // "%LENGTH%"
  double value = 0;
  std::wstring units;
  creo::ProParameter parameter;
};

// What a substitution came to. text is set only when `written` is true: a failure that leaves early writes nothing, and
// the caller keeps what it had. A result that doesn't fit is the text "FAILURE" with tooLong set.
struct Replaced {
  int status = 0;  // 0, or 1 after a failure that was logged
  bool written = false;
  bool tooLong = false;
  std::wstring text;
  std::vector<NumberWithUnits> numbers{};
  // True when the text may be used as a value: written and not too long. A failed text function still delivers one.
  [[nodiscard]] bool hasText() const { return written && !tooLong; }
  // The same, and nothing failed on the way.
  explicit operator bool() const { return status == 0 && hasText(); }
};

// Replaces all variable forms in a template. outSize: room of the result in UTF-16 units, its zero included. A null
// model leaves the passes that ask a model out.
Replaced replaceVariables(std::wstring_view input, creo::ProMdl model, std::size_t outSize = text::kTextSize);
// First "@para@" and "@line@" become lineText.
Replaced replaceVariablesLine(std::wstring_view input, creo::ProMdl model, std::wstring_view lineText,
                              std::size_t outSize = text::kTextSize);
// For values that name files: "@project_dir@" at the start is the package's folder plus subdirectory; a failed
// substitution leaves the text as it was; "/" becomes a backslash.
std::wstring replaceVariablesPath(std::wstring_view input, creo::ProMdl model, std::wstring_view subdirectory,
                                  std::size_t outSize = text::kTextSize);
// Case-sensitive replace-all; the source is read up to dstSize - 1 units, the rest is left out, and
// so is what the result has more.
std::wstring replaceAllText(std::wstring_view source, std::wstring_view find, std::wstring_view replacement,
                            std::size_t dstSize);

}  // namespace language
