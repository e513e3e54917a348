// Documents of models, and the files of symbols, tables and materials beside them.
#include "headless/store/document.h"

#include "fuzz/target.h"
#include "headless/store/compare.h"
#include "headless/store/material_file.h"
#include "headless/store/symbol_file.h"
#include "headless/store/table_file.h"
#include "text/encoding.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzz::bytesOf(data, size);
  headless::ModelRecord record;
  const headless::JsonFault fault = headless::readDocument(bytes, record);
  if (!fault) {
    const std::string written = headless::writeDocument(record);
    headless::ModelRecord again;
    fuzz::holds(written.empty() || !headless::readDocument(written, again), "what was written can be read");
    fuzz::holds(written.empty() || headless::writeDocument(again) == written, "and is written the same");
    if (!written.empty())
      fuzz::holds(headless::compareTexts(written, written).empty(), "a document doesn't differ from itself");
  }
  (void)headless::compareTexts(bytes, R"({"format": 1, "parameters": [{"name": "A", "value": 1}]})");
  headless::SymbolDefinitionRecord symbol;
  (void)headless::readSymbol(bytes, "S", symbol);
  headless::TableRecord table;
  (void)headless::readTable(bytes, "T", table);
  const std::wstring letters = text::fromTextFile(bytes);
  for (const auto form : {headless::MaterialForm::properties, headless::MaterialForm::plain}) {
    headless::ParameterList parameters;
    (void)headless::readMaterial(letters, form, parameters);
  }
  return 0;
}
