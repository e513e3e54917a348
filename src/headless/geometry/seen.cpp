// Views are asked of the program apart, and kept.
#include "headless/geometry/seen.h"

#include <cstdint>
#include <list>
#include <map>
#include <set>
#include <stdexcept>
#include <utility>

#include "headless/geometry/foreign_place.h"
#include "headless/geometry/foreign_program.h"
#include "headless/geometry/foreign_wire.h"
#include "text/encoding.h"
#include "text/format.h"

namespace headless::geometry {
namespace {

constexpr std::size_t kMostKept = 200;

using Key = std::vector<double>;

std::wstring reasonOf(const ForeignAnswer& answer, std::chrono::milliseconds time) {
  switch (answer.end) {
    case ForeignEnd::late:
      return text::format(L"it wasn't done within %d seconds", static_cast<int>(time.count() / 1000));
    case ForeignEnd::notStarted:
      return L"the program that works it out doesn't start: " + answer.program;
    default:
      return L"it ended the program that works it out";
  }
}

struct Tried {
  Seen seen;
  bool isStarted = true;  // the program was there
};

std::chrono::milliseconds timeOf(SeenBy by) {
  return by == SeenBy::exactEdges ? foreignPlace().viewTime : foreignPlace().facetTime;
}
std::string requestFor(const Sight& sight, SeenBy by, WrittenBodies& known) {
  const std::int64_t processor = std::chrono::ceil<std::chrono::seconds>(timeOf(by)).count();
  return written(ViewRequest{by, foreignPlace().memory, processor, sight}, known);
}

// Without curves it has a reason.
Tried triedWith(const ForeignAnswer& answer, SeenBy by) {
  Tried tried;
  Seen& seen = tried.seen;
  try {
    tried.isStarted = answer.end != ForeignEnd::notStarted;
    if (answer.end == ForeignEnd::answered)
      seen = readSeen(answer.wire);
    else
      seen.reason = reasonOf(answer, timeOf(by));
  } catch (const std::exception& failure) {
    seen.reason = L"the program that works it out gives no answer: " + text::fromUtf8(failure.what());
  }
  if (!seen.reason.empty()) endForeign();
  if (seen.curves.empty() && seen.reason.empty()) seen.reason = L"the library sees no edge";
  return tried;
}

Tried asked(const Sight& sight, SeenBy by) {
  try {
    WrittenBodies alone;
    return triedWith(askForeign(requestFor(sight, by, alone), timeOf(by)), by);
  } catch (const std::exception& failure) {
    Tried tried;
    tried.seen.reason = L"it can't be asked for: " + text::fromUtf8(failure.what());
    return tried;
  }
}

// What came of exact edges; where that is nothing it is asked for by facets.
Tried orByFacets(Tried exact, const Sight& sight) {
  if (exact.seen.reason.empty()) return exact;
  Tried faceted = asked(sight, SeenBy::facets);
  // Both have failed: the first says why.
  faceted.seen.reason = std::move(exact.seen.reason);
  return faceted;
}

void addNumbers(Key& key, const creo::ProTransform& place) {
  for (const creo::ProVector& v : {place.xAxis, place.yAxis, place.zAxis, place.origin})
    key.insert(key.end(), {v.x, v.y, v.z});
}
Key bodyKey(const PlacedBody& entry) {
  // Addresses of memory have fewer bits than such a number holds.
  Key key{static_cast<double>(reinterpret_cast<std::uintptr_t>(entry.body.get())), entry.scale,
          static_cast<double>(entry.number), entry.isCut ? 1.0 : 0.0};
  addNumbers(key, entry.place);
  for (const Gear& gear : entry.gears) {
    addNumbers(key, gear.place);
    key.insert(key.end(), {gear.tip, gear.pitch, gear.root, gear.length, gear.isToothed ? 1.0 : 0.0});
  }
  return key;
}

// How much paper the bodies lie on; what is cut counts as none. Where many lines lie over one another, and where bodies
// are cut, the library takes longest.
double roomOf(const Sight& sight) {
  if (sight.cut) return 0;
  const auto& [x, y, z, origin] = sight.screen;
  const creo::ProTransform toScreen{{x.x, y.x, z.x}, {x.y, y.y, z.y}, {x.z, y.z, z.z}, {}};
  FlatBox room;
  for (const PlacedBody& entry : sight.bodies) {
    creo::ProTransform turned = transformed(toScreen, entry.place);
    const creo::ProVector at = std::exchange(turned.origin, {});
    try {
      const creo::ProOutline box = outline(*entry.body, turned);
      room.take(FlatPoint{at.x + entry.scale * box.min.x, at.y + entry.scale * box.min.y});
      room.take(FlatPoint{at.x + entry.scale * box.max.x, at.y + entry.scale * box.max.y});
    } catch (const std::runtime_error&) {
      continue;  // what can't be measured
    }
  }
  return (room.right - room.left) * (room.high - room.low) * sight.scale * sight.scale;
}

// The same body in one place several times is seen as one, and would cost the library much.
Sight onceEach(Sight sight) {
  std::set<Key> known;
  std::erase_if(sight.bodies, [&](const PlacedBody& entry) { return !known.insert(bodyKey(entry)).second; });
  return sight;
}

// The views that were asked for last, also those that can't be drawn. A body stands for its shape: it never changes,
// and as long as a view is kept no other body has its place in memory.
class KeptViews {
 public:
  Seen find(const Sight& sight) {
    const Key key = keyOf(sight);
    if (const auto known = places_.find(key); known != places_.end()) {
      views_.splice(views_.begin(), views_, known->second);
      return views_.front().seen;
    }
    return keep(key, sight, orByFacets(asked(sight, SeenBy::exactEdges), sight));
  }
  void prepare(const std::vector<Sight>& sights) {
    std::multimap<double, const Sight*> byRoom;  // what takes longest begins first, so that no program waits for it
    std::set<Key> keys;
    for (const Sight& sight : sights) {
      const Key key = keyOf(sight);
      if (!places_.contains(key) && keys.insert(key).second) byRoom.emplace(roomOf(sight), &sight);
    }
    std::vector<const Sight*> open;
    std::vector<std::string> requests;
    WrittenBodies known;
    for (const auto& [room, sight] : byRoom) {
      try {
        requests.push_back(requestFor(*sight, SeenBy::exactEdges, known));
        open.push_back(sight);
      } catch (const std::exception&) {
        continue;  // its reason is told when it is asked for alone
      }
    }
    // One alone is as soon there when it is asked for.
    if (open.size() < 2) return;
    const std::vector<ForeignAnswer> answers = askForeign(requests, timeOf(SeenBy::exactEdges));
    for (std::size_t i = 0; i < open.size(); ++i)
      keep(keyOf(*open[i]), *open[i], orByFacets(triedWith(answers[i], SeenBy::exactEdges), *open[i]));
  }

