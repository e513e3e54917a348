#include "headless/session.h"

#include <stdexcept>

#include "headless/creo/state.h"
#include "headless/model/drawing.h"
#include "headless/model/items.h"
#include "headless/model/regenerate.h"
#include "headless/model/retrieve.h"
#include "headless/session/call_watch.h"
#include "os/paths.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace headless {

using creo::ProError;
using creo::ProMdl;
using creo::ProNotifyType;

namespace {

constexpr int kEventLimit = 1'000'000;
Session* theSession = nullptr;

}  // namespace

Session::State::State(SessionOptions given)
    : options(std::move(given)),
      messageFiles(options.textFolder, text::fromUtf8(options.language)),
      models({[this](const std::wstring& text) { showMessage(text); },
              [this](const SavedDocument& document) {
                saved.push_back(document);
                if (observer) observer->saved(document);
              },
              [this](const RenamedDocument& model) {
                if (observer) observer->renamed(model);
              },
              [this](const std::wstring& path) {
                if (observer) observer->unreadable(path);
              },
              [this](ProMdl model) { windows.forget(model); }, options.withholdSaves,
              [this](ModelDocument& document) { servers.place(document); },
              [this](const std::wstring& name, creo::ProMdlType type) { return servers.fetch(name, type); },
              [this](creo::ProMdlType type) { return optionFolders(type); },
              [this](const Model& model) { return bodies.mass(model); }, &currentMaterial,
              [this] {
                const auto option = configuration.values(L"relations_units_sensitive");
                return option.empty() || !text::equalNoCase(option.front(), L"no");
              }},
             {instanceValues, relationNames}, options.modelFolder),
      erasures(models, [this](ProMdl model) { return windows.shows(model); }),
      parameters(models),
      bodies(models),
      servers(models, models.folders().working(), options.withholdSaves),
      ui([this](const std::wstring& text) { showMessage(text); }) {}

// Frames lie in folders of their own: formats, and drawings that serve as such.
std::vector<std::wstring> Session::State::optionFolders(creo::ProMdlType type) const {
  std::vector<std::wstring> folders = configuration.values(L"search_path");
  if (!hasSheets(type)) return folders;
  for (std::wstring& entry : configuration.values(L"pro_format_dir")) folders.push_back(std::move(entry));
  return folders;
}

void Session::State::showMessage(const std::wstring& text) {
  messages.push_back(text);
  if (observer) observer->message(text);
}

MacroContext Session::State::macroContext() {
  return {models, windows, selections, [this](const creo::ProNotification& notification) { notify(notification); }};
}

ProError Session::State::notify(const creo::ProNotification& notification) {
  if (!events.isHeard(notification.type)) return creo::ProNoError;
  const Events::Answer answer = events.call(notification);
  if (!answer.fault.empty()) showMessage(answer.fault);
  creo::pfcModelDescriptor descriptor;
  if (const Model* model = models.find(notification.model)) descriptor = {model->name, model->type()};
  const std::wstring fault = events.callListeners(notification.type, descriptor);
  if (!fault.empty()) showMessage(fault);
  return answer.error;
}

ProError Session::State::raise(ProNotifyType type, ProMdl model, int window) {
  const Model* reported = models.look(model);
  if (!reported || !events.isHeard(type)) return creo::ProNoError;
  creo::ProNotification notification;
  notification.type = type;
  notification.window = window;
  if (type != ProNotifyType::eraseBefore) {  // Creo doesn't tell what goes
    notification.model = model;
    notification.name = reported->name;
    notification.typeText = typeExtension(reported->type());
  }
  return notify(notification);
}

ProError Session::State::mayGoOn(ProNotifyType type, ProMdl handle) {
  const Model* model = models.look(handle);
  const std::wstring label = model ? modelKey(model->name, model->type()) : std::wstring();
  const ProError answer = raise(type, handle);
  if (answer == creo::ProNoError) return answer;
  showMessage(text::format(L"%s isn't %s: the handler of notification %d answered %d", label,
                           std::wstring(type == ProNotifyType::saveBefore ? L"saved" : L"erased"),
                           static_cast<int>(type), static_cast<int>(answer)));
  return creo::ProGeneralError;
}

void Session::State::queue(ProNotifyType type, ProMdl model, int window, Event::Does does) {
  Event event;
  event.does = does;
  event.notification.type = type;
  event.notification.model = model;
  event.notification.window = window;
  if (const Model* reported = models.look(model)) {
    event.notification.name = reported->name;
    event.notification.typeText = typeExtension(reported->type());
  }
  events.queue(std::move(event));
}

bool Session::State::carryOut(Event& event) {
  creo::ProNotification& reported = event.notification;
  switch (event.does) {
    case Event::Does::nothing:
      return true;
    case Event::Does::activates:
      if (!windows.has(reported.window)) return false;
      windows.activate(reported.window);
      reported.model = windows.model(reported.window);
      return true;
    case Event::Does::closesUnused:
    case Event::Does::closes:
      if (!windows.has(reported.window)) return false;
      if (event.does == Event::Does::closesUnused && windows.model(reported.window)) return false;
      windows.close(reported.window);
      return true;
    case Event::Does::erases:
      erasures.carryOut(reported.model);
      return false;
  }
  return true;
}

