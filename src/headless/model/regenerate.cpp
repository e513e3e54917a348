#include "headless/model/regenerate.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include "headless/model/bottom_up.h"
#include "headless/model/family.h"
#include "headless/model/features.h"
#include "headless/model/models.h"
#include "headless/model/parameters.h"
#include "headless/model/program.h"
#include "headless/model/relations.h"
#include "headless/model/units.h"
#include "text/encoding.h"
#include "text/format.h"

namespace headless {

using creo::ProFamitemType;
using creo::ProFeatureStatus;
using creo::ProMdl;
using creo::ProRegenerationStatus;
using creo::ProVerification;

namespace {

std::wstring fileLabel(const Model& model) { return model.name + L'.' + creo::typeExtension(model.type()); }

RelationValue relationValue(const Scalar& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* real = std::get_if<double>(&value)) return *real;
  if (const auto* integer = std::get_if<int>(&value)) return static_cast<double>(*integer);
  if (const auto* flag = std::get_if<bool>(&value)) return *flag;
  return {};
}

// What the type makes of a value; nothing for a value that it can't hold.
std::optional<Scalar> scalarOf(const RelationValue& value, creo::ProParamvalueType type) {
  const auto held = number(value);
  switch (type) {
    case creo::ProParamvalueType::string:
      if (const auto* text = std::get_if<std::string>(&value)) return Scalar(*text);
      break;
    case creo::ProParamvalueType::real:
      if (held) return Scalar(*held);
      break;
    case creo::ProParamvalueType::integer:
      if (held && std::abs(*held) <= std::numeric_limits<int>::max())
        return Scalar(static_cast<int>(std::lround(*held)));
      break;
    case creo::ProParamvalueType::boolean:
      if (held) return Scalar(*held != 0);
      break;
    case creo::ProParamvalueType::noteId:
    case creo::ProParamvalueType::none:
      break;
  }
  return {};
}

bool hasUnits(const ParameterRecord* parameter) {
  return parameter && parameter->type == creo::ProParamvalueType::real && !parameter->units.empty();
}

// What relations count with: a parameter with units in those of the model, as dimensions are. Null: no parameter.
RelationValue countedIn(const Scalar& held, const ParameterRecord* parameter, const ModelRecord& model) {
  RelationValue value = relationValue(held);
  if (!hasUnits(parameter) || !std::holds_alternative<double>(value)) return value;
  const double there = inModelUnits(std::get<double>(value), parameter->units, model);
  return std::isfinite(there) ? RelationValue(there) : RelationValue();
}

// The way back. Nothing for a value that the parameter can't hold.
std::optional<Scalar> givenBack(const RelationValue& value, creo::ProParamvalueType type,
                                const ParameterRecord* parameter, const ModelRecord& model) {
  auto wanted = scalarOf(value, type);
  if (!wanted || !hasUnits(parameter)) return wanted;
  const double own = inOwnUnits(std::get<double>(*wanted), parameter->units, model);
  return std::isfinite(own) ? std::optional<Scalar>(own) : std::nullopt;
}

// A model's parameters and dimensions as its relations see them; a parameter hides a dimension of its name.
class Names {
 public:
  explicit Names(const Model& model) : model_(model) {
    auto& dimensions = model.document->record.dimensions;
    for (std::size_t i = 0; i < dimensions.size(); ++i) dimensions_.try_emplace(folded(symbolOf(dimensions[i])), i);
  }

  [[nodiscard]] std::optional<RelationValue> value(std::string_view name) const {
    if (name.starts_with('[')) return unitFactor(name.substr(1, name.size() - 2));
    const Target target = find(name);
    if (!target.stored) return {};
    return countedIn(heldValue(model_, target.column, target.name, *target.stored), target.parameter, modelRecord());
  }

