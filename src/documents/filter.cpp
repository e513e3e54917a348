#include "documents/filter.h"

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "documents/predicate_table.h"
#include "language/comparison_watch.h"
#include "text/encoding.h"
#include "text/format.h"

namespace documents {
namespace {

using core::Message;

std::wstring_view valueOf(const core::XmlNode& node, std::wstring_view name) {
  const core::XmlAttr* attribute = core::attrFind(node.attributes, name);
  return attribute ? attribute->value : std::wstring_view();
}

bool isGroup(const core::XmlNode& node) { return node.name == L"filter" || node.name == L"root"; }

template <class Test>
bool anyChild(const core::XmlNode& node, Test test) {
  bool any = false;
  core::xmlEachChild(node, [&](const core::XmlNode& child) { any = any || test(child); });
  return any;
}

// What a task has beside its filter, of children with a `type`.
bool isPartOfTask(const core::XmlNode& node) {
  return node.name == L"subtasks" || node.name == L"insideFilter" || node.name == L"reportFilter";
}

// Does an element of a task look like an item of its filter, or like a group of them?
bool looksLikeItems(const core::XmlNode& node) {
  const auto isItem = [](const core::XmlNode& entry) { return core::attrFind(entry.attributes, L"type") != nullptr; };
  return !isPartOfTask(node) && (isItem(node) || anyChild(node, isItem));
}

}  // namespace

std::wstring_view typeSwitch(creo::ProMdlType type) {
  switch (type) {
    case creo::ProMdlType::part:
      return L"forPRT";
    case creo::ProMdlType::assembly:
    case creo::ProMdlType::manufacturing:
      return L"forASM";
    case creo::ProMdlType::drawing:
      return L"forDRW";
    case creo::ProMdlType::format:
    case creo::ProMdlType::unused:
      break;
  }
  return {};
}

namespace {

// A predicate that isn't applicable, or that came to no answer, fails its item also under negation.
bool itemFails(const core::XmlNode& item, Answer result) {
  if (result == Answer::notApplicable || result == Answer::undecided) return true;
  return valueOf(item, L"filtertype") == L"true" ? result == Answer::no : result != Answer::no;
}

// The state after a group; it is handed on from one group to the next.
int evaluateGroup(const core::XmlNode& group, creo::ProMdl model, int state, bool silent, FilterWatch& watch) {
  const auto note = [silent](Message message) {
    if (!silent) core::logMsgId(message, core::kNormal, 1);
  };
  std::vector<const core::XmlNode*> items;
  core::xmlEachChild(group, [&items](const core::XmlNode& item) { items.push_back(&item); });
  watch.groupBegins();
  for (std::size_t i = 0; i < items.size(); ++i) {
    watch.itemBegins(*items[i]);
    const Answer result = runPredicate(*items[i], valueOf(*items[i], L"type"), model);
    const bool fails = itemFails(*items[i], result);
    watch.itemEnds(*items[i], result, fails);
    if (fails) state = kFilterRefuses;
    note(fails ? Message::filterFails : Message::filterHolds);
    if (i + 1 == items.size()) break;
    if (valueOf(*items[i], L"opand") == L"true") {
      note(Message::linkedByAnd);
      watch.linked(FilterWatch::Link::withAnd);
      continue;
    }
    watch.linked(state == kFilterHolds ? FilterWatch::Link::settled : FilterWatch::Link::withOr);
    if (state == kFilterHolds) break;
    note(Message::linkedByOr);
    state = kFilterHolds;
  }
  note(state == kFilterHolds ? Message::allFiltersHold : Message::allFiltersFail);
  return state;
}

}  // namespace

int filterCheck(const core::XmlNode& task, std::wstring_view extension, creo::ProMdl model) {
  core::logIndented(L"Filter", core::kNormal, 1);
  if (model) {
    const auto type = creo::ProMdlTypeGet(model);
    if (!type) core::logWrite(L"Failure while get Modeltype", core::kWarning);
    if (type) {
      const std::wstring_view name = typeSwitch(type.value);
      if (!name.empty()) {
        const core::XmlAttr* applies = core::attrFind(task.attributes, name);
        if (!applies || applies->value == L"false") return kFilterRefuses;
      }
    }
  }
  if (valueOf(task, L"forEF") != L"true") return kFilterHolds;
  if (lacksGroups(task) && anyChild(task, looksLikeItems))
    core::logWrite(L"The filter of this action holds no items, every model passes it", core::kWarning);
  return evaluateFilter(task, extension, model, true);
}

int evaluateFilter(const core::XmlNode& block, std::wstring_view /*extension*/, creo::ProMdl model, bool silent,
                   FilterWatch* watch) {
  FilterWatch nobody;
  int state = kFilterHolds;
  core::xmlEachChild(block, [&](const core::XmlNode& child) {
    if (isGroup(child)) state = evaluateGroup(child, model, state, silent, watch ? *watch : nobody);
  });
  return state;
}

const core::XmlNode* filterFileBlock(const core::XmlDocument& document) {
  const core::XmlNode* root = document.root();
  const core::XmlNode* top = root ? core::xmlChildAt(root->children, 0) : nullptr;
  if (!top || !isGroup(*top)) return top;
  // Items may be called "filter" too: it is the type that makes an item.
  const core::XmlNode* first = core::xmlChildAt(top->children, 0);
  const bool holdsGroups = first && isGroup(*first) && !core::attrFind(first->attributes, L"type");
  return holdsGroups ? top : root;
}

bool holdsItems(const core::XmlNode& block) {
  return anyChild(block, [](const core::XmlNode& child) { return isGroup(child) && core::xmlChildCount(&child) > 0; });
}

bool lacksGroups(const core::XmlNode& block) { return core::xmlChildCount(&block) > 0 && !anyChild(block, isGroup); }

Answer runPredicate(const core::XmlNode& item, std::wstring_view type, creo::ProMdl model, bool silentLookup) {
  const Predicate* predicate = findPredicate(type);
  if (!predicate) {
    if (!silentLookup) core::logWrite(text::format(L"Filter not found: %s", type), core::kError);
    return Answer::noKey;
  }
  const language::GivenUp givenUp;
  const Answer result = ask(*predicate, model, item);
  return givenUp.any() ? Answer::undecided : result;
}

bool isPredicate(std::wstring_view type) { return findPredicate(type) != nullptr; }

creo::ProMdl retrieveByFileName(std::string_view fileName, std::wstring_view extension) {
  constexpr std::size_t kExtension = 4;
  if (fileName.size() <= kExtension) return {};
  auto type = creo::ProMdlType::part;
  if (extension == L"ASM") type = creo::ProMdlType::assembly;
  if (extension == L"DRW") type = creo::ProMdlType::drawing;
  fileName.remove_suffix(kExtension);
  const auto model = creo::ProMdlRetrieve(text::fromUtf8(fileName), type);
  return model ? model.value : creo::ProMdl();
}

}  // namespace documents
