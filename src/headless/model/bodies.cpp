#include "headless/model/bodies.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>

#include "headless/model/density.h"
#include "headless/model/features.h"
#include "headless/model/gears.h"
#include "headless/model/measures.h"
#include "headless/model/models.h"
#include "headless/model/placed.h"
#include "headless/model/units.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace headless {

using creo::Got;
using creo::ProMassProperty;
using creo::ProMdl;
using creo::ProOutline;
using creo::ProTransform;
using creo::ProVector;
using geometry::Primitive;

namespace {

constexpr std::size_t kMostKept = 1000;

// ---- what a part's body is made of

Primitive primitiveOf(const Model& part, const PrimitiveRecord& record, Measurer& measurer) {
  Primitive made;
  made.kind = record.type;
  made.use = record.use;
  made.size = measurer.vector(record.size, "size");
  made.diameter = measurer.number(record.diameter, "diameter");
  made.topDiameter = measurer.number(record.topDiameter, "topDiameter");
  made.length = measurer.number(record.length, "length");
  if (record.angle.index() != 0) made.angle = measurer.number(record.angle, "angle");
  for (const Measures& point : record.profile)
    made.profile.push_back({measurer.number(point[0], "profile"), measurer.number(point[1], "profile")});
  if (!record.file.empty()) {
    made.file = part.document->folder + text::fromUtf8(record.file);
  }
  made.step = record.step;
  if (record.type == geometry::PrimitiveKind::import) made.scale = inSystem(1, "mm", part.document->record);
  made.placement = measurer.placement(record.placement.get());
  return made;
}

// features: gets the feature of each, 0 for one without; null where nobody asks.
std::vector<Primitive> primitivesOf(const Model& part, std::vector<int>* features = nullptr) {
  std::vector<Primitive> made;
  Measurer measurer(part);
  const LeftOut leftOut(part);
  int number = 0;
  for (const PrimitiveRecord& record : part.document->solid().primitives) {
    ++number;
    if (record.feature != 0 && leftOut.has(record.feature)) continue;
    if (!hasGeometry(part, record.feature)) continue;
    try {
      made.push_back(primitiveOf(part, record, measurer));
      if (features) features->push_back(record.feature);
    } catch (const MeasureFault& fault) {
      throw MeasureFault{L"primitive " + std::to_wstring(number) + L": " + fault.reason, record.feature};
    }
  }
  return made;
}

// The room that the teeth of a gear take.
Primitive filling(const geometry::Gear& gear) {
  Primitive ring;
  ring.kind = geometry::PrimitiveKind::revolution;
  const double inner = std::min(gear.tip, gear.root) / 2, outer = std::max(gear.tip, gear.root) / 2;
  ring.profile = {{inner, 0}, {outer, 0}, {outer, gear.length}, {inner, gear.length}};
  ring.placement = gear.place;
  return ring;
}

// Those of a part without the teeth of its gears.
std::vector<Primitive> withoutTeeth(const Model& part, const std::vector<PartGear>& gears) {
  std::vector<int> features;
  std::vector<Primitive> all = primitivesOf(part, &features), rest;
  for (std::size_t i = 0; i < all.size(); ++i)
    if (features[i] == 0 || std::ranges::find(gears, features[i], &PartGear::feature) == gears.end())
      rest.push_back(std::move(all[i]));
  for (const PartGear& gear : gears)
    if (gear.feature == 0) rest.push_back(filling(gear.teeth));
  return rest;
}

std::vector<Primitive> drawnPrimitives(const Model& part, const std::vector<PartGear>& gears, Teeth teeth) {
  return teeth == Teeth::asTheyAre ? primitivesOf(part) : withoutTeeth(part, gears);
}

// All that a body depends on, as bytes; of a file its size and time.
std::string keyOf(const std::vector<Primitive>& primitives) {
  std::string key;
  const auto add = [&key](auto... values) {
    const double numbers[] = {static_cast<double>(values)...};
    key.append(reinterpret_cast<const char*>(numbers), sizeof numbers);
  };
  const auto addVector = [&add](const ProVector& v) { add(v.x, v.y, v.z); };
  for (const Primitive& primitive : primitives) {
    add(static_cast<int>(primitive.kind), static_cast<int>(primitive.use), primitive.diameter, primitive.topDiameter,
        primitive.length, primitive.angle);
    add(primitive.scale, primitive.profile.size(), primitive.file.size());
    for (const ProVector& v :
         {primitive.size, primitive.placement.xAxis, primitive.placement.zAxis, primitive.placement.origin})
      addVector(v);
    for (const auto& [a, b] : primitive.profile) add(a, b);
    if (!primitive.step.empty()) add(primitive.step.size(), std::hash<std::string_view>()(primitive.step));
    if (primitive.file.empty()) continue;
    key += text::toUtf8(primitive.file);
    const auto size = os::files().size(primitive.file);
    const auto time = os::files().modified(primitive.file);
    const os::FileTime& t = time.value;
    add(size ? size.value : 0, t.year, t.month, t.day, t.hour, t.minute, t.second, t.millisecond);
  }
  return key;
}

// ---- assemblies

// Walks down from a solid and remembers what each model gave, so that the cost is that of the components, however often
// a model is used. An assembly inside itself counts for nothing.
template <class Key, class Value>
class Walk {
 public:
  // made: () -> Got<Value>.
  template <class Make>
  Got<Value> once(const Key& key, ProMdl model, Make made) {
    if (const auto known = known_.find(key); known != known_.end()) return known->second;
    if (!inside_.insert(model).second) return creo::ProNotFound;
    Got<Value> value = made();
    inside_.erase(model);
    known_.emplace(key, value);
    return value;
  }

