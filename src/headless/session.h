// A Creo session without a Creo: models in a folder, windows, notifications, macros, menu, message area, dialogs. The
// operations of creo/ work on the one session of the process. Programs and tests drive it as a person would: open a
// model, run a command of the menu, press in dialogs, and let the session settle.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "creo/ProMdl.h"
#include "creo/ProNotify.h"
#include "creo/ProSelection.h"
#include "headless/model/saved_document.h"

namespace headless {

// The parts that programs and tests look at; who uses one includes its header.
class Models;           // model/models.h: the models in memory
class Ui;               // proui/ui.h: dialogs and their components
class Servers;          // vault/servers.h: the PDM servers
class Windows;          // session/windows.h: what is shown, and which window is current
class Menu;             // session/menu.h: the menu bar and its commands
class ConfigOptions;    // session/options.h: Creo's configuration
struct PictureSources;  // pictures/picture_sources.h: what sheets and solids are drawn from

struct SessionOptions {
  std::wstring modelFolder;          // where models are looked for and saved; the working folder at the start
  std::wstring textFolder;           // the application's text folder: message files, dialog resources, icons
  std::string version = "Creo 8.0";  // what the plug-in is told
  std::string build = "8.0.0.0";
  std::string language = "usascii";  // folder of the message files: "usascii" or "german"
  bool graphics = true;
  int wideCharSize = sizeof(wchar_t);  // what the session says of its own wide characters, in bytes
  bool withholdSaves = false;          // a dry run: saving counts and changes memory, no document is written
};

// Told as things happen; every function has a body that does nothing.
class SessionObserver {
 public:
  virtual ~SessionObserver() = default;
  virtual void message(const std::wstring& /*text*/) {}  // the message area
  virtual void saved(const SavedDocument& /*document*/) {}
  virtual void renamed(const RenamedDocument& /*model*/) {}
  // A document that a model was to be read from can't be read; a message says why.
  virtual void unreadable(const std::wstring& /*path*/) {}
  virtual void progress(int /*value*/, int /*maximum*/) {}  // a dialog's progress bar moved
  virtual void operation(std::string_view /*name*/, int /*result*/, long long /*nanoseconds*/) {}  // while tracing
};

class Session {
 public:
  // There is one session at a time; a second one is refused by std::logic_error.
  explicit Session(SessionOptions options);
  ~Session();  // unloads the plug-in if it is loaded
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  // The session of the process. Without one: std::logic_error.
  static Session& current();
  // Null without one.
  static Session* currentOrNull();

  // Starts the plug-in by its entry; its result. Its message for the user is startError().
  int loadPlugin();
  void unloadPlugin();
  [[nodiscard]] const std::wstring& startError() const;

  // As a person opens a model: retrieved, shown in a window of its own, which comes before the person. The
  // notifications 110, 41, 90 and 26 follow when the session settles.
  creo::Got<creo::ProMdl> open(const std::wstring& name, creo::ProMdlType type);
  // As a person makes a model: in memory only, shown as an opened one is; notification 100 comes before 41, 90 and 26.
  // ProExists: a model of that name is in memory or in the folder; ProBadInputs: it can't be a file's name.
  creo::Got<creo::ProMdl> create(const std::wstring& name, creo::ProMdlType type);
  // As a person does it to the current model, with the notifications of the operation; its result. ProNotFound: there
  // is no current model.
  creo::ProError save();
  creo::ProError regenerate();
  // Takes the model out of memory and closes its window, when the session settles.
  creo::ProError erase();
  // Closes the window before the person when the session settles; the one used before takes its place. The first one is
  // emptied only. ProNotFound: it is empty.
  creo::ProError close();
  // Runs a command by its name. ProNotFound: there is none; ProGeneralError: it isn't available, or an exception left
  // it (then the message area has its text).
  creo::ProError runCommand(const std::string& name);
  // Control goes back to Creo: queued changes of windows, erasures, notifications and macros are worked until nothing
  // is left. A million events in a row are taken for a loop and end it with std::runtime_error.
  void settle();

  // Sets an option of Creo's configuration; its name is case-blind.
  void setOption(const std::wstring& name, const std::wstring& value);
  // As a person selects, in place of what was selected; nothing clears the selection.
  void select(std::vector<creo::ProSelection> selections);

  // What happened to a model is told now, as inside an operation: to handlers and listeners.
  void raise(creo::ProNotifyType type, creo::ProMdl model);

  Models& models();
  Ui& ui();
  Servers& servers();
  [[nodiscard]] const Windows& windows() const;
  Menu& menu();
  ConfigOptions& configuration();
  PictureSources pictureSources();
  [[nodiscard]] const SessionOptions& options() const;

  // The lines of the message area since the start.
  [[nodiscard]] const std::vector<std::wstring>& messages() const;
  void showMessage(const std::wstring& text);
  void clearMessages();
  // Macro steps that the session doesn't know, each once, in order.
  [[nodiscard]] const std::vector<std::wstring>& unknownSteps() const;
  // All steps that ran, in order.
  [[nodiscard]] const std::vector<std::wstring>& ranSteps() const;
  // The tab that a drawing's control bar shows: "page_Layout" at the start.
  [[nodiscard]] const std::wstring& pageControl() const;
  // What is highlighted, with its colours, until a window is repainted.
  [[nodiscard]] const std::vector<std::pair<creo::ProSelection, int>>& highlights() const;
  // Names of the commands in the menu.
  [[nodiscard]] std::vector<std::string> commands() const;
  [[nodiscard]] const std::vector<SavedDocument>& savedDocuments() const;

  // Not owned; null takes it away.
  void observe(SessionObserver* observer);
  void trace(bool on);

  // Arranged faults, and what was called. The next call of the operation gives the code and does nothing else.
  void failNext(std::string_view operation, creo::ProError code);
  // Every n-th call of any operation gives ProGeneralError; 0 ends it.
  void failEvery(int n);
  [[nodiscard]] int calls(std::string_view operation) const;

  // The parts, for the operations of creo/.
  struct State;
  State& state() { return *state_; }

 private:
  std::unique_ptr<State> state_;
};

}  // namespace headless
