// The family table of a generic.
#include "actions/table_file.h"
#include "core/messages.h"
#include "creo/ProFamtable.h"
#include "reports/sheet/sections.h"
#include "text/format.h"

namespace reports::sheet {
namespace {

using core::Message;

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

std::vector<std::wstring> instanceNames(const Subject& subject, const creo::Got<creo::ProFamtable>& table) {
  std::vector<std::wstring> names;
  if (!table) return names;
  const auto result = creo::ProFamtableInstanceVisit(table.value, [&](const creo::ProFaminstance& instance) {
    names.push_back(instance.name);
    return creo::ProNoError;
  });
  subject.unread.visited(result, L"instances");
  return names;
}

void tableOf(const Subject& subject, const creo::ProFamtable& table, const std::vector<std::wstring>& instances) {
  Page& page = subject.page;
  title(subject, Message::familyTable);
  head(subject, Message::columns);
  page.heads({{kNameColumn, core::msgText(Message::name)}, {kTypeColumn, core::msgText(Message::type)}});
  const auto result = creo::ProFamtableItemVisit(table, [&](const creo::ProFamtableItem& item) {
    page.row({{kNameColumn, item.name}, {kTypeColumn, columnWord(item.type)}}, kRowSize, kListStep);
    return creo::ProNoError;
  });
  subject.unread.visited(result, L"columns of the family table");
  head(subject, Message::variants);
  for (const std::wstring& name : instances) page.line(name, kRowSize, kNameColumn, kListStep);
}

}  // namespace

void familyTableSection(const Subject& subject) {
  const bool wholeTable = subject.wants(L"famtab"), amount = subject.wants(L"famtab_amount");
  if (!wholeTable && !amount) return;
  tell(L"Report family table");
  const auto table = subject.isSolid() ? creo::ProFamtableInit(subject.model) : creo::ProNotFound;
  subject.unread.readAny(table, L"the family table");
  const std::vector<std::wstring> instances = instanceNames(subject, table);
  if (instances.empty())
    head(subject, Message::noFamilyTable);
  else if (wholeTable)
    tableOf(subject, table.value, instances);
  else
    title(subject, Message::familyTable);
  if (amount)
    subject.page.line(text::format(L"%s: %d", core::msgText(Message::amountOfVariants), instances.size()), kRowSize,
                      kMargin, kListStep);
  subject.page.endSection();
}

}  // namespace reports::sheet
