// Views are asked of the program apart, and kept.
#include "headless/geometry/seen.h"

#include <cstdint>
#include <list>
#include <map>
#include <set>

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

// Without curves it has a reason.
Tried asked(const Sight& sight, SeenBy by) {
  const ForeignPlace& place = foreignPlace();
  const std::chrono::milliseconds time = by == SeenBy::exactEdges ? place.viewTime : place.facetTime;
  ViewRequest request{by, place.memory, std::chrono::ceil<std::chrono::seconds>(time).count(), sight};
  Tried tried;
  Seen& seen = tried.seen;
  try {
    const ForeignAnswer answer = askForeign(written(request), time);
    tried.isStarted = answer.end != ForeignEnd::notStarted;
    if (answer.end == ForeignEnd::answered)
      seen = readSeen(answer.wire);
    else
      seen.reason = reasonOf(answer, time);
  } catch (const std::exception& failure) {
    seen.reason = L"the program that works it out gives no answer: " + text::fromUtf8(failure.what());
  }
  if (!seen.reason.empty()) endForeign();
  if (seen.curves.empty() && seen.reason.empty()) seen.reason = L"the library sees no edge";
  return tried;
}

Tried workedOut(const Sight& sight) {
  Tried exact = asked(sight, SeenBy::exactEdges);
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
  return key;
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
    auto [made, isStarted] = workedOut(sight);
    // What has failed twice takes its whole time again the next time; the program may be there by then.
    if (!isStarted) return made;
    views_.push_front({key, sight.bodies, made});
    places_[key] = views_.begin();
    if (views_.size() > kMostKept) {
      places_.erase(views_.back().key);
      views_.pop_back();
    }
    return made;
  }

 private:
  struct View {
    Key key;
    std::vector<PlacedBody> bodies;
    Seen seen;
  };
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

void forgetSeen() { keptViews() = {}; }

}  // namespace headless::geometry
