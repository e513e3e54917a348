#include "headless/model/regenerate.h"

#include <algorithm>
#include <set>

#include "headless/model/bodies.h"
#include "headless/model/bottom_up.h"
#include "headless/model/family.h"
#include "headless/model/features.h"
#include "headless/model/model_functions.h"
#include "headless/model/models.h"
#include "headless/model/parameters.h"
#include "headless/model/program.h"
#include "headless/model/relations.h"
#include "headless/model/stored_value.h"
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
    auto present = value(name);
    const auto place = dimensions_.find(folded(name));
    if (!present || place == dimensions_.end() || findParameter(*model_.document, model_.row, name)) return present;
    const DimensionRecord& dimension = model_.document->record.dimensions[place->second];
    const auto nominal = number(*present);
    if (!dimension.tolerance || !nominal) return present;
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
    return present;
  }

  // Null for a dimension, and for what isn't there.
  [[nodiscard]] const ParameterRecord* parameter(std::string_view name) const { return find(name).parameter; }

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
    auto wanted = givenBack(value, target.type, target.parameter, modelRecord());
    // A dimension that is regenerated is positive.
    if (auto* real = wanted && !target.parameter ? std::get_if<double>(&*wanted) : nullptr) *real = std::abs(*real);
    return wanted;
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
  bool heedsUnits = true;
};

// Runs sets one after another; each knows what those before it assigned. A feature's own parameters hide the model's
// names, for reading and for giving. A set with a fault assigns nothing, and nothing is given before `give`.
class RelationRun {
 public:
  explicit RelationRun(const Model& model)
      : model_(model), document_(*model.document), isInstance_(model.row != nullptr), names_(model) {}

  RelationFault run(const RelationLines& set) {
    ParameterList* own = set.feature ? set.feature->parameters.get() : nullptr;
    Relations relations([&](std::string_view name) { return read(own, name, set.heedsUnits); },
                        [&](std::string_view name, const std::vector<RelationValue>* arguments) {
                          return askModel(model_, name, arguments, set.heedsUnits);
                        });
    RelationFault fault = relations.run(*set.lines);
    for (const Relations::Unworked& entry : relations.unworked())
      unworked_.push_back(
          text::format(L"%s line %d (%s)", set.called, static_cast<int>(entry.line), text::fromUtf8(entry.name)));
    for (const std::string& name : relations.announced())
      if (!find(own, name)) announced_.insert(name);
    std::vector<Assignment> assigned = relations.assignments();
    if (!set.heedsUnits)
      for (Assignment& assignment : assigned)
        assignment.value = withUnits(assignment.value, owned(own, assignment.name), document_.record);
    for (std::size_t i = 0; i < assigned.size() && !fault; ++i)
      if (!fits(own, assigned[i]))
        fault = {assigned[i].line,
                 text::format(L"'%s' can't take the value that a relation gives it", text::fromUtf8(assigned[i].name))};
    if (fault) return fault;
    for (const Assignment& item : assigned) take(own, item);
    return {};
  }

