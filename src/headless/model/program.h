// A solid's Pro/PROGRAM: the text that tells what it asks for, its relations, and its features in their order.
//
//   VERSION 1                    the form of the text
//   LISTING FOR PART GEAR
//   INPUT                        what it asks for, a line each
//   END INPUT
//   RELATIONS
//   END RELATIONS
//   ADD FEATURE                  one block a feature (ADD COMPONENT for a component)
//   INTERNAL FEATURE ID 7
//   NAME = TEETH
//   END ADD
//   MASSPROP
//   END MASSPROP
//
// Blocks may stand in IF ... ELSE ... END IF; a regeneration suppresses the features whose condition doesn't hold.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "headless/model/expression.h"
#include "headless/model/model.h"

namespace headless {

class Models;  // models.h

using ProgramText = std::vector<std::string>;

// Why a text can't be taken over.
struct ProgramFault {
  std::size_t line = 0;  // from 1
  std::wstring reason;
  explicit operator bool() const { return !reason.empty(); }
};
// The text that was taken over last, with the relations and features that the model has now. What a document keeps may
// lack head, relations and MASSPROP; a fault in it is its own, and then there is no text.
struct HeldProgram {
  ProgramText text;
  ProgramFault fault;
};
HeldProgram programText(const Model& model);
// Takes a text over: inputs, relations, conditions; a feature whose block has gone goes too. At a fault nothing
// changes.
ProgramFault takeProgram(const Models& models, const Model& model, const ProgramText& text);

// What the conditions of its program say of a model's features, by id, with the values that names have now. Features
// under none, and those under one that isn't worked out, aren't there.
std::unordered_map<int, bool> programConditions(const Model& model, const RelationLookup& names);

}  // namespace headless
