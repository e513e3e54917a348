// Files of other systems that are damaged or hostile, and what reads them when it ends or hangs.
#include "creo/ProIntf.h"
#include "creo/ProIntfimport.h"
#include "creo/ProSolid.h"
#include "headless/geometry/foreign_place.h"
#include "headless/session_fixture.h"
#include "support/folders.h"
#include "support/step_file.h"
#include "text/pieces.h"

namespace headless {
namespace {

using namespace creo;

class ForeignTest : public test::HeadlessSession {
 protected:
  // The tetrahedron with a piece of its text changed.
  static std::string changed(const std::string& from, const std::string& to) {
    const std::string whole = test::stepTetrahedron();
    EXPECT_NE(whole.npos, whole.find(from)) << from;
    return text::replaceAll(whole, from, to);
  }
  ProError import(const std::string& file, const std::wstring& name = L"NEW") {
    session();
    const auto kind = file.ends_with(".igs") ? ProIntfType::iges : ProIntfType::step;
    const auto made = ProIntfimportModelWithOptionsCreate(L"d:\\" + text::fromUtf8(file), kind, ProMdlType::part, name);
    made_ = made.value;
    return made.error;
  }
  // A part whose document holds the text.
  ProMdl stored(const std::string& step) {
    return part(R"({"type": "import", "step": ")" +
                text::replaceAll(text::replaceAll(step, "\"", "\\\""), "\n", "\\n") + "\"}");
  }

