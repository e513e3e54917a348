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
    const PackageIdentity identity = identityOf(*package_);
    if (forget_) return forget(store, identity, console);
    if (json_) return showOne(store, identity, console);
    const std::vector<PackageNeed> needs = needsOf(*openPackage(*package_));
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

  // What was granted to it, or to its earlier content, isn't asked again.
  int keepNeeded(TrustStore& store, const PackageIdentity& identity, const std::vector<PackageNeed>& needs,
                 Console& console) const {
    const auto own = store.find(identity);
    const auto known = own ? own : store.earlier(identity);
    KeptGrants kept{identity, {}, {}, false};
    if (known) kept.denied = known->denied;
    os::Grants before;
    for (const os::Need& need : known ? known->allowed : std::vector<os::Need>()) before.allow(need);
    std::vector<PackageNeed> asked;
    for (const PackageNeed& need : needs)
      if (!need.permission || !need.isKnown() || !before.covers({*need.permission, need.resource}))
        asked.push_back(need);
    const std::vector<os::Need> fresh = grantsFor(asked);
    const std::vector<os::Need> wanted = grantsFor(needs);
    if (known)
      for (const os::Need& need : known->allowed) kept.allowed.push_back(need);
    kept.allowed.insert(kept.allowed.end(), fresh.begin(), fresh.end());
    for (const std::string& line : needLines(asked)) console.result(line);
    if (fresh.empty() && known) console.note(identity.name + " needs nothing that isn't granted");
    if (fresh.empty() && !known && wanted.empty()) console.note(identity.name + " needs no grants");
    if (!fresh.empty() && !isAgreed(fresh, identity, console)) return kErrors;
    return keep(store, kept, console);
  }

  [[nodiscard]] bool isAgreed(const std::vector<os::Need>& fresh, const PackageIdentity& identity,
                              Console& console) const {
    if (yes_) return true;
    if (!console.live()) {
      console.trouble("nothing is kept: without a terminal nothing is asked; --yes keeps " + optionsOf(fresh) +
                      ", and such options alone keep what they name");
      return false;
    }
    console.note("keep " + optionsOf(fresh) + " for " + identity.name + "? y or n");
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
