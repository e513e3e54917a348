#include "kelvane/run/place.h"
#include "kelvane/base/native_path.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>

#include "core/config.h"
#include "core/confinement.h"
#include "core/xml.h"
#include "documents/action_list.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/hash.h"
#include "kelvane/base/places.h"
#include "kelvane/journal/recovery.h"
#include "kelvane/log/accepted_exports.h"
#include "kelvane/package/place.h"
#include "kelvane/package/source.h"
#include "kelvane/run/config.h"
#include "kelvane/run/grants_beforehand.h"
#include "kelvane/run/vault_place.h"
#include "kelvane/run/work_cache.h"
#include "kelvane/show/model_folder.h"
#include "kelvane/trust/needs.h"
#include "kelvane/trust/store.h"
#include "language/expressions.h"
#include "os/left_files.h"
#include "os/processes.h"
#include "os/program.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

constexpr const char* kLockName = ".kelvane.lock";
constexpr const char* kLogName = "kelvane.log";
constexpr const char* kJournalName = "kelvane.journal";
constexpr std::wstring_view kConfinementKeys[] = {L"kvd_confine", L"kvd_allow_", L"kvd_deny_"};

std::unique_ptr<os::FileLock> locked(const std::wstring& file, const std::string& folder) {
  auto lock = os::lockFile(file);
  if (lock.error == std::errc::device_or_resource_busy) throw Fault("another run works on " + folder);
  if (!lock) throw Fault(folder + " can't be written: " + lock.error.message());
  return std::move(lock.value);
}

// The current version of each model, and what lies beside them; made under another name, so that a copy is whole or
// isn't there.
void copyModels(const std::string& from, const std::string& to) {
  std::error_code error;
  const fs::path target = nativePath(to);
  if (fs::exists(target, error) && !fs::is_empty(target, error)) throw Fault("--into: " + to + " is there already");
  const std::wstring folder = mountModels(from);
  if (const auto open = openEnds(folder); !open.empty())
    throw Fault(
        "--into: run " + open.front() + " of " + from +
        " has no end: it is at work, or broke off; 'kelvane run' or 'kelvane undo' takes back what it had begun");
  const fs::path part = nativePath(machinePath(target.lexically_normal()) + ".part");
  fs::remove_all(part, error);
  fs::create_directories(part);
  std::set<std::string> current;
  for (const auto& document : headless::readFolder(folder))
    current.insert(machinePath(nativePath(shown(document.path)).filename()));
  for (const auto& entry : fs::directory_iterator(nativePath(from))) {
    const std::string name = machinePath(entry.path().filename());
    const bool isOld = headless::documentFile(text::fromUtf8(name)) && !current.contains(name);
    if (isOld || name == kLockName || name == kLogName || name == kJournalName) continue;
    fs::copy(entry.path(), part / entry.path().filename(),
             fs::copy_options::recursive | fs::copy_options::copy_symlinks);
  }
  fs::remove(target, error);
  fs::rename(part, target);
}

std::string modelsFolder(const RunOptions& options) {
  (void)systemFolder(options.folder);
  if (options.into.empty()) return options.folder;
  copyModels(options.folder, options.into);
  return options.into;
}

// A list that can't be read would run nothing and still count as having been run; a filter that can't lets nothing
// pass.
void requireReadable(const PackageSource& package, const std::string& member) {
  const auto loaded = core::xmlParse(package.read(member));
  if (!loaded) throw Fault(member + ": " + text::toUtf8(loaded.fault.sentence()));
  if (core::xmlChildCount(loaded.value->root()) == 0) throw Fault(member + ": it holds no element");
}

bool hasHeadOrFoot(const PackageSource& package, const std::string& member) {
  const auto loaded = core::xmlParse(package.read(member));
  const documents::ActionList list = documents::actionList(*loaded.value);
  return core::xmlChildCount(list.head) > 0 || core::xmlChildCount(list.foot) > 0;
}

// Before a copy of the models is made: a vault that isn't there, and what only makes sense with one.
void requireVaults(const RunOptions& options) {
  for (const std::string& vault : options.vaults) (void)systemFolder(vault);
  const bool asked = options.checkOut || !options.workspace.empty() || !options.user.empty();
  if (asked && options.vaults.empty()) throw Fault("--workspace, --user and --check-out need a --vault");
}

std::vector<headless::VaultConnection> connections(const RunOptions& options, const std::string& models) {
  std::vector<headless::VaultConnection> vaults;
  for (const std::string& vault : options.vaults)
    vaults.push_back(connection(vault, options.workspace, options.user, models));
  return vaults;
}

