#include "kelvane/journal/check_ins.h"

#include "headless/vault/records.h"
#include "headless/vault/vault.h"
#include "text/encoding.h"

namespace kelvane {

std::optional<Record> checkInOf(std::string_view before, std::string_view now) {
  headless::ObjectRecord had, has;
  if (!before.empty() && headless::readRecord(before, had)) return std::nullopt;
  if (headless::readRecord(now, has) || has.iterations.size() <= had.iterations.size()) return std::nullopt;
  const headless::ObjectName name{text::fromUtf8(has.name), has.type};
  return Record{{"record", "checkIn"},
                {"object", text::toUtf8(name.label())},
                {"as", text::toUtf8(headless::iterationText(has, static_cast<int>(has.iterations.size())))}};
}

}  // namespace kelvane
