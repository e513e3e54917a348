// Actions on the layers of a model: they go, get other names, go below each other, are hidden.
#include "actions/model/layers.h"

#include <set>
#include <unordered_map>
#include <unordered_set>

#include "actions/environment/macro.h"
#include "actions/visits.h"
#include "core/messages.h"
#include "creo/ProUtil.h"
#include "language/compare.h"
#include "language/comparison_watch.h"
#include "language/variables.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {

using namespace language;
using creo::ProError;
using creo::ProItemType;
using creo::ProLayer;
using creo::ProLayerDisplay;
using creo::ProModelitem;

namespace {
constexpr std::wstring_view kLayers = L"The layers";
}  // namespace

bool eachLayer(creo::ProMdl model, std::wstring_view pattern, creo::FunctionRef<ProError(const NamedLayer&)> work) {
  bool allNamed = true;
  const ProError visited = creo::ProMdlLayerVisit(model, [&](const ProLayer& layer) {
    auto name = creo::ProLayerNameGet(layer);
    allNamed = allNamed && name;
    if (!name) core::logWrite(text::format(L"The name of the layer %d can't be read", layer.id), core::kError);
    if (!name || !matches(pattern, name.value)) return creo::ProNoError;
    return work({layer, std::move(name.value)});
  });
  return isWhole(visited, kLayers) && allNamed;
}

std::optional<std::wstring> filledIn(const Task& task, std::wstring_view value) {
  Replaced replaced = replaceVariables(value, task.model());
  if (replaced.hasText()) return std::move(replaced.text);
  core::logWrite(text::format(L"'%s' can't be used as a name", value), core::kError);
  return std::nullopt;
}

std::optional<ProLayerDisplay> layerStatus(std::wstring_view word) {
  if (word == L"blank") return ProLayerDisplay::blank;
  if (word == L"display") return ProLayerDisplay::display;
  if (word == L"normal") return ProLayerDisplay::normal;
  return std::nullopt;
}

namespace {

constexpr int kMostDeletions = 100'000;  // a walk restarts behind each
constexpr int kMostRenames = 100;        // the same

// How often a walk over layers may start again because it changed them.
class Restarts {
 public:
  explicit Restarts(int most) : most_(most) {}
  // False, with a line at the first time: no more.
  bool may() {
    if (count_ == most_ && !std::exchange(told_, true))
      core::logWrite(text::format(L"The walk over the layers started again %d times; the rest is left", most_),
                     core::kWarning);
    return count_ < most_;
  }
  void restarted() { ++count_; }

 private:
  int most_, count_ = 0;
  bool told_ = false;
};

// Creo shows layers in a dialog of their own, or in the model tree. Neither may show one that goes.
void takeLayerDialogAway() {
  const auto floating = creo::ProConfigoptGet(L"floating_layer_tree");
  const bool isFloating = floating && text::equalNoCase(floating.value, L"YES");
  runMacro(isFloating ? L"~ Close `layer_dlg_cur` `layer_dlg_cur`;"
                      : L"~ Select `main_dlg_cur` `PHTLeft.PHLayerUI.AssyTree` 1 `node0`;",
           L"The layer dialog can't be closed");
}

bool isLayer(const ProModelitem& item, int id) { return item.type == ProItemType::layer && item.id == id; }

// All that is on a layer, onto another one; that one itself can't be put on it. False: something wasn't copied.
bool copyItems(const ProLayer& from, const ProLayer& to) {
  const auto items = creo::ProLayerItemsGet(from);
  if (!items) return false;
  bool all = true;
  for (const ProModelitem& item : items.value)
    all = (isLayer(item, to.id) || creo::ProLayerItemAdd(to, item) == creo::ProNoError) && all;
  return all;
}

void tellNotCopied(std::wstring_view name) {
  core::logWrite(text::format(L"There occured an Error while copy the items of layer %s, it stays", name),
                 core::kError);
}

bool deleteNamed(const ProLayer& layer, std::wstring_view name) {
  core::logIndented(text::format(L"%s %s", core::msgText(Message::deleteNamed), name), core::kNormal, 1);
  if (creo::ProLayerDelete(layer) == creo::ProNoError) return true;
  core::logWrite(L"There occured an Error while delete a layer", core::kError);
  return false;
}

// The layers that go by their names. A deletion would have the walk start again. As the layers before the deleted one
// have been seen already, it goes on behind it: each layer is looked at once a name, and one that couldn't go isn't
// tried again.
class Deletion {
 public:
  explicit Deletion(const Task& task) : task_(task) {
    const std::wstring_view copyTo = task.attribute(L"copyTo");
    if (copyTo.empty()) return;
    const language::GivenUp givenUp;
    const bool all = eachLayer(task.model(), copyTo, [&](const NamedLayer& target) {
      targetIds_.insert(target.layer.id);
      targets_.push_back(target);
      return creo::ProNoError;
    });
    if (givenUp.any()) hindrance_ = L"a pattern was given up";
    if (!all) hindrance_ = L"not all layers can be read";
    if (targets_.empty() && hindrance_.empty())
      core::logWrite(text::format(L"No layer fits '%s', so no items are copied", copyTo), core::kWarning);
  }

