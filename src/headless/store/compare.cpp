#include "headless/store/compare.h"

#include <algorithm>
#include <unordered_map>

#include "headless/store/line_match.h"
#include "headless/store/names.h"
#include "text/encoding.h"

namespace headless {
namespace {

// Of the model itself, or of a row of its family table, at whatever depth.
bool isHistoryPath(std::string_view path) {
  constexpr std::string_view kHistory = "externalData/kvpslot", kRows = "familyTable/instances/";
  if (path == kHistory) return true;
  return path.starts_with(kRows) && path.ends_with("/" + std::string(kHistory));
}

bool isContainer(const Json& value) { return value.is(JsonKind::object) || value.is(JsonKind::array); }

// Numbers are compared as numbers: 5 and 5.0 are one value.
bool equal(const Json& a, const Json& b) {
  if (a.isNumber() && b.isNumber())
    return a.is(b.kind) && a.is(JsonKind::integer) ? a.integer == b.integer : a.real == b.real;
  return a.kind == b.kind && a.boolean == b.boolean && a.text == b.text;
}

std::string textOf(const Json* value) {
  if (value && value->is(JsonKind::text)) return value->text;
  if (value && value->is(JsonKind::integer)) return std::to_string(value->integer);
  return {};
}
std::string memberText(const Json& element, std::string_view name) { return textOf(element.member(name)); }

// What an element is known by; empty where it has nothing of the kind.
std::string ownKey(const Json& element) {
  if (!element.is(JsonKind::object)) return {};
  const Json* type = element.member("type");
  if (std::string id = memberText(element, "id"); !id.empty()) {
    // Items of layers are told apart by their types, reference dimensions are counted apart.
    const Json* reference = element.member("reference");
    if (reference && reference->is(JsonKind::boolean) && reference->boolean) return "reference " + id;
    const bool isItem = type && type->is(JsonKind::text) && !element.member("name");
    return isItem ? type->text + " " + id : id;
  }
  for (const std::string_view member : {"name", "symbol"})
    if (std::string name = memberText(element, member); !name.empty()) return name;
  // What a representation does with a feature.
  return type ? std::string() : memberText(element, "feature");
}

bool isText(const Json& element) { return element.is(JsonKind::text); }
bool isListOfTexts(const Json& list) {
  return list.is(JsonKind::array) && std::all_of(list.items.begin(), list.items.end(), &isText);
}

using Seen = std::unordered_map<std::string, int>;

// Elements of an array or members of an object. keys tell them apart, each once; names say what a person calls them.
struct Keys {
  std::vector<std::string> keys;
  std::vector<std::string> names;  // empty: the key is all there is

  explicit Keys(const Json& container) {
    const bool isObject = container.is(JsonKind::object);
    Seen seen, named;
    for (std::size_t i = 0; i < container.items.size(); ++i) {
      const Json& item = container.items[i];
      std::string key = isObject ? item.name : ownKey(item);
      if (key.empty() && !isObject) key = "[" + std::to_string(i) + "]";
      if (const int before = seen[folded(key)]++; before > 0) key += "[" + std::to_string(before) + "]";
      keys.push_back(std::move(key));
      names.push_back(isObject || !item.is(JsonKind::object) ? std::string() : nameOf(item));
      if (!names.back().empty()) ++named[folded(names.back())];
    }
    for (std::string& name : names)
      if (!name.empty() && named[folded(name)] > 1) name.clear();
  }
  // How the path calls an element.
  [[nodiscard]] const std::string& label(std::size_t at) const { return names[at].empty() ? keys[at] : names[at]; }

 private:
  static std::string nameOf(const Json& item) {
    std::string name = memberText(item, "name");
    if (name.empty()) name = memberText(item, "symbol");
    return name;
  }
};

class Comparison {
 public:
  explicit Comparison(const CompareOptions& options) : options_(options) {}

  void compare(const Json& before, const Json& after) {
    if (!options_.history && isHistoryPath(path_)) return;
    if (before.kind == after.kind && isContainer(before)) return compareItems(before, after);
    if (!equal(before, after)) add(&before, &after);
  }
  std::vector<Change> take() { return std::move(changes_); }

