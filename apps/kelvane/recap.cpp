#include "kelvane/recap.h"

#include <nlohmann/json.hpp>

#include "text/encoding.h"
#include "text/format.h"

namespace kelvane {

std::string recapLine(const Recap& recap, const std::string& word) {
  return word +
         text::toUtf8(text::format(
             L"  models=%d changed=%d unchanged=%d skipped=%d failed=%d saved=%d  errors=%d warnings=%d  seconds=%.1f",
             recap.models, recap.changed, recap.unchanged, recap.skipped, recap.failed, recap.saved, recap.errors,
             recap.warnings, recap.seconds));
}

nlohmann::ordered_json recapNumbers(const Recap& recap) {
  return {{"models", recap.models},   {"changed", recap.changed},   {"unchanged", recap.unchanged},
          {"skipped", recap.skipped}, {"failed", recap.failed},     {"saved", recap.saved},
          {"errors", recap.errors},   {"warnings", recap.warnings}, {"seconds", recap.seconds}};
}

}  // namespace kelvane
