#include "headless/session/events.h"

#include <exception>

#include "text/encoding.h"
#include "text/format.h"

namespace headless {

using creo::ProNotifyType;

bool Events::isHeard(ProNotifyType type) const {
  const bool isListenersBusiness = type == ProNotifyType::modelOpened || type == ProNotifyType::modelDisplayed;
  return handlers_.contains(type) || (isListenersBusiness && !listeners_.empty());
}

int Events::listen(creo::pfcSessionActionListener listener) {
  listeners_.emplace(++lastListener_, std::move(listener));
  return lastListener_;
}

std::optional<Event> Events::next() {
  if (queue_.empty()) return std::nullopt;
  Event event = std::move(queue_.front());
  queue_.pop_front();
  return event;
}

Events::Answer Events::call(const creo::ProNotification& notification) {
  const auto found = handlers_.find(notification.type);
  if (found == handlers_.end() || !found->second) return {};
  const creo::ProNotificationHandler handler = found->second;  // it may unset itself
  creo::ProError answer = creo::ProNoError;
  const std::wstring fault = guarded([&] { answer = handler(notification); });
  if (fault.empty()) return {answer, {}};
  return {creo::ProGeneralError, text::format(L"the handler of notification %d ended with an exception: %s",
                                              static_cast<int>(notification.type), fault)};
}

std::wstring Events::callListeners(ProNotifyType type, const creo::pfcModelDescriptor& model) {
  if (listeners_.empty()) return {};
  const auto listeners = listeners_;  // one may remove itself
  const std::wstring fault = guarded([&] {
    for (const auto& [number, listener] : listeners) {
      if (type == ProNotifyType::modelOpened && listener.OnAfterModelRetrieveAll)
        listener.OnAfterModelRetrieveAll(model);
      if (type == ProNotifyType::modelDisplayed && listener.OnAfterModelDisplay) listener.OnAfterModelDisplay();
    }
  });
  return fault.empty() ? std::wstring() : L"a listener of the session ended with an exception: " + fault;
}

int Events::repeat(std::function<void()> callback) {
  repeated_.emplace(++lastRepeated_, std::move(callback));
  return lastRepeated_;
}

std::vector<std::wstring> Events::callRepeated() {
  std::vector<std::wstring> faults;
  const auto callbacks = repeated_;  // one may remove itself
  for (const auto& [number, callback] : callbacks)
    if (const std::wstring fault = guarded(callback); !fault.empty())
      faults.push_back(L"a callback of the event loop ended with an exception: " + fault);
  return faults;
}

std::wstring exceptionLine(std::string_view operation, const std::exception& exception) {
  return text::format(L"%s ended with an exception: %s", text::fromUtf8(operation), text::fromUtf8(exception.what()));
}

std::wstring guarded(const std::function<void()>& body) {
  try {
    body();
    return {};
  } catch (const std::exception& e) {
    const std::wstring what = text::fromUtf8(e.what());
    return what.empty() ? L"std::exception" : what;
  } catch (...) {
    return L"of no known kind";
  }
}

}  // namespace headless