 private:
  // One level deeper while it lives.
  struct Step {
    std::string& path;
    std::size_t length;
    Step(std::string& p, const std::string& key) : path(p), length(p.size()) {
      if (!path.empty()) path += '/';
      path += key;
    }
    ~Step() { path.resize(length); }
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;
  };

  void compareItems(const Json& before, const Json& after) {
    if (isListOfTexts(before) && isListOfTexts(after)) return compareLines(before, after);
    const Keys olds(before), news(after);
    // Names of elements are case-blind as everywhere.
    std::unordered_map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < olds.keys.size(); ++i) places.emplace(folded(olds.keys[i]), i);
    std::vector<bool> matched(olds.keys.size());
    for (std::size_t i = 0; i < news.keys.size(); ++i) {
      const auto old = places.find(folded(news.keys[i]));
      if (old == places.end()) {
        const Step step(path_, news.label(i));
        add(nullptr, &after.items[i]);
        continue;
      }
      matched[old->second] = true;
      // One that was renamed goes by its key, so that the line says both names.
      const bool sameLabel = sameName(olds.label(old->second), news.label(i));
      const Step step(path_, sameLabel ? news.label(i) : news.keys[i]);
      compare(before.items[old->second], after.items[i]);
    }
    for (std::size_t i = 0; i < olds.keys.size(); ++i) {
      if (matched[i]) continue;
      const Step step(path_, olds.label(i));
      add(&before.items[i], nullptr);
    }
  }

  // Relations, programs, notes: line by line, so that one more line is one difference.
  void compareLines(const Json& before, const Json& after) {
    const auto texts = [](const Json& list) {
      std::vector<std::string_view> all;
      for (const Json& item : list.items) all.push_back(item.text);
      return all;
    };
    std::size_t a = 0, b = 0;
    const auto differUpTo = [&](std::size_t endA, std::size_t endB) {
      while (a < endA || b < endB) {
        const Step step(path_, "[" + std::to_string(b < endB ? b : a) + "]");
        const Json* was = a < endA ? &before.items[a++] : nullptr;
        const Json* is = b < endB ? &after.items[b++] : nullptr;
        add(was, is);
      }
    };
    for (const auto& [inA, inB] : matchedLines(texts(before), texts(after))) {
      differUpTo(inA, inB);
      a = inA + 1;
      b = inB + 1;
    }
    differUpTo(before.items.size(), after.items.size());
  }

  static std::wstring shown(const Json* value) {
    if (!value) return {};
    if (value->is(JsonKind::text) && !value->text.empty()) return text::fromUtf8(value->text);
    return text::fromUtf8(compactJson(*value));
  }

  // A whole object that came or went is told member by member, so that a new parameter's value has its own line.
  void add(const Json* before, const Json* after) {
    if (!options_.history && isHistoryPath(path_)) return;
    const Json* only = before ? before : after;
    if ((!before || !after) && only->is(JsonKind::object) && !only->items.empty()) {
      for (const Json& item : only->items) {
        const Step step(path_, item.name);
        add(before ? &item : nullptr, after ? &item : nullptr);
      }
      return;
    }
    if ((!before || !after) && only->is(JsonKind::array) && !only->items.empty()) {
      const Keys keys(*only);
      for (std::size_t i = 0; i < keys.keys.size(); ++i) {
        const Step step(path_, keys.label(i));
        add(before ? &only->items[i] : nullptr, after ? &only->items[i] : nullptr);
      }
      return;
    }
    changes_.push_back({text::fromUtf8(path_), shown(before), shown(after)});
  }

  const CompareOptions& options_;
  std::string path_;
  std::vector<Change> changes_;
};

}  // namespace

std::vector<Change> compareDocuments(const Json& before, const Json& after, const CompareOptions& options) {
  Comparison comparison(options);
  comparison.compare(before, after);
  return comparison.take();
}

std::vector<Change> compareTexts(std::string_view before, std::string_view after, const CompareOptions& options) {
  const auto parsed = [](std::string_view source) {
    Json tree;
    if (parseJson(source, tree) || !tree.is(JsonKind::object)) tree = Json{};
    tree.kind = JsonKind::object;
    return tree;
  };
  return compareDocuments(parsed(before), parsed(after), options);
}

}  // namespace headless
