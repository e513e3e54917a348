// The window that a picture is taken of.
#pragma once

#include "creo/ProTypes.h"
#include "creo/ProWindow.h"

namespace actions {

// Makes the model's window the current one, and opens one for a model that has none. The destructor makes the window
// current that was, and takes away what was opened; a warning says that it stays.
class ModelWindow {
 public:
  explicit ModelWindow(creo::ProMdl model);
  ~ModelWindow();
  ModelWindow(const ModelWindow&) = delete;
  ModelWindow& operator=(const ModelWindow&) = delete;

  // The number to hand to Creo. Else the failure, such as ProNoGraphics.
  [[nodiscard]] const creo::Got<int>& window() const { return window_; }

 private:
  creo::Got<int> before_, window_;
  bool opened_ = false;
};

}  // namespace actions
