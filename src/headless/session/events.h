// What waits until control is back with the session, and the handlers that are told.
#pragma once

#include <deque>
#include <exception>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "creo/ProNotify.h"
#include "creo/pfcSession.h"

namespace headless {

struct Event {
  // What is done before its handler is told, if it is one that is told at all.
  enum class Does {
    nothing,
    activates,     // the window comes forward; one that has gone isn't told
    closes,        // the window goes
    closesUnused,  // the same, if it is empty by then; else it isn't told
    erases,        // the model goes, if it still may; nobody is told
  };
  creo::ProNotification notification;
  Does does = Does::nothing;
};

class Events {
 public:
  void set(creo::ProNotifyType type, creo::ProNotificationHandler handler) { handlers_[type] = std::move(handler); }
  bool unset(creo::ProNotifyType type) { return handlers_.erase(type) > 0; }
  // By a handler, or by a listener that is told of the same.
  [[nodiscard]] bool isHeard(creo::ProNotifyType type) const;
  // The listener's number, for its removal.
  int listen(creo::pfcSessionActionListener listener);
  bool unlisten(int listener) { return listeners_.erase(listener) > 0; }
  // Called whenever there is nothing else to do; the number, for its end.
  int repeat(std::function<void()> callback);
  bool stopRepeating(int callback) { return repeated_.erase(callback) > 0; }
  // The texts of exceptions that left one.
  std::vector<std::wstring> callRepeated();
  void queue(Event event) { queue_.push_back(std::move(event)); }
  std::optional<Event> next();
  // What a handler that hangs there now answers, 0 without one; fault: the text of an exception that left it, which
  // counts as ProGeneralError; empty: none did.
  struct Answer {
    creo::ProError error = creo::ProNoError;
    std::wstring fault;
  };
  Answer call(const creo::ProNotification& notification);
  // The same for the listeners: a model that the user opened was retrieved, one that is displayed was displayed.
  std::wstring callListeners(creo::ProNotifyType type, const creo::pfcModelDescriptor& model);

 private:
  std::map<creo::ProNotifyType, creo::ProNotificationHandler> handlers_;
  std::deque<Event> queue_;
  std::map<int, creo::pfcSessionActionListener> listeners_;
  int lastListener_ = 0;
  std::map<int, std::function<void()>> repeated_;
  int lastRepeated_ = 0;
};

// "ProMdlSave ended with an exception: ..."
std::wstring exceptionLine(std::string_view operation, const std::exception& exception);
// Runs code of the plug-in. The text of an exception that left it; empty: none did.
std::wstring guarded(const std::function<void()>& body);

}  // namespace headless