 private:
  struct View {
    Key key;
    std::vector<PlacedBody> bodies;
    Seen seen;
  };
  Seen keep(const Key& key, const Sight& sight, Tried tried) {
    // What has failed twice takes its whole time again the next time; the program may be there by then.
    if (!tried.isStarted) return std::move(tried.seen);
    views_.push_front({key, sight.bodies, std::move(tried.seen)});
    places_[key] = views_.begin();
    if (views_.size() > kMostKept) {
      places_.erase(views_.back().key);
      views_.pop_back();
    }
    return views_.front().seen;
  }
  static Key keyOf(const Sight& sight) {
    Key key{sight.scale, sight.hidden ? 1.0 : 0.0, sight.axes ? 1.0 : 0.0};
    addNumbers(key, sight.screen);
    key.push_back(sight.cut ? 1 : 0);
    if (sight.cut)
      for (const creo::ProVector& v : {sight.cut->point, sight.cut->normal}) key.insert(key.end(), {v.x, v.y, v.z});
    for (const PlacedBody& entry : sight.bodies) {
      const Key own = bodyKey(entry);
      key.insert(key.end(), own.begin(), own.end());
    }
    return key;
  }

  std::list<View> views_;
  std::map<Key, std::list<View>::iterator> places_;
};

KeptViews& keptViews() {
  static KeptViews kept;
  return kept;
}

}  // namespace

Seen seen(const Sight& sight) {
  if (sight.bodies.empty()) return {};
  return keptViews().find(onceEach(sight));
}

void seeAhead(const std::vector<Sight>& sights) {
  std::vector<Sight> single;
  for (const Sight& sight : sights)
    if (!sight.bodies.empty()) single.push_back(onceEach(sight));
  keptViews().prepare(single);
}

void readyToSeeAhead() { startForeign(); }

void forgetSeen() { keptViews() = {}; }

}  // namespace headless::geometry
