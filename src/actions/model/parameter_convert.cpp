#include "actions/model/parameter_convert.h"

#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "actions/model/instances.h"
#include "actions/model/parameter_list.h"
#include "actions/visits.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProFamtable.h"
#include "creo/ProMdl.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/units.h"

namespace actions {
namespace {

using namespace creo;
using core::Message;

// What a parameter is, beside its kind. The value is in the parameter's own units, as are those of the table's rows.
struct Saved {
  std::wstring name, description, units;
  bool designated = false, isRestricted = false;
  ProParamvalue value;
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
        const auto lock = ProFaminstanceCheck(instance);
        whole = whole && value && lock;
        if (lock && lock.value == ProInstanceLock::locked) locked_ = instance.name;
        if (value) values_.emplace(instance.name, value.value);
        return ProNoError;
      });
      whole = whole && (visited == ProNoError || visited == ProNotFound);
    });
    return all && whole;
  }

  // An instance that has a value of its own and can't be given it anew; empty for none.
  [[nodiscard]] const std::wstring& locked() const { return locked_; }

  // The values become of the kind that restore() gives. False, with its line: one of them can't.
  bool convert(ProParamvalueType type, const std::wstring& parameter) {
    converted_ = values_;
    for (auto& [instance, value] : converted_) {
      auto entry = converted(value, type, parameter);
      if (!entry) return false;
      value = std::move(*entry);
    }
    return true;
  }

  // False, with its line: a column or a value is missing.
  [[nodiscard]] bool restore(ProMdl generic, const ProParameter& parameter) const {
    if (columns_.empty()) return true;
    core::logWrite(L"set all Parameters for instances", core::kDebug);
    const ProFamtableItem item{ProFamitemType::parameter, parameter.id};
    bool whole = true;
    const bool all = eachTable(generic, [&](const std::wstring& owner, const ProFamtable& table) {
      if (!columns_.contains(owner)) return;
      if (!insists([&] { return isColumnNow(ProFamtableItemAdd(table, item)); })) {
        core::logMsgPlain(Message::addToTableFailed, core::kError);
        whole = false;
      }
      const ProError visited = ProFamtableInstanceVisit(table, [&](const ProFaminstance& instance) {
        const auto saved = converted_.find(instance.name);
        if (saved != converted_.end()) whole = restoreValue(instance, item, saved->second) && whole;
        return ProNoError;
      });
      whole = isWhole(visited, L"The instances") && whole;
    });
    return all && whole;
  }

  void report(const std::wstring& parameter) const {
    core::logWrite(L"clear memory", core::kDebug);
    for (const auto& [instance, value] : values_)
      core::logWrite(text::format(L"for %s is %s = %s", parameter, instance, exactTextOf(value)), core::kDebug);
  }

 private:
  static bool isColumnNow(ProError added) {
    return added == ProNoError || added == ProNoFamtable || added == ProExists;
  }
  static bool restoreValue(const ProFaminstance& instance, const ProFamtableItem& item, const ProParamvalue& value) {
    if (insists([&] { return ProFaminstanceValueSet(instance, item, value) == ProNoError; })) return true;
    core::logWrite(text::format(L"The value '%s' of '%s' can't be set in the instance '%s'", exactTextOf(value),
                                item.name, instance.name),
                   core::kError);
    return false;
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
  std::wstring locked_;
};

// Nothing: something can't be read.
std::optional<Saved> saved(const ProParameter& parameter) {
  const auto value = ProParameterScaledvalueGet(parameter);
  const auto description = ProParameterDescriptionGet(parameter);
  const auto units = ProParameterUnitsGet(parameter);
  const auto range = ProParameterRangeGet(parameter), list = ProParameterIsEnumerated(parameter);
  const auto designated = ProParameterDesignationVerify(parameter);
  const auto isTold = [](const Got<std::wstring>& text) { return text || text.error == ProNotFound; };
  if (!value || !isTold(description) || !isTold(units) || !range || !list) return std::nullopt;
  if (!designated && parameter.owner.type == ProItemType::model) return std::nullopt;  // others may have none
  return Saved{parameter.id, description.value, units.value, designated.value, range.value || list.value, value.value};
}

bool isNumber(ProParamvalueType type) { return type == ProParamvalueType::real || type == ProParamvalueType::integer; }

// Has its owner another one of that name?
bool isDouble(const ProParameter& parameter) {
  return static_cast<bool>(ProParameterDesignationVerify({parameter.id, parameter.owner, 1}));
}

std::wstring unreadable(const ProParameter& parameter) {
  return text::format(L"Parameter '%s' can't be read whole, it stays as it is", parameter.id);
}

// One conversion: what the parameter was, and what it shall be.
class Conversion {
 public:
  Conversion(const ProParameter& parameter, Saved from, std::wstring newName, ProParamvalueType type)
      : parameter_(parameter), from_(std::move(from)), newName_(std::move(newName)), type_(type) {}

  // With the family table's columns and values. Why they can't be carried; empty: they can.
  std::wstring carryFamily(ProMdl model) {
    core::logWrite(L"save parameter and famtab values", core::kDebug);
    generic_ = model;
    if (!family_.save(model, parameter_.id)) return unreadable(parameter_);
    if (family_.locked().empty()) return {};
    return text::format(L"Parameter '%s' has a value of its own in the locked instance '%s', it stays as it is",
                        parameter_.id, family_.locked());
  }