  void run() {
    // One that should stay, or get their items, might go.
    if (!hindrance_.empty())
      return core::logWrite(text::format(L"No layer is deleted, as %s", hindrance_), core::kError);
    for (const Task::Numbered& name : task_.numberedAll(L"name_", kMostLayerNames))
      eachLayer(task_.model(), name.value, [this](const NamedLayer& found) { return work(found); });
  }

 private:
  ProError work(const NamedLayer& found) {
    const int id = found.layer.id;
    if (targetIds_.contains(id) || failed_.contains(id)) return creo::ProNoError;
    if (!restarts_.may()) return creo::ProStopVisit;
    if (copied(found) && deleteNamed(found.layer, found.name))
      restarts_.restarted();
    else
      failed_.insert(id);
    return creo::ProNoError;
  }
  bool copied(const NamedLayer& found) {
    bool all = true;
    for (const NamedLayer& target : targets_) {
      core::logIndented(text::format(L"%s %s", core::msgText(Message::copyItemsTo), target.name), core::kNormal, 2);
      all = copyItems(found.layer, target.layer) && all;
    }
    if (!all) tellNotCopied(found.name);
    return all;
  }

  const Task& task_;
  std::vector<NamedLayer> targets_;
  std::unordered_set<int> targetIds_, failed_;
  std::wstring_view hindrance_;  // why it isn't known which layers get the items
  Restarts restarts_{kMostDeletions};
};

// The layers without items. Where a layer goes, those that it was on may become empty: one behind it is reached anyway,
// one before it goes next, as if the walk had started again.
class EmptyLayers {
 public:
  explicit EmptyLayers(creo::ProMdl model) : model_(model) {
    const ProError visited = creo::ProMdlLayerVisit(model, [this](const ProLayer& layer) {
      places_.try_emplace(layer.id, all_.size());
      all_.push_back({layer, 0, {}});
      return creo::ProNoError;
    });
    if (!isWhole(visited, kLayers)) all_.clear();  // none of them goes
    for (std::size_t i = 0; i < all_.size(); ++i) count(i);
  }

  void run() {
    std::size_t reached = 0;
    if (all_.empty()) return;
    const ProError visited = creo::ProMdlLayerVisit(model_, [&](const ProLayer&) {
      std::set<std::size_t> next = {reached};
      while (!next.empty()) {
        const std::size_t place = next.extract(next.begin()).value();
        if (!isEmpty(place)) continue;
        if (!restarts_.may()) return creo::ProStopVisit;
        if (!deleteNamed(all_[place].layer, creo::ProLayerNameGet(all_[place].layer).value)) continue;
        restarts_.restarted();
        for (const std::size_t holder : all_[place].on)
          if (--all_[holder].items == 0 && holder < reached) next.insert(holder);
      }
      ++reached;
      return creo::ProNoError;
    });
    isWhole(visited, kLayers);
  }

 private:
  struct Held {
    ProLayer layer;
    std::size_t items;
    std::vector<std::size_t> on;  // places of the layers that it lies on
  };
  void count(std::size_t place) {
    const auto items = itemsOf(place);
    all_[place].items = items ? items.value.size() : all_.size() + 1;  // not known: not empty
    for (const ProModelitem& item : items.value) {
      const auto child = item.type == ProItemType::layer ? places_.find(item.id) : places_.end();
      if (child != places_.end()) all_[child->second].on.push_back(place);
    }
  }
  [[nodiscard]] bool isEmpty(std::size_t place) const {
    if (all_[place].items != 0) return false;
    const auto items = itemsOf(place);
    return items && items.value.empty();
  }
  // With an error line where they can't be read: the layer then stays.
  [[nodiscard]] creo::Got<std::vector<ProModelitem>> itemsOf(std::size_t place) const {
    auto items = creo::ProLayerItemsGet(all_[place].layer);
    if (!items && items.error != creo::ProNotFound)
      core::logWrite(text::format(L"What is on the layer %s can't be read, it stays",
                                  creo::ProLayerNameGet(all_[place].layer).value),
                     core::kError);
    return items;
  }

