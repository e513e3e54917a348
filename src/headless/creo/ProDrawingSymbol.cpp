// The symbols of drawings.
#include <algorithm>

#include "creo/ProDrawing.h"
#include "headless/creo/drawing_operation.h"
#include "headless/store/names.h"
#include "text/encoding.h"

namespace creo {

using headless::Model;
using headless::onDrawing;
using headless::SymbolDefinitionRecord;
using headless::SymbolRecord;
using State = headless::Session::State;

Got<std::vector<ProDtlsymdef>> ProDrawingDtlsymdefsCollect(ProMdl drawing) {
  return onDrawing("ProDrawingDtlsymdefsCollect", drawing, [](State&, Model& m) -> Got<std::vector<ProDtlsymdef>> {
    std::vector<ProDtlsymdef> definitions;
    for (const SymbolDefinitionRecord& definition : m.document->record.symbolDefinitions)
      definitions.push_back({m.handle, definition.id});
    return headless::collected(std::move(definitions));
  });
}

Got<std::wstring> ProDtlsymdefNameGet(const ProDtlsymdef& definition) {
  return onDrawing("ProDtlsymdefNameGet", definition.drawing, [&](State&, Model& m) -> Got<std::wstring> {
    for (const SymbolDefinitionRecord& record : m.document->record.symbolDefinitions)
      if (record.id == definition.id) return text::fromUtf8(record.name);
    return ProNotFound;
  });
}

Got<std::vector<ProDtlsyminst>> ProDrawingDtlsyminstsCollect(ProMdl drawing, int sheet) {
  return headless::onSheetOrCurrent("ProDrawingDtlsyminstsCollect", drawing, sheet, [](State&, Model& m, int number) {
    std::vector<ProDtlsyminst> symbols;
    for (const SymbolRecord& symbol : m.document->record.symbols)
      if (symbol.sheet == number) symbols.push_back({m.handle, symbol.id});
    return headless::collected(std::move(symbols));
  });
}

Got<ProDtlsymdef> ProDtlsyminstDefGet(const ProDtlsyminst& symbol) {
  return onDrawing("ProDtlsyminstDefGet", symbol.drawing, [&](State&, Model& m) -> Got<ProDtlsymdef> {
    const auto& record = m.document->record;
    const auto found = std::find_if(record.symbols.begin(), record.symbols.end(),
                                    [&](const SymbolRecord& entry) { return entry.id == symbol.id; });
    if (found == record.symbols.end()) return ProNotFound;
    for (const SymbolDefinitionRecord& definition : record.symbolDefinitions)
      if (headless::sameName(definition.name, found->definition)) return ProDtlsymdef{m.handle, definition.id};
    return ProNotFound;
  });
}

}  // namespace creo