 private:
  std::map<Key, Got<Value>> known_;
  std::set<ProMdl> inside_;
};

void addWeighted(ProVector& sum, const ProVector& v, double weight) {
  sum.x += v.x * weight;
  sum.y += v.y * weight;
  sum.z += v.z * weight;
}

class MassWalk {
 public:
  MassWalk(Bodies& bodies, const Models& models) : bodies_(bodies), models_(models) {}

  Got<ProMassProperty> of(const Model& solid) {
    return walk_.once(solid.handle, solid.handle,
                      [&] { return solid.type() == creo::ProMdlType::part ? ofPart(solid) : ofAssembly(solid); });
  }

 private:
  Got<ProMassProperty> ofPart(const Model& part) {
    const auto body = bodies_.body(part);
    if (!body) return body.error;
    const geometry::Measured& measured = geometry::measure(*body.value);
    if (measured.volume == 0) return creo::ProNotFound;  // quilts alone
    const double density = partDensity(part).value_or(1);
    return ProMassProperty{measured.volume, measured.area, density, measured.volume * density, measured.centre};
  }

  Got<ProMassProperty> ofAssembly(const Model& assembly) {
    ProMassProperty sum;
    for (const PlacedModel& placed : placedComponents(models_, assembly)) {
      const auto entry = of(*placed.model);
      if (entry.error == creo::ProNotFound) continue;
      if (!entry) return entry.error;
      const double length = unitRatio("m", *placed.model, assembly);
      const double mass = entry.value.mass * unitRatio("kg", *placed.model, assembly);
      sum.volume += entry.value.volume * length * length * length;
      sum.surfaceArea += entry.value.surfaceArea * length * length;
      sum.mass += mass;
      ProVector centre;
      addWeighted(centre, entry.value.gravityCenter, length);
      addWeighted(sum.gravityCenter, creo::transformPoint(placed.place, centre), mass);
    }
    if (!(sum.volume > 0) || !(sum.mass > 0)) return creo::ProNotFound;
    sum.density = sum.mass / sum.volume;
    ProVector centre;
    addWeighted(centre, sum.gravityCenter, 1 / sum.mass);
    sum.gravityCenter = centre;
    return sum;
  }

