#include "core/feature_codes.h"

#include "core/log.h"
#include "core/messages.h"
#include "text/format.h"
#include "text/numbers.h"

namespace core {

int featureTypeOf(std::wstring_view attribute, std::wstring_view code) {
  const auto number = text::wholeInt(code);
  // "042" is none: a code stands as the list's editor writes it.
  const bool isCode = number && *number >= 0 && *number <= kLastFeatureCode && text::format(L"%d", *number) == code;
  if (!isCode)
    logWrite(text::format(L"%s: '%s' is no code of a feature type, which goes from 0 to %d", attribute, code,
                          kLastFeatureCode),
             kWarning);
  return featureTypeFromCode(code);
}

}  // namespace core
