// The list of layers.
#include "creo/ProLayer.h"
#include "reports/layer_words.h"
#include "reports/list_rows.h"

namespace reports {
namespace {

struct Layer {
  const ListSubject& subject;
  creo::ProLayer handle;
};

// Empty for what isn't one of Creo's four.
std::wstring status(const Layer& layer) {
  using creo::ProLayerDisplay;
  const auto status = creo::ProLayerDisplaystatusGet(layer.handle);
  if (!status || status.value == ProLayerDisplay::none || status.value == ProLayerDisplay::skip) return {};
  return std::wstring(layerStatusWord(status.value));
}

constexpr ListColumn<Layer> kColumns[] = {
    {L"File name", L"fname", [](const Layer& layer) { return layer.subject.file.name; }},
    {L"File path", L"fpath", [](const Layer& layer) { return layer.subject.file.path; }},
    {L"Layer", L"layer", [](const Layer& layer) { return creo::ProLayerNameGet(layer.handle).value; }},
    {L"Status", L"status", &status},
};

}  // namespace

void layerList(CsvReport& report, const ListSubject& subject) {
  const ListRows<Layer> rows(report, kColumns);
  creo::ProMdlLayerVisit(subject.model, [&](const creo::ProLayer& layer) {
    rows.add({subject, layer});
    return creo::ProNoError;
  });
}

}  // namespace reports