void makeFolders(const std::string& work) {
  for (const char* name : {"packages", "temp", "temp/conf"}) {
    std::error_code error;
    fs::create_directories(nativePath(work) / name, error);
    if (error) throw Fault("the temp folder " + work + " can't be written: " + error.message());
  }
}

FolderLocks lockFolder(const std::wstring& mounted, const std::string& models, const std::string& work, bool writes) {
  FolderLocks locks;
  if (writes) {
    locks.push_back(locked(mounted + text::fromUtf8(kLockName), models));
    os::removeLeftTemporaries(mounted);
  }
  locks.push_back(locked(systemPath(work + "/run.lock"), models));
  return locks;
}

// The script that turns workbooks into CSV files: the site's, else the installation's for this system. A run without
// one says so where a workbook is read.
void placeScript(const RunOptions& options, const std::string& work) {
  constexpr const char* kScript = "xls2csv.vbs";
  const fs::path target = nativePath(work) / "temp/conf" / kScript, installation = nativePath(installationFolder());
  std::error_code error;
  fs::remove(target, error);
  for (const fs::path& folder : {nativePath(options.config), installation / os::systemName() / "conf"}) {
    if (folder.empty() || !fs::exists(folder / kScript, error)) continue;
    fs::copy_file(folder / kScript, target, error);  // it stays executable
    if (error) throw Fault("the temp folder " + work + " can't be written: " + error.message());
    return;
  }
}

// What it needs and what is kept for it was found by one content, and a package can be replaced while the run begins.
void requireJudged(const RunPlace& place, const std::string& work) {
  if (!place.isConfined || place.packageSum.empty()) return;
  if (sha256Of(work + "/packages/" + place.package) != place.packageSum)
    throw Fault(place.package + " was replaced while the run began; grants are kept for another content");
}

// Locks the folder of models, tidies the cache, mounts the letters, places the package if there is one, writes the
// configuration.
void putInPlace(RunPlace& place, const RunOptions& options, const std::string& models, const std::string& config,
                const PackageSource* package) {
  place.models = mountModels(models);
  const std::string work = workFolder(models);
  makeFolders(work);
  place.locks = lockFolder(place.models, models, work, options.writesModels());
  noteUse(work, models);
  tidyBeside(work);

  os::mounts().set(L'p', work + "/packages");
  os::mounts().set(L't', work + "/temp");
  os::mounts().set(L'i', installationFolder());
  for (const wchar_t* folder : {L"t:\\", L"t:\\conf\\"}) os::removeLeftTemporaries(folder);
  if (package) {
    placePackage(options.package, *package, work, place.isConfined);
    requireJudged(place, work);
  }
  if (const auto error = os::files().write(L"t:\\conf\\kvd_main.cfg", config)) {
    throw Fault("the temp folder " + work + " can't be written: " + error.message());
  }
  placeScript(options, work);
  os::setEnvironment(L"KVD_CONF_DIR", L"t:\\");
}

// What the configuration will say of it, by the plug-in's own keys; variables in values stay as they are.
core::ConfinementSettings confinementBy(const std::string& config) {
  core::ConfinementSettings before = std::exchange(core::confinementSettings(), {});
  for (const std::wstring& line : text::lines(text::fromUtf8(config))) {
    const std::size_t sign = std::min(line.find(L'='), line.size());
    const std::wstring name = line.substr(0, sign), value = line.substr(std::min(sign + 1, line.size()));
    const bool isOfIt = std::any_of(std::begin(kConfinementKeys), std::end(kConfinementKeys),
                                    [&](std::wstring_view start) { return text::startsWithNoCase(name, start); });
    for (const core::ConfigKey& key : core::configKeys())
      if (isOfIt && text::equalNoCase(key.name, name)) key.apply(core::pluginState(), value);
  }
  return std::exchange(core::confinementSettings(), std::move(before));
}

// What is kept for the package joins what the options say.
void takeKept(RunPlace& place, const PackageIdentity& package) {
  std::optional<KeptGrants> kept;
  try {
    kept = TrustStore().find(package);
  } catch (const Fault& fault) {
    if (place.isConfined) throw;
    place.trustFault = fault.what();
  }
  if (kept) place.granted.insert(place.granted.end(), kept->allowed.begin(), kept->allowed.end());
  if (kept) place.denied.insert(place.denied.end(), kept->denied.begin(), kept->denied.end());
}

os::Grants allBeforehand(const RunPlace& place, const RunOptions& options,
                         const core::ConfinementSettings& configured) {
  const std::wstring models = systemPath(options.into.empty() ? options.folder : options.into);
  os::Grants grants = grantsBeforehand(options, place.creoOptions, place.granted, place.denied, models);
  for (const os::Need& need : configured.allowed) grants.allow(need);
  for (const os::Need& need : configured.denied) grants.deny(need);
  return grants;
}

