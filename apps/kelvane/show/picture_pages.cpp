#include "kelvane/show/picture_pages.h"

#include <array>
#include <optional>
#include <span>

#include "headless/pictures/png.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "kelvane/base/xml_text.h"
#include "kelvane/show/marks.h"
#include "kelvane/show/model_folder.h"
#include "kelvane/show/pictures.h"
#include "kelvane/show/sheet_svg.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

// There is one session at a time, and what it shows of a few models fits into memory.
constexpr std::size_t kModelsAtOnce = 16;
constexpr PictureSize kSize{900, 675};
constexpr std::size_t kMostLines = 40;  // of a model's changes; the comparison itself tells all

constexpr std::string_view kHead = R"(<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>Before and after</title><style>
body { font: 15px/1.4 system-ui, sans-serif; margin: 2em; background: #f6f6f6; color: #222 }
section { background: #fff; border: 1px solid #ccc; padding: 0 1.2em 1em; margin: 0 0 1.5em }
.pair { display: flex; gap: 1em } figure { flex: 1; margin: 0; min-width: 0 }
img { max-width: 100%; max-height: 80vh; border: 1px solid #ddd } .none { padding: 4em 1em; background: #eee; text-align: center }
ul { font: 13px/1.4 ui-monospace, monospace; padding-left: 1.2em } del { color: #c00020 } ins { color: #00783a }
</style></head><body>
<h1>Before and after</h1>
<p>What only one of both shows is <del>red</del> before and <ins>green</ins> after.</p>
)";

// One state of a model: what is shown of it, or why nothing is.
struct State {
  std::optional<Shown> shown;
  std::string reason;
};

// A reason that the session has no line of is told here.
State stateOf(headless::Session& session, const std::string& model, Console& console) {
  const std::size_t told = session.messages().size();
  State state;
  try {
    state.shown = shownModel(session, retrieved(session, model), 0);
  } catch (const std::exception& fault) {
    const bool hasLine = session.messages().size() > told;
    state.reason = hasLine ? readable(session.messages()[told]) : fault.what();
    if (!hasLine) console.trouble(state.reason);
  }
  return state;
}

std::vector<State> statesOf(std::span<const ModelChanges> models, const std::string& folder, Presence absent,
                            Console& console) {
  headless::Session session(lookingAt(mountModels(folder)));
  std::vector<State> states;
  for (const ModelChanges& changes : models)
    states.push_back(changes.presence == absent ? State{} : stateOf(session, changes.model, console));
  for (const std::wstring& message : session.messages()) console.trouble(readable(message));
  return states;
}

// A name as a part of an address.
std::string addressOf(std::string_view name) {
  constexpr std::string_view kDigits = "0123456789ABCDEF", kPlain = "-_.";
  std::string address;
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isalnum(byte) || kPlain.find(c) != kPlain.npos)
      address += c;
    else
      address.append({'%', kDigits[byte >> 4], kDigits[byte & 15]});
  }
  return address;
}

class Pages {
 public:
  Pages(const std::string& folder, Console& console) : folder_(systemPath(folder)), console_(console) {
    if (const auto error = os::files().createFolders(folder_); error && !os::files().isFolder(folder_))
      throw Fault(folder + " can't be made: " + error.message());
    page_ = kHead;
  }
  // A state that isn't there at all is told by the model's presence.
  void add(const ModelChanges& changes, State& before, State& after) {
    const std::string note = marked(changes, before, after);
    page_ += "<section><h2>" + escaped(changes.model) + "</h2>\n<div class=\"pair\">\n";
    figure(changes.model, "before", before, changes.presence == Presence::onlyAfter);
    figure(changes.model, "after", after, changes.presence == Presence::onlyBefore);
    page_ += "</div>\n";
    if (!note.empty()) page_ += "<p>" + escaped(note) + "</p>\n";
    lines(changes);
    page_ += "</section>\n";
  }
  void finish() { write("index.html", page_ + "</body></html>\n"); }

 private:
  // What is to be said of the marks. Where one state can't be shown nothing tells what changed.
  std::string marked(const ModelChanges& changes, State& before, State& after) {
    Shown none;
    const bool isThere = (before.shown || changes.presence == Presence::onlyAfter) &&
                         (after.shown || changes.presence == Presence::onlyBefore);
    if (!isThere) return {};
    try {
      const bool differs = mark(before.shown ? *before.shown : none, after.shown ? *after.shown : none);
      return differs ? "" : "Both look the same.";
    } catch (const std::exception& fault) {
      console_.trouble(changes.model + ": what changed isn't marked: " + fault.what());
      return "What changed isn't marked: " + std::string(fault.what());
    }
  }
  void write(const std::string& name, const std::string& bytes) {
    const std::wstring path = os::asFolder(folder_) + text::fromUtf8(name);
    if (const auto error = os::files().write(path, bytes))
      throw Fault(shown(path) + " can't be written: " + error.message());
  }
  void figure(const std::string& model, const std::string& when, State& state, bool isAbsent) {
    page_ += "<figure><figcaption>" + when + "</figcaption>";
    if (state.shown) {
      const bool hasSheets = !state.shown->sheets.empty();
      const std::string name = model + "." + when + (hasSheets ? ".svg" : ".png");
      write(name, hasSheets ? sheetSvg(state.shown->sheets) : headless::pngOf(imageOf(*state.shown, kSize)));
      page_ += "<img loading=\"lazy\" src=\"" + addressOf(name) + "\" alt=\"" + escaped(model) + " " + when + "\">";
    } else {
      page_ += "<div class=\"none\">" + (isAbsent ? "it isn't there" : escaped(state.reason)) + "</div>";
    }
    page_ += "</figure>\n";
  }
  void lines(const ModelChanges& changes) {
    if (changes.changes.empty()) return;
    page_ += "<ul>\n";
    for (std::size_t i = 0; i < std::min(changes.changes.size(), kMostLines); ++i) {
      const headless::Change& change = changes.changes[i];
      page_ += "<li>" + escaped(text::toUtf8(change.path)) + ": <del>" + escaped(text::toUtf8(change.before)) +
               "</del> <ins>" + escaped(text::toUtf8(change.after)) + "</ins></li>\n";
    }
    if (changes.changes.size() > kMostLines)
      page_ += "<li>and " + std::to_string(changes.changes.size() - kMostLines) + " more</li>\n";
    page_ += "</ul>\n";
  }

  std::wstring folder_;
  Console& console_;
  std::string page_;
};

}  // namespace

void writePicturePages(const std::vector<ModelChanges>& differing, const std::string& before, const std::string& after,
                       const std::string& folder, Console& console) {
  Pages pages(folder, console);
  std::span<const ModelChanges> left = differing;
  while (!left.empty()) {
    const auto some = left.first(std::min(left.size(), kModelsAtOnce));
    std::vector<State> old = statesOf(some, before, Presence::onlyAfter, console);
    std::vector<State> now = statesOf(some, after, Presence::onlyBefore, console);
    for (std::size_t i = 0; i < some.size(); ++i) pages.add(some[i], old[i], now[i]);
    left = left.subspan(some.size());
  }
  pages.finish();
}

}  // namespace kelvane
