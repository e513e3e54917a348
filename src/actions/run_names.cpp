#include "actions/run_names.h"

#include <unordered_map>

namespace actions {
namespace {

struct RunNames {
  bool goesOn = false;
  std::unordered_map<std::string, std::string> renamed;  // of a row whose model was renamed, its name of now
  std::unordered_map<std::string, std::string> rowOf;    // the other way
};
RunNames& names() {
  static RunNames names;
  return names;
}

}  // namespace

void noteRun(bool goesOn) { names() = {.goesOn = goesOn, .renamed = {}, .rowOf = {}}; }

bool runGoesOn() { return names().goesOn; }

void followRename(const std::string& before, const std::string& now) {
  if (!runGoesOn()) return;
  const auto known = names().rowOf.extract(before);
  const std::string row = known.empty() ? before : known.mapped();
  names().renamed[row] = now;
  names().rowOf[now] = row;
}

std::string rowNow(const std::string& row) {
  const auto found = names().renamed.find(row);
  return found == names().renamed.end() ? row : found->second;
}

}  // namespace actions