  ProMdl made_;
  geometry::ForeignPlaceGuard place_;
};

// Each either has the right volume, or a line says what is wrong with it.
TEST_F(ForeignTest, DamagedFilesAreRefusedOrWarnedOf) {
  const struct {
    std::string name, step;
    const char* line;  // of the message area; it holds the fault that a stored text has too
  } cases[] = {
      {"nan", changed("(30.,0.,0.)", "(NaN,0.,0.)"), ""},
      {"huge", changed("(30.,0.,0.)", "(1E308,0.,0.)"), "a point of it lies farther than any part reaches"},
      {"far", changed("(30.,0.,0.)", "(-1E15,0.,0.)"), "a point of it lies farther than any part reaches"},
      {"overflow", changed("(30.,0.,0.)", "(1E999,0.,0.)"), "a point of it lies farther than any part reaches"},
      {"moved", changed("(30.,0.,0.)", "(90.,0.,0.)"), ""},
      {"flat", changed("(0.,0.,50.)", "(0.,0.,0.)"), ""},
      {"open", changed("(#31,#32,#33,#34)", "(#31,#32,#33)"), ""},
      {"twice", changed("(#31,#32,#33,#34)", "(#31,#32,#33,#33)"), ""},
      {"dangling", changed("#34=FACE_SURFACE", "#35=FACE_SURFACE"), ""},
      {"itself", changed("#22=CLOSED_SHELL('',(#31,", "#22=CLOSED_SHELL('',(#22,"), ""},
      {"letter", changed("#41=FACE_OUTER_BOUND", "#41=FACE_OUTXR_BOUND"), ""},
      {"context", changed("APPLICATION_CONTEXT('')", "APPLICATION_CONTEXT(5)"), "1 entity fails the load check"},
      {"direction", changed("(20.,15.,12.)", "(0.,0.,0.)"), ""},
  };
  geometry::foreignPlace().time = std::chrono::seconds(10);
  for (const auto& [name, step, line] : cases) {
    const std::string file = name + ".stp";
    write(file, step);
    const ProError error = import(file, text::fromUtf8(name));
    const std::string reported = messages();
    EXPECT_NE(reported.npos, reported.find(file + ": " + line)) << name << "\n" << reported;
    EXPECT_TRUE(error == ProGeneralError || reported.find("warning: import of d:\\" + file) != reported.npos)
        << reported;
    const std::size_t before = reported.size();
    const auto mass = ProSolidMassPropertyGet(stored(step));
    EXPECT_TRUE(!mass || messages().size() > before) << name << ": " << mass.value.volume;
  }
  write("good.stp", test::stepTetrahedron());
  ASSERT_EQ(ProNoError, import("good.stp")) << messages();
  EXPECT_NEAR(10000, ProSolidMassPropertyGet(made_).value.volume, 1e-6);
}

// A file holds its own bodies: the others that it names lie anywhere on the machine, and would be read there.
TEST_F(ForeignTest, FilesThatAFileNamesAreNotRead) {
  session();
  write("secret.stp", test::stepTetrahedron());
  const std::string secret = folder_ + "/secret.stp";
  const char* const identified =
      "#107=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('%s',#108,#109,(#105));\n"
      "#108=IDENTIFICATION_ROLE('external document id and location',$);\n"
      "#109=EXTERNAL_SOURCE(IDENTIFIER('%s'));\n";
  for (const char* by : {"", identified}) {
    std::string others =
        "#100=DOCUMENT_PRODUCT_EQUIVALENCE('equivalence',$,#101,#103);\n#101=DOCUMENT('','',$,#102);\n"
        "#102=DOCUMENT_TYPE('configuration controlled document version');\n"
        "#103=PRODUCT_DEFINITION_FORMATION('1','',#110);\n"
        "#104=PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('1','',#103,#112,(#105));\n"
        "#105=DOCUMENT_FILE('%s','',$,#106,'',$);\n#106=DOCUMENT_TYPE('');\n"
        "#110=PRODUCT('20001','doc','',(#111));\n#111=PRODUCT_CONTEXT('',#113,'');\n"
        "#112=PRODUCT_DEFINITION_CONTEXT('digital document definition',#113,'');\n#113=APPLICATION_CONTEXT('');\n"
        "#114=APPLIED_DOCUMENT_REFERENCE(#101,'',(#6));\n";
    others = text::replaceAll(others + by, "%s", secret);
    write("outer.stp", changed("ENDSEC;\nEND-ISO", others + "ENDSEC;\nEND-ISO"));
    ASSERT_EQ(ProNoError, import("outer.stp", *by ? L"BY_SOURCE" : L"BY_NAME")) << messages();
    EXPECT_NEAR(10000, ProSolidMassPropertyGet(made_).value.volume, 1e-6);
    EXPECT_NE(std::string::npos, messages().find("outer.stp: 1 other file that it names isn't read"));
  }
}

// The library finds nothing wrong with a cylinder between circles of another radius.
TEST_F(ForeignTest, FacesThatLeaveTheirEdgesAreRefusedOrWarnedOf) {
  const ProMdl pin = part(R"({"type": "cylinder", "diameter": 20, "length": 30})");
  ASSERT_EQ(ProNoError, ProIntf3DFileWrite(pin, ProIntfFormat::step, L"d:\\pin",
                                           ProOutputAssemblyConfiguration::singleFile, {}, {}))
      << messages();
  const std::string whole = read("pin.stp");
  const std::size_t face = whole.find("CYLINDRICAL_SURFACE");
  ASSERT_NE(whole.npos, face);
  const std::size_t radius = whole.find("10.", face);
  ASSERT_LT(radius, whole.find(';', face));
  const struct {
    std::string radius;
    ProError error;
    std::string line;
  } cases[] = {{"10.", ProNoError, ""},
               {"10.1", ProNoError, "warning: import of d:\\pin.stp: 1 body has faces that hardly meet"},
               {"5.", ProGeneralError, "the faces of a body don't meet: its volume is unknown"},
               {"20.", ProGeneralError, "the faces of a body don't meet: its volume is unknown"}};
  for (const auto& entry : cases) {
    write("pin.stp", whole.substr(0, radius) + entry.radius + whole.substr(radius + 3));
    const std::size_t before = messages().size();
    EXPECT_EQ(entry.error, import("pin.stp", L"PIN_" + std::to_wstring(&entry - cases)));
    const std::string reported = messages().substr(before);
    EXPECT_TRUE(entry.line.empty() ? reported.empty() : reported.find(entry.line) != reported.npos)
        << entry.radius << ": " << reported;
  }
}

TEST_F(ForeignTest, AReaderThatEndsHangsOrIsMissingIsAFaultOfTheFile) {
  write("plate.stp", test::stepTetrahedron());
  const struct {
    const char* program;
    const char* line;
  } cases[] = {
      {"/bin/true", "it ended the program that reads it"},
      {"/usr/bin/yes", "reading it wasn't done within 1 seconds"},
      {"/bin/no-such-reader", "the program that reads it doesn't start: /bin/no-such-reader"},
  };
  for (const auto& [program, line] : cases) {
    geometry::foreignPlace().program = program;
    geometry::foreignPlace().time = std::chrono::seconds(1);
    EXPECT_EQ(ProGeneralError, import("plate.stp"));
    EXPECT_NE(std::string::npos, messages().find(std::string("import of d:\\plate.stp: ") + line)) << messages();
    EXPECT_EQ(ProGeneralError, ProSolidMassPropertyGet(stored(test::stepTetrahedron())).error);
    EXPECT_NE(std::string::npos, messages().find(std::string("primitive 1: ") + line)) << messages();
    endSession();
  }
  geometry::foreignPlace() = {};
  EXPECT_EQ(ProNoError, import("plate.stp")) << messages();
}

// A program that ended is tried once more without what earlier files left in it; one that is late isn't waited for
// twice.
TEST_F(ForeignTest, WhatTakesTooLongIsNotTriedAgain) {
  write("plate.stp", test::stepTetrahedron());
  const std::string answer =
      R"({"fault": "", "warnings": [], "unit": 1.0, "nodes": [{"name": "A", "step": 0, "members": [], "faces": []}]})"
      "\n";
  const std::uint64_t length = answer.size();
  write("answer", std::string(reinterpret_cast<const char*>(&length), sizeof length) + answer);
  write("reader", "#!/bin/sh\necho >> " + folder_ + "/starts\ncat " + folder_ + "/answer >&0\nexec sleep 60\n");
  geometry::foreignPlace().program = folder_ + "/reader";
  std::filesystem::permissions(geometry::foreignPlace().program, std::filesystem::perms::owner_all);
  (void)import("plate.stp");
  geometry::foreignPlace().time = std::chrono::seconds(1);
  EXPECT_EQ(ProGeneralError, import("plate.stp"));
  EXPECT_NE(std::string::npos, messages().find("plate.stp: reading it wasn't done within 1 seconds")) << messages();
  EXPECT_EQ("\n", read("starts"));
}

TEST_F(ForeignTest, AFileThatTakesMoreMemoryThanItShouldIsRefused) {
  write("plate.stp", test::stepTetrahedron());
  geometry::foreignPlace().program = test::binaryFolder() + "/./kelvane-import";  // one that has read nothing yet
  geometry::foreignPlace().memory = 0;
  geometry::foreignPlace().memoryPerByte = 1;
  EXPECT_EQ(ProGeneralError, import("plate.stp"));
  EXPECT_NE(std::string::npos, messages().find("import of d:\\plate.stp: ")) << messages();
}

TEST_F(ForeignTest, OpenShellsStayAsQuilts) {
  write("sheets.stp",
        text::replaceAll(text::replaceAll(text::replaceAll(changed("(#31,#32,#33,#34)", "(#31,#32,#33)"),
                                                           "FACETED_BREP_SHAPE_", "MANIFOLD_SURFACE_SHAPE_"),
                                          "FACETED_BREP('',#22)", "SHELL_BASED_SURFACE_MODEL('',(#22))"),
                         "CLOSED_SHELL", "OPEN_SHELL"));
  ASSERT_EQ(ProNoError, import("sheets.stp", L"SHEETS")) << messages();
  const ProMdl sheets = made_;
  ASSERT_EQ(ProNoError, ProIntf3DFileWrite(sheets, ProIntfFormat::iges, L"d:\\sheets",
                                           ProOutputAssemblyConfiguration::singleFile, {.quilts = true}, {}))
      << messages();
  ASSERT_EQ(ProNoError, import("sheets.igs", L"BACK")) << messages();
  for (const char* file : {"sheets.stp", "sheets.igs"})
    EXPECT_NE(std::string::npos, messages().find(std::string("warning: import of d:\\") + file +
                                                 ": 1 open shell is kept as quilt without volume"))
        << messages();
  for (const ProMdl solid : {sheets, made_}) {
    EXPECT_EQ(ProNotFound, ProSolidMassPropertyGet(solid).error);
    const auto box = ProSolidOutlineGet(solid);
    EXPECT_NEAR(30, box.value.max.x, 1e-6);
    EXPECT_NEAR(50, box.value.max.z, 1e-6);
  }
  // What adds to it leaves them as they are.
  const ProMdl both = part(R"({"type": "import", "file": "sheets.stp"}, {"type": "box", "size": [1, 1, 1]},
      {"type": "box", "use": "cut", "size": [1, 1, 0.5]})");
  std::filesystem::copy(folder_ + "/sheets.stp", folder_ + "/models/sheets.stp");
  EXPECT_NEAR(0.5, ProSolidMassPropertyGet(both).value.volume, 1e-9) << messages();
  EXPECT_NEAR(50, ProSolidOutlineGet(both).value.max.z, 1e-6);
}

}  // namespace
}  // namespace headless
