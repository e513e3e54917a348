// The template engine: it puts the values of variables into texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "creo/ProTypes.h"
#include "language/number_with_units.h"
#include "language/user_variables.h"
#include "text/units.h"

namespace language {

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

}  // namespace language
