// The parameters of features as a CSV file.
#include <unordered_map>

#include "actions/model/parameter_values.h"
#include "actions/output_file.h"
#include "actions/task.h"
#include "actions/visits.h"
#include "core/log.h"
#include "creo/ProFeature.h"
#include "creo/ProModelitem.h"
#include "language/compare.h"
#include "language/variables.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace actions {
namespace {

using namespace language;
using creo::ProModelitem;
using creo::ProParamvalue;
using creo::ProParamvalueType;

constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr std::wstring_view kAll = L"*";

// Which features count, and which of their parameters are reported; from the attributes, with variables.
struct Wanted {
  std::wstring name, value, reported;
  [[nodiscard]] bool anyFeature() const { return name.empty() || name == kAll; }
  [[nodiscard]] bool reports(std::wstring_view parameter) const {
    return reported.empty() || reported == kAll || matches(reported, parameter);
  }
};

// Nothing: a variable can't be replaced; its line is in the log.
std::optional<Wanted> wantedBy(const Task& task) {
  const Replaced name = task.text(L"filterFeatureName"), value = task.text(L"filterFeatureValue"),
                 reported = task.text(L"filterReportParameter");
  if (!name || !value || !reported) return std::nullopt;
  return Wanted{std::wstring(text::cut(name.text, text::kNameSize - 1)), value.text, reported.text};
}

bool equals(const ProParamvalue& value, std::wstring_view wanted) {
  switch (value.type) {
    case ProParamvalueType::boolean:
      return wanted == (value.boolean ? L"true" : L"false");
    case ProParamvalueType::string:
      return matches(wanted, value.string);
    case ProParamvalueType::integer:
      return text::wholeInt(wanted) == value.integer;
    case ProParamvalueType::real:
      return text::wholeDouble(wanted) == value.real;
    case ProParamvalueType::none:
    case ProParamvalueType::noteId:
      break;
  }
  return false;
}

bool counts(const ProModelitem& feature, const Wanted& wanted) {
  if (wanted.anyFeature()) return true;
  const auto parameter = creo::ProParameterInit(feature, wanted.name);
  if (!parameter) return false;
  if (wanted.value == kAll) return true;
  const auto value = editedValue(parameter.value);
  return value && equals(value.value, wanted.value);
}

std::wstring nameOf(const ProModelitem& feature) {
  const auto own = creo::ProModelitemNameGet(feature);
  return own ? own.value : creo::ProModelitemDefaultnameGet(feature).value;
}

// The rows of the features, and a column for each name of a parameter, in the order in which they turn up.
class FeatureTable {
 public:
  void add(const ProModelitem& feature, const Wanted& wanted) {
    Row& row = rows_.emplace_back();
    row.name = nameOf(feature);
    row.id = feature.id;
    const creo::ProError visited = creo::ProParameterVisit(feature, [&](const creo::ProParameter& parameter) {
      if (!wanted.reports(parameter.id)) return creo::ProNoError;
      const auto [place, isNew] = places_.try_emplace(parameter.id, columns_.size());
      if (isNew) columns_.push_back(parameter.id);
      if (const auto value = editedValue(parameter)) row.values.try_emplace(place->second, textOf(value.value));
      return creo::ProNoError;
    });
    isWhole(visited, L"The parameters of a feature");
  }
  [[nodiscard]] std::string csv(std::wstring_view separator) const {
    core::logIndented(L"Build Header Row", core::kNormal, 1);
    std::wstring out = quoted(L"feature name");
    const auto field = [&](std::wstring_view value) { out.append(separator).append(quoted(value)); };
    field(L"feature id");
    for (const std::wstring& column : columns_) field(column);
    out += L"\r\n";
    core::logIndented(L"Build Feature Rows", core::kNormal, 1);
    for (const Row& row : rows_) {
      out += quoted(row.name);
      field(text::format(L"%d", row.id));
      for (std::size_t i = 0; i < columns_.size(); ++i) {
        const auto value = row.values.find(i);
        field(value == row.values.end() ? std::wstring_view() : value->second);
      }
      out += L"\r\n";
    }
    return std::string(kMark) + text::toUtf8(out);
  }

 private:
  struct Row {
    std::wstring name;
    int id = 0;
    std::unordered_map<std::size_t, std::wstring> values;  // by column; of two of one name the first
  };
  static std::wstring quoted(std::wstring_view value) {
    return L'"' + text::replaceAll(value, std::wstring_view(L"\""), std::wstring_view(L"\"\"")) + L'"';
  }
  std::vector<Row> rows_;
  std::vector<std::wstring> columns_;
  std::unordered_map<std::wstring, std::size_t> places_;
};

// A word as in openCSVReport, else the separator itself.
std::wstring_view separatorOf(const Task& task) {
  const std::wstring_view separator = task.attribute(L"sep");
  if (separator == L"sem") return L";";
  return separator.empty() ? L"," : separator;
}

Outcome reportFeatureParameter(const Task& task) {
  const std::wstring path = wholePath(task.path(L"csvFileName", L"reports"));
  if (path.empty()) core::logWrite(L"The attribute csvFileName names no file", core::kError);
  const auto wanted = !path.empty() && mayBeWritten(path) ? wantedBy(task) : std::nullopt;
  if (!wanted) return done;

  core::logIndented(L"Collect parameters", core::kNormal, 1);
  FeatureTable table;
  const creo::ProError visited = creo::ProSolidFeatVisit(task.model(), [&](const creo::ProFeature& feature) {
    const ProModelitem item{creo::ProItemType::feature, feature.id, feature.owner, {}};
    if (counts(item, *wanted)) table.add(item, *wanted);
    return creo::ProNoError;
  });
  isWhole(visited, L"The features");
  const std::string bytes = table.csv(separatorOf(task));
  core::logIndented(L"Convert to csv file", core::kNormal, 1);
  core::logIndented(path, core::kNormal, 1);
  core::logIndented(L"Charset: UTF-8", core::kNormal, 1);
  if (const auto fault = os::files().write(path, bytes))
    core::logWrite(text::format(L"The file %s can't be written", path), core::kError);
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"csvFileName",
     .kind = Kind::written,
     .variables = true,
     .need = Need::needed,
     .folder = L"reports",
     .about = "the file's path"},
    {.name = L"filterFeatureName",
     .variables = true,
     .about = "only features that have this parameter; empty or *: all"},
    {.name = L"filterFeatureValue",
     .kind = Kind::pattern,
     .variables = true,
     .about = "and whose value of it is this: true or false, a number, or a pattern for a text; *: any"},
    {.name = L"filterReportParameter",
     .kind = Kind::pattern,
     .variables = true,
     .about = "parameters that get a column; empty: all"},
    {.name = L"sep", .about = "what stands between fields; sem: a semicolon, empty: a comma"},
};

constexpr Action kActions[] = {
    {.key = L"reportFeatureParameter",
     .place = 155,
     .group = Group::ownModelTest,
     .title = L"Edit model parameter from table cell",
     .conditions = {kFilter, {.test = Test::partOrAssembly}},
     .attributes = kAttributes,
     .effects = {.changes = Touched::files, .takenBack = false},
     .about = "writes the parameters of features into a CSV file",
     .function = &reportFeatureParameter},
};

}  // namespace

std::span<const Action> featureReportActions() { return kActions; }

}  // namespace actions
