// kelvane help: what a word of a list, of a filter, of a finding or of the command line means. The verbs' own help is
// the program's.
#include "actions/dispatch.h"
#include "documents/predicate_table.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/nearest.h"
#include "kelvane/verb_table.h"
#include "kelvane/vocabulary/rules.h"
#include "kelvane/vocabulary/verb.h"
#include "kelvane/vocabulary/words.h"

namespace kelvane {
namespace {

void tell(Console& console, const Rule& rule) {
  console.result(std::string(rule.name));
  console.result("  " + std::string(rule.about));
  console.result("");
  console.result("a finding of kelvane check, " + std::string(word(rule.severity)));
  if (rule.example.empty()) return;
  console.result("");
  console.result("  " + std::string(rule.example));
}

class Help : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"key", "KEY", "an action, a filter, a rule of kelvane check or a verb; without it all verbs", &key_},
            {"--json", "", "as JSON, but for a verb", &json_}};
  }
  // One word may be the key of an action and of a filter: all are told.
  int run(Console& console) override {
    if (!key_) throw Fault("help: a key is missing; 'kelvane help' alone tells all verbs");
    const std::wstring key = text::fromUtf8(*key_);
    const actions::Action* action = actions::findAction(key);
    const documents::Predicate* predicate = documents::findPredicate(key);
    const Rule* rule = findRule(*key_);
    if (!action && !predicate && !rule)
      throw Fault("'" + *key_ + "' is no action, filter, rule or verb" + didYouMean(*key_, helpKeys()));
    if (json_) {
      nlohmann::ordered_json all = nlohmann::ordered_json::object();
      if (action) all["action"] = described(*action);
      if (predicate) all["predicate"] = described(*predicate);
      if (rule) all["rule"] = described(*rule);
      console.resultJson(all.dump(2));
      return kFine;
    }
    if (action) tellRow(console, *action, false);
    if (action && predicate) console.result("");
    if (predicate) tellRow(console, *predicate, false);
    if (rule) tell(console, *rule);
    return kFine;
  }

 private:
  std::optional<std::string> key_;
  bool json_ = false;
};

}  // namespace

std::vector<std::string> helpKeys() {
  std::vector<std::string> all = actionKeys();
  for (std::string& key : predicateKeys()) all.push_back(std::move(key));
  for (std::string& name : ruleNames()) all.push_back(std::move(name));
  for (const VerbRow& verb : verbRows()) all.emplace_back(verb.name);
  return all;
}

std::unique_ptr<Verb> makeHelp() { return std::make_unique<Help>(); }

}  // namespace kelvane
