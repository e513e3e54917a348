#include "kelvane/vocabulary/vocabulary.h"

#include "kelvane/base/columns.h"
#include "kelvane/base/words.h"
#include "kelvane/vocabulary/row_example.h"
#include "kelvane/vocabulary/task_children.h"
#include "kelvane/vocabulary/words.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

using core::Attribute;
using nlohmann::ordered_json;

ordered_json described(const Attribute& attribute, std::span<const Attribute> all) {
  ordered_json json = {{"name", text::toUtf8(attribute.name)}};
  if (isCounted(attribute)) json["names"] = nameWords(attribute);
  if (const std::string need = needWords(attribute, all); !need.empty()) json["need"] = need;
  json["value"] = valueWords(attribute);
  if (const auto words = wordsOf(attribute); !words.empty()) json["words"] = words;
  if (attribute.range.isThere()) json["range"] = {attribute.range.least, attribute.range.most};
  if (!attribute.folder.empty()) json["folder"] = text::toUtf8(attribute.folder);
  json["variables"] = attribute.variables;
  json["about"] = attribute.about;
  return json;
}
ordered_json describedAll(std::span<const Attribute> attributes) {
  ordered_json all = ordered_json::array();
  for (const Attribute& attribute : attributes) all.push_back(described(attribute, attributes));
  return all;
}

void addTouched(ordered_json& to, const actions::Effects& effects) {
  to["reads"] = touchedWords(effects.reads);
  to["changes"] = touchedWords(effects.changes);
  to["known"] = effects.known;
  to["takenBack"] = effects.takenBack;
}

// A name and what is said of it, one line a text of several.
class Lines {
 public:
  void head(std::string_view key, std::string_view about) {
    lines_.emplace_back(key);
    lines_.push_back("  " + std::string(about));
    lines_.emplace_back();
  }
  void add(std::string_view name, const std::string& text) {
    if (!text.empty()) rows_.push_back({std::string(name), text});
  }
  void add(std::string_view name, const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
      rows_.push_back({std::string(name), text});
      name = {};
    }
  }
  void flush() {
    for (std::string& line : aligned(std::move(rows_))) lines_.push_back(std::move(line));
    rows_.clear();
  }
  void addAttributes(std::span<const Attribute> attributes) {
    flush();
    if (attributes.empty()) return;
    lines_.emplace_back();
    for (const Attribute& attribute : attributes)
      rows_.push_back({"  " + nameWords(attribute), needWords(attribute, attributes), valueWords(attribute),
                       std::string(attribute.about)});
    flush();
  }
  std::vector<std::string> finished(const std::string& example) {
    flush();
    if (!example.empty()) {
      lines_.emplace_back();
      lines_.push_back("  " + example);
    }
    if (lines_.back().empty()) lines_.pop_back();
    return std::move(lines_);
  }

 private:
  std::vector<std::string> lines_;
  std::vector<std::vector<std::string>> rows_;
};

std::vector<std::string> conditionsOf(const actions::Action& action) {
  std::vector<std::string> all;
  for (const actions::Condition& condition : action.conditions) all.push_back(conditionWords(condition));
  return all;
}

std::string joined(const std::vector<std::string>& pieces) {
  std::string all;
  for (const std::string& piece : pieces) addPiece(all, piece, "; ");
  return all;
}

bool doesNothing(const actions::Action& action) {
  return action.isRemoved || action.group == actions::Group::withoutEffect;
}

}  // namespace

std::string summary(const actions::Action& action) {
  std::string text(action.about);
  if (action.isRemoved && !action.successor.empty()) text += "; " + text::toUtf8(action.successor) + " takes its place";
  return text;
}

ordered_json described(const actions::Action& action) {
  ordered_json json = {{"key", text::toUtf8(action.key)}, {"about", action.about}};
  if (doesNothing(action)) json["removed"] = action.isRemoved;
  if (!action.successor.empty()) json["successor"] = text::toUtf8(action.successor);
  if (doesNothing(action)) return json;
  json["version"] = text::toUtf8(action.version);
  json["needsModel"] = action.group == actions::Group::modelNeeded;
  json["conditions"] = conditionsOf(action);
  addTouched(json, action.effects);
  json["attributes"] = describedAll(action.attributes);
  if (const TaskChildren* inside = childrenOf(action.key)) json["inside"] = inside->about;
  json["example"] = example(action);
  return json;
}

ordered_json described(const documents::Predicate& predicate) {
  return {{"key", text::toUtf8(predicate.key)},
          {"about", predicate.about},
          {"models", modelsWords(predicate.models)},
          {"attributes", describedAll(predicate.attributes)},
          {"example", example(predicate)}};
}

std::vector<std::string> told(const actions::Action& action) {
  Lines lines;
  lines.head(text::toUtf8(action.key), summary(action));
  if (doesNothing(action)) return lines.finished({});
  const actions::Effects& effects = action.effects;
  lines.add("version", action.version.empty() ? "any" : text::toUtf8(action.version));
  lines.add("works where", conditionsOf(action));
  lines.add("reads", joined(touchedWords(effects.reads)));
  lines.add("changes", joined(touchedWords(effects.changes)));
  if (!effects.known) lines.add("before a run", "what it will do isn't known");
  if (effects.changes != actions::Touched::nothing)
    lines.add("afterwards", effects.takenBack ? "what it changed can be taken back" : "it can't be taken back");
  if (const TaskChildren* inside = childrenOf(action.key)) {
    lines.add("inside", std::string(inside->element) + ": " + std::string(inside->about));
  }
  lines.addAttributes(action.attributes);
  return lines.finished(example(action));
}

ordered_json described(const Rule& rule) {
  ordered_json json = {{"rule", rule.name}, {"severity", word(rule.severity)}, {"about", rule.about}};
  if (!rule.example.empty()) json["example"] = rule.example;
  return json;
}

std::vector<std::string> told(const documents::Predicate& predicate) {
  Lines lines;
  lines.head(text::toUtf8(predicate.key), predicate.about);
  lines.add("applies to", modelsWords(predicate.models));
  lines.addAttributes(predicate.attributes);
  return lines.finished(example(predicate));
}

}  // namespace kelvane
