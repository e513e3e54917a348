// writeInformationPDF: a sheet that tells a person what a model is.
#include <optional>

#include "actions/exports/export_frame.h"
#include "actions/output_file.h"
#include "core/config.h"
#include "core/log.h"
#include "creo/ProMdl.h"
#include "creo/ProUtil.h"
#include "language/variables.h"
#include "os/clock.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "reports/report_attributes.h"
#include "reports/sheet/sections.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace reports::sheet {
namespace {

using namespace language;
using namespace actions;

constexpr std::wstring_view kExtension = L".pdf", kReports = L"reports", kDefaultFont = L"text\\FreeSans.ttf";

// In their order on the sheet, each with the debug line behind it; the first two have none.
struct Part {
  Section write;
  std::wstring_view mark;
};
constexpr Part kParts[] = {
    {&headOfSheet, L""},
    {&unitSection, L""},
    {&accuracySection, L""},
    {&customTextSection, L"Check Ctext"},
    {&materialSection, L"Check Materials"},
    {&parameterSection, L"Check Params"},
    {&featureParameterSection, L"Check KE Params"},
    {&relationSection, L"Check Rels"},
    {&viewSection, L"Check Views"},
    {&layerSection, L"Check Layers"},
    {&firstFeatureSection, L"Check first x Kes"},
    {&firstNoteSection, L"Check first x Annotations"},
    {&dependencySection, L"Check Deps"},
    {&simplifiedRepSection, L"Check Reps"},
    {&interfaceSection, L"Check Interfaces"},
    {&familyTableSection, L"Check FamTab"},
};

// With the extension. Nothing, with a line: it can't be put together.
std::optional<std::wstring> fileName(const Task& task) {
  if (task.attribute(L"file").empty()) tellError(L"The attribute 'file' is missing");
  Replaced name = task.text(L"file");
  if (task.attribute(L"file").empty() || !name.hasText()) return std::nullopt;
  if (!text::endsWithNoCase(name.text, kExtension)) name.text += kExtension;
  return std::move(name.text);
}

// A file of a name that nothing has is made and taken away again.
bool canWriteIn(const std::wstring& folder) {
  std::wstring probe = folder + L"kvd_writetest";
  while (os::files().exists(probe)) probe += L'_';
  if (os::files().create(probe, "")) return false;
  return !os::files().remove(probe);
}

// Where the sheet goes; empty: nowhere, and the log says why. One name for many models would be one file for all.
std::wstring target(const Task& task) {
  const bool fromModel = task.isTrue(L"folderFromModel");
  std::wstring folder = fromModel ? replaceVariablesPath(L"@mdlpath@", task.model(), kReports)
                                  : wholePath(task.path(L"folder", kReports));
  if (folder.empty() && !fromModel) folder = creo::ProDirectoryCurrentGet().value;
  if (!folder.ends_with(L'/') && !folder.ends_with(L'\\')) folder += L'\\';
  const bool exists = os::files().isFolder(folder);
  if (!exists || (!fromModel && !canWriteIn(folder))) {
    core::logMsgPlain(exists ? Message::noWritePermission : Message::noSuchPath, core::kError);
    return {};
  }
  const auto name = fileName(task);
  return name && mayBeWritten(folder + *name, kExtension) ? folder + *name : std::wstring();
}

std::wstring fontPath(const Task& task) {
  std::wstring path = task.path(L"font", kReports);
  if (!path.empty()) return path;
  return core::normalisedTextPath(creo::ProToolkitApplTextPathGet().value) + std::wstring(kDefaultFont);
}

bool beginDocument(const Task& task, Document& document) {
  if (!document.isOpen()) {
    core::logMsgPlain(Message::pdfNotCreated, core::kError);
    return false;
  }
  const std::wstring path = fontPath(task);
  const text::Fault fault = document.useFont(path);
  if (fault) tellError(text::format(L"The font %s can't be used: %s", path, fault.what));
  return !fault;
}

void describe(const Task& task, Document& document, Unread& unread) {
  document.describe({.title = unread.read(creo::ProMdlNameGet(task.model()), kModelName),
                     .subject = task.text(L"description").text,
                     .author = os::environment(L"username").value_or(L""),
                     .created = os::clock().seconds()});
}

void save(Document& document, const std::wstring& path) {
  tell(L"save the report to file");
  core::logIndented(path, core::kNormal, 1);
  const std::string bytes = document.bytes();
  const std::error_code fault =
      bytes.empty() ? std::make_error_code(std::errc::not_enough_memory) : os::files().write(path, bytes);
  if (fault) tellError(text::format(L"Can't write the file %s: %s", path, text::fromUtf8(fault.message())));
  core::logIndented(L"Check Save", core::kDebug, 1);
}

Outcome writeInformationPDF(const Task& task) {
  const std::wstring path = target(task);
  if (path.empty() || !actions::mayWrite(task, path)) return done;
  Document document;
  if (!beginDocument(task, document)) return done;
  Unread unread;
  describe(task, document, unread);
  Page page(document);
  const creo::ProMdlType type = unread.read(creo::ProMdlTypeGet(task.model()), L"the model's type");
  const Subject subject{task, task.model(), type, page, unread};
  for (const Part& part : kParts) {
    part.write(subject);
    if (!part.mark.empty()) core::logIndented(part.mark, core::kDebug, 1);
  }
  page.number();
  unread.tell();
  save(document, path);
  if (!task.isTrue(L"oaw")) return done;
  tell(L"start pdf");
  os::processes().open(path);
  return done;
}

constexpr Attribute kAttributes[] = {
    flag(L"folderFromModel", "the folder is that of the model, and folder isn't read"),
    {.name = L"folder",
     .kind = Kind::written,
     .variables = true,
     .folder = L"reports",
     .about = "the target folder; empty: Creo's working folder"},
    {.name = L"file", .variables = true, .need = Need::needed, .about = "the file's name; .pdf is appended"},
    flag(L"overwriteExisting", "an old file is replaced, else it stays, with a warning"),
    {.name = L"font",
     .kind = Kind::file,
     .variables = true,
     .folder = L"reports",
     .about = "a TrueType font; empty: FreeSans of the installation"},
    {.name = L"description", .variables = true, .about = "the document's subject"},
    flag(L"image", "a picture of what the current window shows"),
    flag(L"units", "the system of units"),
    flag(L"accuracy", "the accuracy"),
    flag(L"customText", "lines of text"),
    {.name = L"custextc", .kind = Kind::integer, .about = "how many lines"},
    {.name = L"custext_%d", .variables = true, .numbers = Numbers::counted, .counter = L"custextc", .about = "a line"},
    flag(L"actMaterials", "the current material"),
    flag(L"materialsInModel", "all materials of a part"),
    flag(L"parameter", "parameters"),
    flag(L"paraFilter", "only those whose names fit paraFilterTxt"),
    {.name = L"paraFilterTxt", .kind = Kind::pattern, .about = "names of parameters"},
    flag(L"keParameter", "parameters of features"),
    flag(L"keparaFilter", "only those whose names fit keparaFilterTxt"),
    {.name = L"keparaFilterTxt", .kind = Kind::pattern, .about = "names of parameters"},
    flag(L"parameter_sv", "of all parameters name and value alone"),
    flag(L"rels", "relations; they are run to tell whether they fail"),
    flag(L"postrel", "those after the regeneration, the same"),
    flag(L"kerel", "those of features and of their sketches, the same"),
    flag(L"views", "views"),
    flag(L"layers", "layers"),
    flag(L"dependen", "models that it uses"),
    flag(L"simreps", "simplified representations"),
    flag(L"intrfcs", "interfaces"),
    flag(L"firstKEs", "the first features"),
    {.name = L"xKEs", .kind = Kind::integer, .about = "how many features"},
    flag(L"firstNotes", "the first notes"),
    {.name = L"xNotes", .kind = Kind::integer, .about = "how many notes"},
    flag(L"famtab", "columns and instances of the family table"),
    flag(L"famtab_amount", "how many instances there are"),
    flag(L"oaw", "the file is opened"),
};
// Relations of sketches come out by a macro, a picture under an option of its own.
constexpr Effects kEffects{
    .reads = Touched::model | Touched::users | Touched::family | Touched::files | Touched::session,
    .changes = Touched::files | Touched::model | Touched::options | Touched::programs,
    .takenBack = false};

constexpr Action kActions[] = {
    {.key = L"writeInformationPDF",
     .place = 154,
     .group = Group::ownModelTest,
     .title = Message::writeInformationPdf,
     .conditions = {kFilter,
                    {.test = Test::typeKnown, .line = Message::modelNotFound, .level = core::kError, .outcome = done}},
     .attributes = kAttributes,
     .effects = kEffects,
     .about = "writes a sheet about the model as a PDF file",
     .function = &writeInformationPDF},
};

}  // namespace
}  // namespace reports::sheet

namespace reports {
std::span<const actions::Action> informationSheetActions() { return sheet::kActions; }
}  // namespace reports
