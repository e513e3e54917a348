#include "kelvane/ui/screen.h"
#include "kelvane/base/native_path.h"

#include <algorithm>
#include <filesystem>

#include "core/state.h"
#include "creo/ProUITable.h"
#include "kelvane/base/interrupt.h"
#include "kelvane/base/places.h"
#include "kelvane/run/watch.h"
#include "kelvane/ui/user_actions.h"
#include "os/surroundings.h"
#include "run/model_table.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/whole_number.h"

namespace kelvane::view {
namespace {

using headless::FileQuestion;
using headless::Question;

constexpr std::size_t kMostMessages = 500;  // that a page gets at once
constexpr milliseconds kWait{200};          // between two looks for a signal
constexpr milliseconds kOften{50};          // between two tellings
constexpr int kShare = 10;                  // telling takes at most this part of a run's time

const std::string& tool() { return core::pluginState().dialogName; }

// The run's rows in its order: parts, assemblies, drawings.
std::vector<std::string> chosenRows(headless::Session& session) {
  std::vector<std::string> rows;
  const headless::Dialog* dialog = session.ui().dialog(tool());
  if (!dialog) return rows;
  const std::vector<std::string> all = dialog->rows(run::kModelTable);
  for (const char* extension : {".PRT", ".ASM", ".DRW"}) {
    for (const std::string& row : all) {
      if (row.ends_with(extension) && dialog->has(row + "_cb") && dialog->checked(row + "_cb")) rows.push_back(row);
    }
  }
  return rows;
}

// A press writes results; a choice, and the opening of the tool, only unpack.
bool writesResults(const json& action) {
  const std::string what = textOf(action, "do");
  return what != "choose" && what != "command";
}

bool startsWithOneOf(std::string_view name, std::initializer_list<std::string_view> beginnings) {
  return std::any_of(beginnings.begin(), beginnings.end(),
                     [name](std::string_view beginning) { return name.starts_with(beginning); });
}

}  // namespace

Screen::Screen(headless::Session& session, Inbox& inbox, Feed& feed, Written& written, std::string language)
    : session_(session),
      inbox_(inbox),
      feed_(feed),
      written_(written),
      language_(std::move(language)),
      stopQuestion_([this] { return isStopAsked(); }) {
  session_.observe(this);
  session_.trace(true);  // operations are where a run is seen, and where pages get their lines meanwhile
  session_.ui().answerQuestions([this](const Question& question) { return answer(question); });
  session_.ui().answerFileQuestions([this](const FileQuestion& question) { return answerFile(question); });
}

Screen::~Screen() {
  session_.ui().answerQuestions(nullptr);
  session_.ui().answerFileQuestions(nullptr);
  session_.trace(false);
  session_.observe(nullptr);
}

void Screen::live() {
  tell();
  while (Interrupt::code() == 0) {
    if (const auto action = inbox_.take(kWait)) work(*action);
  }
}

bool Screen::isStopAsked() const { return stop_ || Interrupt::code() != 0; }

void Screen::work(const Action& action) {
  const std::string fault = carryOut(action);
  ++revisions_.tables;
  ++revisions_.trees;
  ++revisions_.texts;
  worked_ = std::max(worked_, action.number);
  if (!fault.empty()) notice_ = {{"number", action.number}, {"text", fault}};
  tell();
}

std::string Screen::carryOut(const Action& action) {
  if (action.at < barrier_) return "the session was busy when that was pressed";
  if (working_ == 0) return carryOutAlone(action);
  const Bearing bearing = judges_.back()(action);
  if (bearing == Bearing::none) return "a question is open, and this is no answer to it";
  if (bearing == Bearing::wrong) return "that can't be chosen: it isn't there, or is no file or folder as is asked for";
  return bearing == Bearing::press ? view::carryOut(session_, action.what) : std::string();
}

// No question is open: Creo gets control back behind it.
std::string Screen::carryOutAlone(const Action& action) {
  stop_ = ran_ = false;
  keepsFiles_ = writesResults(action.what);
  ++working_;
  std::string fault;
  try {
    if (beforeCommand && textOf(action.what, "do") == "command") beforeCommand();
    fault = view::carryOut(session_, action.what);
    session_.settle();
  } catch (const std::exception& thrown) {
    session_.showMessage(text::fromUtf8(thrown.what()));
  }
  --working_;
  if (ran_) barrier_ = Clock::now();
  if (ran_) written_.offer(core::pluginState().logFile);
  return fault;
}

void Screen::block(json question, const Judge& judge, const std::function<bool()>& over) {
  open_.push_back(std::move(question));
  judges_.push_back(judge);
  ++working_;  // also where the session asks by itself
  barrier_ = Clock::now();
  tell();
  while (!over() && Interrupt::code() == 0) {
    if (const auto action = inbox_.take(kWait)) work(*action);
  }
  --working_;
  judges_.pop_back();
  open_.pop_back();
  changed_ = true;
}

int Screen::answer(const Question& question) {
  if (!question.dialog.empty()) {
    const std::string name = question.dialog;
    block(
        {{"kind", "dialog"}, {"dialog", name}},
        [name](const Action& action) { return textOf(action.what, "dialog") == name ? Bearing::press : Bearing::none; },
        [this, name] {
          const headless::Dialog* dialog = session_.ui().dialog(name);
          return !dialog || !dialog->active;
        });
    return 0;
  }
  json buttons = json::array();
  for (const std::wstring& button : question.buttons) buttons.push_back(text::toUtf8(button));
  int pressed = 0;
  bool done = false;
  block(
      {{"kind", "message"},
       {"title", text::toUtf8(question.title)},
       {"text", text::toUtf8(question.text)},
       {"buttons", buttons}},
      [&](const Action& action) {
        if (textOf(action.what, "do") != "answer") return Bearing::none;
        pressed = text::neededWhole<int>(action.what.at("button"));
        done = true;
        return Bearing::answer;
      },
      [&] { return done; });
  return pressed;
}

std::optional<std::wstring> Screen::answerFile(const FileQuestion& question) {
  constexpr const char* kKinds[] = {"open", "save", "folder"};
  std::optional<std::wstring> path;
  bool done = false;
  const std::wstring at = question.proposal.empty() ? question.folder : os::joined(question.folder, question.proposal);
  block(
      {{"kind", "file"},
       {"what", kKinds[static_cast<std::size_t>(question.what)]},
       {"title", text::toUtf8(question.title)},
       {"filter", text::toUtf8(question.filter)},
       {"path", shown(at)}},
      [&](const Action& action) {
        if (textOf(action.what, "do") != "path") return Bearing::none;
        const json& given = action.what.at("path");
        if (!given.is_null()) {
          const auto folder = nativePath(shown(question.folder));  // for a path that doesn't begin at the root
          const std::wstring chosen = systemPath(machinePath(folder / nativePath(given.get<std::string>())));
          if (!headless::canBeChosen(question.what, chosen)) return Bearing::wrong;
          path = chosen;
        }
        done = true;
        return Bearing::answer;
      },
      [&] { return done; });
  if (path && question.what == headless::FileQuestion::What::save) {  // what goes there is a result
    written_.gather(keepsFiles_);
    keepsFiles_ = true;
  }
  return path;
}

json Screen::picture() {
  json now = {{"language", language_},
              {"dialogs", dialogsOf(session_, revisions_)},
              {"windows", windowsOf(session_)},
              {"menu", menuOf(session_)},
              {"indicator", indicatorOf(session_)},
              {"files", written_.files()},
              {"opened", written_.opened()},
              {"busy", working_ > 0 && open_.empty()},
              {"question", open_.empty() ? json() : open_.back()},
              {"notice", notice_},
              {"worked", worked_}};
  return now;
}

void Screen::tell() {
  written_.gather(keepsFiles_);
  const Clock::time_point begin = Clock::now();
  json now = picture();
  json change = changeOf(told_, now);
  const std::size_t count = session_.messages().size();
  if (count > messages_) change["messages"] = messagesOf(session_, messages_, kMostMessages);
  messages_ = count;
  if (!change.empty()) {
    json whole = now;
    whole["messages"] = messagesOf(session_, 0, kMostMessages);
    feed_.tell(lineOf(whole), lineOf(change));
    told_ = std::move(now);
  }
  changed_ = false;
  last_ = Clock::now();
  pause_ = std::max(kOften, std::chrono::duration_cast<milliseconds>(last_ - begin) * kShare);
}

void Screen::tellSometimes() {
  if (!changed_ || Clock::now() - last_ < pause_) return;
  tell();
}

void Screen::message(const std::wstring& /*text*/) { changed_ = true; }

void Screen::saved(const headless::SavedDocument& document) { written_.noteModel(document.path); }

void Screen::renamed(const headless::RenamedDocument& model) { written_.noteModel(model.path); }

void Screen::progress(int value, int /*maximum*/) {
  changed_ = true;
  if (value > 0) ran_ = true;
  if (!isStopAsked()) return;
  std::vector<std::string> rows = chosenRows(session_);
  const auto done = std::min(static_cast<std::size_t>(std::max(value, 0)), rows.size());
  rows.erase(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(done));
  leaveOut(session_, rows);
}

void Screen::noteOperation(std::string_view name) {
  if (!name.starts_with("ProUI") || name.ends_with("Get") || name.ends_with("GetState")) return;
  changed_ = true;
  if (name.starts_with("ProUITree")) ++revisions_.trees;
  if (name.starts_with("ProUITextarea")) ++revisions_.texts;
  if (startsWithOneOf(name, {"ProUITable", "ProUICheckbutton", "ProUILabel", "ProUIPushbutton"})) ++revisions_.tables;
}

// An operation is over: nothing is half done, and the pages may look. It ends in a destructor, which lets nothing out.
void Screen::operation(std::string_view name, int /*result*/, long long /*nanoseconds*/) {
  try {
    noteOperation(name);
    inbox_.answer();
    tellSometimes();
  } catch (const std::exception&) {
    changed_ = true;  // the next one tells it
  }
}

}  // namespace kelvane::view
