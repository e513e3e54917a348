#include "creo/ProModelCheck.h"

#include "headless/creo/operation.h"
#include "headless/model/model_check.h"
#include "os/text_files.h"

namespace creo {

using headless::Model;
using State = headless::Session::State;

Got<std::vector<ProModelcheckFinding>> ProModelcheckExecute(ProMdl model, const std::wstring& settings) {
  using Findings = std::vector<ProModelcheckFinding>;
  return headless::onModel("ProModelcheckExecute", model, [&](State& state, Model& m) -> Got<Findings> {
    headless::CheckWeights weights;
    if (!settings.empty()) {
      const auto content = os::readText(settings);
      if (!content) return ProNotFound;
      if (const auto fault = weights.read(content.value)) {
        state.showMessage(settings + L':' + *fault);
        return ProGeneralError;
      }
    }
    return headless::checkModel(state.models, m, weights);
  });
}

}  // namespace creo
