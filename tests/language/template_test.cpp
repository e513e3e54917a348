// The template engine beyond parameters: tokens of session, model and selection, files, materials, text functions, and
// templates that try to break it.
#include <gtest/gtest.h>

#include <limits>

#include "core/state.h"
#include "creo/ProFeature.h"
#include "creo/ProMdl.h"
#include "creo/ProParameter.h"
#include "language/user_variables.h"
#include "language/variables.h"
#include "os/processes.h"
#include "support/world.h"
#include "text/encoding.h"
#include "text/format.h"

namespace language {
namespace {

using creo::ProMdl;
using creo::ProMdlType;

// "0:text", "1:text" for a failed function, "1" for a failure that wrote nothing.
std::wstring outcome(const Replaced& replaced) {
  return std::to_wstring(replaced.status) + (replaced.written ? L":" + replaced.text : L"");
}

struct Case {
  std::wstring input, expected;
  std::wstring logged = {};
};

class Templates : public testing::Test {
 protected:
  void SetUp() override {
    document("plate.prt.3", R"("commonName": "Grundplatte \u00c4", "regeneration": "needed", "material": "STEEL",
      "materials": [{"name": "STEEL", "parameters": [{"name": "DENSITY", "type": "double", "value": 7.85}]}],
      "parameters": [{"name": "REMARK", "type": "note", "value": 3}, {"name": "COLOR", "type": "string", "value": "Red"}],
      "familyTable": {"items": [], "instances": [{"name": "PLATE_S"}]})");
    world.assembly(L"FRAME").uses(L"PLATE", ProMdlType::part);
    world.drawing(L"SHEET").with(L"SIZE", L"A3").uses(L"PLATE", ProMdlType::part);
    world.drawing(L"EMPTY");
    world.start();
    drawing = world.open(L"SHEET", ProMdlType::drawing);
    frame = world.open(L"FRAME", ProMdlType::assembly);
    plate = world.open(L"PLATE", ProMdlType::part);
  }
  void document(const std::string& file, const std::string& members) const {
    test::writeBytes(world.models() + "/" + file, "{\"format\": 1, " + members + "}");
  }
  void check(const std::vector<Case>& cases, ProMdl model) {
    for (const Case& row : cases) {
      EXPECT_EQ(row.expected, outcome(replaceVariables(row.input, model))) << text::toUtf8(row.input);
      if (!row.logged.empty()) EXPECT_TRUE(world.logHas(row.logged)) << text::toUtf8(row.logged);
    }
  }