  // The same for the body: a dimension stands at its bound. The lower tolerance counts downwards.
  [[nodiscard]] std::optional<RelationValue> bodyValue(std::string_view name) const {
    auto held = value(name);
    const auto place = dimensions_.find(folded(name));
    if (!held || place == dimensions_.end() || findParameter(*model_.document, model_.row, name)) return held;
    const DimensionRecord& dimension = model_.document->record.dimensions[place->second];
    const auto nominal = number(*held);
    if (!dimension.tolerance || !nominal) return held;
    const auto& [upper, lower] = std::pair(dimension.tolerance->upper, dimension.tolerance->lower);
    switch (dimension.bound) {
      case creo::ProDimensionBound::upper:
        return RelationValue(*nominal + upper);
      case creo::ProDimensionBound::lower:
        return RelationValue(*nominal - lower);
      case creo::ProDimensionBound::middle:
        return RelationValue(*nominal + (upper - lower) / 2);
      case creo::ProDimensionBound::nominal:
        break;
    }
    return held;
  }

  // Could the name hold the value? One that the model doesn't have, or a value that isn't worked out, is given to
  // nothing.
  [[nodiscard]] bool fits(const Assignment& assigned) const {
    const Target target = find(assigned.name);
    return !target.stored || assigned.value.index() == 0 || scalarFor(target, assigned.value);
  }

  // A value that fits, and where the document has its own; null where the model has no such name.
  struct Given {
    Scalar* stored = nullptr;
    Scalar value;
    bool changes = false;  // it isn't what the model has
  };
  [[nodiscard]] Given given(const Assignment& assigned) const {
    const Target target = find(assigned.name);
    auto wanted = target.stored ? scalarFor(target, assigned.value) : std::nullopt;
    if (!wanted) return {};
    const bool changes = value(assigned.name) != countedIn(*wanted, target.parameter, modelRecord());
    return {target.stored, std::move(*wanted), changes};
  }

 private:
  // A unit with an offset, such as degrees Celsius, has no factor: what it goes into isn't worked out.
  [[nodiscard]] std::optional<RelationValue> unitFactor(std::string_view unit) const {
    const auto scale = unitScale(unit);
    if (!scale) return {};
    if (scale->offset != 0) return std::optional<RelationValue>(std::in_place);
    return inSystem(1, unit, model_.document->record);
  }
  struct Target {
    Scalar* stored = nullptr;  // null: there is no such name
    std::string name;
    creo::ProParamvalueType type = creo::ProParamvalueType::real;
    ProFamitemType column = ProFamitemType::dimension;
    const ParameterRecord* parameter = nullptr;  // null: a dimension
  };
  [[nodiscard]] Target find(std::string_view name) const {
    ModelDocument& document = *model_.document;
    if (ParameterRecord* parameter = findParameter(document, model_.row, name))
      return {&parameter->value, parameter->name, parameter->type, ProFamitemType::parameter, parameter};
    const auto dimension = dimensions_.find(folded(name));
    if (dimension == dimensions_.end()) return {};
    DimensionRecord& record = document.record.dimensions[dimension->second];
    return {&record.value, symbolOf(record)};
  }
  [[nodiscard]] std::optional<Scalar> scalarFor(const Target& target, const RelationValue& value) const {
    return givenBack(value, target.type, target.parameter, modelRecord());
  }
  [[nodiscard]] const ModelRecord& modelRecord() const { return model_.document->record; }

  const Model& model_;
  std::unordered_map<std::string, std::size_t> dimensions_;  // places by folded symbol
};

struct Outcome {
  ProRegenerationStatus status = ProRegenerationStatus::regenerated;
  std::wstring reason;  // of a failure
};

Outcome failure(std::wstring reason) { return {ProRegenerationStatus::failed, std::move(reason)}; }

Outcome faulty(const std::wstring& called, const RelationFault& fault) {
  return failure(text::format(L"%s line %d: %s", called, static_cast<int>(fault.line), fault.reason));
}

RelationLookup lookupIn(const Names& names) {
  return [&names](std::string_view name) { return names.value(name); };
}

constexpr const wchar_t* kRelation = L"relation";
constexpr const wchar_t* kPostRelation = L"post relation";

// A set of relations, and what a fault's line calls its lines.
struct RelationLines {
  std::wstring called;
  const std::vector<std::string>* lines = nullptr;
  const FeatureRecord* feature = nullptr;  // whose relations they are
};

// Runs sets one after another; each knows what those before it assigned. A feature's own parameters hide the model's
// names, for reading and for giving. A set with a fault assigns nothing, and nothing is given before `give`.
class RelationRun {
 public:
  explicit RelationRun(const Model& model)
      : document_(*model.document), isInstance_(model.row != nullptr), names_(model) {}

