#include "kelvane/check/finding.h"

namespace kelvane {

Severity severityOf(const Finding& finding) {
  const Rule* rule = findRule(finding.rule);
  return rule ? rule->severity : Severity::error;
}

std::string shown(const Finding& finding) {
  const std::string line = finding.line == 0 ? "" : ":" + std::to_string(finding.line);
  const std::string place = finding.place.empty() ? "" : finding.place + ": ";
  const std::string weight = severityOf(finding) == Severity::warning ? "warning: " : "";
  return finding.file + line + ": " + place + weight + finding.text;
}

}  // namespace kelvane
