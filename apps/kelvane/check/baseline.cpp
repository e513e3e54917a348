#include "kelvane/check/baseline.h"

#include <nlohmann/json.hpp>

#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "os/text_files.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

std::string keyOf(std::string_view rule, const std::string& file, const std::string& place,
                  const std::string& attribute) {
  return std::string(rule) + '\n' + file + '\n' + place + '\n' + attribute;
}

}  // namespace

Baseline::Baseline(const std::string& path) {
  const auto content = os::readText(systemPath(path));
  if (!content) throw Fault("--baseline: " + path + " can't be read: " + content.error.message());
  const auto all = nlohmann::json::parse(text::toUtf8(content.value), nullptr, false);
  if (!all.is_array()) throw Fault("--baseline: " + path + " holds no findings; 'kelvane check --json' writes them");
  for (const auto& entry : all) {
    const auto text = [&entry](const char* name) {
      return entry.is_object() && entry.contains(name) && entry[name].is_string() ? entry[name].get<std::string>()
                                                                                  : std::string();
    };
    known_.insert(keyOf(text("rule"), text("file"), text("place"), text("attribute")));
  }
}

bool Baseline::holds(const Finding& finding) const {
  return known_.contains(keyOf(finding.rule, finding.file, finding.place, finding.attribute));
}

}  // namespace kelvane
