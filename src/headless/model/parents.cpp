#include "headless/model/parents.h"

#include <algorithm>
#include <optional>
#include <unordered_set>

#include "text/format.h"

namespace headless {

namespace {

const std::vector<int>& parentsOf(const ModelFeature& feature) {
  static const std::vector<int> kNone;
  const FeatureRecord* record = feature.record();
  return record ? record->parents : kNone;
}

// A parent comes before its child, so that no circle is followed.
bool isBefore(const ModelFeature& parent, const ModelFeature& child) {
  return parent.place.number < child.place.number;
}

// known: the features that were looked at; all of them are there.
bool areThere(const ModelFeature& child, std::unordered_set<int>& known) {
  return std::ranges::all_of(parentsOf(child), [&](int id) {
    if (!known.insert(id).second) return true;
    const auto parent = featureOf(*child.model, id);
    return parent && isBefore(*parent, child) && isInUse(featureStatus(*parent)) && areThere(*parent, known);
  });
}

}  // namespace

std::vector<int> withChildren(const Model& solid, const std::vector<int>& features) {
  std::vector<int> all;
  std::unordered_set<int> taken;
  const auto take = [&](int id) {
    if (taken.insert(id).second) all.push_back(id);
  };
  std::ranges::for_each(features, take);
  for (const ModelFeature& feature : featuresOf(solid))
    if (std::ranges::any_of(parentsOf(feature), [&](int id) { return taken.contains(id); })) take(feature.place.id);
  return all;
}

std::vector<int> childrenOf(const Model& solid, int feature) {
  std::vector<int> children;
  for (const ModelFeature& entry : featuresOf(solid))
    if (std::ranges::find(parentsOf(entry), feature) != parentsOf(entry).end()) children.push_back(entry.place.id);
  return children;
}

std::wstring lostReference(const ModelFeature& feature) {
  const auto lost = [](const std::wstring& parent, std::wstring_view why) {
    return text::format(L"refers to the feature %s, which %s", parent, std::wstring(why));
  };
  for (const int id : parentsOf(feature)) {
    const auto parent = featureOf(*feature.model, id);
    if (!parent) return lost(std::to_wstring(id), L"isn't there");
    if (!isBefore(*parent, feature)) return lost(featureLabel(*parent), L"comes behind it");
    if (!isInUse(featureStatus(*parent))) return lost(featureLabel(*parent), L"is suppressed");
  }
  return {};
}

bool keepsParents(const ModelFeature& feature) {
  std::unordered_set<int> known;
  return areThere(feature, known);
}

}  // namespace headless
