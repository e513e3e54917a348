#include "kelvane/run/confined.h"
#include "kelvane/base/native_path.h"

#include <filesystem>
#include <nlohmann/json.hpp>

#include "core/confinement.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "kelvane/run/files.h"
#include "kelvane/run/grants_beforehand.h"
#include "kelvane/trust/store.h"
#include "os/links.h"
#include "os/paths.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "trace/refused.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

// Files of the models' folder that are the program's.
constexpr const wchar_t* kOwnFiles[] = {L".kelvane.lock", L"kelvane.journal"};

}  // namespace

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

void requireOwnFilesInside(const RunOptions& options, const RunPlace& place) {
  if (!place.isConfined) return;
  const os::Grants grants = grantsBeforehand(options, place.creoOptions, place.granted, place.denied, place.models);
  const std::wstring journal = place.models + std::wstring(kJournalFolder);
  std::vector<std::wstring> files = {journal};
  if (keepsLog(options) && options.log.empty()) files.push_back(logTarget(options, place.models));
  for (const std::wstring& file : files) {
    const std::string real = os::machineBehindLinks(file);
    if (!os::Grants::isOpen(grants.mayWrite(real)))
      throw Fault(shown(file) + " leads to " + real +
                  ", where a confined run doesn't write; remove that link, or use " +
                  optionOf({os::Permission::write, text::fromUtf8(real)}));
  }
  requireNoLinks(Book(place.models));
}

MayWrite mayTakeBack(const RunOptions& options, const RunPlace& place) {
  if (!place.isConfined) return {};
  os::Grants grants = grantsOf(options, place);
  for (const std::string& vault : options.vaults) grants.openTo(os::Permission::write, systemPath(vault));
  // A log is written by the program itself, which says so in the journal.
  grants.openTo(os::Permission::write, logTarget(options, place.models));
  return [grants = std::move(grants)](const std::wstring& path) {
    // What was unpacked is the program's own, and is taken back where it stands.
    const std::string real = os::machineBehindLinks(path);
    const os::Grants::Verdict verdict = grants.mayWrite(real);
    return os::Grants::isOpen(verdict) ||
           (verdict == os::Grants::Verdict::kept && real.starts_with(os::machineBehindLinks(L"t:\\") + "/open_kvz_"));
  };
}

nlohmann::ordered_json grantMembers(const os::Asked& asked) {
  return {{"permission", text::toUtf8(os::wordOf(asked.need.permission))},
          {"resource", text::toUtf8(asked.need.resource)},
          {"allowed", asked.isGranted},
          {"what", text::toUtf8(asked.what)}};
}

RunConfinement::RunConfinement(const RunOptions& options, const RunPlace& place, Console& console) : console_(console) {
  if (place.isConfined)
    confine_.emplace(grantsOf(options, place),
                     [](const os::Asked& asked) { trace::tellRefused(asked, &core::tellRefused); });
}

RunConfinement::~RunConfinement() { tellUntold(); }

bool RunConfinement::tellUntold() {
  const std::vector<std::wstring> lines = core::takeUntoldRefusals();
  for (const std::wstring& line : lines) console_.trouble("error: " + text::toUtf8(line));
  return !lines.empty();
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
