// The names that a list's actions give and take: reports that are opened, user variables that are set.
#pragma once

#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include "kelvane/check/attribute_check.h"
#include "text/letters.h"

namespace kelvane {

class ListNames {
 public:
  // Adds what a section gives, groups too; what is switched off doesn't count. Call it before its actions are looked
  // at: what the foot gives the head can't take.
  void readSection(const core::XmlNode* section);
  // Names that the action takes and no section so far gives, and a report whose file another one has already. Call it
  // once an action, in their order.
  std::vector<AttributeFault> faults(const core::XmlNode& task, const actions::Action& action);
  // User variables that an attribute of an action or of its filter asks for and no section so far sets.
  [[nodiscard]] std::vector<AttributeFault> unsetVariables(const core::XmlAttr& given) const;

 private:
  void readTask(const core::XmlNode& task);
  void addReport(const core::XmlNode& task, const actions::Action& action, std::vector<AttributeFault>& faults);

  std::set<std::wstring> reporters_;
  std::unordered_set<std::wstring, text::HashNoCase, text::EqualNoCase> variables_;
  bool opensAny_ = false, setsAny_ = false;  // one whose name is put together when the action runs
  std::set<std::wstring> files_;             // of the reports so far
};

// Does its author want the action to run?
bool isSwitchedOff(const core::XmlNode& task);

}  // namespace kelvane
