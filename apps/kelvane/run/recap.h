// What a run came to.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace kelvane {

struct Recap {
  int models = 0;   // rows that were chosen, and documents that can't be read
  int changed = 0;  // models whose document has another content now, or in a dry run would have
  int unchanged = 0;
  int skipped = 0;               // the list worked them before, or they can't be modified
  int failed = 0;                // they couldn't be worked, or not be saved
  int saved = 0;                 // documents written, each counted once
  int troubled = 0;              // models, whatever came of them, whose actions or documents had errors
  int errors = 0, warnings = 0;  // lines of the log, equal ones of one action and model once
  double seconds = 0;
};

// "done  models=120 changed=37 unchanged=80 skipped=2 failed=1 saved=37  errors=3 warnings=12 troubled=2  seconds=4.2";
// without errors of actions there is no "troubled".
std::string recapLine(const Recap& recap, const std::string& word);
// The same numbers by their names.
nlohmann::ordered_json recapNumbers(const Recap& recap);

}  // namespace kelvane
