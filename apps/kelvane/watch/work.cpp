#include "kelvane/watch/work.h"

#include <algorithm>
#include <sstream>

#include "core/state.h"
#include "kelvane/base/exit_codes.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/interrupt.h"
#include "kelvane/base/nearest.h"
#include "kelvane/run/config.h"
#include "kelvane/run/confined.h"
#include "kelvane/run/durability.h"
#include "kelvane/run/place.h"
#include "kelvane/show/model_folder.h"
#include "kelvane/watch/firing.h"
#include "kelvane/watch/selecting.h"

namespace kelvane {
namespace {

using creo::ProError;
using headless::Session;

// What a line of standard input asks for.
struct Command {
  const char* name;
  const char* done;                                     // the word of the line behind it
  const char* notFound;                                 // why there was nothing to do it with
  ProError (*ofModel)(Session&, const ModelFileName&);  // one that names its model; null: the current one is meant
  ProError (Session::*ofCurrent)();
};

ProError open(Session& session, const ModelFileName& model) { return session.open(model.name, model.type).error; }
ProError create(Session& session, const ModelFileName& model) { return session.create(model.name, model.type).error; }

constexpr const char* kNoModel = "there is no current model";
constexpr Command kCommands[] = {
    {"open", "opened", "there is no such model", open, nullptr},
    {"new", "new", "", create, nullptr},
    {"save", "saved", kNoModel, nullptr, &Session::save},
    {"regenerate", "regenerated", kNoModel, nullptr, &Session::regenerate},
    {"close", "closed", "there is no window", nullptr, &Session::close},
    {"erase", "erased", kNoModel, nullptr, &Session::erase},
    {"select", "selected", kNoModel, nullptr, nullptr},  // by names of its own, as many as wanted
};

// The words of a line; a "#" begins a remark.
std::vector<std::string> wordsOf(const std::string& line) {
  std::vector<std::string> words;
  std::istringstream stream(line.substr(0, line.find('#')));
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

const Command& commandNamed(const std::string& name) {
  std::vector<std::string> names;
  for (const Command& command : kCommands) {
    if (name == command.name) return command;
    names.emplace_back(command.name);
  }
  throw Fault("there is no command '" + name + "'" + didYouMean(name, names));
}

class WatchWork {
 public:
  WatchWork(const WatchOptions& options, Console& console)
      : options_(options),
        console_(console),
        durable_(durability(options.surroundings)),
        place_(prepareWatch(options.surroundings)),
        confinement_(options.surroundings, place_, console),
        session_(sessionOptions(options.surroundings, place_)) {
    tellConfigFaults(options.surroundings, console);
    tellLackingGrants(place_, console);
    if (!options.surroundings.events.empty()) events_.open(options.surroundings.events);
    for (const auto& [name, value] : place_.creoOptions) session_.setOption(name, value);
  }

  int run() {
    FiringWatch firings(session_, options_.surroundings, options_.json, console_, events_, durable_);
    firings_ = &firings;
    session_.trace(options_.surroundings.operations && events_.on());
    load();
    for (const std::string& model : options_.models) {
      if (const int code = work({"open", model})) return code;
    }
    for (std::string line; console_.read(line);) {
      if (const int code = work(wordsOf(line))) return code;
      console_.flush();
    }
    confinement_.tell(events_);
    if (const std::string fault = events_.fault(); !fault.empty()) {
      console_.trouble("error: " + fault);
      troubled_ = true;
    }
    return troubled_ || firings.troubled() ? kErrors : kFine;
  }

 private:
  void load() {
    if (session_.loadPlugin() != 0) throw Fault("the plug-in doesn't start: " + lastMessage());
    session_.settle();
    const auto& triggers = core::pluginState().triggers;
    const bool some =
        std::any_of(triggers.begin(), triggers.end(), [](const auto& trigger) { return !trigger.startKvz.empty(); });
    if (!some) console_.note("no trigger is configured: set kvd_start_kvz_before_save, or another one");
  }

  // A command and all that follows from it. 0, or the exit code that a signal asks for meanwhile; while a line is
  // waited for, a signal ends the program at once.
  int work(const std::vector<std::string>& words) {
    if (words.empty()) return 0;
    const Interrupt interrupt;
    try {
      carryOut(words);
      session_.settle();
      firings_->settle();
    } catch (const std::exception& fault) {
      troubled_ = true;
      console_.trouble(std::string("error: ") + fault.what());
    }
    return Interrupt::code();
  }

  void carryOut(const std::vector<std::string>& words) {
    const Command& command = commandNamed(words.front());
    if (!command.ofModel && !command.ofCurrent) return select(command, words);
    if (words.size() != (command.ofModel ? 2 : 1)) {
      throw Fault(std::string("write '") + command.name + (command.ofModel ? " NAME.EXT'" : "'"));
    }
    ModelFileName model;
    if (command.ofModel) {
      model = modelFileName(words[1]);
    } else if (const auto current = creo::ProMdlCurrentGet()) {
      model = {creo::ProMdlNameGet(current.value).value, creo::ProMdlTypeGet(current.value).value};
    }
    const std::string subject = model.name.empty() ? std::string() : " " + label(model.name, model.type);
    const ProError error = command.ofModel ? command.ofModel(session_, model) : (session_.*command.ofCurrent)();
    if (error != creo::ProNoError) throw Fault(command.name + subject + ": " + reason(command, error));
    if (firings_->settle()) console_.note(command.done + subject);
  }

  // In place of what was selected; without a name nothing is.
  void select(const Command& command, const std::vector<std::string>& words) {
    const auto model = creo::ProMdlCurrentGet();
    if (!model) throw Fault(command.name + std::string(": ") + command.notFound);
    std::vector<creo::ProSelection> selections;
    for (auto word = words.begin() + 1; word != words.end(); ++word)
      selections.push_back(selectionNamed(*word, model.value));
    session_.select(std::move(selections));
    console_.note(command.done + std::string(" ") + std::to_string(words.size() - 1));
  }

  [[nodiscard]] std::string reason(const Command& command, ProError error) const {
    switch (error) {
      case creo::ProNotFound:
        return command.notFound;
      case creo::ProExists:
        return "it is there already";
      case creo::ProBadInputs:
        return "that isn't possible with this model";
      case creo::ProUnattachedFeats:
        return "it is regenerated, but something lost what it was attached to";
      case creo::ProRegenAgain:
        return "it needs another regeneration";
      default:
        return lastMessage();
    }
  }

  [[nodiscard]] std::string lastMessage() const {
    const auto& messages = session_.messages();
    return messages.empty() ? "the session gives no reason" : readable(messages.back());
  }

  const WatchOptions& options_;
  Console& console_;
  os::Durable durable_;
  RunPlace place_;
  RunConfinement confinement_;
  Events events_;
  Session session_;
  FiringWatch* firings_ = nullptr;  // while it runs
  bool troubled_ = false;
};

}  // namespace

int watch(const WatchOptions& options, Console& console) { return WatchWork(options, console).run(); }

}  // namespace kelvane
