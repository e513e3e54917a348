// kelvane check: what of a package would not run, and what outside it it uses.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "kelvane/package_check.h"
#include "kelvane/verb.h"

namespace kelvane {
namespace {

class Check : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"package", "PACKAGE", "a .kvz, or a folder of that layout", &package_}, {"--json", "", "as JSON", &json_}};
  }
  int run(Console& console) override {
    const std::unique_ptr<PackageSource> package = openPackage(package_);
    const std::vector<Finding> findings = checkPackage(*package);
    if (json_) {
      nlohmann::ordered_json all = nlohmann::ordered_json::array();
      for (const Finding& finding : findings) {
        nlohmann::ordered_json one = {{"file", finding.file}, {"line", finding.line}, {"text", finding.text}};
        if (!finding.section.empty()) one["section"] = finding.section;
        if (finding.action >= 0) one["action"] = finding.action;
        if (!finding.place.empty()) one["place"] = finding.place;
        if (!finding.use.empty()) one["use"] = finding.use;
        all.push_back(std::move(one));
      }
      console.result(all.dump(2));
    } else {
      for (const Finding& finding : findings) console.result(shown(finding));
    }
    const bool good =
        std::all_of(findings.begin(), findings.end(), [](const Finding& one) { return !one.use.empty(); });
    if (findings.empty()) console.note("nothing found");
    return good ? kFine : kErrors;
  }

 private:
  std::string package_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Verb> makeCheck() { return std::make_unique<Check>(); }

}  // namespace kelvane
