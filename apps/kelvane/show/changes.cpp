#include "kelvane/show/changes.h"

#include <functional>
#include <utility>

#include <nlohmann/json.hpp>

#include "text/encoding.h"

namespace kelvane {

ModelChanges compared(std::string model, std::string_view before, std::string_view after) {
  return {std::move(model), Presence::both, headless::compareTexts(before, after, {.history = false})};
}

void show(Console& console, const ModelChanges& changes) {
  const std::string head = console.inked(Ink::bold, changes.model) + ": ";
  if (changes.presence == Presence::onlyBefore) return console.result(head + console.inked(Ink::red, "is gone"));
  if (changes.presence == Presence::onlyAfter) return console.result(head + console.inked(Ink::green, "is new"));
  for (const headless::Change& change : changes.changes) {
    const std::string path = text::toUtf8(change.path);
    const std::string before = console.inked(Ink::red, text::toUtf8(change.before));
    const std::string after = console.inked(Ink::green, text::toUtf8(change.after));
    std::string line = head;
    if (change.before.empty()) {
      line.append("+ ").append(path).append(": ").append(after);
    } else if (change.after.empty()) {
      line.append("- ").append(path).append(": ").append(before);
    } else {
      line.append(path).append(": ").append(before).append(" -> ").append(after);
    }
    console.result(line);
  }
}

void tell(Events& events, const ModelChanges& changes) {
  if (!events.on()) return;
  if (changes.presence == Presence::onlyAfter) events.tell("created", {{"model", changes.model}});
  for (const headless::Change& change : changes.changes) {
    events.tell("changed", {{"model", changes.model},
                            {"path", text::toUtf8(change.path)},
                            {"old", text::toUtf8(change.before)},
                            {"new", text::toUtf8(change.after)}});
  }
}

ModelChanges untold(const ModelChanges& changes, Told& reported) {
  const std::hash<std::wstring> hash;
  const auto isNews = [&](std::size_t of, std::size_t what) {
    const auto [known, fresh] = reported.try_emplace(of, what);
    return std::exchange(known->second, what) != what || fresh;
  };
  ModelChanges rest{changes.model, changes.presence, {}};
  if (changes.presence != Presence::both && !isNews(0, 0)) rest.presence = Presence::both;
  for (const headless::Change& change : changes.changes)
    if (isNews(hash(change.path), hash(change.before + L'\n' + change.after))) rest.changes.push_back(change);
  return rest;
}

}  // namespace kelvane
