// The list of words is the engine's own: what it names is replaced, or waits for a place that isn't here.
#include "language/known_tokens.h"

#include <gtest/gtest.h>

#include <set>

#include "core/state.h"
#include "language/variables.h"
#include "support/world.h"
#include "text/encoding.h"

namespace test {
namespace {

TEST(KnownTokens, AreReplaced) {
  // They ask a clipboard, a selection, a PDM name, a folder of jobs; or belong to one kind of text.
  const std::set<std::wstring_view> elsewhere = {
      L"@clipboard@", L"@pro_material_dir@", L"@pro_format_dir@", L"@common@", L"@workerdir:", L"@selmdlpath@",
      L"@selmdln@",   L"@selfilename@",      L"@project_dir@",    L"@para@",   L"@line@"};
  World world;
  world.part(L"GEAR");
  world.drawing(L"SHEET").uses(L"GEAR", creo::ProMdlType::part);
  world.start();
  const creo::ProMdl part = world.open(L"GEAR", creo::ProMdlType::part);
  const creo::ProMdl drawing = world.open(L"SHEET", creo::ProMdlType::drawing);
  for (const std::wstring_view token : language::knownTokens()) {
    if (elsewhere.contains(token)) continue;
    const auto onPart = language::replaceVariables(token, part), onDrawing = language::replaceVariables(token, drawing);
    EXPECT_TRUE(onPart.text != token || onDrawing.text != token) << text::toUtf8(token);
  }
  EXPECT_EQ(L"X", language::replaceVariablesLine(L"@line@", part, L"X").text);
}

TEST(KnownTokens, FunctionsAreUnderstood) {
  World world;
  world.part(L"GEAR");
  world.start();
  const creo::ProMdl part = world.open(L"GEAR", creo::ProMdlType::part);
  for (const std::wstring_view function : language::knownFunctions()) {
    // A known name leaves no trace of itself; of an unknown one only the signs go.
    const std::wstring call = L"$$" + std::wstring(function) + L"$1$2$abcd$$";
    EXPECT_EQ(std::wstring::npos, language::replaceVariables(call, part).text.find(function)) << text::toUtf8(function);
  }
}

}  // namespace
}  // namespace test
