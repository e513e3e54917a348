// Models for viewers and other systems of which nothing but a file leaves.
#include "actions/exports/export_frame.h"
#include "core/log.h"
#include "creo/ProProductview.h"

namespace actions {
namespace {

using creo::ProProductviewFormat;

// The format is no longer written; lists that still ask for it are told so.
Outcome exportset(const Task&) {
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
  for (const ViewerFormat& entry : kViewerFormats)
    if (entry.name == exportAs) result = creo::ProProductviewexportoptsFormatSet(options.value, entry.format);
  if (result == creo::ProNoError) result = creo::ProProductviewFormattedExport(model, path, options.value);
  creo::ProProductviewexportoptsFree(options.value);
  return result;
}

Outcome exportProductView(const Task& task) {
  const auto target = exportTarget(task, {});
  if (!target) return done;
  return endExport(writeProductView(task.model(), *target, task.attribute(L"exportas")), Message::creoViewFailed);
}

constexpr Attribute kFormat[] = {
    {.name = L"exportas", .kind = Kind::word, .words = L".ed|.edz|.pvs", .need = Need::needed, .about = "the format"},
};
constexpr auto kAttributes = joined(kTarget, kFormat);

constexpr Action kActions[] = {
    {.key = L"exportset",
     .place = 136,
     .group = Group::ownModelTest,
     .title = Message::exportSet,
     .effects = {.reads = Touched::nothing},
     .about = "says that its format is no longer written",
     .function = &exportset},
    {.key = L"exportProductView",
     .place = 138,
     .group = Group::ownModelTest,
     .title = Message::exportCreoView,
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::users, .changes = Touched::files, .takenBack = false},
     .about = "writes the model for Creo's viewer",
     .function = &exportProductView},
};

}  // namespace

std::span<const Action> viewerExportActions() { return kActions; }

}  // namespace actions