  Bodies& bodies_;
  const Models& models_;
  Walk<ProMdl, ProMassProperty> walk_;
};

// The box of a model depends on how it is turned; where it is shifted to only shifts the box.
class OutlineWalk {
 public:
  OutlineWalk(Bodies& bodies, const Models& models) : bodies_(bodies), models_(models) {}

  Got<ProOutline> of(const Model& solid, const ProTransform& into) {
    ProTransform turned = into;
    turned.origin = {};
    const Key key{solid.handle,   turned.xAxis.x, turned.xAxis.y, turned.xAxis.z,
                  turned.zAxis.x, turned.zAxis.y, turned.zAxis.z};
    auto box = walk_.once(key, solid.handle, [&] {
      return solid.type() == creo::ProMdlType::part ? ofPart(solid, turned) : ofAssembly(solid, turned);
    });
    if (!box) return box;
    addWeighted(box.value.min, into.origin, 1);
    addWeighted(box.value.max, into.origin, 1);
    return box;
  }

 private:
  using Key = std::tuple<ProMdl, double, double, double, double, double, double>;

  Got<ProOutline> ofPart(const Model& part, const ProTransform& turned) {
    const auto body = bodies_.body(part);
    if (!body) return body.error;
    return geometry::outline(*body.value, turned);
  }

  Got<ProOutline> ofAssembly(const Model& assembly, const ProTransform& turned) {
    std::optional<ProOutline> sum;
    for (const PlacedModel& placed : placedComponents(models_, assembly)) {
      ProTransform place = creo::transformed(turned, placed.place);
      const ProVector origin = place.origin;
      place.origin = {};
      const auto item = of(*placed.model, place);
      if (item.error == creo::ProNotFound) continue;
      if (!item) return item.error;
      const double length = unitRatio("m", *placed.model, assembly);
      ProVector low = origin, high = origin;
      addWeighted(low, item.value.min, length);
      addWeighted(high, item.value.max, length);
      if (!sum) sum = ProOutline{low, high};
      for (const auto axis : {&ProVector::x, &ProVector::y, &ProVector::z}) {
        sum->min.*axis = std::min(sum->min.*axis, low.*axis);
        sum->max.*axis = std::max(sum->max.*axis, high.*axis);
      }
    }
    if (!sum) return creo::ProNotFound;
    return *sum;
  }

  Bodies& bodies_;
  const Models& models_;
  Walk<Key, ProOutline> walk_;
};

std::wstring faultLine(const Model& model, const std::wstring& reason) {
  return model.name + L'.' + creo::typeExtension(model.type()) + L": " + reason;
}

// make: throws MeasureFault.
Got<geometry::BodyPtr> bodyOr(const Models& models, const Model& part, const std::function<geometry::Built()>& make) {
  std::wstring fault;
  try {
    geometry::Built made = make();
    if (made.body) return made.body;
    fault = std::move(made.fault);
  } catch (const MeasureFault& measure) {
    fault = measure.reason;
  }
  if (fault.empty()) return creo::ProNotFound;
  models.message(faultLine(part, fault));
  return creo::ProGeneralError;
}

using Kept = std::unordered_map<std::string, geometry::Built>;

// What is asked for again moves from those before to the others.
geometry::Built keptOr(Kept& kept, Kept& before, const std::string& key, const std::function<geometry::Built()>& make) {
  if (const auto known = kept.find(key); known != kept.end()) return known->second;
  const auto older = before.find(key);
  geometry::Built made = older == before.end() ? make() : older->second;
  if (kept.size() >= kMostKept) before = std::exchange(kept, {});
  return kept.emplace(key, std::move(made)).first->second;
}

bool hasImport(const std::vector<Primitive>& primitives) {
  return std::ranges::find(primitives, geometry::PrimitiveKind::import, &Primitive::kind) != primitives.end();
}

// What a session that follows in this process finds: bodies that need no file and no other program. By thread, as
// sessions are.
struct KeptHere {
  Kept kept, before;
};
KeptHere& keptHere() {
  static thread_local KeptHere here;
  return here;
}

geometry::Built builtHere(const std::string& key, const std::vector<Primitive>& primitives) {
  if (hasImport(primitives)) return geometry::build(primitives);
  return keptOr(keptHere().kept, keptHere().before, key, [&] { return geometry::build(primitives); });
}

}  // namespace

