// What holds for a model as a whole: units, accuracy, materials; and what the list itself says.
#include <algorithm>

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMaterial.h"
#include "creo/ProSolid.h"
#include "creo/ProUnitsystem.h"
#include "language/variables.h"
#include "reports/sheet/sections.h"
#include "text/format.h"
#include "text/numbers.h"

namespace reports::sheet {
namespace {

using core::Message;

constexpr int kMostAbsent = 100;  // lines told of a gap: a list may count to any number
constexpr double kGap = 4;        // behind a word that reaches into the values' column

// A word and its value behind it.
void fact(Page& page, std::wstring_view word, std::wstring_view value) {
  page.line(word, kFactSize, kMargin, kHeadStep);
  page.line(value, kFactSize, std::max(kFactColumn, kMargin + page.widthOf(word, kFactSize) + kGap), 0);
}

void material(const Subject& subject, std::wstring_view name) {
  subject.page.line(name, kRowSize, kFactColumn, kWideStep);
}

}  // namespace

void tell(std::wstring_view line) { core::logIndented(line, core::kNormal, 1); }
void tellError(std::wstring_view line) { core::logWrite(line, core::kError); }

void title(const Subject& subject, Message message) { subject.page.sectionTitle(core::msgText(message)); }
void head(const Subject& subject, Message message, double x) { head(subject, core::msgText(message), x); }
void head(const Subject& subject, std::wstring_view text, double x) { subject.page.head(text, x); }

void unitSection(const Subject& subject) {
  if (!subject.wants(L"units")) return;
  tell(L"Report unit system");
  constexpr std::pair<Message, creo::ProUnitType> kUnits[] = {{Message::length, creo::ProUnitType::length},
                                                              {Message::mass, creo::ProUnitType::mass},
                                                              {Message::temperature, creo::ProUnitType::temperature},
                                                              {Message::time, creo::ProUnitType::time}};
  Unread unneeded;  // only solids have them
  Unread& unread = subject.isSolid() ? subject.unread : unneeded;
  const creo::ProUnitsystem system{
      subject.model, unread.read(creo::ProMdlPrincipalunitsystemGet(subject.model), L"the system of units")};
  for (const auto& [message, type] : kUnits)
    fact(subject.page, core::msgText(message), unread.read(creo::ProUnitsystemUnitGet(system, type), L"units"));
}

void accuracySection(const Subject& subject) {
  if (!subject.wants(L"accuracy")) return;
  tell(L"Report accuracy");
  const auto accuracy = creo::ProSolidAccuracyGet(subject.model);
  if (!accuracy) {
    tellError(text::format(L"Accuracy - Error number: %d", static_cast<int>(accuracy.error)));
    return core::logMsgPlain(Message::accuracyTypeError, core::kError);
  }
  const bool isRelative = accuracy.value.kind == creo::ProAccuracyKind::relative;
  subject.page.line(core::msgText(isRelative ? Message::relativeAccuracy : Message::absoluteAccuracy), kFactSize,
                    kMargin, kHeadStep);
  subject.page.line(core::msgText(Message::accuracyValue) + text::format(L" %f", accuracy.value.value), kFactSize,
                    kMargin, kHeadStep);
}

void customTextSection(const Subject& subject) {
  if (!subject.wants(L"customText")) return;
  tell(L"Write custom text");
  title(subject, Message::customText);
  const int count = text::parseInt(subject.task.attribute(L"custextc"));
  long long next = 0;
  const auto tellAbsent = [&](long long end) {
    for (const long long last = std::min(end, next + kMostAbsent); next < last; ++next) tell(L"<KVD> NULL");
    next = end + 1;
  };
  for (const auto& [number, value] : subject.task.numberedAll(L"custext_", count)) {
    tellAbsent(number);
    subject.page.line(language::replaceVariables(value, subject.model).text, kRowSize, kFactColumn, kWideStep);
  }
  tellAbsent(count);
  subject.page.endSection();
}

void materialSection(const Subject& subject) {
  const bool current = subject.wants(L"actMaterials"), all = subject.wants(L"materialsInModel");
  if (!current && !all) return;
  title(subject, Message::materials);
  const bool isPart = subject.isPart();  // nothing else is made of materials
  if (current) {
    tell(L"Report active materials");
    head(subject, L"Active");
    const auto active = isPart ? creo::ProMaterialCurrentGet(subject.model) : creo::ProNotFound;
    subject.unread.readAny(active, L"the current material");
    if (active) material(subject, active.value.name);
  }
  if (all) {
    tell(L"Report all materials");
    head(subject, L"All in model");
    const auto names = isPart ? creo::ProPartMaterialsGet(subject.model) : creo::ProNotFound;
    for (const std::wstring& name : subject.unread.readAny(names, L"materials")) material(subject, name);
  }
  subject.page.endSection();
}

}  // namespace reports::sheet
