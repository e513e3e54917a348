// Creo's notifications. One handler a number; it is called when the event comes, or, for what follows an operation,
// once control is back with Creo.
#pragma once

#include "creo/ProTypes.h"

namespace creo {

// Creo's numbers, with what raises them here.
enum class ProNotifyType : int {
  eraseBefore = 9,           // inside ProMdlErase and ProMdlEraseAll; Creo doesn't tell the model
  regenerateBefore = 21,     // inside ProSolidRegenerate
  regenerateAfter = 22,      // the same, also behind a failed one
  currentModelChanged = 24,  // a window shows another model
  windowActivated = 26,      // a window became current
  windowClosed = 29,
  modelDisplayed = 41,
  featureRegenerated = 42,  // each feature, with id and name; empty for one without a name
  windowOccupied = 90,      // a window shows a model that it didn't show before; inside ProMdlDisplay
  pageControlShown = 94,    // a drawing's update shows a tab; its name is given
  modelCreated = 100,       // name and type text are given; inside an operation that makes one
  saveBefore = 103,         // inside ProMdlSave
  modelOpened = 110,        // retrieved by the user
};

// What a handler is told; what an event doesn't know stays empty.
struct ProNotification {
  ProNotifyType type{};
  ProMdl model;
  int window = 0;
  int feature = 0;  // its id
  std::wstring name, typeText;
};
using ProNotificationHandler = std::function<ProError(const ProNotification&)>;

// Takes the place of a handler that hangs there. What a handler of eraseBefore or saveBefore answers counts: an error
// keeps Creo from erasing or saving the model. Other answers aren't read.
ProError ProNotificationSet(ProNotifyType type, ProNotificationHandler handler);
// ProNotFound: none hangs there, where that is told.
ProError ProNotificationUnset(ProNotifyType type);

}  // namespace creo