geometry::Built Bodies::built(const Model& part, const std::vector<Primitive>& primitives) {
  const std::string key = keyOf(primitives);
  return keptOr(kept_, keptBefore_, key, [&] {
    geometry::Built made = builtHere(key, primitives);
    for (const std::wstring& warning : made.warnings) models_.message(L"warning: " + faultLine(part, warning));
    return made;
  });
}

void Bodies::buildAhead(const std::vector<const Model*>& parts, Teeth teeth) {
  std::unordered_map<std::string, std::size_t> places;  // of what is open, by their keys
  std::vector<std::vector<Primitive>> open;
  for (const Model* part : parts) {
    if (open.size() == kMostKept) break;  // more would drive the first ones out
    try {
      std::vector<Primitive> primitives = drawnPrimitives(*part, gearsOf(*part), teeth);
      if (primitives.empty() || hasImport(primitives)) continue;
      std::string key = keyOf(primitives);
      const bool isKnown = kept_.contains(key) || keptBefore_.contains(key) || keptHere().kept.contains(key) ||
                           keptHere().before.contains(key);
      if (!isKnown && places.try_emplace(std::move(key), open.size()).second) open.push_back(std::move(primitives));
    } catch (const MeasureFault&) {
      continue;  // it is told where the body is asked for
    }
  }
  if (open.size() < 2) return;
  std::vector<std::optional<geometry::Built>> made = geometry::buildAll(open);
  for (const auto& [key, place] : places)
    if (auto& body = made[place]) keptOr(keptHere().kept, keptHere().before, key, [&] { return std::move(*body); });
}

Got<geometry::BodyPtr> Bodies::body(const Model& part) {
  return bodyOr(models_, part, [&] { return built(part, primitivesOf(part)); });
}

Got<DrawnBody> Bodies::drawn(const Model& part, Teeth teeth) {
  DrawnBody drawn;
  const auto body = bodyOr(models_, part, [&] {
    const std::vector<PartGear> gears = gearsOf(part);
    for (const PartGear& gear : gears) {
      drawn.gears.push_back(gear.teeth);
      drawn.gears.back().isToothed = teeth == Teeth::asTheyAre;
    }
    return built(part, drawnPrimitives(part, gears, teeth));
  });
  if (!body) return body.error;
  drawn.body = body.value;
  return drawn;
}

std::wstring Bodies::fault(const Model& part) {
  if (part.type() != creo::ProMdlType::part || part.document->record.solid.text.empty()) return {};
  const auto lineOf = [&](int id, const std::wstring& reason) {
    const auto feature = id == 0 ? std::nullopt : featureOf(part, id);
    return feature ? L"the feature " + featureLabel(*feature) + L" can't be built: " + reason : reason;
  };
  try {
    std::vector<int> features;
    const std::vector<Primitive> primitives = primitivesOf(part, &features);
    if (hasImport(primitives)) return {};
    const geometry::Built made = built(part, primitives);
    if (made.fault.empty()) return {};
    return lineOf(made.faulty == 0 ? 0 : features[static_cast<std::size_t>(made.faulty) - 1], made.fault);
  } catch (const MeasureFault& fault) {
    return lineOf(fault.feature, fault.reason);
  }
}

Got<ProMassProperty> Bodies::mass(const Model& solid) {
  try {
    return MassWalk(*this, models_).of(solid);
  } catch (const MeasureFault& fault) {
    models_.message(faultLine(solid, fault.reason));
    return creo::ProGeneralError;
  }
}

Got<ProOutline> Bodies::outline(const Model& solid, const ProTransform& into) {
  try {
    return OutlineWalk(*this, models_).of(solid, into);
  } catch (const MeasureFault& fault) {
    models_.message(faultLine(solid, fault.reason));
    return creo::ProGeneralError;
  }
}

}  // namespace headless
