#include "run/triggers.h"

#include <exception>
#include <set>

#include "actions/run_names.h"
#include "core/log.h"
#include "core/state.h"
#include "creo/ProMdl.h"
#include "creo/ProNotify.h"
#include "creo/ProSession.h"
#include "creo/pfcSession.h"
#include "run/model_table.h"
#include "text/encoding.h"
#include "text/format.h"

namespace run {
namespace {

using namespace core;
using namespace creo;

// What the handlers remember between two events.
struct Memory {
  ProMdlData regenerated;     // for which the trigger behind a regeneration fired last
  int created = 0;            // calls of notification 100 that counted
  int listener = 0;           // of the session; 0: none
  std::set<ProMdl> shown;     // new models whose first display was seen
  bool firstDisplay = false;  // a model was opened that hasn't been displayed yet
  pfcModelDescriptor opened;
};
Memory& memory() {
  static Memory entry;
  return entry;
}

ProError fire(Trigger trigger, ProMdl model) {
  const TriggerSettings& settings = pluginState().trigger(trigger);
  const int type = static_cast<int>(trigger) + 1;
  return static_cast<ProError>(
      fireTrigger(model, settings.startKvz, settings.startRework, settings.startConf, settings.startShowUI, type));
}

// What a run's own actions do, or the filters that judge the table's models, is no event for those triggers that would
// be told of every one of them.
bool isBusy() { return pluginState().triggerType != 0 || actions::runGoesOn() || tableIsBeingFilled(); }

ProError onSave(const ProNotification& /*event*/) { return fire(Trigger::beforeSave, {}); }

ProError onOccupied(const ProNotification& event) {
  auto model = ProWindowMdlGet(event.window);
  if (!model) model = ProMdlCurrentGet();
  if (!model || !ProMdlTypeGet(model.value)) {
    creoLog(L"Check pre trigger - no mdl");
    return ProNoError;
  }
  creoLog(L"Check pre trigger");
  return fire(Trigger::afterOccupy, model.value);
}

// A regeneration counts once a model, until a save gives it another version.
ProError onRegenerated(const ProNotification& event) {
  if (isBusy()) return ProNoError;
  const auto data = ProMdlDataGet(event.model);
  if (!data) return ProNoError;
  const ProMdlData& last = memory().regenerated;
  if (data.value.name == last.name && data.value.type == last.type && data.value.version == last.version) {
    return ProNoError;
  }
  memory().regenerated = data.value;
  return fire(Trigger::afterRegenerate, event.model);
}

ProError onRegenerate(const ProNotification& event) {
  return isBusy() ? ProNoError : fire(Trigger::beforeRegenerate, event.model);
}

// Creo doesn't tell which model goes; where a person erases one it is the current one.
ProError onErase(const ProNotification& /*event*/) { return isBusy() ? ProNoError : fire(Trigger::beforeErase, {}); }

ProMdlType typeOf(const std::wstring& extension) {
  for (const ProMdlType type : {ProMdlType::part, ProMdlType::assembly, ProMdlType::drawing})
    if (extension == typeExtension(type)) return type;
  return ProMdlType::unused;
}

// A model that was made behind the one that the user sees. Creo tells of it twice.
ProError onCreated(const ProNotification& event) {
  if (pluginState().trigger(Trigger::afterCreate).startKvz.empty()) return ProNoError;
  const auto model = ProMdlInit(event.name, typeOf(event.typeText));
  if (model) memory().shown.erase(model.value);  // a handle that an erased model had
  const auto current = ProMdlCurrentGet();
  if (current && ProMdlNameGet(current.value).value == event.name) return ProNoError;
  if (++memory().created % 2 != 0) return ProNoError;
  return model ? fire(Trigger::afterCreate, model.value) : ProNoError;
}

// The first display of a new model; one that was saved before wasn't created now.
ProError onDisplayedNew(const ProNotification& /*event*/) {
  const auto current = ProMdlCurrentGet();
  if (!current) return ProNoError;
  const auto data = ProMdlDataGet(current.value);
  const bool isNew = data && data.value.version == 0 && data.value.path.empty();
  const bool isFirst = isNew && memory().shown.insert(current.value).second;
  return isFirst ? fire(Trigger::afterCreate, {}) : ProNoError;
}

void onRetrievedAll(const pfcModelDescriptor& model) {
  creoLog(L"after retrieve all " + model.name);
  memory().firstDisplay = true;
  memory().opened = model;
}

void writeCount(const wchar_t* form, ProMdlType type) {
  creoLog(text::format(form, static_cast<int>(ProSessionMdlList(type).value.size())));
}

void onDisplayed() {
  if (!memory().firstDisplay) return;
  creoLog(L"FIRST DISPLAY");
  auto model = ProMdlCurrentGet();
  const auto type = ProMdlTypeGet(model.value);
  creoLog(ProMdlNameGet(model.value).value);
  creoLog(typeExtension(type ? type.value : ProMdlType::unused));
  if (!type || typeOf(typeExtension(type.value)) == ProMdlType::unused) {
    model = ProMdlInit(memory().opened.name, memory().opened.type);
  }
  if (!model) return;
  memory().firstDisplay = false;
  writeCount(L"DRW:count :%d", ProMdlType::drawing);
  writeCount(L"ASM:count :%d", ProMdlType::assembly);
  writeCount(L"PRT:count :%d", ProMdlType::part);
  fire(Trigger::afterOpen, model.value);
}

// No exception of ours crosses Creo.
template <class Body>
ProError contained(Body body) {
  try {
    return body();
  } catch (const std::exception& fault) {
    creoLog(L"<KVD> " + text::fromUtf8(fault.what()));
    return ProGeneralError;
  }
}

// Creo is always told to go on: an error would keep a person from saving or erasing the model, and a faulty list is no
// reason for that.
void hangOn(ProNotifyType type, ProError (*handler)(const ProNotification&)) {
  const ProError error = ProNotificationSet(type, [handler](const ProNotification& event) {
    contained([&] { return handler(event); });
    return ProNoError;
  });
  if (error != ProNoError) {
    creoLog(text::format(L"<KVD> Failure while hang in notification %d", static_cast<int>(type)));
  }
}

void attachCreate() {
  ProNotificationUnset(ProNotifyType::modelCreated);
  hangOn(ProNotifyType::modelCreated, onCreated);
  hangOn(ProNotifyType::modelDisplayed, onDisplayedNew);
}
void detachCreate() {
  ProNotificationUnset(ProNotifyType::modelCreated);
  ProNotificationUnset(ProNotifyType::modelDisplayed);
}

void detachOpen() {
  ProNotificationUnset(ProNotifyType::modelOpened);
  if (memory().listener != 0) pfcSessionActionListenerRemove(memory().listener);
  memory().listener = 0;
}
void attachOpen() {
  pfcSessionActionListener listener;
  listener.OnAfterModelRetrieveAll = [](const pfcModelDescriptor& model) {
    contained([&] { return onRetrievedAll(model), ProNoError; });
  };
  listener.OnAfterModelDisplay = [] { contained([] { return onDisplayed(), ProNoError; }); };
  const auto added = pfcSessionActionListenerAdd(std::move(listener));
  if (!added) creoLog(L"<KVD> Failure while hang in the session's listener");
  memory().listener = added.value;
}

template <ProNotifyType type, ProError (*handler)(const ProNotification&)>
void attach() {
  hangOn(type, handler);
}
template <ProNotifyType type>
void detach() {
  ProNotificationUnset(type);
}

struct Row {
  Trigger trigger;
  const wchar_t* in;
  const wchar_t* out;
  void (*attach)();
  void (*detach)();
};
using N = ProNotifyType;
constexpr Row kRows[] = {
    {Trigger::afterOpen, L"trigger after open", L"trigger after open", attachOpen, detachOpen},
    {Trigger::afterCreate, L"trigger at new", L"trigger at new", attachCreate, detachCreate},
    {Trigger::beforeSave, L"trigger before save", L"trigger before save", attach<N::saveBefore, onSave>,
     detach<N::saveBefore>},
    {Trigger::afterOccupy, L"trigger after occupy", L"trigger occupy post", attach<N::windowOccupied, onOccupied>,
     detach<N::windowOccupied>},
    {Trigger::afterRegenerate, L"trigger after solid regen", L"trigger after regeneration",
     attach<N::regenerateAfter, onRegenerated>, detach<N::regenerateAfter>},
    {Trigger::beforeRegenerate, L"trigger before solid regen", L"trigger before regeneration",
     attach<N::regenerateBefore, onRegenerate>, detach<N::regenerateBefore>},
    {Trigger::beforeErase, L"trigger before erase", L"trigger before erase", attach<N::eraseBefore, onErase>,
     detach<N::eraseBefore>},
};

// The trigger behind an opening takes any digits: its run says what is wrong with them.
bool digitsAreGood(const Row& row) {
  const std::wstring& digits = pluginState().trigger(row.trigger).startConf;
  const bool good = digits.size() == 5 && digits.find_first_not_of(L"01") == digits.npos;
  return good || row.trigger == Trigger::afterOpen;
}

bool isWanted(const Row& row) { return !pluginState().trigger(row.trigger).startKvz.empty(); }

}  // namespace

void attachTriggers() {
  for (const Row& row : kRows) {
    if (!isWanted(row)) continue;
    creoLog(std::wstring(L"<KVD> hang in ") + row.in);
    if (digitsAreGood(row)) {
      row.attach();
    } else {
      creoLog(L"<KVD> Failure while hang in because config length isn't 5 times 0 or 1");
    }
  }
}

void detachTriggers() {
  creoLog(L"<KVD> remove Trigger");
  for (const Row& row : kRows) {
    if (!isWanted(row)) continue;
    creoLog(std::wstring(L"<KVD> hang out ") + row.out);
    row.detach();
  }
  memory() = {};
}

void reattachTriggers() {
  for (const Row& row : kRows) {
    if (row.trigger == Trigger::afterCreate && isWanted(row) && digitsAreGood(row)) {
      hangOn(ProNotifyType::modelDisplayed, onDisplayedNew);
    }
  }
}

}  // namespace run