  // What Creo would refuse once the old parameter has gone; empty: nothing that can be seen.
  [[nodiscard]] std::wstring obstacle() const {
    const bool renames = newName_ != parameter_.id;
    if (renames && !(text::isName(newName_) && text::fits(newName_, text::kNameSize)))
      return text::format(L"'%s' can't be the name of a parameter, '%s' isn't renamed", newName_, parameter_.id);
    if (renames && ProParameterInit(parameter_.owner, newName_))
      return text::format(L"A parameter '%s' exists already, nothing is renamed", newName_);
    if (!renames && isDouble(parameter_))
      return text::format(L"There is more than one parameter '%s', they stay as they are", parameter_.id);
    if (from_.isRestricted && type_ != from_.value.type && !(isNumber(type_) && isNumber(from_.value.type)))
      return text::format(L"The restriction of '%s' is for its own type, it stays as it is", parameter_.id);
    return {};
  }

  // The values become of the wanted type. False, with its line: one of them can't.
  bool convertValues() {
    auto made = converted(from_.value, type_, parameter_.id);
    if (!made || !family_.convert(type_, parameter_.id)) return false;
    wanted_ = std::move(*made);
    return true;
  }

  // Deletes and creates. False, with its line: the old one stands, or is back whole.
  [[nodiscard]] bool carryOut() const {
    core::logWrite(L"delete Parameter", core::kDebug);
    if (ProParameterDelete(parameter_) != ProNoError) {
      core::logWrite(text::format(L"Parameter '%s' can't be deleted, it stays as it is", parameter_.id), core::kError);
      return false;
    }
    core::logWrite(L"create Parameter", core::kDebug);
    ProParameter made;
    const std::wstring failure = make(made);
    if (failure.empty() && (!generic_ || family_.restore(generic_, made))) {
      if (generic_) family_.report(made.id);
      return true;
    }
    core::logWrite(
        failure.empty() ? text::format(L"Not all instances can have their values of '%s'", made.id) : failure,
        core::kError);
    putBack(made);
    return false;
  }

 private:
  // The new one, with all that belongs to it but the family table's values. Why that fails; empty: it is there.
  std::wstring make(ProParameter& made) const {
    const auto create = [&] {
      const auto got = from_.units.empty()
                           ? ProParameterCreate(parameter_.owner, newName_, wanted_)
                           : ProParameterWithUnitsCreate(parameter_.owner, newName_, wanted_, from_.units);
      made = got.value;
      return static_cast<bool>(got);
    };
    if (!insists(create)) return text::format(L"Parameter '%s' can't be created", newName_);
    if (!insists([&] { return ProParameterRemainsTake(made) == ProNoError; }))
      return text::format(L"The restriction of '%s' doesn't allow '%s'", newName_, exactTextOf(wanted_));
    const bool described = from_.description.empty() ||
                           insists([&] { return ProParameterDescriptionSet(made, from_.description) == ProNoError; });
    const bool designated = !from_.designated || insists([&] { return setDesignation(made, true) == ProNoError; });
    if (described && designated) return {};
    return text::format(L"Parameter '%s' can't have its description or designation", newName_);
  }

  // made: what stands in its place so far; without a name nothing.
  void putBack(const ProParameter& made) const {
    const ProParameter* successor = made.id.empty() ? nullptr : &made;
    const bool isBack = insists([&] { return ProParameterDeleteUndo(parameter_.owner, successor) == ProNoError; });
    core::logWrite(isBack ? text::format(L"Parameter '%s' is put back as it was", from_.name)
                          : text::format(L"Parameter '%s' with the value '%s' can't be put back", from_.name,
                                         exactTextOf(from_.value)),
                   core::kError);
  }

  const ProParameter& parameter_;
  Saved from_;
  std::wstring newName_;
  ProParamvalueType type_;
  ProParamvalue wanted_;  // its value, of the new type
  FamilyValues family_;
  ProMdl generic_{};  // null: no family table's values are carried
};

}  // namespace

void convertParameter(ParameterEditContext& context, const ProParameter& parameter, const ParameterKind* target) {
  const bool isFirst = context.refused.insert(parameter.id).second;  // until it succeeds
  if (!isFirst) return;
  const auto refuse = [](const std::wstring& line) { core::logWrite(line, core::kError); };
  const ProMdl model = parameter.owner.owner;
  const auto from = saved(parameter);
  const auto modelType = ProMdlTypeGet(model);
  if (from && from->value.type == ProParamvalueType::noteId)
    return refuse(L"The Id Note Parameter is not supported by this action");
  const ParameterKind* own = from ? kindOfType(from->value.type) : nullptr;
  if (!own || !modelType) return refuse(unreadable(parameter));
  core::logIndented(text::format(core::msgText(Message::typeChange), own->word, target ? target->word : L"new Name"),
                    core::kNormal, 4);
  if (!target && text::equalNoCase(context.workingName, parameter.id)) return;

  Conversion conversion(parameter, *from, target ? parameter.id : context.workingName,
                        target ? target->type : own->type);
  const bool isSolid = modelType.value == ProMdlType::part || modelType.value == ProMdlType::assembly;
  const bool carriesFamily = context.familyAware && isSolid && parameter.owner.type == ProItemType::model;
  std::wstring obstacle = conversion.obstacle();
  if (obstacle.empty() && carriesFamily) obstacle = conversion.carryFamily(model);
  if (!obstacle.empty()) return refuse(obstacle);
  if (!conversion.convertValues() || !conversion.carryOut()) return;
  context.refused.erase(parameter.id);
  if (!target) context.renamed.insert(parameter.id);
  ++context.visitRepeats;
}

}  // namespace actions
