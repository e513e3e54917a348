// kelvane explain: what a rule of the check finds, and why that matters.
#include "kelvane/fault.h"
#include "kelvane/finding.h"
#include "kelvane/nearest.h"
#include "kelvane/verb.h"

namespace kelvane {
namespace {

class Explain : public Verb {
 public:
  std::vector<OptionRow> options() override { return {{"rule", "RULE", "a rule's name; none: all rules", &rule_}}; }
  int run(Console& console) override {
    if (!rule_) {
      for (const Rule& rule : rules()) console.result(headline(rule));
      return kFine;
    }
    const Rule* rule = findRule(*rule_);
    if (!rule) throw Fault("there is no rule '" + *rule_ + "'" + didYouMean(*rule_, ruleNames()));
    console.result(headline(*rule));
    console.result("  " + std::string(rule->about));
    if (!rule->example.empty()) console.result("  It finds:  " + std::string(rule->example));
    return kFine;
  }

 private:
  static std::string headline(const Rule& rule) {
    return std::string(rule.name) + " (" + std::string(word(rule.severity)) + ")";
  }

  std::optional<std::string> rule_;
};

}  // namespace

std::unique_ptr<Verb> makeExplain() { return std::make_unique<Explain>(); }

}  // namespace kelvane
