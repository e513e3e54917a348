// What deeds made of files, all in all: path by path what was there before and what there is behind them, whatever
// happened in between; and how to get back.
#pragma once

#include <functional>
#include <map>
#include <vector>

#include "kelvane/journal/record.h"

namespace kelvane {

struct Effect {
  std::optional<Content> before, after;  // nothing: no file
  bool isKnown = true;                   // false: what is there behind the deeds isn't known (a report left open)
  int group = 0;                         // what hangs together has one number
};

struct Effects {
  std::map<std::string, Effect> files;  // by the path as written; those that are as they were aren't among them
  std::vector<std::string> folders;     // that were made, in their order
};
// Of deeds in their order. What hangs together: the versions of a document, and where a turn
// renamed or removed anything, all documents of that turn.
enum class Part { files, vaults };
Effects effectsOf(const std::vector<Deed>& deeds, Part part = Part::files);

// True for what the deeds found or left under a path, at any moment of them.
bool isOfDeeds(const std::vector<Deed>& deeds, const std::string& path, const Content& content);

// What there is at a path now.
struct Present {
  std::optional<Content> content;
  std::string fault;  // the end of a line on it: " can't be read: it is a folder"; empty: all is well
};
using Look = std::function<Present(const std::string& path)>;

// The road back of one group, in this order.
struct Back {
  std::vector<std::string> removed;                          // newest versions first
  std::vector<std::pair<std::string, std::string>> renamed;  // from, to
  std::vector<std::pair<std::string, Content>> written;      // path, what comes there; it is kept
  std::vector<std::string> conflicts;                        // lines: "gear.prt.4 was changed since"
  std::vector<std::string> lacking;                          // what has to come back and was kept nowhere
  [[nodiscard]] bool isNothing() const { return removed.empty() && renamed.empty() && written.empty(); }
};
// By group. What is at a path as it was before the deeds is left alone; what is neither that nor what the deeds made of
// it is a conflict. ignoresConflicts: all of it goes back, whatever is there.
std::map<int, Back> backOf(const Effects& effects, const std::vector<Deed>& deeds, const Look& look,
                           bool ignoresConflicts);

}  // namespace kelvane