  // What wasn't worked out: "relation line 2 (EVALGRAPH)".
  [[nodiscard]] const std::vector<std::wstring>& unworked() const { return unworked_; }

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
    for (const Assignment& candidate : assignments_) {
      Names::Given given = names_.given(candidate);
      if (!given.changes) continue;
      *given.stored = std::move(given.value);
      document_.touch(nullptr);
      if (isReadBefore(candidate)) outcome.status = ProRegenerationStatus::needed;
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
    for (const Assignment& element : assignments_) {
      const Names::Given given = names_.given(element);
      if (!given.stored) continue;
      out.values.insert_or_assign(given.stored, given.value);
      if (!isReadBefore(element)) continue;
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
  // The parameter behind a name in a set; null for none.
  [[nodiscard]] const ParameterRecord* owned(ParameterList* own, std::string_view name) const {
    const ParameterRecord* parameter = find(own, name);
    return parameter ? parameter : names_.parameter(name);
  }
  // As a set reads a name. Where it doesn't heed units, a unit in brackets changes nothing.
  [[nodiscard]] std::optional<RelationValue> read(ParameterList* own, std::string_view name, bool heedsUnits) const {
    ParameterRecord* parameter = find(own, name);
    std::optional<RelationValue> value = parameter ? ofFeature(parameter) : known(name);
    if (heedsUnits || !value) return value;
    if (name.starts_with('[')) return RelationValue(1.0);
    return unitless(*value, owned(own, name), document_.record);
  }
  [[nodiscard]] std::optional<RelationValue> known(std::string_view name) const {
    const std::string key = folded(name);
    if (const auto place = places_.find(key); place != places_.end()) return assignments_[place->second].value;
    if (auto present = names_.value(name)) return present;
    if (announced_.contains(key)) return std::optional<RelationValue>(std::in_place);
    return {};
  }
  // A feature's own parameter: what its sets have assigned so far, else what the document has.
  [[nodiscard]] RelationValue ofFeature(ParameterRecord* parameter) const {
    const auto assigned = ofFeatures_.find(parameter);
    return assigned != ofFeatures_.end() ? assigned->second : counted(parameter->value, *parameter);
  }
  [[nodiscard]] RelationValue counted(const Scalar& scalar, const ParameterRecord& parameter) const {
    return countedIn(scalar, &parameter, document_.record);
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

  const Model& model_;
  ModelDocument& document_;
  bool isInstance_;
  Names names_;
  std::vector<std::wstring> unworked_;
  std::vector<Assignment> assignments_;
  std::unordered_map<std::string, std::size_t> places_;  // folded names
  std::unordered_set<std::string> announced_;            // folded names that some line assigns
  std::unordered_map<ParameterRecord*, RelationValue> ofFeatures_;
};

// heldBy: what the set says itself.
bool heedsUnits(const Model& model, const std::optional<bool>& heldBy) {
  const ModelsHost* host = model.document->host;
  return heldBy ? *heldBy : !host || !host->relationsHeedUnits || host->relationsHeedUnits();
}

// What a set of a feature, or of a sketch of it, says itself.
std::optional<bool> unitSensitivity(const FeatureRecord* owner, const std::vector<std::string>& lines) {
  if (!owner) return std::nullopt;
  for (const SectionRecord& section : owner->sections)
    if (&section.relations == &lines) return section.unitSensitive;
  return owner->unitSensitive;
}

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
                       const std::optional<bool>& unitSensitive, const FeatureRecord* feature = nullptr) {
    if (!lines.empty()) sets.push_back({called, &lines, feature, heedsUnits(model, unitSensitive)});
  };
  const ModelRecord& record = model.document->record;
  add(kRelation, record.relations, record.unitSensitive);
  if (hasFeatureRelations(record))
    for (const ModelFeature& feature : featuresOf(model)) {
      const FeatureRecord* own = feature.record();
      if (!own || featureStatus(feature) != ProFeatureStatus::active) continue;
      const std::wstring called = L"feature " + featureLabel(feature) + L", " + kRelation;
      for (const SectionRecord& section : own->sections) add(called, section.relations, section.unitSensitive, own);
      add(called, own->relations, own->unitSensitive, own);
    }
  add(kPostRelation, record.postRelations, record.postUnitSensitive);
  return sets;
}

// All sets one after another, up to a fault. giveSoFar: gives the model what they have assigned; asked where those
// behind the regeneration want a number of the body, which is one of these values, and only where no set fails.
Outcome runAll(RelationRun& relations, const Model& model, creo::FunctionRef<void()> giveSoFar) {
  for (const RelationLines& set : relationSets(model)) {
    if (set.lines == &model.document->record.postRelations && asksBody(*set.lines)) {
      RelationRun trial = relations;
      if (const RelationFault fault = trial.run(set)) return faulty(set.called, fault);
      giveSoFar();
    }
    if (const RelationFault fault = relations.run(set)) return faulty(set.called, fault);
  }
  return {};
}

// Says once a model which relations aren't worked out, by line.
void tellUnworked(const Models& models, const Model& model, const RelationRun& relations) {
  if (relations.unworked().empty() || std::exchange(model.document->unworkedTold, true)) return;
  std::wstring lines;
  for (const std::wstring& text : relations.unworked()) lines += (lines.empty() ? L"" : L", ") + text;
  models.message(L"warning: " + fileLabel(model) + L": what these ask for isn't worked out here: " + lines);
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
    // What the pass before has left for the relations to read stays beside it.
    const auto giveSoFar = [&] {
      const auto soFar = relations.worked();
      for (const auto& [place, value] : soFar.values) into.values.insert_or_assign(place, value);
    };
    if (Outcome outcome = runAll(relations, instance, giveSoFar); !outcome.reason.empty()) {
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

Outcome calculate(const Models& models, Model& model) {
  if (model.row) {
    const std::vector<RelationLines> sets = relationSets(model);
    // The body may be another one although the document is as it was: a component has changed.
    if (std::any_of(sets.begin(), sets.end(), [](const RelationLines& set) { return asksBody(*set.lines); }))
      model.document->valuesOf(*model.row).reset();
    const InstanceValues& values = instanceValues(model);
    return {values.status, values.fault};
  }
  RelationRun relations(model);
  Outcome outcome = runAll(relations, model, [&] { relations.give(); });
  if (outcome.reason.empty()) outcome = relations.give();
  if (outcome.reason.empty()) tellUnworked(models, model, relations);
  if (outcome.reason.empty()) applyProgram(*model.document, model);
  return outcome;
}

// worked: gets the features that were regenerated; null where nobody asks. Relations and program come first, whatever
// becomes of the features: the program says which of them are asked for.
Outcome regenerateAlone(const Models& models, Bodies& bodies, Model& model, std::vector<RegeneratedFeature>* worked) {
  settleDimensions(model);
  Outcome outcome = calculate(models, model);
  settleSections(model);
  if (std::wstring fault = featureFault(model, worked); !fault.empty()) return failure(std::move(fault));
  if (!outcome.reason.empty()) return outcome;
  std::wstring fault = bodies.fault(model);
  return fault.empty() ? outcome : failure(std::move(fault));
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
void keep(Model& model, Status& present, Status now) {
  if (present == now) return;
  present = now;
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
    if (!isInUse(featureStatus(feature))) continue;
    if (const auto used = models.inMemory(featureName(feature), feature.component()->type))
      components.push_back(used.value);
  }
  return components;
}

void regenerateInstances(Models& models, Bodies& bodies, const Model& generic) {
  const std::shared_ptr<ModelDocument> document = generic.document;
  const auto& table = generic.row ? generic.row->familyTable : document->record.familyTable;
  if (!table) return;
  eachRow(*table, [&](RowRecord& row) {
    const auto handle = instanceInMemory(models, *document, row);
    if (!handle) return;
    Model& instance = *models.find(handle.value);
    finish(models, instance, regenerateAlone(models, bodies, instance, nullptr));
  });
}

}  // namespace

ProRegenerationStatus regenerationStatus(const Model& model) {
  if (model.row && model.row->verification == ProVerification::verified) return ProRegenerationStatus::regenerated;
  if (model.row && model.row->verification == ProVerification::failed) return ProRegenerationStatus::failed;
  return model.document->record.regeneration;
}

const InstanceValues& instanceValues(const Model& instance) {
  auto& values = instance.document->valuesOf(*instance.row);
  if (!values) {
    values = std::make_unique<InstanceValues>();
    workOut(instance, *values);
  }
  return *values;
}

RelationLookup relationNames(const Model& model) {
  const auto names = std::make_shared<Names>(model);
  return [names](std::string_view name) { return names->bodyValue(name); };
}

creo::ProError regenerate(Models& models, Bodies& bodies, ProMdl solid, bool instancesToo,
                          std::vector<RegeneratedFeature>* worked) {
  if (!models.find(solid)) return creo::ProBadInputs;
  std::set<ProMdl> failed;
  ProRegenerationStatus status = ProRegenerationStatus::regenerated;
  const auto componentsBelow = [&](ProMdl current) { return componentsOf(models, *models.find(current)); };
  for (const ProMdl handle : bottomUp(solid, componentsBelow)) {
    Model& model = *models.find(handle);
    Outcome outcome = regenerateAlone(models, bodies, model, worked);
    if (const std::wstring missing = missingComponent(models, model); outcome.reason.empty() && !missing.empty())
      outcome = failure(L"its component " + missing + L" is missing");
    for (const ProMdl component : componentsOf(models, model)) {
      if (!outcome.reason.empty() || !failed.contains(component)) continue;
      outcome = failure(text::format(L"its component %s fails", fileLabel(*models.find(component))));
    }
    status = finish(models, model, outcome);
    if (status == ProRegenerationStatus::failed) failed.insert(handle);
  }
  if (instancesToo) regenerateInstances(models, bodies, *models.find(solid));
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
    tellUnworked(models, model, relations);
    return creo::ProNoError;
  }
  models.message(fileLabel(model) + L": " + faulty(set.called, fault).reason);
  return creo::ProGeneralError;
}

}  // namespace

creo::ProError regenerateRelations(const Models& models, Model& model, bool post) {
  const ModelRecord& record = model.document->record;
  RelationRun relations(model);
  const RelationLines ordinary{kRelation, &record.relations, nullptr, heedsUnits(model, record.unitSensitive)};
  if (!post) return runOneSet(models, model, relations, ordinary);
  // What the relations assign is known behind the regeneration.
  relations.run(ordinary);
  return runOneSet(models, model, relations,
                   {kPostRelation, &record.postRelations, nullptr, heedsUnits(model, record.postUnitSensitive)});
}

creo::ProError regenerateOwnRelations(const Models& models, Model& model, int feature,
                                      const std::vector<std::string>& lines) {
  const auto owner = featureOf(model, feature);
  RelationRun relations(model);
  // What the model's relations assign is known to them.
  const ModelRecord& record = model.document->record;
  relations.run({kRelation, &record.relations, nullptr, heedsUnits(model, record.unitSensitive)});
  const FeatureRecord* own = owner ? owner->record() : nullptr;
  return runOneSet(models, model, relations, {kRelation, &lines, own, heedsUnits(model, unitSensitivity(own, lines))});
}

}  // namespace headless
