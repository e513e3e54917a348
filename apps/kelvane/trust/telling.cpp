#include "kelvane/trust/telling.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "kelvane/base/columns.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

std::string wordOf(const PackageNeed& need) {
  return need.permission ? text::toUtf8(os::wordOf(*need.permission)) : "server";
}

std::string sourceOf(const PackageNeed& need) {
  std::string source = need.file + ":" + std::to_string(need.line) + ": ";
  if (!need.place.empty()) source += need.place + ": ";
  return source + need.text;
}

}  // namespace

std::vector<std::string> needLines(std::vector<PackageNeed> needs) {
  std::stable_sort(needs.begin(), needs.end(), [](const PackageNeed& a, const PackageNeed& b) {
    // Acts on the server last.
    const auto rank = [](const PackageNeed& need) {
      return need.permission ? static_cast<std::size_t>(*need.permission) : os::kPermissions.size();
    };
    return rank(a) < rank(b);
  });
  std::vector<std::vector<std::string>> rows;
  for (const PackageNeed& need : needs) {
    const bool isOpen = need.permission && !need.isKnown();
    rows.push_back({wordOf(need), isOpen ? "?" : text::toUtf8(need.resource), sourceOf(need)});
  }
  return aligned(std::move(rows));
}

nlohmann::ordered_json needsJson(const std::vector<PackageNeed>& needs) {
  nlohmann::ordered_json all = nlohmann::ordered_json::array();
  for (const PackageNeed& need : needs) {
    nlohmann::ordered_json json = {{"permission", wordOf(need)}};
    if (!need.resource.empty()) json["resource"] = text::toUtf8(need.resource);
    json["file"] = need.file;
    json["line"] = need.line;
    if (!need.place.empty()) json["action"] = need.place;
    json["text"] = need.text;
    all.push_back(std::move(json));
  }
  return all;
}

}  // namespace kelvane
