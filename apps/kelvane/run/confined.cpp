#include "kelvane/run/confined.h"
#include "kelvane/base/native_path.h"

#include <filesystem>
#include <nlohmann/json.hpp>

#include "core/confinement.h"
#include "kelvane/base/places.h"
#include "kelvane/run/grants_beforehand.h"
#include "kelvane/trust/store.h"
#include "os/paths.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

// Files of the models' folder that are the program's.
constexpr const wchar_t* kOwnFiles[] = {L".kelvane.lock", L"kelvane.journal"};

os::Grants grantsOf(const RunOptions& options, const RunPlace& place) {
  os::Grants grants = grantsBeforehand(options, place.creoOptions, place.granted, place.denied, place.models);
  core::openToolPlaces(grants, L"t:\\");
  grants.openTo(os::Permission::read, L"p:\\");
  for (const wchar_t* name : kOwnFiles) grants.keepFromWriting(os::joined(place.models, name));
  // With its folder, in whose place another one could be put.
  if (const fs::path trust = nativePath(ownTrustFile()); !trust.empty())
    grants.keepFromWriting(systemPath(machinePath(trust.parent_path())));
  return grants;
}

}  // namespace

nlohmann::ordered_json grantMembers(const os::Asked& asked) {
  return {{"permission", text::toUtf8(os::wordOf(asked.need.permission))},
          {"resource", text::toUtf8(asked.need.resource)},
          {"allowed", asked.isGranted},
          {"what", text::toUtf8(asked.what)}};
}

RunConfinement::RunConfinement(const RunOptions& options, const RunPlace& place) {
  if (place.isConfined) confine_.emplace(grantsOf(options, place), &core::tellRefused);
}

std::vector<os::Asked> RunConfinement::asked() const { return confine_ ? confine_->asked() : std::vector<os::Asked>(); }

void RunConfinement::tell(Events& events) const {
  if (!events.on()) return;
  for (const os::Asked& asked : this->asked()) events.tell("grant", grantMembers(asked));
}

void tellLackingGrants(const RunPlace& place, Console& console) {
  if (!place.trustFault.empty()) console.trouble("warning: " + place.trustFault);
  if (place.lacking.empty()) return;
  console.note(place.package + " needs " + optionsOf(place.lacking) +
               (place.isConfined ? ", which isn't granted and will be refused"
                                 : "; without --confine nothing holds it to that, and 'kelvane trust' keeps grants"));
}

}  // namespace kelvane
