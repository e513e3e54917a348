// What a model holds one by one: views, layers, features, notes, the models that it uses, representations, interfaces.
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "creo/ProNote.h"
#include "creo/ProState.h"
#include "reports/layer_words.h"
#include "reports/sheet/items.h"
#include "reports/sheet/sections.h"
#include "text/format.h"
#include "text/numbers.h"

namespace reports::sheet {
namespace {

using core::Message;

constexpr double kAlternativeColumn = 150, kSecondColumn = 250, kIdColumn = 450;
// Creo's number of the feature type of a component interface.
constexpr int kInterfaceFeature = 1118;

void debug(std::wstring_view line) { core::logIndented(line, core::kDebug, 1); }

// "First 5 features".
void firstTitle(const Subject& subject, std::wstring_view count, Message what) {
  subject.page.sectionTitle(text::format(L"%s %s %s", core::msgText(Message::first), count, core::msgText(what)));
}

void listed(Page& page, std::wstring_view name) { page.line(name, kRowSize, kMargin, kListStep); }

void featureRow(Page& page, const creo::ProFeature& feature) {
  debug(L"Start KE Write Visit Action");
  const auto name = creo::ProModelitemNameGet(itemOf(feature));
  if (!name && name.error != creo::ProNotFound)
    tellError(text::format(L"Failure in pdfKEWriteVisitAction - ProModelitemNameGet %d", static_cast<int>(name.error)));
  const auto type = creo::ProFeatureTypenameGet(feature);
  if (!type)
    tellError(
        text::format(L"Failure in pdfKEWriteVisitAction - ProFeatureTypenameGet: %d", static_cast<int>(type.error)));
  const std::wstring shown = nameOrUnknown(name), id = text::format(L"%d", feature.id);
  page.row({{kMargin, shown}, {kSecondColumn, type.value}, {kIdColumn, id}}, kRowSize, kTableStep);
  debug(L"End KE Write Visit Action");
}

// The lines of a note stand closer than notes do.
void noteLines(const Subject& subject, const creo::ProNote& note) {
  debug(L"Start Note Write Visit Action");
  double step = kListStep;
  for (const std::wstring& line : subject.unread.readAny(creo::ProNoteTextGet(note), L"texts of notes")) {
    subject.page.line(line, kRowSize, kMargin, step);
    step = kTableStep;
  }
  debug(L"End Note Write Visit Action");
}

}  // namespace

void viewSection(const Subject& subject) {
  if (!subject.wants(L"views")) return;
  tell(L"Report views");
  title(subject, Message::views);
  subject.page.heads(
      {{kMargin, core::msgText(Message::viewName)}, {kAlternativeColumn, core::msgText(Message::alternativeName)}});
  const auto views = creo::ProViewNamesGet(subject.model);
  subject.unread.readAny(views, L"views");
  for (std::size_t i = 0; i < views.value.names.size(); ++i)
    subject.page.row({{kMargin, views.value.names[i]}, {kAlternativeColumn, views.value.alternateNames[i]}}, kRowSize,
                     kTableStep);
  subject.page.endSection();
}

void layerSection(const Subject& subject) {
  if (!subject.wants(L"layers")) return;
  tell(L"Report layers");
  title(subject, Message::layers);
  subject.page.heads(
      {{kMargin, core::msgText(Message::layerName)}, {kSecondColumn, core::msgText(Message::layerStatus)}});
  const creo::ProError result = creo::ProMdlLayerVisit(subject.model, [&](const creo::ProLayer& layer) {
    const std::wstring name = subject.unread.read(creo::ProLayerNameGet(layer), L"names of layers");
    const auto status = creo::ProLayerDisplaystatusGet(layer);
    subject.unread.read(status, L"statuses of layers");
    subject.page.row({{kMargin, name}, {kSecondColumn, status ? layerStatusWord(status.value) : L""}}, kRowSize,
                     kListStep);
    return creo::ProNoError;
  });
  subject.unread.visited(result, L"layers");
  subject.page.endSection();
}

void firstFeatureSection(const Subject& subject) {
  if (!subject.wants(L"firstKEs")) return;
  tell(L"Report first # features");
  const std::wstring_view count = subject.task.attribute(L"xKEs");
  firstTitle(subject, count, Message::features);
  subject.page.heads(
      {{kMargin, core::msgText(Message::name)}, {kSecondColumn, core::msgText(Message::type)}, {kIdColumn, L"ID"}});
  int left = text::parseInt(count);
  const creo::ProError result = visitFeatures(subject, [&](const creo::ProFeature& feature) {
    if (left-- <= 0) return creo::ProStopVisit;
    featureRow(subject.page, feature);
    return creo::ProNoError;
  });
  if (result == creo::ProNotFound) tell(L"no features found");
  subject.page.endSection();
}

void firstNoteSection(const Subject& subject) {
  if (!subject.wants(L"firstNotes")) return;
  tell(L"Report first # annotations");
  const std::wstring_view count = subject.task.attribute(L"xNotes");
  firstTitle(subject, count, Message::annotations);
  int left = text::parseInt(count);
  const creo::ProError result = creo::ProMdlNoteVisit(subject.model, [&](const creo::ProNote& note) {
    if (left-- <= 0) return creo::ProStopVisit;
    noteLines(subject, note);
    return creo::ProNoError;
  });
  subject.unread.visited(result, L"notes");
  if (result == creo::ProNotFound) tell(L"no notes found");
  subject.page.endSection();
}

void dependencySection(const Subject& subject) {
  if (!subject.wants(L"dependen")) return;
  tell(L"Report external dependencies");
  title(subject, Message::externalDependencies);
  subject.page.heads({{kMargin, core::msgText(Message::name)}, {kSecondColumn, core::msgText(Message::type)}});
  const auto dependencies = creo::ProMdlDependenciesList(subject.model);
  for (const creo::ProDependency& used : subject.unread.readAny(dependencies, L"dependencies"))
    subject.page.row({{kMargin, used.name}, {kSecondColumn, used.typeText}}, kRowSize, kListStep);
  subject.page.endSection();
}

void simplifiedRepSection(const Subject& subject) {
  if (!subject.wants(L"simreps")) return;
  tell(L"Report simplified representations");
  title(subject, Message::simplifiedReps);
  subject.page.heads({{kMargin, core::msgText(Message::name)}});
  const creo::ProError result = creo::ProSolidSimprepVisit(subject.model, [&](const creo::ProModelitem& rep) {
    if (const auto name = creo::ProModelitemNameGet(rep))
      listed(subject.page, name.value);
    else
      tellError(text::format(L"Rep visit action Error number %d", static_cast<int>(name.error)));
    return creo::ProNoError;
  });
  if (result != creo::ProNoError && result != creo::ProNotFound) tellError(L"Fehler bei simp rep");
  subject.page.endSection();
}

void interfaceSection(const Subject& subject) {
  if (!subject.wants(L"intrfcs")) return;
  tell(L"Report interfaces");
  title(subject, Message::interfaces);
  subject.page.heads({{kMargin, core::msgText(Message::name)}});
  visitFeatures(subject, [&](const creo::ProFeature& feature) {
    if (subject.unread.read(creo::ProFeatureTypeGet(feature), L"types of features") == kInterfaceFeature)
      listed(subject.page, itemName(subject, itemOf(feature)));
    return creo::ProNoError;
  });
  subject.page.endSection();
}

}  // namespace reports::sheet