  RelationFault run(const RelationLines& set) {
    ParameterList* own = set.feature ? set.feature->parameters.get() : nullptr;
    Relations relations([&](std::string_view name) {
      ParameterRecord* parameter = find(own, name);
      return parameter ? ofFeature(parameter) : known(name);
    });
    RelationFault fault = relations.run(*set.lines);
    for (const std::string& name : relations.announced())
      if (!find(own, name)) announced_.insert(name);
    const auto& assigned = relations.assignments();
    for (std::size_t i = 0; i < assigned.size() && !fault; ++i)
      if (!fits(own, assigned[i]))
        fault = {assigned[i].line,
                 text::format(L"'%s' can't take the value that a relation gives it", text::fromUtf8(assigned[i].name))};
    if (fault) return fault;
    for (const Assignment& one : assigned) take(own, one);
    return {};
  }

  // Gives the model and its features what was assigned. An instance is given nothing: what it has is worked out.
  Outcome give() {
    if (isInstance_) return {};
    for (const auto& [parameter, value] : ofFeatures_) {
      auto wanted = scalarFor(*parameter, value);
      if (!wanted || counted(parameter->value, *parameter) == counted(*wanted, *parameter)) continue;
      parameter->value = std::move(*wanted);
      document_.touch(nullptr);
    }
    Outcome outcome;
    for (const Assignment& one : assignments_) {
      Names::Given given = names_.given(one);
      if (!given.changes) continue;
      *given.stored = std::move(given.value);
      document_.touch(nullptr);
      if (isReadBefore(one)) outcome.status = ProRegenerationStatus::needed;
    }
    return outcome;
  }

  // The same for an instance.
  struct Worked {
    ValuesByPlace values;
    ValuesByPlace late;   // those of them that relations read before others assign them
    bool settled = true;  // and have read so
  };
  [[nodiscard]] Worked worked() const {
    Worked out;
    for (const auto& [parameter, value] : ofFeatures_)
      if (auto wanted = scalarFor(*parameter, value))
        out.values.insert_or_assign(&parameter->value, std::move(*wanted));
    for (const Assignment& one : assignments_) {
      const Names::Given given = names_.given(one);
      if (!given.stored) continue;
      out.values.insert_or_assign(given.stored, given.value);
      if (!isReadBefore(one)) continue;
      out.late.insert_or_assign(given.stored, given.value);
      out.settled = out.settled && !given.changes;
    }
    return out;
  }

