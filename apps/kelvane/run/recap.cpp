#include "kelvane/run/recap.h"

#include <nlohmann/json.hpp>

#include "text/encoding.h"
#include "text/format.h"

namespace kelvane {

std::string recapLine(const Recap& recap, const std::string& word) {
  const std::wstring troubled = recap.troubled > 0 ? text::format(L" troubled=%d", recap.troubled) : std::wstring();
  return word + text::toUtf8(text::format(L"  models=%d changed=%d unchanged=%d skipped=%d failed=%d saved=%d  "
                                          L"errors=%d warnings=%d%s  seconds=%.1f",
                                          recap.models, recap.changed, recap.unchanged, recap.skipped, recap.failed,
                                          recap.saved, recap.errors, recap.warnings, troubled, recap.seconds));
}

nlohmann::ordered_json recapNumbers(const Recap& recap) {
  return {{"models", recap.models},   {"changed", recap.changed},   {"unchanged", recap.unchanged},
          {"skipped", recap.skipped}, {"failed", recap.failed},     {"saved", recap.saved},
          {"errors", recap.errors},   {"warnings", recap.warnings}, {"troubled", recap.troubled},
          {"seconds", recap.seconds}};
}

}  // namespace kelvane
