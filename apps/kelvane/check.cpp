// kelvane check: what of a package would not run, and what outside it it uses; --fix mends what is sure.
#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>

#include "kelvane/base/fault.h"
#include "kelvane/base/native_path.h"
#include "kelvane/base/places.h"
#include "kelvane/base/verb.h"
#include "kelvane/check/baseline.h"
#include "kelvane/check/config_check.h"
#include "kelvane/check/package_check.h"
#include "kelvane/check/package_mend.h"
#include "kelvane/trust/grant_options.h"
#include "kelvane/trust/telling.h"
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
            {"--fix", "", "mends the files of a folder where it is sure, and shows the changed lines", &fix_},
            {"-n,--dry-run", "", "with --fix: shows them and writes nothing", &dryRun_},
            {"--trust", "",
             "instead: what it needs of the grants of a confined run, and the options that grant just that", &trust_},
            {"--json", "", "as JSON", &json_}};
  }
  int run(Console& console) override {
    refuseWhatCantBe();
    const Chosen chosen(ignored_, baseline_);
    const std::unique_ptr<PackageSource> opened = openPackage(package_);
    // What packing adds to a folder is no fault of it.
    const MarkedPackage packed(*opened);
    const PackageSource& package = isFolder() ? static_cast<const PackageSource&>(packed) : *opened;
    if (trust_) return showNeeds(needsOf(package), console);
    std::vector<Finding> findings = found(package);
    if (fix_) findings = mendPackage({package_, !dryRun_, chosen}, package, std::move(findings), console);
    std::erase_if(findings, [&chosen](const Finding& entry) { return !chosen(entry); });
    show(findings, console);
    const bool failed = std::any_of(findings.begin(), findings.end(),
                                    [](const Finding& item) { return severityOf(item) == Severity::error; });
    return failed ? kErrors : kFine;
  }

 private:
  // Those that nobody knows yet, and nobody left out.
  class Chosen {
   public:
    Chosen(const std::vector<std::string>& ignored, const std::optional<std::string>& baseline)
        : ignored_(ignored.begin(), ignored.end()) {
      for (const std::string& name : ignored)
        if (!findRule(name)) throw Fault("--ignore: there is no rule '" + name + "'; 'kelvane explain' lists them");
      if (baseline) known_.emplace(*baseline);
    }
    bool operator()(const Finding& candidate) const {
      return !ignored_.contains(std::string(candidate.rule)) && !(known_ && known_->holds(candidate));
    }

   private:
    std::set<std::string> ignored_;
    std::optional<Baseline> known_;
  };

  [[nodiscard]] bool isFolder() const { return std::filesystem::is_directory(nativePath(package_)); }
  void refuseWhatCantBe() const {
    if (trust_ && (fix_ || !config_.empty() || !ignored_.empty() || baseline_))
      throw Fault("--trust tells what a package needs, and no findings; it goes with --json alone");
    if (dryRun_ && !fix_) throw Fault("--dry-run goes with --fix; without it check writes nothing anyway");
    if (fix_ && json_) throw Fault("--fix shows changed lines and --json findings; give one of them");
    if (fix_ && !isFolder() && std::filesystem::exists(nativePath(package_)))
      throw Fault("--fix mends the folder of a package, and " + package_ + " is a file; unpack it first");
  }
  [[nodiscard]] std::vector<Finding> found(const PackageSource& package) const {
    std::vector<Finding> findings = config_.empty() ? std::vector<Finding>() : checkConfig(config_);
    for (Finding& finding : checkPackage(package)) findings.push_back(std::move(finding));
    return findings;
  }
  int showNeeds(const std::vector<PackageNeed>& needs, Console& console) const {
    if (json_) {
      console.resultJson(needsJson(needs).dump(2));
      return kFine;
    }
    for (const std::string& line : needLines(needs)) console.result(line);
    const std::vector<os::Need> grants = grantsFor(needs);
    console.result("--confine" + (grants.empty() ? "" : " " + optionsOf(grants)));
    const auto open = std::count_if(needs.begin(), needs.end(),
                                    [](const PackageNeed& need) { return need.permission && !need.isKnown(); });
    if (open > 0) console.note("a '?' is put together when the list runs; a refusal there names the grant");
    return kFine;
  }
  // With --fix the results are changed lines; what is left to a person stands beside them.
  void show(const std::vector<Finding>& findings, Console& console) const {
    if (json_) console.resultJson(asJson(findings).dump(2));
    for (const Finding& finding : findings) {
      if (fix_)
        console.trouble(shown(finding));
      else if (!json_)
        console.result(shown(finding));
    }
    if (findings.empty()) console.note(fix_ ? "nothing is left" : "nothing found");
  }

  static nlohmann::ordered_json asJson(const std::vector<Finding>& findings) {
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    for (const Finding& finding : findings) {
      nlohmann::ordered_json json = {{"file", finding.file},
                                     {"line", finding.line},
                                     {"rule", finding.rule},
                                     {"severity", word(severityOf(finding))},
                                     {"text", finding.text}};
      if (!finding.section.empty()) json["section"] = finding.section;
      if (finding.action >= 0) json["action"] = finding.action;
      if (!finding.place.empty()) json["place"] = finding.place;
      if (!finding.attribute.empty()) json["attribute"] = finding.attribute;
      if (!finding.use.empty()) json["use"] = finding.use;
      all.push_back(std::move(json));
    }
    return all;
  }

  std::string package_, config_;
  std::vector<std::string> ignored_;
  std::optional<std::string> baseline_;
  bool fix_ = false, dryRun_ = false, trust_ = false, json_ = false;
};

}  // namespace

std::unique_ptr<Verb> makeCheck() { return std::make_unique<Check>(); }

}  // namespace kelvane
