// What Creo's public documentation says of the operations that we ask, beside what the headless session answers: one
// row an operation, in our own words. docs/host-contract.md is written from it, and the tests fail each operation with
// the codes that its row gives.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "creo/ProTypes.h"

namespace creo {

// Where the documentation speaks of an operation.
enum class Source {
  page,      // a page of its own
  guide,     // a guide, an object's page or a sister operation's
  notFound,  // nowhere that we know
};

enum class Verdict {
  same,
  differs,     // `reason` says why it stays so; without one it is open
  cantBeTold,  // the documentation is silent, or speaks of what a session without graphics doesn't have
};

struct Operation {
  std::string_view name;        // "ProParameterValueGet"
  std::string_view header;      // of src/creo: "ProParameter.h"
  std::string_view shape;       // what goes in and what comes out: "parameter -> value"
  std::vector<ProError> codes;  // failures that can come, documented or told by our declaration; the sweep gives each
  Source source = Source::notFound;
  // What matters to a caller: units, when it takes effect, what must be displayed; and what implements it where nothing
  // is called as ours is.
  std::string_view documented = {};
  std::string_view ours = {};  // what the session does; empty: the same
  Verdict verdict = Verdict::cantBeTold;
  std::string_view reason = {};  // of a difference that stays
  std::string_view test = {};    // that shows it: "ParametersTest.ReadsValuesInModelUnits"; empty: none does
};

// All of them, by group and name. Each name once.
std::span<const Operation> operations();

}  // namespace creo
