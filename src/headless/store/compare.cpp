#include "headless/store/compare.h"

#include <unordered_map>

#include "headless/store/names.h"
#include "text/encoding.h"

namespace headless {
namespace {

constexpr std::string_view kHistoryPath = "externalData/kvpslot";

bool isContainer(const Json& value) { return value.is(JsonKind::object) || value.is(JsonKind::array); }

// Numbers are compared as numbers: 5 and 5.0 are one value.
bool equal(const Json& a, const Json& b) {
  if (a.isNumber() && b.isNumber())
    return a.is(b.kind) && a.is(JsonKind::integer) ? a.integer == b.integer : a.real == b.real;
  return a.kind == b.kind && a.boolean == b.boolean && a.text == b.text;
}

// What an element is known by; empty where it has nothing of the kind.
std::string ownKey(const Json& element) {
  if (!element.is(JsonKind::object)) return {};
  for (const std::string_view member : {"id", "name", "symbol"}) {
    const Json* value = element.member(member);
    if (value && value->is(JsonKind::text) && !value->text.empty()) return value->text;
    if (value && value->is(JsonKind::integer)) return std::to_string(value->integer);
  }
  return {};
}

// The keys of an array's elements or an object's members, each once.
std::vector<std::string> keysOf(const Json& container) {
  std::vector<std::string> keys;
  keys.reserve(container.items.size());
  std::unordered_map<std::string, int> seen;
  for (std::size_t i = 0; i < container.items.size(); ++i) {
    std::string key = container.is(JsonKind::object) ? container.items[i].name : ownKey(container.items[i]);
    if (key.empty() && container.is(JsonKind::array)) key = "[" + std::to_string(i) + "]";
    if (const int before = seen[folded(key)]++; before > 0) key += "[" + std::to_string(before) + "]";
    keys.push_back(std::move(key));
  }
  return keys;
}

class Comparison {
 public:
  explicit Comparison(const CompareOptions& options) : options_(options) {}

  void compare(const Json& before, const Json& after) {
    if (!options_.history && path_ == kHistoryPath) return;
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
    const auto oldKeys = keysOf(before);
    const auto newKeys = keysOf(after);
    // Names of elements are case-blind as everywhere.
    std::unordered_map<std::string, std::size_t> olds;
    for (std::size_t i = 0; i < oldKeys.size(); ++i) olds.emplace(folded(oldKeys[i]), i);
    std::vector<bool> matched(oldKeys.size());
    for (std::size_t i = 0; i < newKeys.size(); ++i) {
      const Step step(path_, newKeys[i]);
      const auto old = olds.find(folded(newKeys[i]));
      if (old == olds.end()) {
        add(nullptr, &after.items[i]);
        continue;
      }
      matched[old->second] = true;
      compare(before.items[old->second], after.items[i]);
    }
    for (std::size_t i = 0; i < oldKeys.size(); ++i) {
      if (matched[i]) continue;
      const Step step(path_, oldKeys[i]);
      add(&before.items[i], nullptr);
    }
  }

  static std::wstring shown(const Json* value) {
    if (!value) return {};
    if (value->is(JsonKind::text) && !value->text.empty()) return text::fromUtf8(value->text);
    return text::fromUtf8(compactJson(*value));
  }

  // A whole object that came or went is told member by member, so that a new parameter's value has its own line.
  void add(const Json* before, const Json* after) {
    if (!options_.history && path_ == kHistoryPath) return;
    const Json* only = before ? before : after;
    if ((!before || !after) && only->is(JsonKind::object) && !only->items.empty()) {
      for (const Json& item : only->items) {
        const Step step(path_, item.name);
        add(before ? &item : nullptr, after ? &item : nullptr);
      }
      return;
    }
    if ((!before || !after) && only->is(JsonKind::array) && !only->items.empty()) {
      const auto keys = keysOf(*only);
      for (std::size_t i = 0; i < keys.size(); ++i) {
        const Step step(path_, keys[i]);
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
