#include "actions/model/feature_choice.h"

#include <optional>

#include "actions/visits.h"
#include "core/feature_codes.h"
#include "core/log.h"
#include "language/compare.h"
#include "text/format.h"
#include "text/numbers.h"

namespace actions {
namespace {

class FeatureChoice {
 public:
  explicit FeatureChoice(const Task& task)
      : how_(task.attribute(L"feat")),
        type_(how_ == L"1" ? core::featureTypeOf(L"feattype", task.attribute(L"feattype")) : 0),
        id_(text::wholeInt(task.attribute(L"featid"))),
        name_(task.attribute(L"featname")) {
    const std::wstring_view id = task.attribute(L"featid");
    if (how_ == L"2" && !id_ && !id.empty())
      core::logWrite(text::format(L"featid is no number of a feature: %s", id), core::kError);
  }
  [[nodiscard]] bool takes(const creo::ProFeature& feature, std::wstring_view name) const {
    if (how_ == L"1") return valueOrNone(creo::ProFeatureTypeGet(feature), L"The type of a feature") == type_;
    if (how_ == L"2") return feature.id == id_;
    if (how_ == L"4") return language::matches(name_, name);
    return how_ == L"3";
  }
  [[nodiscard]] bool endsAtFirst() const { return how_ == L"2" || how_ == L"4"; }

 private:
  std::wstring_view how_;
  int type_;
  std::optional<int> id_;
  std::wstring_view name_;
};

}  // namespace

int visitChosenFeatures(const Task& task,
                        const std::function<void(const creo::ProFeature&, const std::wstring&)>& work) {
  const FeatureChoice choice(task);
  int count = 0;
  const creo::ProError visited = creo::ProSolidFeatVisit(task.model(), [&](const creo::ProFeature& feature) {
    const std::wstring name = nameOrNone(creo::ProFeatureNameGet(feature), L"The name of a feature");
    if (!choice.takes(feature, name)) return creo::ProNoError;
    ++count;
    work(feature, name);
    return choice.endsAtFirst() ? creo::ProStopVisit : creo::ProNoError;
  });
  isWhole(visited, L"The features");
  return count;
}

}  // namespace actions
