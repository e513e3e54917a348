// Models for viewers and other systems of which nothing but a file leaves.
#include "actions/exports/export_frame.h"
#include "actions/families.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProProductview.h"

namespace actions {
namespace {

using namespace engine;
using creo::ProProductviewFormat;

// The format is no longer written; lists that still ask for it are told so.
Outcome exportset(const Task& task) {
  if (const auto ended = begin(task, {.title = core::msgText(238)})) return *ended;
  core::logWrite(L"'Export Set' support ended with KV 4.1. Please remove this action or downgrade to 4.1.",
                 core::kError);
  return done;
}

struct ViewerFormat {
  std::wstring_view name;
  ProProductviewFormat format;
};
constexpr ViewerFormat kViewerFormats[] = {
    {L".ed", ProProductviewFormat::ed}, {L".edz", ProProductviewFormat::edz}, {L".pvs", ProProductviewFormat::pvs}};

creo::ProError writeProductView(creo::ProMdl model, const std::wstring& path, std::wstring_view exportAs) {
  auto options = creo::ProProductviewexportoptsAlloc();
  if (!options) return options.error;
  creo::ProError result = creo::ProBadInputs;
  for (const ViewerFormat& one : kViewerFormats)
    if (one.name == exportAs) result = creo::ProProductviewexportoptsFormatSet(options.value, one.format);
  if (result == creo::ProNoError) result = creo::ProProductviewFormattedExport(model, path, options.value);
  creo::ProProductviewexportoptsFree(options.value);
  return result;
}

Outcome exportProductView(const Task& task) {
  const ExportTarget target = beginExport(task, {.title = core::msgText(244)});
  if (target.ended) return *target.ended;
  return endExport(writeProductView(task.model(), target.path, task.attribute(L"exportas")), 245);
}

constexpr ActionFunction kActions[] = {
    {L"exportset", &exportset},
    {L"exportProductView", &exportProductView},
};

}  // namespace

std::span<const ActionFunction> viewerExportActions() { return kActions; }

}  // namespace actions
