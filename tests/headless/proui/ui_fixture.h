// A session over the shipped text folder, without a plug-in, for tests of the dialogs.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "creo/ProUI.h"
#include "headless/proui/ui.h"
#include "headless/session.h"
#include "os/surroundings.h"
#include "support/folders.h"
#include "support/world.h"

namespace test {

class UiTest : public testing::Test {
 protected:
  explicit UiTest(const std::string& language = "usascii")
      : session_({.modelFolder = os::mounts().system(folder_.path()),
                  .textFolder = os::mounts().system(sourceFolder() + "/installation/text"),
                  .language = language}) {}

  headless::Ui& ui() { return session_.ui(); }
  headless::Dialog& dialog(const std::string& name) { return *ui().dialog(name); }
  // Creates a dialog under the name of its resource.
  headless::Dialog& created(const std::string& name, bool modeless = true) {
    EXPECT_EQ(creo::ProNoError, creo::ProUIDialogCreate(name, name));
    EXPECT_EQ(creo::ProNoError, creo::ProUIDialogTraitSet(name, creo::ProUIDialogTrait::modeless, modeless));
    return dialog(name);
  }

  TempFolder folder_;
  headless::Session session_;
};

}  // namespace test
