#include "plugin/action_table.h"

#include <span>
#include <vector>

#include "actions/dispatch.h"

// Each family, declared where its floor is.
#define FAMILY(floor, name)                \
  namespace floor {                        \
  std::span<const actions::Action> name(); \
  }
#include "plugin/families.inc"
#undef FAMILY

namespace plugin {
namespace {

using Family = std::span<const actions::Action> (*)();
constexpr Family kFamilies[] = {
#define FAMILY(floor, name) &floor::name,
#include "plugin/families.inc"
#undef FAMILY
};

}  // namespace

void handDownActions() {
  if (!actions::actionTable().empty()) return;
  std::vector<actions::Action> rows;
  for (const Family family : kFamilies)
    for (const actions::Action& row : family()) rows.push_back(row);
  actions::setActionTable(std::move(rows));
}

}  // namespace plugin
