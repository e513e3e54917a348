#include "actions/model/parameter_convert.h"

#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "actions/model/instances.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

using namespace creo;

constexpr int kAddColumnFailed = 66, kTypechange = 312;

// What a parameter is, beside its kind.
struct Saved {
  std::wstring name, description, units;
  bool designated = false;
  ProParamvalue value;
  ProParamvalue wanted;  // the same value, of the new kind
};

// The value as one of the kind. Nothing, with its line: it is no number that such a parameter can hold.
std::optional<ProParamvalue> converted(const ProParamvalue& value, ProParamvalueType type, const std::wstring& name) {
  auto made = convertedValue(value, type);
  if (!made) core::logWrite(text::format(core::msgText(noNumberMessage(type)), name, exactTextOf(value)), core::kError);
  return made;
}

// Behind the deletion a refused step is tried once more: what it carries is in memory alone.
template <class Step>
bool insists(Step step) {
  return step() || step();
}

// What the instances of a model make of a parameter, in its own table and those below it.
class FamilyValues {
 public:
  // False: a value couldn't be read, so that a conversion would lose it.
  bool save(ProMdl generic, const std::wstring& parameter) {
    bool whole = true;
    const ProFamtableItem item{ProFamitemType::parameter, parameter};
    const bool all = eachTable(generic, [&](const std::wstring& owner, const ProFamtable& table) {
      const ProError visited = ProFamtableInstanceVisit(table, [&](const ProFaminstance& instance) {
        const auto isDefault = ProFaminstanceFamtableItemIsDefault(instance, item);
        whole = whole && (isDefault || isDefault.error == ProNotFound);
        if (!isDefault) return ProNoError;
        columns_.insert(owner);
        if (isDefault.value) return ProNoError;
        const auto value = ProFaminstanceValueGet(instance, item);
        whole = whole && value;
        if (value) values_.emplace(instance.name, value.value);
        return ProNoError;
      });
      whole = whole && (visited == ProNoError || visited == ProNotFound);
    });
    return all && whole;
  }

  // Of the new kind from here on. False, with its line: one of them can't be, and all stay.
  bool convert(ProParamvalueType type, const std::wstring& parameter) {
    auto made = values_;
    for (auto& [instance, value] : made) {
      auto one = converted(value, type, parameter);
      if (!one) return false;
      value = std::move(*one);
    }
    converted_ = std::move(made);
    return true;
  }

  // asConverted: of the new kind, else as they were.
  void restore(ProMdl generic, const ProParameter& parameter, bool asConverted) const {
    if (columns_.empty()) return;
    core::logWrite(L"set all Parameters for instances", core::kDebug);
    const ProFamtableItem item{ProFamitemType::parameter, parameter.id};
    const bool all = eachTable(generic, [&](const std::wstring& owner, const ProFamtable& table) {
      if (!columns_.contains(owner)) return;
      if (!insists([&] { return isColumnNow(ProFamtableItemAdd(table, item)); }))
        core::logMsgPlain(kAddColumnFailed, core::kError);
      ProFamtableInstanceVisit(table, [&](const ProFaminstance& instance) {
        const auto& values = asConverted ? converted_ : values_;
        const auto saved = values.find(instance.name);
        if (saved != values.end()) restoreValue(instance, item, saved->second);
        return ProNoError;
      });
    });
    if (!all)
      core::logWrite(text::format(L"Not all instances have their values of '%s' again", parameter.id), core::kError);
  }

  void report(const std::wstring& parameter) const {
    core::logWrite(L"clear memory", core::kDebug);
    for (const auto& [instance, value] : values_)
      core::logWrite(text::format(L"for %s is %s = %s", parameter, instance, textOf(value)), core::kDebug);
  }

 private:
  static bool isColumnNow(ProError added) {
    return added == ProNoError || added == ProNoFamtable || added == ProExists;
  }
  static void restoreValue(const ProFaminstance& instance, const ProFamtableItem& item, const ProParamvalue& value) {
    if (insists([&] { return ProFaminstanceValueSet(instance, item, value) == ProNoError; })) return;
    core::logWrite(text::format(L"The value '%s' of '%s' can't be set in the instance '%s'", textOf(value), item.name,
                                instance.name),
                   core::kError);
  }
  // Each table, with the name of the generic that has it. False: not all were visited.
  static bool eachTable(ProMdl generic, FunctionRef<void(const std::wstring&, const ProFamtable&)> visit) {
    const auto table = ProFamtableInit(generic);
    if (table.error == ProNotFound) return true;
    const auto name = ProMdlNameGet(generic);
    if (!table || !name) return false;
    visit(name.value, table.value);
    bool all = true;
    const auto below = [&](const ProFaminstance&, ProMdl instance) { all = eachTable(instance, visit) && all; };
    return visitInstances(generic, below) && all;
  }