  creo::ProMdl model_;
  std::vector<Held> all_;
  std::unordered_map<int, std::size_t> places_;  // by id
  Restarts restarts_{kMostDeletions};
};

Outcome deleteLayer(const Task& task) {
  takeLayerDialogAway();
  Deletion(task).run();
  if (!task.isTrue(L"delallempty")) return done;
  core::logMsgId(Message::deleteEmptyLayers, core::kNormal, 1);
  EmptyLayers(task.model()).run();
  return done;
}

// Pairs of names, worked from the first one again behind each change: a later pair's new name may be an earlier pair's
// old one. So the bound ends pairs that take each other's names.
class Renaming {
 public:
  explicit Renaming(const Task& task) : task_(task) {}

  void run() {
    Restarts restarts(kMostRenames);
    do {
      if (!restarts.may()) return;
      restarts.restarted();
      changed_ = false;
      for (const Task::Numbered& from : task_.numberedAll(L"namef_", kMostLayerNames))
        if (const auto to = task_.numbered(L"namet_%d", from.number); to && !changed_) rename(from, std::wstring(*to));
    } while (changed_);
  }

 private:
  void rename(const Task::Numbered& from, const std::wstring& to) {
    eachLayer(task_.model(), from.value, [&](const NamedLayer& found) {
      if (text::equalNoCase(found.name, to)) return creo::ProNoError;
      if (!exists(to))
        setName(found, to);
      else if (task_.isTrue(L"ifLayExists"))
        merge(found, to);
      else if (told_.insert({from.number, found.layer.id}).second)
        core::logWrite(text::format(L"%s - %s", found.name, core::msgText(Message::layerNameTaken)), core::kWarning);
      return changed_ ? creo::ProStopVisit : creo::ProNoError;
    });
  }
  [[nodiscard]] bool exists(const std::wstring& name) const {
    return creo::ProMdlLayerVisit(task_.model(), [&](const ProLayer& layer) {
             const auto present = creo::ProLayerNameGet(layer);
             return present && text::equalNoCase(present.value, name) ? creo::ProStopVisit : creo::ProNoError;
           }) == creo::ProStopVisit;
  }
  void setName(const NamedLayer& found, const std::wstring& to) {
    if (failed_.contains(found.layer.id)) return;
    if (creo::ProModelitemNameSet({ProItemType::layer, found.layer.id, found.layer.owner, {}}, to) !=
        creo::ProNoError) {
      failed_.insert(found.layer.id);
      return core::logWrite(text::format(L"Can't rename the layer '%s' to '%s'", found.name, to), core::kError);
    }
    tellChange(Message::layerRenamedFrom, found.name, to);
  }
  // The layer's items go to the one that has the name, and the layer goes.
  void merge(const NamedLayer& found, const std::wstring& to) {
    if (failed_.contains(found.layer.id)) return;
    const auto target = creo::ProModelitemByNameInit(task_.model(), ProItemType::layer, to);
    if (!target || !copyItems(found.layer, {target.value.owner, target.value.id})) {
      failed_.insert(found.layer.id);
      return tellNotCopied(found.name);
    }
    if (creo::ProLayerDelete(found.layer) != creo::ProNoError) {
      failed_.insert(found.layer.id);
      return core::logWrite(L"There occured an Error while delete a layer", core::kError);
    }
    tellChange(Message::layerCopiedFrom, found.name, to);
  }
  void tellChange(Message message, std::wstring_view from, std::wstring_view to) {
    changed_ = true;
    core::logIndented(text::format(L"%s %s %s %s", core::msgText(message), from, core::msgText(Message::to), to),
                      core::kNormal, 1);
  }

