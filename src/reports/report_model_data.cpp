// The model report: name, file, and what a solid is as a whole.
#include <chrono>

#include "core/log.h"
#include "creo/ProMaterial.h"
#include "os/local_time.h"
#include "os/surroundings.h"
#include "reports/file_name.h"
#include "reports/model_facts.h"
#include "text/format.h"

namespace reports {
namespace {

using namespace actions;

std::wstring modelName(const ModelFacts& facts) {
  const auto name = creo::ProMdlNameGet(facts.model);
  if (!name) return {};
  const std::wstring generic = genericName(facts.model);
  return generic.empty() ? name.value : name.value + L"<" + generic + L">";
}

std::wstring nameAndType(const ModelFacts& facts) {
  return facts.data ? facts.data.value.name + L"." + facts.data.value.type : std::wstring();
}

std::wstring fileVersion(const ModelFacts& facts) {
  return facts.data ? text::format(L"%d", facts.data.value.version) : std::wstring();
}

std::wstring commonName(const ModelFacts& facts) { return creo::ProMdlCommonnameGet(facts.model).value; }

std::wstring fileName(const ModelFacts& facts) {
  return facts.data ? fileNameValue(facts.model, facts.data.value) : std::wstring();
}

std::wstring path(const ModelFacts& facts) { return facts.data ? folderOf(facts.data.value) : std::wstring(); }

std::wstring fileSize(const ModelFacts& facts) {
  constexpr std::uint64_t kKilobyte = 1024;
  const std::wstring file = facts.data ? storedFile(facts.data.value) : std::wstring();
  if (file.empty()) return {};
  const auto size = os::files().size(file);
  return size ? text::format(L"%lld kB", size.value / kKilobyte) : std::wstring();
}

std::wstring fileDate(const ModelFacts& facts) {
  using namespace std::chrono;
  const std::wstring file = facts.data ? storedFile(facts.data.value) : std::wstring();
  if (file.empty()) return {};
  const auto written = os::files().modified(file);
  if (!written) return {};
  const os::FileTime& t = written.value;
  const auto at = sys_days{year{t.year} / t.month / t.day} + hours{t.hour} + minutes{t.minute} + seconds{t.second};
  const auto local = os::localFields(at.time_since_epoch().count());
  if (!local) return {};
  return text::format(L"%d.%d.%d %d:%d", local->tm_mday, local->tm_mon + 1, local->tm_year + 1900, local->tm_hour,
                      local->tm_min);
}

std::wstring isModified(const ModelFacts& facts) { return truth(creo::ProMdlModificationVerify(facts.model)); }

std::wstring density(const ModelFacts& facts) {
  const auto density = creo::ProPartDensityGet(facts.model);
  return density ? text::format(L"%f", density.value) : std::wstring();
}

// clang-format off
constexpr ModelColumn kGeneralColumns[] = {
    {L"mdlname", L"Model name", &modelName, "the model's name, of an instance with its generic"},
    {L"mdlnameGen", L"Model name without generic", &nameAndType, "name and type"},
    {L"fileversion", L"File version", &fileVersion, "the number of the file"},
    {L"commonname", L"Common name", &commonName, "the common name"},
    {L"filename", L"File name", &fileName, "the file's name, of an instance with its generic"},
    {L"path", L"Path", &path, "the folder"},
    {L"filesize", L"File size", &fileSize, "the size of the file in kB"},
    {L"filedatum", L"File datum", &fileDate, "when the file was written"},
    {L"modified", L"Is modified", &isModified, "whether the model was modified"},
};
// Of parts, assemblies and manufacturing models.
constexpr ModelColumn kSolidColumns[] = {
    {L"accuracy", L"Accuracy", &accuracy, "the accuracy, relative or absolute; solids only, as what follows"},
    {L"tol", L"Tolerance", &tolerance, "the class of tolerances"},
    {L"unitsystem", L"Unit system", &unitSystem, "the system of units"},
    {L"fnt", L"Feature-name/type", &featureNamesAndTypes, "name and type of the first xFeats features"},
    {L"noOfFeats", L"Number of features", &featureCount, "how many features the model tree shows"},
    {L"flexFeats", L"Flexible Features", &flexibleComponents, "flexible components, and what varies"},
    {L"xsec", L"Cross Sections - intersection type - cutted objects", &crossSections, "cross sections"},
    {L"pattern", L"Pattern", &patterns, "patterns and how they regenerate"},
    {L"generic", L"Generic name", &generic, "the generic of an instance"},
    {L"simprep", L"Simplified representations", &simplifiedReps, "simplified representations"},
    {L"featregen", L"Regeneration feedback", &regenerationFeedback, "the model is regenerated, and how that ends"},
};
constexpr ModelColumn kPartColumns[] = {{L"mass", L"Density", &density, "the density of the material; parts only"}};
// clang-format on

Outcome reportModeldata(const Task& task) {
  const auto row = ReportRow::of(task);
  if (!row) {
    core::logWrite(L"Can't find the specified reporter", core::kError);
    return done;
  }
  const ModelFacts facts{task, task.model(), creo::ProMdlDataGet(task.model())};
  reportColumns<ModelFacts>(*row, task, kGeneralColumns, facts);
  const auto type = creo::ProMdlTypeGet(task.model());
  using enum creo::ProMdlType;
  const bool isPart = type && type.value == part;
  if (isPart || (type && (type.value == assembly || type.value == manufacturing)))
    reportColumns<ModelFacts>(*row, task, kSolidColumns, facts);
  if (isPart) reportColumns<ModelFacts>(*row, task, kPartColumns, facts);
  return done;
}

constexpr Attribute kFeatureNumber[] = {
    {.name = L"xFeats", .kind = Kind::integer, .about = "how many features fnt gives"},
};
constexpr auto kAttributes = reportAttributes(kGeneralColumns, kSolidColumns, kFeatureNumber, kPartColumns);

constexpr Action kActions[] = {
    {.key = L"reportModeldata",
     .place = 21,
     .title = L"Report model data",
     .attributes = kAttributes,
     .effects = {.reads = Touched::model | Touched::users | Touched::family | Touched::files,
                 .changes = Touched::reports | Touched::model | Touched::family},
     .about = "reports what the model is: name, file, and what a solid is as a whole",
     .function = &reportModeldata},
};

}  // namespace

std::span<const actions::Action> modelDataReportActions() { return kActions; }

}  // namespace reports
