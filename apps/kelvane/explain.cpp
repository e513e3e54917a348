// kelvane explain: what a rule of the check finds, and why that matters.
#include "kelvane/base/fault.h"
#include "kelvane/base/nearest.h"
#include "kelvane/base/verb.h"
#include "kelvane/vocabulary/rules.h"
#include "kelvane/vocabulary/vocabulary.h"

namespace kelvane {
namespace {

class Explain : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"rule", "RULE", "a rule's name; none: all rules", &rule_}, {"--json", "", "as JSON", &json_}};
  }
  int run(Console& console) override {
    if (!rule_) {
      tellAll(console);
      return kFine;
    }
    const Rule* rule = findRule(*rule_);
    if (!rule) throw Fault("there is no rule '" + *rule_ + "'" + didYouMean(*rule_, ruleNames()));
    if (json_) {
      console.resultJson(described(*rule).dump(2));
      return kFine;
    }
    console.result(headline(*rule));
    console.result("  " + std::string(rule->about));
    if (!rule->example.empty()) console.result("  It finds:  " + std::string(rule->example));
    return kFine;
  }

 private:
  void tellAll(Console& console) const {
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    for (const Rule& rule : rules()) {
      if (!json_) console.result(headline(rule));
      all.push_back(described(rule));
    }
    if (json_) console.resultJson(all.dump(2));
  }
  static std::string headline(const Rule& rule) {
    return std::string(rule.name) + " (" + std::string(word(rule.severity)) + ")";
  }

  std::optional<std::string> rule_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Verb> makeExplain() { return std::make_unique<Explain>(); }

}  // namespace kelvane