  std::unordered_set<std::wstring> columns_;  // names of generics
  std::unordered_map<std::wstring, ProParamvalue> values_, converted_;
};

// Nothing: something can't be read.
std::optional<Saved> saved(const ProParameter& parameter, const ProParamvalue& value) {
  const auto description = ProParameterDescriptionGet(parameter);
  const auto units = ProParameterUnitsGet(parameter);
  if (!description || (!units && units.error != ProNotFound)) return std::nullopt;
  return Saved{parameter.id, description.value, units.value, ProParameterDesignationVerify(parameter).value, value,
               value};
}

Got<ProParameter> created(const ProModelitem& owner, const Saved& from, const std::wstring& name,
                          const ProParamvalue& value) {
  const bool keepsUnits = !from.units.empty() && value.type == from.value.type;
  return keepsUnits ? ProParameterWithUnitsCreate(owner, name, value, from.units)
                    : ProParameterCreate(owner, name, value);
}

void complete(const ProParameter& parameter, const Saved& from) {
  const bool described = from.description.empty() ||
                         insists([&] { return ProParameterDescriptionSet(parameter, from.description) == ProNoError; });
  const bool designated =
      !from.designated || insists([&] { return ProParameterDesignationAdd(parameter) == ProNoError; });
  if (!described || !designated)
    core::logWrite(text::format(L"Description or designation of '%s' is lost: '%s'", parameter.id, from.description),
                   core::kError);
}

void refuse(std::wstring_view pattern, const std::wstring& name) {
  core::logWrite(text::format(pattern, name), core::kError);
}

// Deletes and creates. Nothing: the old one stands, or is back.
bool rebuild(const ProParameter& parameter, const Saved& from, const std::wstring& newName, Got<ProParameter>& made) {
  core::logWrite(L"delete Parameter", core::kDebug);
  if (ProParameterDelete(parameter) != ProNoError) {
    refuse(L"Parameter '%s' can't be deleted, it stays as it is", parameter.id);
    return false;
  }
  core::logWrite(L"create Parameter", core::kDebug);
  made = created(parameter.owner, from, newName, from.wanted);
  if (made) return true;
  refuse(L"Parameter '%s' can't be created, the old one is put back", newName);
  insists([&] { return static_cast<bool>(made = created(parameter.owner, from, from.name, from.value)); });
  if (!made) refuse(L"Parameter '%s' can't be put back", from.name + L"' with the value '" + textOf(from.value));
  return false;
}

}  // namespace

void convertParameter(ParameterEditContext& context, const ProParameter& parameter, const ParameterKind* target) {
  constexpr std::wstring_view kUnreadable = L"Parameter '%s' can't be read whole, it stays as it is";
  const auto value = editedValue(parameter);
  const ParameterKind* own = value ? kindOfType(value.value.type) : nullptr;
  if (!own) return refuse(kUnreadable, parameter.id);
  const std::wstring newName = target ? parameter.id : context.workingName;
  const ProParamvalueType type = target ? target->type : own->type;
  core::logIndented(text::format(core::msgText(kTypechange), own->word, target ? target->word : L"new Name"),
                    core::kNormal, 4);
  if (!target && text::equalNoCase(newName, parameter.id)) return;
  if (!target && ProParameterInit(parameter.owner, newName))
    return refuse(L"A parameter '%s' exists already, nothing is renamed", newName);

  const ProMdl model = parameter.owner.owner;
  const auto modelType = ProMdlTypeGet(model);
  auto from = saved(parameter, value.value);
  if (!from || !modelType) return refuse(kUnreadable, parameter.id);
  auto wanted = converted(value.value, type, parameter.id);
  if (!wanted) return;
  from->wanted = std::move(*wanted);
  FamilyValues family;
  const bool isSolid = modelType.value == ProMdlType::part || modelType.value == ProMdlType::assembly;
  const bool carriesFamily = context.familyAware && isSolid && parameter.owner.type == ProItemType::model;
  if (carriesFamily) {
    core::logWrite(L"save parameter and famtab values", core::kDebug);
    if (!family.save(model, parameter.id)) return refuse(kUnreadable, parameter.id);
    if (!family.convert(type, parameter.id)) return;
  }
  Got<ProParameter> made = ProNotFound;
  const bool succeeded = rebuild(parameter, *from, newName, made);
  if (!made) return;
  complete(made.value, *from);
  if (carriesFamily) {
    family.restore(model, made.value, succeeded);
    family.report(made.value.id);
  }
  if (succeeded) ++context.visitRepeats;
}

}  // namespace actions
