// The parts of the sheet, from the head down. Each is written where the task asks for it.
#pragma once

#include "actions/task.h"
#include "reports/sheet/page.h"
#include "reports/sheet/unread.h"

namespace reports::sheet {

// What a part writes from and to.
struct Subject {
  const actions::Task& task;
  creo::ProMdl model;
  creo::ProMdlType type{};
  Page& page;
  Unread& unread;
  [[nodiscard]] bool wants(std::wstring_view attribute) const { return task.isTrue(attribute); }
  [[nodiscard]] bool isPart() const { return type == creo::ProMdlType::part; }
  [[nodiscard]] bool isSolid() const { return isPart() || type == creo::ProMdlType::assembly; }
};

// A line of the log.
void tell(std::wstring_view line);
void tellError(std::wstring_view line);
// A section's title.
void title(const Subject& subject, core::Message message);
// A head over what follows, by message or as a text.
void head(const Subject& subject, core::Message message, double x = kMargin);
void head(const Subject& subject, std::wstring_view text, double x = kMargin);

// What several parts ask for, in words of the log.
constexpr std::wstring_view kModelName = L"the model's name", kFeatures = L"its features",
                            kItemNames = L"names of items";

using Section = void (*)(const Subject& subject);

void headOfSheet(const Subject& subject);              // head_of_sheet.cpp
void unitSection(const Subject& subject);              // solid_sections.cpp
void accuracySection(const Subject& subject);          // solid_sections.cpp
void customTextSection(const Subject& subject);        // solid_sections.cpp
void materialSection(const Subject& subject);          // solid_sections.cpp
void parameterSection(const Subject& subject);         // parameter_sections.cpp
void featureParameterSection(const Subject& subject);  // parameter_sections.cpp
void relationSection(const Subject& subject);          // relation_sections.cpp
void viewSection(const Subject& subject);              // item_sections.cpp
void layerSection(const Subject& subject);             // item_sections.cpp
void firstFeatureSection(const Subject& subject);      // item_sections.cpp
void firstNoteSection(const Subject& subject);         // item_sections.cpp
void dependencySection(const Subject& subject);        // item_sections.cpp
void simplifiedRepSection(const Subject& subject);     // item_sections.cpp
void interfaceSection(const Subject& subject);         // item_sections.cpp
void familyTableSection(const Subject& subject);       // family_section.cpp

}  // namespace reports::sheet
