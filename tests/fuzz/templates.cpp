// Texts with variables and text functions, on each kind of model and without one.
#include "fuzz/place.h"
#include "fuzz/target.h"
#include "language/user_variables.h"
#include "language/variables.h"
#include "text/encoding.h"
#include "text/units.h"

namespace {

struct Models {
  creo::ProMdl all[4];  // none, a part, an assembly, a drawing
};

Models opened() {
  static fuzz::Place place;
  headless::Session& session = place.freshSession();
  Models models{};
  models.all[1] = session.open(L"GEAR", creo::ProMdlType::part).value;
  models.all[2] = session.open(L"GEARBOX", creo::ProMdlType::assembly).value;
  models.all[3] = session.open(L"GEAR", creo::ProMdlType::drawing).value;
  session.settle();
  return models;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Models models = opened();
  std::string_view bytes = fuzz::bytesOf(data, size);
  const unsigned way = fuzz::choice(bytes);
  const creo::ProMdl model = models.all[way % std::size(models.all)];
  const std::size_t room = way & 4U ? 20 : way & 8U ? 26'000 : text::kTextSize;
  const std::wstring input = text::fromUtf8(bytes);
  language::userVariables().set(L"A", L"%user:B%");
  language::userVariables().set(L"B", input);
  const language::Replaced replaced = language::replaceVariables(input, model, room);
  if (replaced.hasText()) fuzz::holds(text::units(replaced.text) < room, "a result that fits");
  fuzz::holds(replaced.written || replaced.text.empty(), "no text without a result");
  const language::Replaced line = language::replaceVariablesLine(input, model, L"a line", room);
  fuzz::holds(!line.hasText() || text::units(line.text) < room, "a line that fits");
  (void)language::replaceVariablesPath(input, model, L"reports", room);
  language::userVariables().clear();
  return 0;
}
