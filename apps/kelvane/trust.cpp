// kelvane trust: the grants that are kept for a package.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "kelvane/base/fault.h"
#include "kelvane/base/verb.h"
#include "kelvane/trust/grant_options.h"
#include "kelvane/trust/store.h"
#include "kelvane/trust/telling.h"

namespace kelvane {
namespace {

class Trust : public Verb {
 public:
  std::vector<OptionRow> options() override {
    std::vector<OptionRow> rows = {
        {"package", "PACKAGE", "a .kvz, or a folder of that layout; without it what is kept is shown", &package_},
        {"--yes", "", "keeps what the package needs without asking", &yes_},
        {"--forget", "", "keeps nothing for it any more", &forget_},
        {"--json", "", "as JSON: what is kept", &json_},
    };
    for (const OptionRow& row : grantRows(grants_)) rows.push_back(row);
    return rows;
  }
  int run(Console& console) override {
    TrustStore store;
    if (!package_) return show(store.all(), console);
    const KnownPackage package = openKnown(*package_);
    const PackageIdentity& identity = package.identity;
    if (forget_) return forget(store, identity, console);
    if (json_) return showOne(store, identity, console);
    const std::vector<PackageNeed> needs = needsOf(*package.source);
    const bool isGiven = !grants_.allow.empty() || !grants_.deny.empty();
    return isGiven ? keepGiven(store, identity, console) : keepNeeded(store, identity, needs, console);
  }

 private:
  static std::string named(const PackageIdentity& of) {
    return of.sha256.empty() ? of.folder : of.name + "  sha256 " + of.sha256;
  }
  static void showGrants(const KeptGrants& kept, Console& console) {
    console.result(named(kept.of) + (kept.isSite ? "  (the site's)" : ""));
    for (const os::Need& need : kept.allowed) console.result("  " + optionOf(need));
    for (const os::Need& need : kept.denied) console.result("  " + denialOf(need));
  }
  static std::string denialOf(const os::Need& need) {
    const std::string allow = optionOf(need);
    return "--deny" + allow.substr(std::string("--allow").size());
  }
  static nlohmann::ordered_json asJson(const KeptGrants& kept) {
    nlohmann::ordered_json json = {{"name", kept.of.name}};
    if (kept.of.sha256.empty())
      json["folder"] = kept.of.folder;
    else
      json["sha256"] = kept.of.sha256;
    json["site"] = kept.isSite;
    json["options"] = nlohmann::ordered_json::array();
    for (const os::Need& need : kept.allowed) json["options"].push_back(optionOf(need));
    for (const os::Need& need : kept.denied) json["options"].push_back(denialOf(need));
    return json;
  }

  int show(const std::vector<KeptGrants>& all, Console& console) const {
    nlohmann::ordered_json json = nlohmann::ordered_json::array();
    for (const KeptGrants& kept : all) {
      if (json_)
        json.push_back(asJson(kept));
      else
        showGrants(kept, console);
    }
    if (json_) console.resultJson(json.dump(2));
    if (all.empty()) console.note("no grants are kept");
    return kFine;
  }
  int showOne(const TrustStore& store, const PackageIdentity& identity, Console& console) const {
    const auto kept = store.find(identity);
    return show(kept ? std::vector<KeptGrants>{*kept} : std::vector<KeptGrants>(), console);
  }
  static int forget(TrustStore& store, const PackageIdentity& identity, Console& console) {
    if (!store.forget(identity)) {
      console.trouble("nothing was kept for " + identity.name);
      return kErrors;
    }
    console.note("nothing is kept for " + identity.name + " any more");
    return kFine;
  }

  int keepGiven(TrustStore& store, const PackageIdentity& identity, Console& console) const {
    return keep(store, {identity, needsOf(grants_.allow), needsOf(grants_.deny), false}, console);
  }
  static int keep(TrustStore& store, const KeptGrants& grants, Console& console) {
    store.keep(grants);
    console.note("these grants are kept for " + grants.of.name);
    showGrants(grants, console);
    return kFine;
  }

  // What was granted to this content, by oneself or by the site, isn't asked again. What one granted to an earlier one
  // is carried over as far as this one needs it, and by consent.
  int keepNeeded(TrustStore& store, const PackageIdentity& identity, const std::vector<PackageNeed>& needs,
                 Console& console) const {
    const auto own = store.own(identity), granted = store.find(identity);
    const auto earlier = own ? std::nullopt : store.earlier(identity);
    KeptGrants kept{identity, {}, {}, false};
    if (own) kept.allowed = own->allowed;
    const std::vector<os::Need> carried = earlier ? neededOf(earlier->allowed, needs) : std::vector<os::Need>();
    if (own || earlier) kept.denied = own ? own->denied : earlier->denied;
    std::vector<os::Need> before = granted ? granted->allowed : std::vector<os::Need>();
    before.insert(before.end(), carried.begin(), carried.end());
    const std::vector<PackageNeed> asked = notCovered(needs, before);
    const std::vector<os::Need> fresh = grantsFor(asked);
    for (const std::string& line : needLines(asked)) console.result(line);
    if (grantsFor(needs).empty())
      console.note(identity.name + " needs no grants");
    else if (fresh.empty())
      console.note(identity.name + " needs nothing that isn't granted");
    if (!carried.empty())
      console.note(identity.name + " has another content than the one that " + optionsOf(carried) +
                   " was kept for; it is carried over");
    if (fresh.empty() && carried.empty() && (own || kept.denied.empty())) return kFine;
    kept.allowed.insert(kept.allowed.end(), carried.begin(), carried.end());
    kept.allowed.insert(kept.allowed.end(), fresh.begin(), fresh.end());
    const bool isNew = !fresh.empty() || !carried.empty();
    if (isNew && !isAgreed(fresh.empty() ? carried : fresh, identity, console)) return kErrors;
    return keep(store, kept, console);
  }

  // Those of `allowed` that a need of the package takes.
  static std::vector<os::Need> neededOf(const std::vector<os::Need>& allowed, const std::vector<PackageNeed>& needs) {
    std::vector<os::Need> needed;
    for (const os::Need& need : allowed)
      if (notCovered(needs, {need}).size() < needs.size()) needed.push_back(need);
    return needed;
  }
  static std::vector<PackageNeed> notCovered(const std::vector<PackageNeed>& needs,
                                             const std::vector<os::Need>& allowed) {
    os::Grants grants;
    for (const os::Need& need : allowed) grants.allow(need);
    std::vector<PackageNeed> open;
    for (const PackageNeed& need : needs)
      if (!need.permission || !need.isKnown() || !grants.covers({*need.permission, need.resource}))
        open.push_back(need);
    return open;
  }

  [[nodiscard]] bool isAgreed(const std::vector<os::Need>& wanted, const PackageIdentity& identity,
                              Console& console) const {
    if (yes_) return true;
    if (!console.canAsk()) {
      console.trouble("nothing is kept: without a terminal nothing is asked; --yes keeps " + optionsOf(wanted) +
                      ", and such options alone keep what they name");
      return false;
    }
    console.note("keep " + optionsOf(wanted) + " for " + identity.name + "? y or n");
    console.flush();
    std::string answer;
    if (console.read(answer) && (answer == "y" || answer == "yes")) return true;
    console.trouble("nothing is kept");
    return false;
  }

  std::optional<std::string> package_;
  GrantOptions grants_;
  bool yes_ = false, forget_ = false, json_ = false;
};

}  // namespace

std::unique_ptr<Verb> makeTrust() { return std::make_unique<Trust>(); }

}  // namespace kelvane
