// kelvane check: what of a package would not run, and what outside it it uses.
#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "kelvane/baseline.h"
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
            {"--ignore", "RULE", "findings of this rule aren't told; may be given several times", &ignored_},
            {"--baseline", "FILE", "the JSON of an earlier check: what it holds isn't told again", &baseline_},
            {"--json", "", "as JSON", &json_}};
  }
  int run(Console& console) override {
    const std::vector<Finding> findings = told();
    if (json_)
      console.resultJson(asJson(findings).dump(2));
    else
      for (const Finding& finding : findings) console.result(shown(finding));
    if (findings.empty()) console.note("nothing found");
    const bool failed = std::any_of(findings.begin(), findings.end(),
                                    [](const Finding& one) { return severityOf(one) == Severity::error; });
    return failed ? kErrors : kFine;
  }

 private:
  [[nodiscard]] std::vector<Finding> found() const {
    const std::unique_ptr<PackageSource> package = openPackage(package_);
    std::vector<Finding> findings = config_.empty() ? std::vector<Finding>() : checkConfig(config_);
    // What packing adds to a folder is no fault of it.
    const MarkedPackage packed(*package);
    const PackageSource& checked =
        std::filesystem::is_directory(package_) ? static_cast<const PackageSource&>(packed) : *package;
    for (Finding& finding : checkPackage(checked)) findings.push_back(std::move(finding));
    return findings;
  }
  // Those that nobody knows yet, and nobody left out.
  [[nodiscard]] std::vector<Finding> told() const {
    for (const std::string& name : ignored_)
      if (!findRule(name)) throw Fault("--ignore: there is no rule '" + name + "'; 'kelvane explain' lists them");
    std::vector<Finding> findings = found();
    std::erase_if(findings, [this](const Finding& one) {
      return std::find(ignored_.begin(), ignored_.end(), one.rule) != ignored_.end();
    });
    if (!baseline_) return findings;
    const Baseline known(*baseline_);
    std::erase_if(findings, [&known](const Finding& one) { return known.holds(one); });
    return findings;
  }

  static nlohmann::ordered_json asJson(const std::vector<Finding>& findings) {
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    for (const Finding& finding : findings) {
      nlohmann::ordered_json one = {{"file", finding.file},
                                    {"line", finding.line},
                                    {"rule", finding.rule},
                                    {"severity", word(severityOf(finding))},
                                    {"text", finding.text}};
      if (!finding.section.empty()) one["section"] = finding.section;
      if (finding.action >= 0) one["action"] = finding.action;
      if (!finding.place.empty()) one["place"] = finding.place;
      if (!finding.attribute.empty()) one["attribute"] = finding.attribute;
      if (!finding.use.empty()) one["use"] = finding.use;
      all.push_back(std::move(one));
    }
    return all;
  }

  std::string package_, config_;
  std::vector<std::string> ignored_;
  std::optional<std::string> baseline_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Verb> makeCheck() { return std::make_unique<Check>(); }

}  // namespace kelvane