  const Task& task_;
  bool changed_ = false;
  std::set<std::pair<int, int>> told_;  // pair and layer
  std::unordered_set<int> failed_;
};

Outcome renameLayer(const Task& task) {
  Renaming(task).run();
  return done;
}

void changeStatus(const NamedLayer& found, std::wstring_view word) {
  const auto status = layerStatus(word);
  const bool changed = !status || creo::ProLayerDisplaystatusSet(found.layer, *status) == creo::ProNoError;
  const std::wstring line = text::format(
      L"%s - %s", found.name, core::msgText(changed ? Message::layerStatusChanged : Message::layerStatusNotChanged));
  if (changed)
    core::logIndented(line, core::kNormal, 1);
  else
    core::logWrite(line, core::kError);
}

void saveStatus(creo::ProMdl model) {
  core::logMsgId(Message::saveLayerStatus, core::kNormal, 1);
  const ProError result = creo::ProLayerDisplaystatusSave(model);
  if (result == creo::ProNoChange)
    core::logMsgPlain(Message::noLayerStatusToSave, core::kWarning);
  else if (result != creo::ProNoError)
    core::logMsgPlain(Message::layerStatusNotSaved, core::kError);
}

Outcome changeLayerStatus(const Task& task) {
  for (const Task::Numbered& name : task.numberedAll(L"name_", kMostLayerNames)) {
    const auto word = task.numbered(L"value_%d", name.number);
    const auto pattern = word ? filledIn(task, name.value) : std::nullopt;
    if (!pattern) continue;
    eachLayer(task.model(), *pattern, [&](const NamedLayer& found) {
      changeStatus(found, *word);
      return creo::ProNoError;
    });
  }
  if (task.isTrue(L"saveLS")) saveStatus(task.model());
  return done;
}

void putBelow(const NamedLayer& child, const NamedLayer& parent) {
  const auto item = creo::ProLayerItemInit(ProItemType::layer, child.layer.id, child.layer.owner);
  const bool added = item && creo::ProLayerItemAdd(parent.layer, item.value) == creo::ProNoError;
  const std::wstring line =
      text::format(core::msgText(added ? Message::layerGrouped : Message::layerNotGrouped), child.name, parent.name);
  if (added)
    core::logIndented(line, core::kNormal, 1);
  else
    core::logWrite(line, core::kError);
}

Outcome groupLayer(const Task& task) {
  for (const Task::Numbered& name : task.numberedAll(L"name_", kMostLayerNames))
    eachLayer(task.model(), task.attribute(L"copyTo"), [&](const NamedLayer& parent) {
      eachLayer(task.model(), name.value, [&](const NamedLayer& child) {
        putBelow(child, parent);
        return creo::ProNoError;
      });
      return creo::ProNoError;
    });
  return done;
}

constexpr Attribute kDeleteAttributes[] = {
    {.name = L"name_%d", .kind = Kind::pattern, .need = Need::oneOf, .about = "layers that go"},
    {.name = L"copyTo", .kind = Kind::pattern, .about = "layers that get the deleted ones' items first"},
    {.name = L"delallempty",
     .kind = Kind::flag,
     .words = L"true",
     .need = Need::oneOf,
     .about = "then all layers without items go"},
};
constexpr Attribute kRenameAttributes[] = {
    {.name = L"namef_%d", .kind = Kind::pattern, .need = Need::needed, .about = "layers"},
    {.name = L"namet_%d", .need = Need::needed, .about = "their new name"},
    {.name = L"ifLayExists",
     .kind = Kind::flag,
     .words = L"true",
     .about = "where another layer has the name, the items go to it; else both stay"},
};
constexpr Attribute kStatusAttributes[] = {
    {.name = L"name_%d", .kind = Kind::pattern, .variables = true, .need = Need::needed, .about = "layers"},
    {.name = L"value_%d",
     .kind = Kind::word,
     .words = L"normal|display|blank",
     .need = Need::needed,
     .about = "how they show from now on"},
    {.name = L"saveLS",
     .kind = Kind::flag,
     .words = L"true",
     .about = "what the layers of the model and of those that it uses show is saved with them"},
};
constexpr Attribute kGroupAttributes[] = {
    {.name = L"copyTo", .kind = Kind::pattern, .need = Need::needed, .about = "the layers that others are put on"},
    {.name = L"name_%d", .kind = Kind::pattern, .need = Need::needed, .about = "the layers that are put there"},
};

constexpr Action kActions[] = {
    {.key = L"renameLayer",
     .place = 112,
     .group = Group::ownModelTest,
     .title = Message::renameLayer,
     .conditions = kOnLayers,
     .attributes = kRenameAttributes,
     .effects = {.changes = Touched::model},
     .about = "renames layers",
     .function = &renameLayer},
    {.key = L"deleteLayer",
     .place = 113,
     .group = Group::ownModelTest,
     .title = Message::deleteLayers,
     .conditions = kOnLayers,
     .attributes = kDeleteAttributes,
     .effects = {.changes = Touched::model | Touched::session},
     .about = "deletes layers; what was on them stays in the model",
     .function = &deleteLayer},
    {.key = L"changeLayerStatus",
     .place = 115,
     .group = Group::ownModelTest,
     .title = Message::changeLayerStatus,
     .conditions = kOnLayers,
     .attributes = kStatusAttributes,
     .effects = {.changes = Touched::model | Touched::users},
     .about = "shows or hides layers",
     .function = &changeLayerStatus},
    {.key = L"groupLayer",
     .place = 116,
     .group = Group::ownModelTest,
     .title = Message::groupLayer,
     .conditions = kOnLayers,
     .attributes = kGroupAttributes,
     .effects = {.changes = Touched::model},
     .about = "puts layers on other layers",
     .function = &groupLayer},
};

}  // namespace

std::span<const Action> layerActions() { return kActions; }

}  // namespace actions
