#include "headless/model/repeated_rows.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <unordered_map>

#include "headless/model/drawing_text.h"
#include "headless/model/family.h"
#include "headless/model/measures.h"
#include "headless/model/models.h"
#include "headless/model/placed.h"
#include "headless/model/retrieve.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace headless {
namespace {

constexpr std::wstring_view kOfList = L"&rpt.", kOfMember = L"&asm.mbr.";

struct Listed {
  const Model* model = nullptr;
  std::size_t index = 1, quantity = 0;
};

// The models of the assembly that the region lists, each once.
std::vector<Listed> membersOf(Models& models, const Model& drawing, int number) {
  const auto shown = dependencies(drawing);
  if (number < 1 || static_cast<std::size_t>(number) > shown.size()) return {};
  const creo::ProDependency& named = shown[static_cast<std::size_t>(number) - 1];
  if (named.type != creo::ProMdlType::assembly) return {};
  const auto found = retrieveModel(models, named.name, named.type);
  const Model* assembly = found ? models.find(found.value) : nullptr;
  if (!assembly) return {};
  std::vector<Listed> members;
  std::unordered_map<const Model*, std::size_t> places;
  try {
    for (const PlacedModel& component : placedComponents(models, *assembly)) {
      const auto [place, isNew] = places.try_emplace(component.model, members.size());
      if (isNew) members.push_back({component.model, members.size() + 1, 0});
      ++members[place->second].quantity;
    }
  } catch (const MeasureFault&) {
    return {};  // whoever draws the assembly tells it
  }
  return members;
}

bool isOfRegion(const std::string& line) {
  const std::wstring lower = text::lower(text::fromUtf8(line));
  return lower.find(kOfList) != lower.npos || lower.find(kOfMember) != lower.npos;
}

std::wstring wordOf(const Parameters& parameters, const Listed& member, bool isOfMember, std::wstring_view name) {
  if (!isOfMember) return std::to_wstring(text::equalNoCase(name, L"qty") ? member.quantity : member.index);
  if (text::equalNoCase(name, L"name")) return member.model->name;
  if (text::equalNoCase(name, L"type")) return member.model->type() == creo::ProMdlType::assembly ? L"ASSEM" : L"PART";
  return shownParameter(parameters, member.model->handle, name).value_or(std::wstring());
}

std::string lineFor(const Parameters& parameters, const Listed& member, const std::string& stored) {
  const std::wstring line = text::fromUtf8(stored), lower = text::lower(line);
  std::wstring out;
  std::size_t done = 0;
  for (std::size_t sign = lower.find(L'&'); sign != lower.npos; sign = lower.find(L'&', sign + 1)) {
    const std::wstring_view rest = std::wstring_view(lower).substr(sign);
    const bool isOfMember = rest.starts_with(kOfMember);
    if (!isOfMember && !rest.starts_with(kOfList)) continue;
    const std::size_t begin = sign + (isOfMember ? kOfMember : kOfList).size();
    std::size_t end = begin;
    while (end < line.size() && isNamePart(line[end])) ++end;
    const std::wstring_view name = std::wstring_view(line).substr(begin, end - begin);
    const bool isKnown =
        isOfMember ? !name.empty() : text::equalNoCase(name, L"qty") || text::equalNoCase(name, L"index");
    if (!isKnown) continue;
    out.append(line, done, sign - done).append(wordOf(parameters, member, isOfMember, name));
    done = end;
  }
  return text::toUtf8(out.append(line, done));
}

CellRecord cellFor(const Parameters& parameters, const CellRecord& from, int row, const Listed* member) {
  CellRecord cell;
  cell.row = row;
  cell.column = from.column;
  for (const std::string& line : from.lines) cell.lines.push_back(member ? lineFor(parameters, *member, line) : line);
  return cell;
}

}  // namespace

std::optional<RepeatedRows> repeatedRows(Models& models, const Parameters& parameters, const Model& drawing,
                                         const TableRecord& table) {
  if (table.repeatRegions.empty()) return std::nullopt;
  std::set<int> repeated;
  std::unordered_map<int, std::vector<const CellRecord*>> cellsOf;
  for (const CellRecord& cell : table.cells) {
    if (std::any_of(cell.lines.begin(), cell.lines.end(), &isOfRegion)) repeated.insert(cell.row);
    cellsOf[cell.row].push_back(&cell);
  }
  if (repeated.empty()) return std::nullopt;
  const std::vector<Listed> members = membersOf(models, drawing, table.repeatRegions.front().model);
  if (members.empty()) return std::nullopt;
  RepeatedRows shown;
  const auto add = [&](int row, const Listed* member) {
    shown.rows.push_back(table.rows[static_cast<std::size_t>(row) - 1]);
    for (const CellRecord* cell : cellsOf[row])
      shown.cells.push_back(cellFor(parameters, *cell, static_cast<int>(shown.rows.size()), member));
  };
  for (int row = 1; row <= static_cast<int>(table.rows.size()); ++row) {
    if (!repeated.contains(row)) {
      add(row, nullptr);
      continue;
    }
    for (const Listed& member : members) add(row, &member);
  }
  return shown;
}

}  // namespace headless
