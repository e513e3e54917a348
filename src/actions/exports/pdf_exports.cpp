// Models and drawings as PDF files.
#include "actions/exports/export_frame.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "creo/ProPDF.h"
#include "language/read_number.h"
#include "os/processes.h"
#include "text/format.h"

namespace actions {
namespace {

using namespace language;
using creo::ProError;
using creo::ProPDFproperty;

// One file's properties: what the first refusal was is told instead of the export.
class PdfOptions {
 public:
  PdfOptions() : made_(creo::ProPDFoptionsAlloc()), result_(made_.error) {}
  ~PdfOptions() {
    if (made_) creo::ProPDFoptionsFree(made_.value);
  }
  PdfOptions(const PdfOptions&) = delete;
  PdfOptions& operator=(const PdfOptions&) = delete;
  void set(ProPDFproperty property, int value) {
    if (result_ == creo::ProNoError) result_ = creo::ProPDFoptionsIntpropertySet(made_.value, property, value);
  }
  void allow(ProPDFproperty property, bool value) {
    if (result_ == creo::ProNoError) result_ = creo::ProPDFoptionsBoolpropertySet(made_.value, property, value);
  }
  void write(ProPDFproperty property, const std::wstring& value) {
    if (result_ == creo::ProNoError) result_ = creo::ProPDFoptionsStringpropertySet(made_.value, property, value);
  }
  [[nodiscard]] ProError exportTo(creo::ProMdl model, const std::wstring& path) const {
    return result_ == creo::ProNoError ? creo::ProPDFExport(model, path, made_.value) : result_;
  }

 private:
  creo::Got<creo::ProPDFoptions> made_;
  ProError result_;
};

// "1" and "2" have values of their own, everything else has that of `otherwise`.
int choice(std::wstring_view text, int one, int two, int otherwise) {
  return text == L"1" ? one : text == L"2" ? two : otherwise;
}

void setBody(const Task&, PdfOptions& options) {
  options.set(ProPDFproperty::mode, static_cast<int>(creo::ProPDFmode::solid));
  options.allow(ProPDFproperty::launchViewer, false);
}

void setSheets(const Task& task, PdfOptions& options) {
  options.set(ProPDFproperty::mode, static_cast<int>(creo::ProPDFmode::drawing));
  if (task.isTrue(L"archive")) options.set(ProPDFproperty::archive, 0);
  options.set(ProPDFproperty::fonts, choice(task.attribute(L"font"), 0, 2, 1));
  options.set(ProPDFproperty::color, choice(task.attribute(L"color"), 1, 2, 0));
  options.set(ProPDFproperty::layers, choice(task.attribute(L"layer"), 0, 2, 1));
  options.set(ProPDFproperty::dotsPerInch, integerOrZero(task.attribute(L"dpi")));
  options.set(ProPDFproperty::parameters, 1);
  options.set(ProPDFproperty::sheets, 2);
  options.set(ProPDFproperty::printing, 1);
  options.set(ProPDFproperty::lineCap, choice(task.attribute(L"linecap"), 0, 2, 1));
  options.set(ProPDFproperty::lineJoin, choice(task.attribute(L"linejoin"), 0, 2, 1));
  for (const auto yes : {ProPDFproperty::hyperlinks, ProPDFproperty::searchableText, ProPDFproperty::bookmarkViews,
                         ProPDFproperty::bookmarkSheets, ProPDFproperty::bookmarkNotes})
    options.allow(yes, true);
  options.allow(ProPDFproperty::penTable, task.attribute(L"pentable") != L"false");
  options.allow(ProPDFproperty::launchViewer, false);
  const auto name = creo::ProMdlNameGet(task.model());
  if (!name)
    core::logWrite(text::format(L"The file gets no title, as the model's name can't be read (error %d)",
                                static_cast<int>(name.error)),
                   core::kWarning);
  options.write(ProPDFproperty::title, name.value);
  options.write(ProPDFproperty::subject, name.value);
  options.write(ProPDFproperty::author, os::environment(L"username").value_or(L""));
}

Outcome exportPdf(const Task& task, void (*fill)(const Task&, PdfOptions&), std::wstring_view failure) {
  const auto target = exportTarget(task, {.extension = L".pdf"});
  if (!target) return done;
  creo::ProMdlDisplay(task.model());  // Creo writes what it shows; where it can't, the export tells
  ProError result = creo::ProNoError;
  if (const std::wstring profile = task.path(L"profile", L"models"); !profile.empty()) {
    result = creo::ProPDFWithProfileExport(task.model(), *target, profile);
  } else {
    PdfOptions options;
    fill(task, options);
    result = options.exportTo(task.model(), *target);
  }
  if (result == creo::ProNoError)
    core::logMsgId(Message::exported, core::kNormal, 1);
  else
    core::logWrite(text::format(failure, static_cast<int>(result)), core::kError);
  return done;
}

Outcome exportpdf(const Task& task) { return exportPdf(task, &setBody, L"failure %d"); }

Outcome exportpdf2d(const Task& task) { return exportPdf(task, &setSheets, L"Failure %d"); }

// ---- rows

constexpr Attribute kProfile[] = {
    {.name = L"profile",
     .kind = Kind::file,
     .variables = true,
     .folder = L"models",
     .about = "a file of options; empty or absent: Creo's usual ones, or those of the action"},
};
constexpr Attribute choiceOf(std::wstring_view name, std::string_view about) {
  return {.name = name, .kind = Kind::word, .words = L"0|1|2", .about = about};
}
constexpr Attribute kOptions[] = {
    {.name = L"archive", .kind = Kind::flag, .words = L"true", .about = "for archives"},
    choiceOf(L"font", "1: texts name their fonts; 2: texts are outlines; else the fonts are in the file"),
    choiceOf(L"color", "1: greys; 2: black; else colours"),
    choiceOf(L"layer", "1: a layer for each kind of thing on every page; 2: none; else one for each in all"),
    choiceOf(L"linecap", "1: lines end butt; 2: square; else round"),
    choiceOf(L"linejoin", "1: corners are mitred; 2: bevelled; else round"),
    {.name = L"dpi", .kind = Kind::integer, .about = "dots per inch of shaded views"},
    {.name = L"pentable", .kind = Kind::flag, .words = L"false", .about = "false: Creo's table of pens doesn't count"},
};
constexpr auto kBodyAttributes = joined(kTarget, kProfile);
constexpr auto kSheetAttributes = joined(kTarget, kProfile, kOptions);

constexpr Action kActions[] = {
    {.key = L"exportpdf",
     .place = 141,
     .group = Group::ownModelTest,
     .title = L"Export 3dPDF",
     .attributes = kBodyAttributes,
     .effects = {.reads = Touched::model | Touched::users | Touched::files,
                 .changes = Touched::files | Touched::session,
                 .takenBack = false},
     .about = "writes the model as a PDF whose body the reader can turn",
     .function = &exportpdf},
    {.key = L"exportpdf2d",
     .place = 142,
     .group = Group::ownModelTest,
     .title = L"Export 2D PDF file",
     .attributes = kSheetAttributes,
     .effects = {.reads = Touched::model | Touched::users | Touched::files | Touched::surroundings,
                 .changes = Touched::files | Touched::session,
                 .takenBack = false},
     .about = "writes the sheets of the drawing as pages of a PDF",
     .function = &exportpdf2d},
};

}  // namespace

std::span<const Action> pdfExportActions() { return kActions; }

}  // namespace actions