void Session::State::present(ProMdl handle, std::initializer_list<ProNotifyType> reported) {
  int window = windows.of(handle);
  if (window == 0) window = windows.create();
  windows.show(window, handle);
  windows.activate(window);
  for (const ProNotifyType entry : reported) queue(entry, handle, window);
}

Session::Session(SessionOptions options) {
  if (theSession) throw std::logic_error("a headless session is there already");
  options.textFolder = os::asFolder(os::withBackslashes(options.textFolder));
  state_ = std::make_unique<State>(std::move(options));
  theSession = this;
}

Session::~Session() {
  if (CallWatch* const watch = callWatch()) watch->ends(*this);
  unloadPlugin();
  theSession = nullptr;
}

Session& Session::current() {
  if (!theSession) throw std::logic_error("there is no headless session");
  return *theSession;
}
Session* Session::currentOrNull() { return theSession; }

void Session::unloadPlugin() {
  if (!state_->unloadPlugin) return;
  const auto unload = std::move(state_->unloadPlugin);
  state_->unloadPlugin = nullptr;
  if (const std::wstring fault = guarded(unload); !fault.empty()) showMessage(fault);
  state_->menu.clear();
}

const std::wstring& Session::startError() const { return state_->startError; }

creo::Got<ProMdl> Session::open(const std::wstring& name, creo::ProMdlType type) {
  const auto retrieved = retrieveModel(state_->models, name, type);
  if (!retrieved) return retrieved;
  state_->present(retrieved.value, {ProNotifyType::modelOpened, ProNotifyType::modelDisplayed,
                                    ProNotifyType::windowOccupied, ProNotifyType::windowActivated});
  return retrieved;
}

ProError Session::runCommand(const std::string& name) {
  const Command* command = state_->menu.command(name);
  if (!command) return creo::ProNotFound;
  const Command present = *command;  // it may take the menu away
  ProError result = creo::ProNoError;
  const std::wstring fault = guarded([&] {
    if (present.access && present.access() != creo::kCommandAvailable)
      result = creo::ProGeneralError;
    else if (present.action)
      present.action();
  });
  if (fault.empty()) return result;
  showMessage(text::format(L"the command %s ended with an exception: %s", text::fromUtf8(name), fault));
  return creo::ProGeneralError;
}

void Session::settle() {
  if (state_->settling) return;  // a handler's own question is no end of its work
  struct Settling {
    bool& flag;
    explicit Settling(bool& f) : flag(f) { flag = true; }
    ~Settling() { flag = false; }
  } settling(state_->settling);
  for (int worked = 0;;) {
    if (worked == kEventLimit) throw std::runtime_error("a million events without an end");
    if (auto event = state_->events.next()) {
      if (!state_->carryOut(*event)) continue;
      // Nobody answers what nobody hears, so it is no part of a loop, however many models a run displays.
      if (state_->events.isHeard(event->notification.type)) ++worked;
      state_->notify(event->notification);
    } else if (state_->macros.waiting()) {
      ++worked;
      state_->macros.runStep(state_->macroContext());
    } else {
      for (const std::wstring& fault : state_->events.callRepeated()) showMessage(fault);
      return;
    }
  }
}

void Session::raise(ProNotifyType type, ProMdl model) { state_->raise(type, model); }
void Session::setOption(const std::wstring& name, const std::wstring& value) { state_->configuration.set(name, value); }
void Session::select(std::vector<creo::ProSelection> selections) { state_->selections = std::move(selections); }

Models& Session::models() { return state_->models; }
Ui& Session::ui() { return state_->ui; }
Servers& Session::servers() { return state_->servers; }
const Windows& Session::windows() const { return state_->windows; }
Menu& Session::menu() { return state_->menu; }
ConfigOptions& Session::configuration() { return state_->configuration; }
PictureSources Session::pictureSources() { return state_->pictureSources(); }
const SessionOptions& Session::options() const { return state_->options; }
const std::vector<std::wstring>& Session::messages() const { return state_->messages; }
void Session::showMessage(const std::wstring& text) { state_->showMessage(text); }
void Session::clearMessages() { state_->messages.clear(); }
const std::vector<std::wstring>& Session::unknownSteps() const { return state_->macros.unknown(); }
const std::vector<std::wstring>& Session::ranSteps() const { return state_->macros.ran(); }
const std::wstring& Session::pageControl() const { return state_->macros.pageControl(); }
const std::vector<std::pair<creo::ProSelection, int>>& Session::highlights() const { return state_->highlights; }
std::vector<std::string> Session::commands() const { return state_->menu.names(); }
const std::vector<SavedDocument>& Session::savedDocuments() const { return state_->saved; }
void Session::observe(SessionObserver* observer) { state_->observer = observer; }
void Session::trace(bool on) { state_->tracing = on; }
void Session::failNext(std::string_view operation, ProError code) { state_->calls.failNext(operation, code); }
void Session::failEvery(int n) { state_->calls.failEvery(n); }
int Session::calls(std::string_view operation) const { return state_->calls.of(operation); }

}  // namespace headless
