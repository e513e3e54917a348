#include "kelvane/show/relations.h"

#include "kelvane/base/words.h"
#include "kelvane/show/enum_words.h"

namespace kelvane {
namespace {

using headless::FamilyTableRecord;

Section numbered(std::string title, const std::vector<std::string>& lines) {
  Section section{std::move(title), {}};
  for (std::size_t i = 0; i < lines.size(); ++i) section.rows.push_back({std::to_string(i + 1), lines[i]});
  return section;
}

std::string columnTitle(const headless::ColumnRecord& column) {
  const bool isPlain = column.type == creo::ProFamitemType::parameter;
  return isPlain ? column.name : word(column.type) + " " + column.name;
}

// Values stand in the columns' order as a rule: each is looked for from behind the one before.
std::string cellOf(const headless::RowRecord& row, const std::string& column, std::size_t& from) {
  for (std::size_t i = 0; i < row.values.size(); ++i) {
    const std::size_t at = (from + i) % row.values.size();
    if (!headless::sameName(row.values[at].name, column)) continue;
    from = at + 1;
    return scalarText(row.values[at].value);
  }
  return "*";
}

void addRows(const FamilyTableRecord& table, const std::string& indent, Section& section) {
  std::vector<std::string> head = {indent + "instance"};
  for (const headless::ColumnRecord& column : table.items.list) head.push_back(columnTitle(column));
  section.rows.push_back(head);
  for (const auto& instance : table.instances) {
    std::vector<std::string> row = {indent + instance->name};
    std::size_t from = 0;
    for (const headless::ColumnRecord& column : table.items.list) row.push_back(cellOf(*instance, column.name, from));
    std::string marks = instance->locked ? "locked" : "";
    if (instance->verification != creo::ProVerification::notVerified) addPiece(marks, word(instance->verification));
    if (!marks.empty()) row.push_back(marks);
    section.rows.push_back(std::move(row));
    if (instance->familyTable) addRows(*instance->familyTable, indent + "  ", section);
  }
}

}  // namespace

std::vector<Section> relationSections(const headless::ModelRecord& record) {
  std::vector<Section> sections = {numbered("relations", record.relations),
                                   numbered("post relations", record.postRelations)};
  for (const headless::FeatureRecord& feature : record.features) {
    std::string who = "feature " + std::to_string(feature.id);
    addPiece(who, feature.name, " ");
    if (!feature.relations.empty()) sections.push_back(numbered("relations of " + who, feature.relations));
    for (std::size_t i = 0; i < feature.sections.size(); ++i)
      if (!feature.sections[i].relations.empty())
        sections.push_back(
            numbered("relations of section " + std::to_string(i + 1) + " of " + who, feature.sections[i].relations));
  }
  sections.push_back(numbered("program", record.program));
  return sections;
}

Section familySection(const headless::Model& model) {
  Section section{"family table", {}};
  if (const FamilyTableRecord* table = model.document->tableOf(model.row)) addRows(*table, "", section);
  return section;
}

std::string scalarText(const headless::Scalar& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* real = std::get_if<double>(&value)) return headless::realText(*real);
  if (const auto* integer = std::get_if<int>(&value)) return std::to_string(*integer);
  if (const auto* boolean = std::get_if<bool>(&value)) return *boolean ? "true" : "false";
  return {};
}

}  // namespace kelvane
