// kelvane schema: what documents are made of, for editors that complete and check while one types.
#include "headless/store/document.h"
#include "kelvane/base/verb.h"
#include "kelvane/vocabulary/relax_ng.h"

namespace kelvane {
namespace {

class PrintSchema : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"what", "lists|filters|models",
             "action lists and filter files as RELAX NG, model documents as JSON Schema", &what_}};
  }
  int run(Console& console) override {
    console.resultLines(what_ == "lists"     ? listSchema()
                        : what_ == "filters" ? filterSchema()
                                             : headless::modelSchema());
    return kFine;
  }

 private:
  std::string what_;
};

}  // namespace

std::unique_ptr<Verb> makeSchema() { return std::make_unique<PrintSchema>(); }

}  // namespace kelvane
