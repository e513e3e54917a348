// What waits until control is back with the session, and the handlers that are told.
#pragma once

#include <deque>
#include <exception>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "creo/ProNotify.h"

namespace headless {

struct Event {
  creo::ProNotification notification;
  bool activates = false;  // the window becomes current before its handler is called
};

class Events {
 public:
  void set(creo::ProNotifyType type, creo::ProNotificationHandler handler) { handlers_[type] = std::move(handler); }
  bool unset(creo::ProNotifyType type) { return handlers_.erase(type) > 0; }
  [[nodiscard]] bool isHeard(creo::ProNotifyType type) const { return handlers_.contains(type); }
  void queue(Event event) { queue_.push_back(std::move(event)); }
  std::optional<Event> next();
  // Calls the handler that hangs there now, if one does. The text of an exception that left it; empty: none did.
  std::wstring call(const creo::ProNotification& notification);

 private:
  std::map<creo::ProNotifyType, creo::ProNotificationHandler> handlers_;
  std::deque<Event> queue_;
};

// "ProMdlSave ended with an exception: ..."
std::wstring exceptionLine(std::string_view operation, const std::exception& exception);
// Runs code of the plug-in. The text of an exception that left it; empty: none did.
std::wstring guarded(const std::function<void()>& body);

}  // namespace headless
