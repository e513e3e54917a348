// The actions, the filters and the rules of the check as rows tell them: for people, and as JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "actions/action.h"
#include "documents/predicates.h"
#include "kelvane/vocabulary/rules.h"

namespace kelvane {

// key, about, version, removed, conditions, reads, changes, attributes, inside, example. Members that say nothing are
// left out.
nlohmann::ordered_json described(const actions::Action& action);
// key, about, models, attributes, example.
nlohmann::ordered_json described(const documents::Predicate& predicate);
// rule, severity, about, example where there is one.
nlohmann::ordered_json described(const Rule& rule);
// Actions and filters as lines.
std::vector<std::string> told(const actions::Action& action);
std::vector<std::string> told(const documents::Predicate& predicate);
// What it does in a line, and what has become of one that does nothing any more.
std::string summary(const actions::Action& action);

}  // namespace kelvane