// package: without a source where the options name none.
void takeGrants(RunPlace& place, const RunOptions& options, const std::string& config, const KnownPackage& package) {
  const GrantOptions& given = options.grants;
  const core::ConfinementSettings configured = confinementBy(config);
  place.isConfined = given.confine || given.requireTrust || configured.isOn;
  place.granted = needsOf(given.allow);
  place.denied = needsOf(given.deny);
  if (!place.isConfined && !(given.allow.empty() && given.deny.empty()))
    throw Fault("--allow-... and --deny-... go with --confine");
  if (given.requireTrust && !package.source)
    throw Fault("--require-trust needs a package: which one may do what is kept by it");
  if (package.source) {
    place.packageSum = package.identity.sha256;
    takeKept(place, package.identity);
  }
  place.beforehand = allBeforehand(place, options, configured);
  if (package.source) place.lacking = lackingOf(*package.source, place.beforehand);
  // A run opens none of its reports behind it (SilentOpener).
  std::erase(place.lacking, os::Need{os::Permission::run, std::wstring(os::kSystemOpener)});
  if (given.requireTrust && !place.lacking.empty())
    throw Fault(packageFileName(options.package) + " isn't trusted with " + optionsOf(place.lacking) +
                "; 'kelvane trust' keeps grants");
}

// Three plain arguments are easily given in another order.
void requireOrder(const RunOptions& options) {
  if (isPackage(options.package)) return;
  for (const std::string& text : {options.list, options.folder}) {
    if (isPackage(text))
      throw Fault("'" + options.package + "' is no package, '" + text + "' is one; the order is PACKAGE LIST DIR");
  }
}
void requireOrder(const RunOptions& options, const std::vector<std::string>& lists) {
  if (hasName(lists, options.list) || !hasName(lists, options.folder)) return;
  throw Fault("'" + options.list + "' is no list of the package, '" + options.folder +
              "' is one; the order is PACKAGE LIST DIR");
}

}  // namespace

JournalPlace prepareJournal(const std::string& models) {
  JournalPlace place;
  place.models = mountModels(models);
  const std::string work = workFolder(models);
  makeFolders(work);
  os::mounts().set(L't', work + "/temp");
  place.locks = lockFolder(place.models, models, work, true);
  return place;
}

RunPlace prepareRun(const RunOptions& options) {
  RunPlace place;
  requireOrder(options);
  const KnownPackage known = openKnown(options.package);
  const PackageSource* const package = known.source.get();
  place.package = packageFileName(options.package);
  requireOrder(options, actionLists(*package));
  place.list = chosenName(options.list, actionLists(*package), "list");
  requireReadable(*package, "actionlists/" + place.list);
  place.listSum = hexHash(package->read("actionlists/" + place.list));
  place.hasEnds = hasHeadOrFoot(*package, "actionlists/" + place.list);
  if (!options.filter.empty()) {
    place.filter = chosenName(options.filter, filters(*package), "filter");
    requireReadable(*package, "filters/" + place.filter);
  }
  if (const auto fault = language::expressionFault(text::fromUtf8(options.select))) {
    throw Fault("--select: '" + options.select + "' is no expression (" + text::toUtf8(fault.what) + ")");
  }
  (void)AcceptedExports(options.accept);
  const std::string config = configText(options);
  place.creoOptions = creoOptions(options);
  takeGrants(place, options, config + userConfigText(config), known);
  place.answers = answersTo(questionsOf(*package, place.list), options.answers);
  requireVaults(options);
  const std::string models = modelsFolder(options);
  place.vaults = connections(options, models);
  putInPlace(place, options, models, config, package);
  return place;
}

RunPlace prepareWatch(const RunOptions& options) {
  RunPlace place;
  KnownPackage known;
  if (!options.package.empty()) known = openKnown(options.package);
  if (known.source) place.package = packageFileName(options.package);
  const std::string config = configText(options);
  place.creoOptions = creoOptions(options);
  takeGrants(place, options, config + userConfigText(config), known);
  requireVaults(options);
  const std::string models = modelsFolder(options);
  place.vaults = connections(options, models);
  putInPlace(place, options, models, config, known.source.get());
  return place;
}

headless::SessionOptions sessionOptions(const RunOptions& options, const RunPlace& place) {
  headless::SessionOptions session;
  session.modelFolder = place.models;
  session.textFolder = L"i:\\text\\";
  session.withholdSaves = !options.writesModels();
  return session;
}

}  // namespace kelvane
