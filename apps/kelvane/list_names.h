// The names that a list's actions give and take: reports that are opened, user variables that are set.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "kelvane/attribute_check.h"

namespace kelvane {

class ListNames {
 public:
  // Of all sections, groups too; what is switched off doesn't count.
  void readSection(const core::XmlNode* section);
  // Names that the action takes and nothing gives, and a report whose file another one has already. Call it once an
  // action, in their order.
  std::vector<AttributeFault> faults(const core::XmlNode& task, const engine::Action& action);

 private:
  void readTask(const core::XmlNode& task);
  void addReport(const core::XmlNode& task, const engine::Action& action, std::vector<AttributeFault>& faults);

  std::set<std::wstring> reporters_, variables_;
  bool opensAny_ = false, setsAny_ = false;  // one whose name is put together when the action runs
  std::set<std::wstring> files_;             // of the reports so far
};

// Does its author want the action to run?
bool isSwitchedOff(const core::XmlNode& task);

}  // namespace kelvane
