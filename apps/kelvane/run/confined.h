// The confinement of a run: what the program opens to each list, and what was granted to this package.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>

#include "kelvane/base/console.h"
#include "kelvane/log/events.h"
#include "kelvane/run/options.h"
#include "kelvane/run/place.h"
#include "os/confine.h"

namespace kelvane {

// While it lives, where the options or the configuration say so, lists are held to the models' folder, the temp folder,
// their package and what is granted. Made when all is in its place and before the session; a refusal is a line of the
// log.
// `permission`, `resource`, `allowed` and `what`, as events and the journal tell them.
nlohmann::ordered_json grantMembers(const os::Asked& asked);

class RunConfinement {
 public:
  RunConfinement(const RunOptions& options, const RunPlace& place);
  // What was used of the grants and what was refused, each once, as events "grant".
  void tell(Events& events) const;
  // Each once, in the order of their first asking; none where nothing is confined.
  [[nodiscard]] std::vector<os::Asked> asked() const;

 private:
  std::optional<os::Confine> confine_;
};

// A line at the start, where the package needs what isn't granted: that a run without confinement holds it to nothing,
// or what a confined one will refuse.
void tellLackingGrants(const RunPlace& place, Console& console);

}  // namespace kelvane
