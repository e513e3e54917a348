// kelvane predicates: what the items of filters can ask.
#include "documents/predicate_table.h"
#include "kelvane/vocabulary/verb.h"
#include "kelvane/vocabulary/words.h"

namespace kelvane {
namespace {

class Predicates : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"key", "KEY", "a filter's key; without it all of them, a line each", &key_},
            {"--json", "", "as JSON", &json_}};
  }
  int run(Console& console) override {
    if (key_)
      tellRow(console, chosenRow(&documents::findPredicate, *key_, "filter", predicateKeys()), json_);
    else
      tellRows(console, documents::predicateTable(), json_, [](const documents::Predicate& row) { return row.about; });
    return kFine;
  }

 private:
  std::optional<std::string> key_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Verb> makePredicates() { return std::make_unique<Predicates>(); }

}  // namespace kelvane