  test::World world;
  ProMdl plate, frame, drawing;
};

TEST_F(Templates, AskTheSession) {
  world.session().setOption(L"PRO_Material_Dir", L"d:\\materials");
  world.session().setOption(L"pro_format_dir", L"d:/formats/");
  check({{L"@pro_material_dir@|@pro_format_dir@|@curworkdir@", L"0:d:\\materials\\|d:/formats/|d:\\"}}, {});
  const std::pair<std::wstring, std::wstring> copied[] = {
      {L"4711", L"0:<4711>"},
      {std::wstring(63, L'x'), L"0:<" + std::wstring(63, L'x') + L">"},
      {std::wstring(64, L'x'), L"0:<@clipboard@>"},
      {std::wstring(62, L'x') + L"\U0001F600", L"0:<@clipboard@>"},
      {L"%SECRET%", L"0:<%SECRET%>"},
  };
  for (const auto& [text, expected] : copied) {
    os::surroundings().clipboard = std::make_shared<os::FixedClipboard>(text);
    EXPECT_EQ(expected, outcome(replaceVariables(L"<@clipboard@>", {}))) << text::toUtf8(text);
  }
  os::surroundings().clipboard = std::make_shared<os::FixedClipboard>();
  check({{L"@clipboard@", L"0:@clipboard@"}}, plate);
  for (const char* operation : {"ProConfigoptGet", "ProDirectoryCurrentGet"}) {
    world.session().failNext(operation, creo::ProNotFound);
    EXPECT_EQ(L"@pro_format_dir@ d:\\" == replaceVariables(L"@pro_format_dir@ @curworkdir@", {}).text,
              operation == std::string("ProConfigoptGet"));
  }
}

TEST_F(Templates, AskTheModel) {
  check({{L"@common@|@mdltype@|@regen_status@|@genname@", L"0:Grundplatte \u00C4|prt|PRO_SOLID_NEEDS_REGENERATION|-"},
         {L"@mdlpath@|@filepath@|@mdlpathr@", L"0:d:\\|d:\\|d:/"},
         {L"@oid@ @fileversion@ @mdlno@", L"0:no_oid .3 3"}},
        plate);
  check({{L"@common@|@genname@|@mdltype@", L"0:@common@|PLATE|prt"}},
        creo::ProMdlRetrieve(L"PLATE_S", ProMdlType::part).value);
  check({{L"@common@|@regen_status@|@genname@|@mdltype@", L"0:@common@|@regen_status@|-|drw"}}, drawing);
  const std::pair<const char*, std::wstring> faults[] = {
      {"ProMdlExtensionGet", L"0:@mdltype@ Grundplatte \u00C4 d:\\ 3"},
      {"ProMdlCommonnameGet", L"0:prt @common@ d:\\ 3"},
      {"ProMdlDataGet", L"0:prt Grundplatte \u00C4 @mdlpath@ @mdlno@"},
      {"ProSelbufferSelectionsGet", L"0:prt Grundplatte \u00C4 d:\\ 3"},
  };
  for (const auto& [operation, expected] : faults) {
    world.session().failNext(operation, creo::ProGeneralError);
    EXPECT_EQ(expected, outcome(replaceVariables(L"@mdltype@ @common@ @mdlpath@ @mdlno@", plate))) << operation;
  }
}

TEST_F(Templates, AskTheSelection) {
  const std::wstring text = L"@selmdln@|@selfilename@|@selmdlpath@|@mdlno@@fileversion@|@mdln@";
  const creo::ProModelitem component{creo::ProItemType::model, 0, plate, {}};
  creo::ProAsmcomppath path{frame, {}};
  creo::ProSolidFeatVisit(frame, [&](const creo::ProFeature& feature) {
    path.components = {feature.id};
    return creo::ProNoError;
  });
  creo::ProAsmcomppath gone = path;
  gone.components.push_back(7);
  const struct {
    std::vector<creo::ProSelection> selections;
    std::wstring expected;
  } cases[] = {
      {{}, L"0:@selmdln@|@selfilename@|@selmdlpath@|1.1|FRAME"},
      {{{component, path}}, L"0:PLATE|PLATE|d:\\|3.3|FRAME"},
      {{{component, {}}}, L"0:@selmdln@|@selfilename@|@selmdlpath@|1.1|FRAME"},
      {{{component, gone}}, L"0:@selmdln@|@selfilename@|@selmdlpath@|1.1|FRAME"},
      {{{{creo::ProItemType::model, 5, plate, {}}, path}}, L"0:@selmdln@|@selfilename@|@selmdlpath@|1.1|FRAME"},
      {{{{creo::ProItemType::feature, 5, plate, {}}, path}}, L"0:@selmdln@|@selfilename@|@selmdlpath@|1.1|FRAME"},
      {{{{creo::ProItemType::model, 0, drawing, {}}, path}}, L"0:@selmdln@|@selfilename@|@selmdlpath@|1.1|FRAME"},
      {{{component, path}, {component, {}}}, L"0:PLATE|PLATE|d:\\|3.3|FRAME"},
  };
  for (const auto& row : cases) {
    world.session().select(row.selections);
    EXPECT_EQ(row.expected, outcome(replaceVariables(text, frame))) << row.selections.size();
  }
}

TEST_F(Templates, FindTheWorkersFolder) {
  test::writeBytes(world.models() + "/jobs/a/one.paj", "part=PLATE.PRT");
  test::writeBytes(world.models() + "/jobs/b/list.txt", "plate.prt");
  test::writeBytes(world.models() + "/jobs/c/Two.PAJ", std::string("\0x\xff", 3) + "part=plate.prt;");
  test::writeBytes(world.models() + "/jobs/d/three.paj", "plate.prt");
  check({{L"@workerdir:d:\\jobs@|@workerdir:d:\\jobs@", L"0:d:\\jobs\\c|d:\\jobs\\c"},
         {L"@workerdir:d:\\nojobs@", L"0:@workerdir:d:\\nojobs@"},
         {L"@workerdir:d:\\jobs\\a@ @workerdir:d:\\jobs@", L"0:@workerdir:d:\\jobs\\a@ @workerdir:d:\\jobs@"},
         {L"@workerdir:d:\\jobs", L"0:@workerdir:d:\\jobs"}},
        plate);
  creo::ProMdlErase(frame);
  world.session().settle();
  world.session().failNext("pfcGetCurrentModelFileName", creo::ProNotFound);
  check({{L"@workerdir:d:\\jobs@", L"0:@workerdir:d:\\jobs@"}}, plate);
}

TEST_F(Templates, LookInMaterialsModelsAndFiles) {
  test::writeBytes(world.models() + "/raw.bin", "\xfb\xff\xfe?");
  test::writeBytes(world.models() + "/empty.bin", "");
  // Four characters for each three bytes: 1,950 of them are what a text may grow to, so the next one isn't even read.
  test::writeBytes(world.models() + "/fits.bin", std::string(1949, 'x'));
  test::writeBytes(world.models() + "/large/large.bin", std::string(1950, 'x'));
  world.disk().denyReads(L"d:\\large");
  const std::wstring tooLarge = L"The replaced output is to large for this task";
  const std::wstring wrongModel = L"Model needs to be a drawing for the curmod option";
  check({{L"%curmat:DENSITY%|%CurMat:dubase:density%", L"0:7.850000|7.850000e+00"},
         {L"%curmat:NOTHING%", L"1", L"Can't find parameter: NOTHING"},
         {L"%curmod:SIZE%", L"1", wrongModel},
         {L"%b64:d:\\raw.bin%|%b64uc:d:/RAW.bin%", L"0:+//+Pw==|%b64uc:d:/RAW.bin%"},
         {L"%b64uc:d:\\raw.bin%", L"0:-__-Pw=="},
         {L"<%b64:d:\\empty.bin%>", L"0:<>"},
         {L"%b64:d:\\none.bin%", L"0:file_not_found_or_readable"},
         {L"%b64:d:\\large\\large.bin%", L"0:FAILURE", tooLarge},
         {L"$$pre$2$%b64:d:\\large\\large.bin%$$", L"0:FAILURE"},
         {L"%b64:d:\\fits.bin%", L"0:FAILURE"},
         {L"%b64:d:\\%", L"0:file_not_found_or_readable"}},
        plate);
  check({{L"%curmat:DENSITY%", L"1", L"Model needs to be a part for the curmat option"}}, frame);
  check({{L"%SIZE%|%curmod:curmat:DENSITY%", L"0:A3|7.850000"}}, drawing);
  check({{L"%curmod:SIZE%", L"1", L"Can't get the current model from the drawing"}},
        creo::ProMdlRetrieve(L"EMPTY", ProMdlType::drawing).value);
  world.session().failNext("ProMaterialCurrentGet", creo::ProNotFound);
  check({{L"%curmat:DENSITY%", L"1", L"Can't get the current material from the part"}}, plate);
}

// What stands beside a note is replaced, and a text function reads the form as it was.
TEST_F(Templates, LeaveNotesAsTheyAre) {
  check({{L"x%REMARK%%COLOR%-%REMARK%", L"0:x%REMARK%Red-%REMARK%"}}, plate);
  const std::wstring log = world.log(), told = L"The parameter REMARK is a note, %REMARK% stays as it is";
  EXPECT_TRUE(log.find(told) != log.npos && log.find(told) == log.rfind(told)) << text::toUtf8(log);
  EXPECT_FALSE(world.logHas(L"(ERR)"));
  check({{L"%remark%", L"0:%remark%"}, {L"$$pre$4$%REMARK%$$", L"0:%REM"}}, plate);
}

TEST_F(Templates, CutAndReplaceInTexts) {
  const std::wstring smile = L"\U0001F600";
  const std::wstring long260(260, L'x'), long259(259, L'x');
  check(
      {
          {L"$$sub$1$3$abcdef$$", L"0:bc"},
          {L"<$$sub$4$99$abcdef$$>", L"0:<ef>"},
          {L"$$sub$3$3$abcdef$$", L"1:sub$3$3$abcdef", L"sub - Failure x can't be higher or equal to y"},
          {L"$$sub$99999999999$3$ab$$", L"1:sub$99999999999$3$ab", L"sub - Failure while build substring at x"},
          {L"$$sub$1$99999999999$ab$$", L"1:sub$1$99999999999$ab", L"sub - Failure while build substring at y"},
          {L"$$sub$-5$2$abc$$", L"0:ab"},
          {L"$$sub$x$2$abc$$", L"0:ab"},
          {L"$$pre$3$abcdef$$", L"0:abc"},
          {L"$$pre$-1$abc$$|", L"0:|"},
          {L"$$pre$99999999999$ab$$", L"1:pre$99999999999$ab", L"pre - Failure while build substring at x"},
          {L"$$pree$2$abcdef$$", L"0:abcd"},
          {L"$$pree$9$abc$$", L"0:", L"pree - The length of x would be smaller 0 so its put like 0"},
          {L"$$poste$2$abcdef$$", L"0:ef"},
          {L"$$poste$9$abc$$", L"0:abc", L"poste - The length of x would be smaller 0 so its put like 0"},
          {L"$$posts$2$abcdef$$", L"0:cdef"},
          {L"<$$posts$3$abc$$>", L"0:<>"},
          {L"<$$posts$4$abc$$>", L"1:<>",
           L"posts - The length of the String is not long enought for this starting position"},
          // Where texts end
          {L"$$pre$2$abc", L"0:ab"},
          {L"$$pre$9$abc$", L"0:abc"},
          {L"$$pre$9$a$c$$d", L"0:a$cd"},
          {L"$$pre$2", L"0:"},
          {L"$$pre$1$ab$$$$pre$1$cd$$", L"0:ac"},
          {L"$$pre$2$$$pre$1$ab$$$$", L"0:pre$1$ab"},
          // What is no call
          {L"a$b$", L"0:a$b$"},
          {L"a$$b$$$c", L"0:ab$c"},
          {L"$$PRE$1$ab$$", L"0:PRE$1$ab"},
          {L"^ab$$", L"0:^ab"},
          {L"/^ab$$/", L"0:/^ab$$/"},
          {L"/", L"0:/"},
          // Replacing
          {L"$$repl$$!$\u20AC$a$!b$$", L"0:a\u20AC!b"},
          {L"$$repl$B$-$abBa$$", L"0:a--a"},
          {L"$$repl$/[0-9]+/$#$a12b3$$", L"0:#"},
          {L"$$repl$/^[0-9]+$!/$#$a12b3$$", L"0:a#b#"},
          {L"$$repl$\u00E4$ae$\u00C4pfel$$", L"0:aepfel"},
          {L"$$repl$a$$banana$$", L"0:bnn"},
          {L"$$repl$$b$text$$", L"1:replb$text", L"repl - Failure a can't be an empty string"},
          {L"$$repl$/[/$x$te[xt$$", L"0:te[xt"},
          // Tokens are arguments
          {L"$$pre$3$@mdln@$$/$$poste$2$%curmat:DENSITY%$$", L"0:PLA/00"},
          // Characters beyond the basic plane count two and are never split
          {L"$$pre$2$" + smile + L"a$$", L"0:" + smile},
          {L"$$pre$1$" + smile + L"a$$|", L"0:|"},
          {L"$$posts$1$" + smile + L"a$$", L"0:a"},
          // Fields
          {L"$$pre$1$" + long259 + L"$$", L"0:x"},
          {L"$$pre$1$" + long260 + L"$$", L"1", L"longer than 259 characters"},
          {L"$$pre$" + std::wstring(260, L'1') + L"$a$$", L"1"},
          {L"$$repl$" + long260 + L"$b$c$$", L"1"},
          {L"$$repl$x$yy$" + long259.substr(0, 129) + L"$$", L"0:" + std::wstring(258, L'y')},
          {L"$$repl$x$yy$" + long259.substr(0, 130) + L"$$", L"1"},
      },
      plate);
  check({{L"$$pre$1$ab$$", L"0:$$pre$1$ab$$"}}, {});
}

// A failed call leaves the caller's text alone; a function that failed still delivers one, also to paths.
TEST_F(Templates, FailureSaysWhetherThereIsAText) {
  EXPECT_FALSE(replaceVariables(L"%MISSING%", plate).hasText());
  const Replaced failedFunction = replaceVariables(L"$$sub$2$1$ab$$", plate);
  EXPECT_TRUE(failedFunction.hasText() && !failedFunction);
  EXPECT_EQ(L"sub$2$1$a\\b", replaceVariablesPath(L"$$sub$2$1$a/b$$", plate, L"models"));
  EXPECT_EQ(L"1:sub$2$1$x", outcome(replaceVariablesLine(L"$$sub$2$1$@line@$$", plate, L"x")));
}

TEST_F(Templates, EndWhateverTheyHold) {
  const auto set = [&](const wchar_t* name, const std::wstring& value) {
    creo::ProParamvalue text;
    text.type = creo::ProParamvalueType::string;
    text.string = value;
    creo::ProParameterCreate(creo::ProMdlToModelitem(plate).value, name, text);
  };
  const auto setReal = [&](const wchar_t* name, double value) {
    creo::ProParamvalue real;
    real.type = creo::ProParamvalueType::real;
    real.real = value;
    return creo::ProParameterCreate(creo::ProMdlToModelitem(plate).value, name, real).error;
  };
  set(L"A", L"%A%");
  set(L"B", L" %B%");
  set(L"C", L"%D% ");
  set(L"D", L" %C%%C%");
  set(L"ODD_\u00C4", L"\u00E4\"'%\U0001F600");
  userVariables().set(L"U", L"x%user:U%");
  userVariables().set(L"V", L"%user:V%");
  os::setEnvironment(L"KVD_TEST_GROWS", L"x\u00A7KVD_TEST_GROWS\u00A7");
  const std::wstring tooMany = L"The text takes too many replacements, perhaps a value holds its own name";
  check({{L"%A%", L"0:%A%"},
         {L"x%A%", L"1", tooMany},
         {L"%B%", L"1", tooMany},
         {L"x%C%", L"1", tooMany},
         {L"%user:U%", L"1", tooMany},
         {L"%user:V%", L"0:%user:V%"},
         {L"\u00A7KVD_TEST_GROWS\u00A7", L"1", tooMany},
         {L"%ODD_\u00E4% %length:odd_\u00C4%", L"0:\u00E4\"'%\U0001F600 6"},
         {L"%toupper:ODD_\u00C4%", L"0:\u00C4\"'%\U0001F600"},
         {L"@number", L"0:@number"},
         {L"$$repl$/(a+)+b/$x$" + std::wstring(60, L'a') + L"$$", L"0:" + std::wstring(60, L'a')}},
        plate);
  setReal(L"HUGE", std::numeric_limits<double>::max());
  EXPECT_TRUE(replaceVariables(L"%HUGE%", plate).tooLong) << "never another number";
  EXPECT_EQ(L"0:1.797693e+308", outcome(replaceVariables(L"%dubase:HUGE%", plate)));
  if (setReal(L"NAN", std::numeric_limits<double>::quiet_NaN()) == creo::ProNoError)
    EXPECT_EQ(L"0:nan", outcome(replaceVariables(L"%NAN%", plate)));
  if (setReal(L"INF", -std::numeric_limits<double>::infinity()) == creo::ProNoError)
    EXPECT_EQ(L"0:-inf", outcome(replaceVariables(L"%INF%", plate)));
}

TEST_F(Templates, OfAHundredThousandCharactersEndSoon) {
  const auto repeated = [](std::wstring_view piece) {
    std::wstring text;
    while (text.size() < 100000) text += piece;
    return text;
  };
  constexpr std::size_t kRoom = 120000;
  for (const std::wstring_view piece : {L"x", L"\u00A7", L"\u00A7a", L"$", L"$$", L"%", L"%%", L"% a", L"@", L"@mdl",
                                        L"$$pre$1$a$$", L"$$repl$", L"@workerdir:", L"\n@number", L"/"}) {
    const std::wstring text = repeated(piece);
    EXPECT_TRUE(outcome(replaceVariables(text.substr(0, 100000), plate)).ends_with(L":FAILURE")) << text::toUtf8(piece);
    EXPECT_FALSE(replaceVariables(text, plate, kRoom).tooLong) << text::toUtf8(piece);
  }
  EXPECT_EQ(100000u, replaceVariables(std::wstring(100000, L'x'), plate, kRoom).text.size());
  EXPECT_EQ(L"0:" + std::wstring(25000, L'a'), [&] {
    std::wstring calls;
    for (int i = 0; i < 25000; ++i) calls += L"$$pre$1$ab$$";
    return outcome(replaceVariables(calls, plate, kRoom));
  }());
}

}  // namespace
}  // namespace language
