// kelvane actions: the actions that lists can hold.
#include "actions/dispatch.h"
#include "kelvane/vocabulary/verb.h"
#include "kelvane/vocabulary/words.h"

namespace kelvane {
namespace {

class Actions : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"key", "KEY", "an action's key; without it all actions, a line each", &key_},
            {"--json", "", "as JSON", &json_}};
  }
  int run(Console& console) override {
    if (key_)
      tellRow(console, chosenRow(&actions::findAction, *key_, "action", actionKeys()), json_);
    else
      tellRows(console, actions::actionTable(), json_, &summary);
    return kFine;
  }

 private:
  std::optional<std::string> key_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Verb> makeActions() { return std::make_unique<Actions>(); }

}  // namespace kelvane
