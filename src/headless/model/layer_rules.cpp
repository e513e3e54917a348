#include "headless/model/layer_rules.h"

#include <algorithm>
#include <set>

#include "creo/ProAsmcomp.h"
#include "creo/ProFeatureCreate.h"
#include "creo/ProFeatureEdit.h"
#include "creo/ProXsec.h"
#include "headless/model/features.h"
#include "headless/model/items.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace headless {
namespace {

using creo::ProItemType;
using creo::ProModelitem;

constexpr int kDatumAxisFeature = 926, kDatumCurveFeature = 949;
constexpr std::wstring_view kFeature = L"feature";

struct Kind {
  std::wstring_view word;
  ProItemType type;
  int featureType = 0;
};
constexpr Kind kKinds[] = {
    {kFeature, ProItemType::feature},
    {L"component", ProItemType::feature, creo::kComponentFeature},
    {L"datum plane", ProItemType::feature, creo::kDatumPlaneFeature},
    {L"axis", ProItemType::feature, kDatumAxisFeature},
    {L"datum point", ProItemType::feature, creo::kDatumPointFeature},
    {L"datum curve", ProItemType::feature, kDatumCurveFeature},
    {L"coordinate system", ProItemType::feature, creo::kCsysFeature},
    {L"dimension", ProItemType::dimension},
    {L"reference dimension", ProItemType::referenceDimension},
    {L"cross section", ProItemType::crossSection},
    {L"view", ProItemType::view},
};

// "feature 916" names a type by Creo's code.
bool takeKind(std::wstring_view word, LayerRule& rule) {
  for (const Kind& kind : kKinds) {
    if (!text::equalNoCase(word, kind.word)) continue;
    rule.type = kind.type;
    rule.featureType = kind.featureType;
    return true;
  }
  if (word.size() <= kFeature.size() || !text::equalNoCase(word.substr(0, kFeature.size()), kFeature)) return false;
  const std::wstring_view code = text::trimmed(word.substr(kFeature.size()));
  if (!std::all_of(code.begin(), code.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; })) return false;
  rule.featureType = text::parseInt(code);
  return rule.featureType > 0;
}

// The last star takes back one letter more for each try, so that no pattern costs more than its length times the
// text's.
bool fits(std::wstring_view pattern, std::wstring_view text) {
  std::size_t p = 0, t = 0, star = pattern.npos, tried = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == L'*') {
      star = p++;
      tried = t;
    } else if (p < pattern.size() && pattern[p] == text[t]) {
      ++p;
      ++t;
    } else if (star != pattern.npos) {
      p = star + 1;
      t = ++tried;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == L'*') ++p;
  return p == pattern.size();
}

// Id and name of the things that the rule may find.
std::vector<NamedItem> candidates(const Model& model, const LayerRule& rule) {
  if (rule.featureType == 0) return namedItems(model, rule.type);
  std::vector<NamedItem> items;
  for (const ModelFeature& feature : featuresOf(model))
    if (featureType(feature) == rule.featureType) items.push_back({feature.place.id, featureName(feature)});
  return items;
}

using Key = std::pair<ProItemType, int>;
Key keyOf(const ItemRecord& item) { return {item.type, item.id}; }

// What the rules find beyond `known`, which has it then too.
std::vector<Key> found(const Model& model, const LayerRecord& layer, std::set<Key>& known) {
  std::vector<Key> all;
  if (!layer.ruleBased) return all;
  for (const std::string& entry : layer.rules) {
    const auto rule = layerRule(entry);
    if (!rule) continue;
    for (const NamedItem& item : candidates(model, *rule))
      if (fits(rule->pattern, text::upper(item.name)) && known.insert({rule->type, item.id}).second)
        all.emplace_back(rule->type, item.id);
  }
  return all;
}

std::set<Key> onLayer(const LayerRecord& layer) {
  std::set<Key> keys;
  for (const ItemRecord& item : layer.items) keys.insert(keyOf(item));
  return keys;
}

}  // namespace

std::optional<LayerRule> layerRule(std::string_view text) {
  LayerRule rule;
  std::set<std::wstring> seen;
  const std::wstring whole = text::fromUtf8(text);
  for (const std::wstring& condition : text::split(whole, L'&')) {
    const std::size_t equals = condition.find(L'=');
    if (equals == condition.npos) return std::nullopt;
    const std::wstring what = text::upper(text::trimmed(std::wstring_view(condition).substr(0, equals)));
    std::wstring_view value = std::wstring_view(condition).substr(equals + 1);
    if (value.starts_with(L'=')) value.remove_prefix(1);
    value = text::trimmed(value);
    if (value.empty() || !seen.insert(what).second) return std::nullopt;
    if (what == L"NAME") {
      rule.pattern = text::upper(value);
    } else if (what != L"TYPE" || !takeKind(value, rule)) {
      return std::nullopt;
    }
  }
  return rule;
}

std::vector<ProModelitem> foundByRules(const Model& model, const LayerRecord& layer) {
  std::vector<ProModelitem> items;
  std::set<Key> known = onLayer(layer);
  for (const auto& [type, id] : found(model, layer, known)) items.push_back({type, id, model.handle, {}});
  return items;
}

bool settleRules(const Model& model, LayerRecord& layer) {
  std::set<Key> known;
  if (layer.associativeRules) {
    (void)found(model, layer, known);
    return std::erase_if(layer.items, [&](const ItemRecord& item) { return known.contains(keyOf(item)); }) > 0;
  }
  known = onLayer(layer);
  const std::vector<Key> fresh = found(model, layer, known);
  for (const auto& [type, id] : fresh) {
    ItemRecord& added = layer.items.emplace_back();
    added.type = type;
    added.id = id;
  }
  return !fresh.empty();
}

}  // namespace headless
