// The list of a family table: the generic and its instances, with the values of the table's parameters.
#include "actions/model/parameter_values.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "documents/predicates.h"
#include "reports/list_rows.h"

namespace reports {
namespace {

// Which models the list takes: generics, instances, models without a family table. Without any of the attributes that
// choose, generics and instances.
struct Wanted {
  explicit Wanted(const actions::Task& task) : plain(task.isTrue(L"mwFamtab")), parameters(task.isTrue(L"paras")) {
    const bool chosen = task.has(L"generics") || task.has(L"instances") || task.has(L"mwFamtab");
    generics = !chosen || task.isTrue(L"generics");
    instances = !chosen || task.isTrue(L"instances");
  }
  bool generics = false, instances = false, plain = false, parameters = false;
};

struct Member {
  const ListSubject& subject;
  std::wstring name, generic;
};
constexpr ListColumn<Member> kColumns[] = {
    {L"File name", L"fname", [](const Member& member) { return member.name; }},
    {L"File path", L"fpath", [](const Member& member) { return member.subject.file.path; }},
    {L"Extension", L"ext", [](const Member& member) { return std::wstring(creo::typeExtension(member.subject.type)); }},
    {L"Generic", L"generic", [](const Member& member) { return member.generic; }},
};

std::wstring valueText(const creo::Got<creo::ProParamvalue>& value) {
  if (!value) return {};
  if (value.value.type == creo::ProParamvalueType::noteId) return L"not supported type";
  return actions::textOf(value.value);
}

creo::Got<creo::ProParamvalue> parameterValue(creo::ProMdl model, const std::wstring& name) {
  const auto owner = creo::ProMdlToModelitem(model);
  const auto parameter = owner ? creo::ProParameterInit(owner.value, name) : owner.error;
  // As the cells of the table have it.
  return parameter ? creo::ProParameterScaledvalueGet(parameter.value) : parameter.error;
}

class FamilyRows {
 public:
  // table: the model whose family table has the columns.
  FamilyRows(CsvReport& report, const ListSubject& subject, creo::ProMdl table, const Wanted& wanted)
      : report_(report), subject_(subject) {
    for (const auto& column : kColumns) reportAddColumn(report_, column.key, column.title);
    if (!wanted.parameters) return;
    creo::ProFamtableItemVisit({table}, [&](const creo::ProFamtableItem& item) {
      if (item.type == creo::ProFamitemType::parameter) parameters_.push_back(item);
      return creo::ProNoError;
    });
    for (const auto& item : parameters_) reportAddColumn(report_, columnOf(item), columnOf(item));
  }

  // value: of a column of the table.
  void add(const std::wstring& name, const std::wstring& generic,
           creo::FunctionRef<creo::Got<creo::ProParamvalue>(const creo::ProFamtableItem&)> value) const {
    const Member member{subject_, name, generic};
    for (const auto& column : kColumns) reportSetValue(report_, column.key, column.value(member));
    for (const auto& item : parameters_) reportSetValue(report_, columnOf(item), valueText(value(item)));
    reportNextRow(report_);
  }

 private:
  static std::wstring columnOf(const creo::ProFamtableItem& item) { return item.name + L" VALUE"; }

  CsvReport& report_;
  const ListSubject& subject_;
  std::vector<creo::ProFamtableItem> parameters_;
};

}  // namespace

void instanceList(CsvReport& report, const ListSubject& subject) {
  const Wanted wanted(subject.task);
  const auto generic = documents::immediateGeneric(subject.model);
  const bool hasTable = creo::ProSolidFamtableCheck(subject.model) == creo::ProNoError;
  const std::wstring name = creo::ProMdlNameGet(subject.model).value;
  const std::wstring above = generic ? creo::ProMdlNameGet(generic.value).value : std::wstring();
  const FamilyRows rows(report, subject, hasTable || !generic ? subject.model : generic.value, wanted);

  const bool isWanted = hasTable ? wanted.generics : generic ? wanted.instances : wanted.plain;
  const auto own = [&](const creo::ProFamtableItem& item) { return parameterValue(subject.model, item.name); };
  if (isWanted) rows.add(name, above, own);
  if (!hasTable || !wanted.instances) return;
  creo::ProFamtableInstanceVisit({subject.model}, [&](const creo::ProFaminstance& instance) {
    const auto ofRow = [&](const creo::ProFamtableItem& item) { return creo::ProFaminstanceValueGet(instance, item); };
    rows.add(instance.name, name, ofRow);
    return creo::ProNoError;
  });
}

}  // namespace reports