 private:
  // Only the post relations assign it, and the relations have read the value that it had.
  [[nodiscard]] bool isReadBefore(const Assignment& one) const {
    const auto& inRelations = document_.relationNames();
    const std::string key = folded(one.name);
    return inRelations.read.contains(key) && !inRelations.assigned.contains(key);
  }
  static ParameterRecord* find(ParameterList* own, std::string_view name) {
    if (!own) return nullptr;
    const std::size_t place =
        own->index.find(name, own->list.size(), [&](std::size_t i) -> std::string_view { return own->list[i].name; });
    return place < own->list.size() ? &own->list[place] : nullptr;
  }
  [[nodiscard]] std::optional<RelationValue> known(std::string_view name) const {
    const std::string key = folded(name);
    if (const auto place = places_.find(key); place != places_.end()) return assignments_[place->second].value;
    if (auto held = names_.value(name)) return held;
    if (announced_.contains(key)) return std::optional<RelationValue>(std::in_place);
    return {};
  }
  // A feature's own parameter: what its sets have assigned so far, else what the document has.
  [[nodiscard]] RelationValue ofFeature(ParameterRecord* parameter) const {
    const auto assigned = ofFeatures_.find(parameter);
    return assigned != ofFeatures_.end() ? assigned->second : counted(parameter->value, *parameter);
  }
  [[nodiscard]] RelationValue counted(const Scalar& held, const ParameterRecord& parameter) const {
    return countedIn(held, &parameter, document_.record);
  }
  [[nodiscard]] std::optional<Scalar> scalarFor(const ParameterRecord& parameter, const RelationValue& value) const {
    return givenBack(value, parameter.type, &parameter, document_.record);
  }
  [[nodiscard]] bool fits(ParameterList* own, const Assignment& one) const {
    const ParameterRecord* parameter = find(own, one.name);
    return parameter ? one.value.index() == 0 || scalarFor(*parameter, one.value) : names_.fits(one);
  }
  void take(ParameterList* own, const Assignment& one) {
    if (ParameterRecord* parameter = find(own, one.name)) {
      ofFeatures_.insert_or_assign(parameter, one.value);
      return;
    }
    const auto [place, fresh] = places_.try_emplace(folded(one.name), assignments_.size());
    if (fresh) assignments_.emplace_back();
    assignments_[place->second] = one;
  }

