// Where targets work that need a session: a folder of models that goes with the process, and surroundings through
// which an input reaches nothing else.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "headless/session.h"
#include "os/surroundings.h"

namespace fuzz {

class Place {
 public:
  // Copies the models of the example. Files can be read and not changed, no program is started, and the clipboard is
  // empty.
  Place();
  ~Place();
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;

  // A session in which nothing has happened, in place of the one before. The plug-in isn't in it.
  headless::Session& freshSession();
  // Writes a file beside the models, around what holds changes back; its path in the system's form.
  std::wstring file(const std::string& name, std::string_view bytes) const;

 private:
  std::string folder_;
  os::SurroundingsGuard guard_;
  std::shared_ptr<os::Files> real_;
  std::unique_ptr<headless::Session> session_;
};

}  // namespace fuzz
