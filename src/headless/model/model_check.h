// What is to be said about a model as a whole.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "creo/ProModelCheck.h"
#include "headless/model/model.h"

namespace headless {

class Models;  // models.h

enum class Check {
  failedFeatures,
  missingModels,
  badRelations,
  geometryChecks,
  suppressedFeatures,
  unregenerated,
  noMaterial,
};
enum class CheckWeight { error, warning, off };

class CheckWeights {
 public:
  CheckWeights();
  // Takes the lines "check weight" over; the fault of the first line that is otherwise: "3: ...".
  std::optional<std::wstring> read(std::wstring_view content);
  [[nodiscard]] CheckWeight of(Check check) const { return weights_[static_cast<std::size_t>(check)]; }

 private:
  std::array<CheckWeight, 7> weights_;
};

// In the order of the checks; changes nothing.
std::vector<creo::ProModelcheckFinding> checkModel(Models& models, const Model& model, const CheckWeights& weights);

}  // namespace headless
