// The confinement of a run: what the program opens to each list, and what was granted to this package.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>

#include "kelvane/base/console.h"
#include "kelvane/journal/recovery.h"
#include "kelvane/log/events.h"
#include "kelvane/run/options.h"
#include "kelvane/run/place.h"
#include "os/confine.h"

namespace kelvane {

// `permission`, `resource`, `allowed` and `what`, as events and the journal tell them.
nlohmann::ordered_json grantMembers(const os::Asked& asked);

// What a confined run opens to its lists.
os::Grants grantsOf(const RunOptions& options, const RunPlace& place);
// A Fault where a confined run's journal or its log in the models' folder leads elsewhere by a link, where nothing is
// granted, or a link lies in that journal: whoever made that folder would choose what they are written over.
void requireOwnFilesInside(const RunOptions& options, const RunPlace& place);
// Whether a confined run may take back what another one wrote there. Empty where nothing is confined.
MayWrite mayTakeBack(const RunOptions& options, const RunPlace& place);

// While it lives, where the options or the configuration say so, lists are held to the models' folder, the temp folder,
// their package and what is granted. Made when all is in its place and before the session; a refusal is a line of the
// log.
class RunConfinement {
 public:
  RunConfinement(const RunOptions& options, const RunPlace& place, Console& console);
  ~RunConfinement();  // tells what is untold
  RunConfinement(const RunConfinement&) = delete;
  RunConfinement& operator=(const RunConfinement&) = delete;
  // What is granted; null where nothing is confined.
  [[nodiscard]] os::Grants* grants() { return confine_ ? &confine_->grants() : nullptr; }
  // Error lines on the console for refusals that stand in no log, as the plug-in didn't start. True: there were some.
  bool tellUntold();
  // What was used of the grants and what was refused, each once, as events "grant".
  void tell(Events& events) const;
  // Each once, in the order of their first asking; none where nothing is confined.
  [[nodiscard]] std::vector<os::Asked> asked() const;

 private:
  Console& console_;
  std::optional<os::Confine> confine_;
};

// A line at the start, where the package needs what isn't granted: that a run without confinement holds it to nothing,
// or what a confined one will refuse.
void tellLackingGrants(const RunPlace& place, Console& console);

}  // namespace kelvane