  ModelDocument& document_;
  bool isInstance_;
  Names names_;
  std::vector<Assignment> assignments_;
  std::unordered_map<std::string, std::size_t> places_;  // folded names
  std::unordered_set<std::string> announced_;            // folded names that some line assigns
  std::unordered_map<ParameterRecord*, RelationValue> ofFeatures_;
};

bool hasFeatureRelations(const ModelRecord& record) {
  return std::any_of(record.features.begin(), record.features.end(), [](const FeatureRecord& feature) {
    return !feature.relations.empty() ||
           std::any_of(feature.sections.begin(), feature.sections.end(),
                       [](const SectionRecord& section) { return !section.relations.empty(); });
  });
}

// The sets that have lines, in the order in which they run: the model's, those of features that aren't suppressed (a
// sketch before its feature), those behind the regeneration.
std::vector<RelationLines> relationSets(const Model& model) {
  std::vector<RelationLines> sets;
  const auto add = [&](const std::wstring& called, const std::vector<std::string>& lines,
                       const FeatureRecord* feature = nullptr) {
    if (!lines.empty()) sets.push_back({called, &lines, feature});
  };
  const ModelRecord& record = model.document->record;
  add(kRelation, record.relations);
  if (hasFeatureRelations(record))
    for (const ModelFeature& feature : featuresOf(model)) {
      const FeatureRecord* own = feature.record();
      if (!own || featureStatus(feature) != ProFeatureStatus::active) continue;
      const std::wstring name = featureName(feature);
      const std::wstring called =
          L"feature " + (name.empty() ? std::to_wstring(feature.place.id) : name) + L", " + kRelation;
      for (const SectionRecord& section : own->sections) add(called, section.relations, own);
      add(called, own->relations, own);
    }
  add(kPostRelation, record.postRelations);
  return sets;
}

// All sets one after another, up to a fault.
Outcome runAll(RelationRun& relations, const Model& model) {
  for (const RelationLines& set : relationSets(model))
    if (const RelationFault fault = relations.run(set)) return faulty(set.called, fault);
  return {};
}

// The features whose condition in the program doesn't hold and that aren't suppressed, and those that it suppresses no
// longer, with what they become; by their ids.
std::unordered_map<int, ProFeatureStatus> programStatuses(const Model& model) {
  std::unordered_map<int, ProFeatureStatus> statuses;
  const ModelRecord& record = model.document->record;
  if (record.program.empty()) return statuses;
  const Names names(model);
  const auto conditions = programConditions(model, lookupIn(names));
  for (const FeatureRecord& feature : record.features) {
    const auto found = conditions.find(feature.id);
    if (found == conditions.end()) continue;
    const ProFeatureStatus from = found->second ? ProFeatureStatus::programSuppressed : ProFeatureStatus::active;
    if (feature.status != from) continue;
    statuses[feature.id] = found->second ? ProFeatureStatus::active : ProFeatureStatus::programSuppressed;
  }
  return statuses;
}

void applyProgram(ModelDocument& document, const Model& model) {
  const auto statuses = programStatuses(model);
  for (FeatureRecord& feature : document.record.features) {
    const auto found = statuses.find(feature.id);
    if (found == statuses.end()) continue;
    feature.status = found->second;
    document.touch(nullptr);
  }
}

// Passes that an instance gets until what its relations read is what they leave.
constexpr int kMostPasses = 4;

// Whoever asks for the instance's values meanwhile is told what is there so far.
void workOut(const Model& instance, InstanceValues& into) {
  for (int pass = 1;; ++pass) {
    RelationRun relations(instance);
    if (Outcome outcome = runAll(relations, instance); !outcome.reason.empty()) {
      into = {};
      into.status = outcome.status;
      into.fault = std::move(outcome.reason);
      return;
    }
    RelationRun::Worked worked = relations.worked();
    into.values = std::move(worked.values);
    auto statuses = programStatuses(instance);
    // A feature that comes or goes brings its relations, or takes them along.
    const bool settled = worked.settled && statuses == into.statuses;
    into.statuses = std::move(statuses);
    if (!settled && pass == kMostPasses) into.status = ProRegenerationStatus::needed;
    if (settled || pass == kMostPasses) return;
    into.values = std::move(worked.late);
  }
}

// worked: gets the features that were regenerated; null where nobody asks.
Outcome regenerateAlone(Model& model, std::vector<RegeneratedFeature>* worked) {
  for (const ModelFeature& feature : featuresOf(model)) {
    const ProFeatureStatus status = featureStatus(feature);
    if (status == ProFeatureStatus::active && worked)
      worked->push_back({model.handle, feature.place.id, featureName(feature)});
    if (status != ProFeatureStatus::unregenerated) continue;
    std::wstring name = featureName(feature);
    if (name.empty()) name = std::to_wstring(feature.place.id);
    return failure(text::format(L"the feature %s isn't regenerated", name));
  }
  if (model.row) {
    const InstanceValues& values = instanceValues(model);
    return {values.status, values.fault};
  }
  RelationRun relations(model);
  Outcome outcome = runAll(relations, model);
  if (outcome.reason.empty()) outcome = relations.give();
  if (outcome.reason.empty()) applyProgram(*model.document, model);
  return outcome;
}

ProVerification verificationOf(ProRegenerationStatus status) {
  switch (status) {
    case ProRegenerationStatus::regenerated:
      return ProVerification::verified;
    case ProRegenerationStatus::needed:
      return ProVerification::notVerified;
    case ProRegenerationStatus::failed:
    case ProRegenerationStatus::connectFailed:
      break;
  }
  return ProVerification::failed;
}

// A status that is there already leaves the document alone.
template <class Status>
void keep(Model& model, Status& held, Status now) {
  if (held == now) return;
  held = now;
  model.document->touch(model.row);
}

ProRegenerationStatus finish(Models& models, Model& model, const Outcome& outcome) {
  if (!outcome.reason.empty()) models.message(fileLabel(model) + L": " + outcome.reason);
  if (model.row)
    keep(model, model.row->verification, verificationOf(outcome.status));
  else
    keep(model, model.document->record.regeneration, outcome.status);
  return outcome.status;
}

// The models of components that aren't suppressed, as far as they are in memory.
std::vector<ProMdl> componentsOf(const Models& models, const Model& model) {
  std::vector<ProMdl> components;
  for (const ModelFeature& feature : featuresOf(model)) {
    if (!feature.isComponent()) continue;
    const ProFeatureStatus status = featureStatus(feature);
    if (status != ProFeatureStatus::active && status != ProFeatureStatus::unregenerated) continue;
    if (const auto used = models.inMemory(featureName(feature), feature.component()->type))
      components.push_back(used.value);
  }
  return components;
}

void regenerateInstances(Models& models, const Model& generic) {
  const std::shared_ptr<ModelDocument> document = generic.document;
  const auto& table = generic.row ? generic.row->familyTable : document->record.familyTable;
  if (!table) return;
  eachRow(*table, [&](RowRecord& row) {
    const auto handle = instanceInMemory(models, *document, row);
    if (!handle) return;
    Model& instance = *models.find(handle.value);
    finish(models, instance, regenerateAlone(instance, nullptr));
  });
}

}  // namespace

