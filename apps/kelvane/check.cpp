// kelvane check: what of a package would not run, and what outside it it uses.
#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "kelvane/config_check.h"
#include "kelvane/fault.h"
#include "kelvane/package_check.h"
#include "kelvane/places.h"
#include "kelvane/verb.h"
#include "os/text_files.h"

namespace kelvane {
namespace {

std::vector<Finding> checkConfig(const std::string& folder) {
  const std::string path = folder + "/kvd_main.cfg";
  const auto content = os::readText(systemPath(path));
  if (!content) throw Fault("--config: " + path + " can't be read: " + content.error.message());
  std::vector<Finding> findings;
  for (ConfigFault& fault : configFaults(content.value)) {
    Finding& finding = findings.emplace_back();
    finding.file = path;
    finding.line = fault.line;
    finding.rule = "configuration";
    finding.text = std::move(fault.text);
  }
  return findings;
}

class Check : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"package", "PACKAGE", "a .kvz, or a folder of that layout", &package_},
            {"--config", "DIR", "a folder with kvd_main.cfg, which is checked too", &config_},
            {"--json", "", "as JSON", &json_}};
  }
  int run(Console& console) override {
    const std::unique_ptr<PackageSource> package = openPackage(package_);
    std::vector<Finding> findings = config_.empty() ? std::vector<Finding>() : checkConfig(config_);
    // What packing adds to a folder is no fault of it.
    const MarkedPackage packed(*package);
    const PackageSource& checked =
        std::filesystem::is_directory(package_) ? static_cast<const PackageSource&>(packed) : *package;
    for (Finding& finding : checkPackage(checked)) findings.push_back(std::move(finding));
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
      console.resultJson(all.dump(2));
    } else {
      for (const Finding& finding : findings) console.result(shown(finding));
    }
    const bool good =
        std::all_of(findings.begin(), findings.end(), [](const Finding& one) { return !one.use.empty(); });
    if (findings.empty()) console.note("nothing found");
    return good ? kFine : kErrors;
  }

 private:
  std::string package_, config_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Verb> makeCheck() { return std::make_unique<Check>(); }

}  // namespace kelvane
