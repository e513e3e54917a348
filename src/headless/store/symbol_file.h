// Files of symbol definitions: "NAME.sym", what a drawing's document holds of a definition.
#pragma once

#include <string>
#include <string_view>

#include "headless/store/json.h"
#include "headless/store/records_drawing.h"

namespace headless {

// The definition gets that name, whatever the file says, and no id. `into` is meaningful only without a fault.
JsonFault readSymbol(std::string_view source, std::string name, SymbolDefinitionRecord& into);
// As a document holds it, to tell whether two are the same.
std::string symbolText(const SymbolDefinitionRecord& definition);

}  // namespace headless