ProRegenerationStatus regenerationStatus(const Model& model) {
  if (model.row && model.row->verification == ProVerification::verified) return ProRegenerationStatus::regenerated;
  if (model.row && model.row->verification == ProVerification::failed) return ProRegenerationStatus::failed;
  return model.document->record.regeneration;
}

const InstanceValues& instanceValues(const Model& instance) {
  auto& held = instance.document->valuesOf(*instance.row);
  if (!held) {
    held = std::make_unique<InstanceValues>();
    workOut(instance, *held);
  }
  return *held;
}

RelationLookup relationNames(const Model& model) {
  const auto names = std::make_shared<Names>(model);
  return [names](std::string_view name) { return names->bodyValue(name); };
}

creo::ProError regenerate(Models& models, ProMdl solid, bool instancesToo, std::vector<RegeneratedFeature>* worked) {
  if (!models.find(solid)) return creo::ProBadInputs;
  std::set<ProMdl> failed;
  ProRegenerationStatus status = ProRegenerationStatus::regenerated;
  const auto componentsBelow = [&](ProMdl one) { return componentsOf(models, *models.find(one)); };
  for (const ProMdl handle : bottomUp(solid, componentsBelow)) {
    Model& model = *models.find(handle);
    Outcome outcome = regenerateAlone(model, worked);
    for (const ProMdl component : componentsOf(models, model)) {
      if (!outcome.reason.empty() || !failed.contains(component)) continue;
      outcome = failure(text::format(L"its component %s fails", fileLabel(*models.find(component))));
    }
    status = finish(models, model, outcome);
    if (status == ProRegenerationStatus::failed) failed.insert(handle);
  }
  if (instancesToo) regenerateInstances(models, *models.find(solid));
  if (status == ProRegenerationStatus::failed) return creo::ProGeneralError;
  return status == ProRegenerationStatus::needed ? creo::ProRegenAgain : creo::ProNoError;
}

std::vector<std::wstring> relationFaults(const Model& model) {
  RelationRun relations(model);
  std::vector<std::wstring> faults;
  for (const RelationLines& set : relationSets(model))
    if (const RelationFault fault = relations.run(set)) faults.push_back(faulty(set.called, fault).reason);
  return faults;
}

namespace {

// Gives the model what a set assigns, or says what is wrong with it.
creo::ProError runOneSet(const Models& models, const Model& model, RelationRun& relations, const RelationLines& set) {
  const RelationFault fault = relations.run(set);
  if (!fault) {
    relations.give();
    return creo::ProNoError;
  }
  models.message(fileLabel(model) + L": " + faulty(set.called, fault).reason);
  return creo::ProGeneralError;
}

}  // namespace

creo::ProError regenerateRelations(const Models& models, Model& model, bool post) {
  const ModelRecord& record = model.document->record;
  RelationRun relations(model);
  const RelationLines ordinary{kRelation, &record.relations};
  if (!post) return runOneSet(models, model, relations, ordinary);
  // What the relations assign is known behind the regeneration.
  relations.run(ordinary);
  return runOneSet(models, model, relations, {kPostRelation, &record.postRelations});
}

creo::ProError regenerateOwnRelations(const Models& models, Model& model, int feature,
                                      const std::vector<std::string>& lines) {
  const auto owner = featureOf(model, feature);
  RelationRun relations(model);
  // What the model's relations assign is known to them.
  relations.run({kRelation, &model.document->record.relations});
  return runOneSet(models, model, relations, {kRelation, &lines, owner ? owner->record() : nullptr});
}

}  // namespace headless
