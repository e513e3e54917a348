// The report on layers: one column, a line for each layer.
#include "creo/ProLayer.h"
#include "language/compare.h"
#include "reports/layer_words.h"
#include "reports/report_row.h"
#include "text/format.h"
#include "text/letters.h"

namespace reports {
namespace {

using namespace actions;
using namespace language;

// What the column's lines hold.
struct LayerLines {
  std::wstring_view filter;
  bool name, status, count;
  explicit LayerLines(const Task& task)
      : filter(task.attribute(L"layerFilter")),
        name(task.isTrue(L"name")),
        status(task.isTrue(L"status")),
        count(task.isTrue(L"noOfElements")) {}
};

// The filter stands in the title where it tells something that the lines don't.
std::wstring title(const LayerLines& wanted) {
  const bool tells = !wanted.filter.empty() && !(wanted.name && wanted.filter == L"*");
  std::wstring title = tells ? std::wstring(wanted.filter) + L" - Layer" : L"Layer";
  if (wanted.status) title += L" - Status";
  if (wanted.count) title += L" - Number of Elements";
  return title;
}

std::wstring line(const LayerLines& wanted, const creo::ProLayer& layer, const std::wstring& name) {
  constexpr std::wstring_view kBetween = L" - ";
  std::wstring line = wanted.name ? name : std::wstring();
  if (wanted.status) {
    if (const auto status = creo::ProLayerDisplaystatusGet(layer))
      line.append(wanted.name ? kBetween : L"").append(text::lower(layerStatusWord(status.value)));
  }
  if (wanted.count) {
    if (const auto items = creo::ProLayerItemsPopulate(layer))
      line.append(wanted.name || wanted.status ? kBetween : L"").append(text::format(L"%d", items.value.size()));
  }
  return line;
}

std::wstring lines(const LayerLines& wanted, creo::ProMdl model) {
  const bool allPass = wanted.filter.empty() || wanted.filter == L"*";
  std::wstring lines;
  creo::ProMdlLayerVisit(model, [&](const creo::ProLayer& layer) {
    const auto name = creo::ProLayerNameGet(layer);
    if (allPass || (name && matches(wanted.filter, name.value))) appendLine(lines, line(wanted, layer, name.value));
    return creo::ProNoError;
  });
  return lines;
}

Outcome reportLayer(const Task& task) {
  const auto row = ReportRow::of(task);
  if (!row) return done;
  const LayerLines wanted(task);
  row->column(L"layer", title(wanted));
  row->value(L"layer", lines(wanted, task.model()));
  return done;
}

constexpr Attribute kParts[] = {
    {.name = L"layerFilter", .kind = Kind::pattern, .about = "layers; empty: all"},
    columnSwitch(L"name", "the layer's name"),
    columnSwitch(L"status", "how it shows"),
    columnSwitch(L"noOfElements", "how many items are on it"),
};
constexpr auto kAttributes = reportAttributes(kParts);

constexpr Action kActions[] = {
    {.key = L"reportLayer",
     .place = 27,
     .title = L"Report Layer",
     .attributes = kAttributes,
     .effects = {.changes = Touched::reports},
     .about = "reports the model's layers in one column, a line each",
     .function = &reportLayer},
};

}  // namespace

std::span<const actions::Action> layerReportActions() { return kActions; }

}  // namespace reports
