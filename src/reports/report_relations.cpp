// The report on a model's relations, and on those that run after its regeneration.
#include "creo/ProMdl.h"
#include "documents/relations.h"
#include "language/compare.h"
#include "reports/report_row.h"

namespace reports {
namespace {

using namespace actions;
using namespace language;
using RelationSet = creo::Got<creo::ProRelset>;

struct RelationFacts {
  RelationSet relations, postRelations;
  std::wstring_view lineFilter;
};

std::wstring linesOf(const RelationFacts& facts, const RelationSet& set) {
  std::wstring lines;
  if (!set) return lines;
  for (const std::wstring& line : creo::ProRelsetRelationsGet(set.value).value)
    if (matches(facts.lineFilter, line)) appendLine(lines, line);
  return lines;
}

std::wstring failureMark(const RelationSet& set) {
  if (!set) return {};
  return creo::ProRelsetRegenerate(set.value) == creo::ProNoError ? L"-" : L"X";
}

std::wstring relations(const RelationFacts& facts) { return linesOf(facts, facts.relations); }
std::wstring postRelations(const RelationFacts& facts) { return linesOf(facts, facts.postRelations); }
std::wstring failure(const RelationFacts& facts) { return failureMark(facts.relations); }
std::wstring postFailure(const RelationFacts& facts) { return failureMark(facts.postRelations); }

constexpr ReportColumn<RelationFacts> kColumns[] = {
    {L"relations", L"Relations", &relations, "the lines of the relations"},
    {L"postrelations", L"Post Relations", &postRelations, "the lines of those that run after the regeneration"},
    {L"cf1", L"Failure in Relations", &failure, "the relations are run, and whether they fail"},
    {L"cf2", L"Failure in Post Relations", &postFailure, "the same for those after the regeneration"},
};

RelationFacts factsOf(const Task& task) {
  RelationFacts facts{creo::ProNotFound, creo::ProNotFound, task.attribute(L"linefilter")};
  auto item = creo::ProMdlToModelitem(task.model());
  if (!item) return facts;
  facts.relations = documents::relationsOf(item.value);
  item.value.id = creo::kPostRegeneration;
  facts.postRelations = documents::relationsOf(item.value);
  return facts;
}

Outcome reportRelations(const Task& task) {
  if (const auto row = ReportRow::of(task)) reportColumns<RelationFacts>(*row, task, kColumns, factsOf(task));
  return done;
}

constexpr Attribute kLineFilter[] = {
    {.name = L"linefilter", .kind = Kind::pattern, .about = "which lines are reported, * for all"},
};
constexpr auto kAttributes = reportAttributes(kLineFilter, kColumns);

constexpr Action kActions[] = {
    {.key = L"reportRelations",
     .place = 30,
     .title = L"Report Relations",
     .attributes = kAttributes,
     .effects = {.changes = Touched::reports | Touched::model},
     .about = "reports the model's relations",
     .function = &reportRelations},
};

}  // namespace

std::span<const actions::Action> relationReportActions() { return kActions; }

}  // namespace reports
