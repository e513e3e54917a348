// The parts of a session.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "headless/macros/macros.h"
#include "headless/model/bodies.h"
#include "headless/model/erase.h"
#include "headless/model/models.h"
#include "headless/model/new_features.h"
#include "headless/model/parameters.h"
#include "headless/pictures/picture_sources.h"
#include "headless/proui/ui.h"
#include "headless/session.h"
#include "headless/session/calls.h"
#include "headless/session/events.h"
#include "headless/session/menu.h"
#include "headless/session/message_files.h"
#include "headless/session/options.h"
#include "headless/session/windows.h"
#include "headless/vault/servers.h"

namespace headless {

struct Session::State {
  explicit State(SessionOptions given);

  SessionOptions options;
  std::vector<std::wstring> messages;
  std::vector<SavedDocument> saved;
  SessionObserver* observer = nullptr;
  bool tracing = false;
  Calls calls;
  Windows windows;
  Events events;
  Menu menu;
  Macros macros;
  MessageFiles messageFiles;
  ConfigOptions configuration;
  std::vector<creo::ProSelection> selections;
  std::vector<std::pair<creo::ProSelection, int>> highlights;  // with their colours, until a window is repainted
  DefaultLayers defaultLayers;
  Models models;
  Erasures erasures;
  Parameters parameters;
  Bodies bodies;
  Servers servers;
  Ui ui;
  bool settling = false;
  std::function<void()> unloadPlugin;  // null while it isn't loaded
  std::wstring startError;

  void showMessage(const std::wstring& text);
  // The folders that options name for models of that type.
  [[nodiscard]] std::vector<std::wstring> optionFolders(creo::ProMdlType type) const;
  // What the waiting macro steps work on.
  MacroContext macroContext();
  PictureSources pictureSources() { return {models, parameters, bodies}; }
  // Tells handler and listeners now, and gives the handler's answer; an exception that leaves one becomes a line of the
  // message area.
  creo::ProError notify(const creo::ProNotification& notification);
  // Tells of a model what happens to it now, inside an operation; window: the one that it is about, or 0.
  creo::ProError raise(creo::ProNotifyType type, creo::ProMdl model, int window = 0);
  // The same of what a handler may forbid: an error of its ends the operation, with a line of the message area.
  creo::ProError mayGoOn(creo::ProNotifyType type, creo::ProMdl model);
  // Does it and tells it once control is back.
  void queue(creo::ProNotifyType type, creo::ProMdl model, int window, Event::Does does = Event::Does::nothing);
  // Does what an event asks for once control is back. False: nobody is to be told of it any more.
  bool carryOut(Event& event);
  // Shows the model in a window of its own, which becomes the active one, and queues these notifications for it.
  void present(creo::ProMdl model, std::initializer_list<creo::ProNotifyType> reported);
};

}  // namespace headless
