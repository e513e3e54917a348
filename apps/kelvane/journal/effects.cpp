#include "kelvane/journal/effects.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <unordered_map>

#include "kelvane/journal/paths.h"

namespace kelvane {
namespace {

bool isSame(const std::optional<Content>& a, const std::optional<Content>& b) {
  return a.has_value() == b.has_value() && (!a || a->isSameAs(*b));
}

// Sets of paths that hang together.
class Groups {
 public:
  int of(const std::string& path) {
    const auto [at, fresh] = numbers_.try_emplace(path, static_cast<int>(above_.size()));
    if (fresh) above_.push_back(at->second);
    return top(at->second);
  }
  void join(const std::string& a, const std::string& b) {
    const int one = of(a), other = of(b);
    above_[static_cast<std::size_t>(one)] = other;
  }

 private:
  int top(int number) {
    while (above_[static_cast<std::size_t>(number)] != number) {
      int& above = above_[static_cast<std::size_t>(number)];
      above = above_[static_cast<std::size_t>(above)];
      number = above;
    }
    return number;
  }
  std::unordered_map<std::string, int> numbers_;
  std::vector<int> above_;
};

class Simulation {
 public:
  explicit Simulation(Part part) : part_(part) {}
  void take(const Deed& deed) {
    if (isOfVault(deed.path) != (part_ == Part::vaults)) return;
    if (deed.kind == DeedKind::folder) {
      effects_.folders.push_back(deed.path);
      return;
    }
    if (deed.kind == DeedKind::rename) {
      touch(deed.path, deed.now).after.reset();
      Effect& target = touch(deed.to, deed.had);
      target.after = deed.now;
      target.isKnown = true;
      groups_.join(deed.path, deed.to);
    } else {
      Effect& effect = touch(deed.path, deed.had);
      effect.after = deed.kind == DeedKind::remove ? std::nullopt : deed.now;
      effect.isKnown = deed.kind != DeedKind::append || deed.now;
    }
    tie(deed);
  }

  Effects result() {
    for (auto at = effects_.files.begin(); at != effects_.files.end();) {
      const bool isAsItWas = at->second.isKnown && isSame(at->second.before, at->second.after);
      at->second.group = groups_.of(at->first);
      at = isAsItWas ? effects_.files.erase(at) : std::next(at);
    }
    return std::move(effects_);
  }

 private:
  Effect& touch(const std::string& path, const std::optional<Content>& had) {
    const auto [at, fresh] = effects_.files.try_emplace(path);
    if (fresh) at->second.before = at->second.after = had;
    return at->second;
  }

  // A document's versions, and the documents of a turn that renamed or removed, are one.
  void tie(const Deed& deed) {
    if (deed.turn != turn_) {
      turn_ = deed.turn;
      ofTurn_.clear();
      isTied_ = false;
    }
    isTied_ = isTied_ || deed.kind == DeedKind::rename || deed.kind == DeedKind::remove;
    for (const std::string* path : {&deed.path, &deed.to}) {
      const auto version = writtenVersion(*path);
      if (!version) continue;
      groups_.join(*path, version->stem);
      ofTurn_.push_back(version->stem);
    }
    if (!isTied_ || ofTurn_.empty()) return;
    for (const std::string& stem : ofTurn_) groups_.join(stem, ofTurn_.front());
    ofTurn_.resize(1);
  }

