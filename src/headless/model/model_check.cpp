#include "headless/model/model_check.h"

#include <algorithm>

#include "headless/model/family.h"
#include "headless/model/features.h"
#include "headless/model/items.h"
#include "headless/model/parents.h"
#include "headless/model/regenerate.h"
#include "headless/model/retrieve.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace headless {

using creo::ProFeatureStatus;
using creo::ProMdlType;

namespace {

struct CheckRow {
  Check check;
  std::wstring_view name;
  CheckWeight weight;  // without settings
};
constexpr CheckRow kChecks[] = {
    {Check::failedFeatures, L"failed_features", CheckWeight::error},
    {Check::missingModels, L"missing_models", CheckWeight::error},
    {Check::badRelations, L"bad_relations", CheckWeight::error},
    {Check::geometryChecks, L"geometry_checks", CheckWeight::error},
    {Check::suppressedFeatures, L"suppressed_features", CheckWeight::warning},
    {Check::unregenerated, L"unregenerated", CheckWeight::warning},
    {Check::noMaterial, L"no_material", CheckWeight::warning},
};
constexpr std::pair<std::wstring_view, CheckWeight> kWeights[] = {
    {L"error", CheckWeight::error}, {L"warning", CheckWeight::warning}, {L"off", CheckWeight::off}};

bool isSolid(ProMdlType type) {
  return type == ProMdlType::part || type == ProMdlType::assembly || type == ProMdlType::manufacturing;
}

// What each check has to say, one text a finding.
using Texts = std::vector<std::wstring>;

class Findings {
 public:
  explicit Findings(const CheckWeights& weights) : weights_(weights) {}
  [[nodiscard]] bool wants(Check check) const { return weights_.of(check) != CheckWeight::off; }
  void add(Check check, std::wstring text) {
    if (wants(check)) texts_[static_cast<std::size_t>(check)].push_back(std::move(text));
  }
  [[nodiscard]] std::vector<creo::ProModelcheckFinding> take() {
    std::vector<creo::ProModelcheckFinding> all;
    for (const CheckRow& row : kChecks)
      for (std::wstring& text : texts_[static_cast<std::size_t>(row.check)])
        all.push_back({weights_.of(row.check) == CheckWeight::error, std::move(text)});
    return all;
  }

 private:
  const CheckWeights& weights_;
  std::array<Texts, std::size(kChecks)> texts_;
};

void checkFeatures(const Model& model, Findings& findings) {
  for (const ModelFeature& feature : featuresOf(model)) {
    const ProFeatureStatus status = featureStatus(feature);
    const std::wstring label = L"the feature " + featureLabel(feature);
    if (isSuppressed(status)) {
      findings.add(Check::suppressedFeatures, label + L" is suppressed");
      continue;
    }
    if (status == ProFeatureStatus::unregenerated) findings.add(Check::failedFeatures, label + L" isn't regenerated");
    if (const std::wstring lost = lostReference(feature); isInUse(status) && !lost.empty())
      findings.add(Check::failedFeatures, text::format(L"%s %s", label, lost));
    const FeatureRecord* record = feature.record();
    if (record && record->geometryChecks) findings.add(Check::geometryChecks, label + L" has geometry checks");
  }
}

// Layouts have no documents; they can't be missing.
void checkUsedModels(Models& models, const Model& model, Findings& findings) {
  if (!findings.wants(Check::missingModels)) return;
  for (const creo::ProDependency& used : dependencies(model))
    if (isSolid(used.type) && !retrieveModel(models, used.name, used.type))
      findings.add(Check::missingModels, text::format(L"the model %s.%s is missing", used.name, used.typeText));
}

void checkState(const Model& model, Findings& findings) {
  if (regenerationStatus(model) != creo::ProRegenerationStatus::regenerated)
    findings.add(Check::unregenerated, L"the model isn't regenerated");
  if (model.type() == ProMdlType::part && !model.document->record.skeleton && currentMaterial(model).empty())
    findings.add(Check::noMaterial, L"the part has no material");
}

}  // namespace

CheckWeights::CheckWeights() {
  for (const CheckRow& row : kChecks) weights_[static_cast<std::size_t>(row.check)] = row.weight;
}

std::optional<std::wstring> CheckWeights::read(std::wstring_view content) {
  int number = 0;
  for (const std::wstring& whole : text::lines(content)) {
    ++number;
    const std::wstring_view line = text::trimmed(whole);
    if (line.empty() || line.starts_with(L'!')) continue;
    const auto blank = std::min(line.find_first_of(L" \t"), line.size());
    const std::wstring_view name = line.substr(0, blank), word = text::trimmed(line.substr(blank));
    const auto* row = std::find_if(std::begin(kChecks), std::end(kChecks),
                                   [&](auto& entry) { return text::equalNoCase(entry.name, name); });
    const auto* weight = std::find_if(std::begin(kWeights), std::end(kWeights),
                                      [&](auto& item) { return text::equalNoCase(item.first, word); });
    if (row == std::end(kChecks) || weight == std::end(kWeights))
      return text::format(L"%d: a line is the name of a check with error, warning or off", number);
    weights_[static_cast<std::size_t>(row->check)] = weight->second;
  }
  return std::nullopt;
}

std::vector<creo::ProModelcheckFinding> checkModel(Models& models, const Model& model, const CheckWeights& weights) {
  Findings findings(weights);
  checkUsedModels(models, model, findings);
  if (isSolid(model.type())) {
    checkFeatures(model, findings);
    for (std::wstring& fault : relationFaults(model)) findings.add(Check::badRelations, std::move(fault));
    checkState(model, findings);
  }
  return findings.take();
}

}  // namespace headless
