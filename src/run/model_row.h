// A row of the table of models, whichever component of a dialog shows it.
#pragma once

#include <string>

#include "creo/ProTypes.h"

namespace run {

constexpr const char* kModelTable = "LargeTable";  // in the main dialog

enum class FamilyRole { plain, instance, generic, genericAsDependency };

struct ModelRow {
  std::string name;  // "BRACKET.PRT"
  creo::ProMdl model;
  creo::ProMdlType type{};  // part, assembly or drawing
  FamilyRole role = FamilyRole::plain;
  bool allowed = true;  // false: its history forbids it, it starts unselected and locked
};

// Parts, assemblies and drawings have rows.
constexpr bool hasRows(creo::ProMdlType type) {
  return type == creo::ProMdlType::part || type == creo::ProMdlType::assembly || type == creo::ProMdlType::drawing;
}

}  // namespace run