  Part part_;
  Effects effects_;
  Groups groups_;
  int turn_ = -1;
  bool isTied_ = false;
  std::vector<std::string> ofTurn_;
};

// Where contents that have to come back lie: among what is kept, or under another name.
class Sources {
 public:
  Sources(const Effects& effects, const std::vector<Deed>& deeds) {
    for (const Deed& deed : deeds)
      if (deed.had && !deed.had->kept.empty()) kept_.try_emplace(deed.had->sum, deed.had->kept);
    for (const auto& [path, effect] : effects.files)
      if (effect.after && !isSame(effect.before, effect.after)) lies_.emplace(effect.after->sum, path);
  }
  // Empty: nowhere.
  [[nodiscard]] std::string keptAs(const Content& content) const {
    if (!content.kept.empty()) return content.kept;
    const auto found = kept_.find(content.sum);
    return found == kept_.end() ? std::string() : found->second;
  }
  // The path that a rename gave this content; each is given once.
  std::string movedTo(const Content& content) {
    const auto found = lies_.find(content.sum);
    if (found == lies_.end()) return {};
    std::string path = found->second;
    lies_.erase(found);
    return path;
  }

 private:
  std::unordered_map<std::string, std::string> kept_;
  std::multimap<std::string, std::string> lies_;
};

std::string conflictOf(const std::string& path, const Effect& effect, const Present& present) {
  const std::string name = JournalPaths::shown(path);
  if (!present.fault.empty()) return name + present.fault;
  if (!present.content) return name + " was removed since";
  return name + (effect.after ? " was changed since" : " was written since");
}

// Newest versions first, so that what is left at any moment is still the document.
void orderRemovals(std::vector<std::string>& removed) {
  std::sort(removed.begin(), removed.end(), [](const std::string& a, const std::string& b) {
    const auto one = writtenVersion(a), other = writtenVersion(b);
    if (one && other && one->stem == other->stem) return one->number > other->number;
    return a < b;
  });
}

}  // namespace

bool isOfDeeds(const std::vector<Deed>& deeds, const std::string& path, const Content& content) {
  const auto is = [&](const std::optional<Content>& known) { return known && known->isSameAs(content); };
  return std::any_of(deeds.begin(), deeds.end(), [&](const Deed& deed) {
    const bool isRename = deed.kind == DeedKind::rename;
    return (deed.path == path && (is(deed.now) || (!isRename && is(deed.had)))) ||
           (isRename && deed.to == path && (is(deed.now) || is(deed.had)));
  });
}

Effects effectsOf(const std::vector<Deed>& deeds, Part part) {
  Simulation simulation(part);
  for (const Deed& deed : deeds) simulation.take(deed);
  return simulation.result();
}

std::map<int, Back> backOf(const Effects& effects, const std::vector<Deed>& deeds, const Look& look,
                           bool ignoresConflicts) {
  std::map<int, Back> groups;
  Sources sources(effects, deeds);
  std::map<std::string, Present> present;
  for (const auto& [path, effect] : effects.files) present.emplace(path, look(path));
  std::set<std::string> vacated;  // by a rename back
  for (const auto& [path, effect] : effects.files) {
    Back& back = groups[effect.group];
    const Present& now = present[path];
    if (now.fault.empty() && isSame(now.content, effect.before)) continue;
    const bool isOurs = now.fault.empty() && (!effect.isKnown || isSame(now.content, effect.after));
    if (!isOurs && !ignoresConflicts) {
      back.conflicts.push_back(conflictOf(path, effect, now));
      continue;
    }
    if (!effect.before) {
      if (now.content) back.removed.push_back(path);
      continue;
    }
    const std::string kept = sources.keptAs(*effect.before);
    const std::string moved = kept.empty() ? sources.movedTo(*effect.before) : std::string();
    const auto there = present.find(moved);
    if (!kept.empty()) {
      back.written.emplace_back(path, Content{effect.before->size, effect.before->sum, kept});
    } else if (there != present.end() && isSame(there->second.content, effect.before)) {
      back.renamed.emplace_back(moved, path);
      vacated.insert(moved);
    } else {
      back.lacking.push_back(JournalPaths::shown(path) + " can't come back: its content was kept nowhere");
    }
  }
  for (auto& [group, back] : groups) {
    std::erase_if(back.removed, [&](const std::string& path) { return vacated.contains(path); });
    orderRemovals(back.removed);
  }
  return groups;
}

}  // namespace kelvane
