// The family table of a generic.
#include "core/messages.h"
#include "creo/ProFamtable.h"
#include "reports/sheet/sections.h"
#include "text/format.h"

namespace reports::sheet {
namespace {

constexpr int kFamilyTable = 187, kColumns = 188, kVariants = 189, kNone = 195, kAmount = 176;
constexpr int kName = 164, kType = 165;
constexpr double kNameColumn = 75, kTypeColumn = 250;

std::wstring_view columnWord(creo::ProFamitemType type) {
  switch (type) {
    case creo::ProFamitemType::unused:
      return L"UNUSED";
    case creo::ProFamitemType::parameter:
      return L"PARAM";
    case creo::ProFamitemType::dimension:
      return L"DIMENSION";
    case creo::ProFamitemType::feature:
      return L"FEATURE";
    case creo::ProFamitemType::component:
      return L"ASMCOMP";
  }
  return L"UNKNOWN";
}

std::vector<std::wstring> instanceNames(const creo::Got<creo::ProFamtable>& table) {
  std::vector<std::wstring> names;
  if (!table) return names;
  creo::ProFamtableInstanceVisit(table.value, [&](const creo::ProFaminstance& instance) {
    names.push_back(instance.name);
    return creo::ProNoError;
  });
  return names;
}

void tableOf(const Subject& subject, const creo::ProFamtable& table, const std::vector<std::wstring>& instances) {
  Page& page = subject.page;
  title(subject, kFamilyTable);
  head(subject, kColumns);
  page.heads({{kNameColumn, core::msgText(kName)}, {kTypeColumn, core::msgText(kType)}});
  creo::ProFamtableItemVisit(table, [&](const creo::ProFamtableItem& item) {
    page.row({{kNameColumn, item.name}, {kTypeColumn, columnWord(item.type)}}, kRowSize, kListStep);
    return creo::ProNoError;
  });
  head(subject, kVariants);
  for (const std::wstring& name : instances) page.line(name, kRowSize, kNameColumn, kListStep);
}

}  // namespace

void familyTableSection(const Subject& subject) {
  const bool wholeTable = subject.wants(L"famtab"), amount = subject.wants(L"famtab_amount");
  if (!wholeTable && !amount) return;
  tell(L"Report family table");
  const auto table = creo::ProFamtableInit(subject.model);
  const std::vector<std::wstring> instances = instanceNames(table);
  if (instances.empty())
    head(subject, kNone);
  else if (wholeTable)
    tableOf(subject, table.value, instances);
  else
    title(subject, kFamilyTable);
  if (amount)
    subject.page.line(text::format(L"%s: %d", core::msgText(kAmount), instances.size()), kRowSize, kMargin, kListStep);
  subject.page.endSection();
}

}  // namespace reports::sheet
