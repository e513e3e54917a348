#include "kelvane/run/table_verdict.h"

#include "core/state.h"
#include "run/model_table.h"

namespace kelvane {

TableVerdict judgedByTable(creo::ProMdl model) {
  using enum run::RowVerdict;
  switch (run::judgeModel(model)) {
    case typeIsOff:
      return {false, "no row: the button of its type is off"};
    case filterUnreadable:
      return {false, "no row: the filter file can't be read"};
    case filterRefuses:
      return {false, "no row: the filter file refuses it"};
    case listFilterRefuses:
      return {false, "no row: the list's filter refuses it"};
    case instancesAreOff:
      return {false, "no row: it is an instance, and the button of instances is off"};
    case alreadyReworked:
      return {false, "a row, not selected: its history says that this list has worked it"};
    case selected:
      break;
  }
  const auto& state = core::pluginState();
  if (state.checkModifiable && !creo::ProMdlIsModifiable(model, false).value) {
    return {false, "a row, selected, but passed over: the model can't be modified"};
  }
  return {true, "a row, selected"};
}

}  // namespace kelvane
