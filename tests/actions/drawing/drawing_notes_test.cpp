// Notes of drawings: written from files, found by place and text, moved, deleted, edited from tables.
#include "actions/drawing/details.h"
#include "actions/drawing/drawing_details_fixture.h"
#include "creo/ProMdl.h"
#include "creo/ProSession.h"
#include "creo/ProWindow.h"

namespace test {
namespace {

class Notes : public DetailTest {
 protected:
  static constexpr const char* kEdges = "3@1(100,50)All edges/free <5>|of burrs";
  static constexpr const char* kScale = "4@1(200,100)Scale 1:2";
  static constexpr const char* kOther = "5@2(45,22)Scale 1:5";
  static std::string all() { return std::string(kEdges) + " " + kScale + " " + kOther; }
};

TEST_F(Notes, AreWrittenFromFiles) {
  struct Case {
    std::string bytes, attributes, added;
    std::wstring said;
  };
  const std::string place = "fn_0='' posx_0='10' posy_0='-7' sheet_0='1' ";
  const std::wstring open = L"E:Failure while open the file", height = L"E:noteheight is no height: ";
  const Case cases[] = {
      {"Part %NUMBER%\r\n\r\nMade of steel\r\n", place, " 6@1(10,290)Part D-22//Made of steel", L"Have read a file"},
      {"a", "fn_0='' posx_0='50' posy_0='9' sheet_0='' fn_1='*a3' posx_1='1' posy_1='1' sheet_1='0'",
       " 6@1(50,9)a 7@2(20,20)a 8@1(1,1)a", L"Sheet 2 is worked"},
      {"a\nb", place + "noteheight='2'", " 6@1(10,290)a<7>/b<7>", L""},
      {"a", place + "noteheight='x'", " 6@1(10,290)a", height + L"x"},
      {"a", place + "noteheight='-1'", " 6@1(10,290)a", height + L"-1"},
      {"H\xF6he \x80", place, " 6@1(10,290)Höhe €", L"|Höhe €|"},
      {"\xEF\xBB\xBFHöhe", place, " 6@1(10,290)Höhe", L""},
      {std::string("\xFF\xFE"
                   "a\0b\0",
                   6),
       place, " 6@1(10,290)ab", L"|ab|"},
      {"", place, "", L"E:Note can't be created"},
      {"a", "fn_0='' posx_0='1' posy_0='1'", "", L""},
      {"a", "fn_0='' posy_0='1' sheet_0='1'", "", L""},
      {"a", place + "notepath='d:\\none.txt'", "", open},
      {"a", place + "notepath='@pro_note_dir@'", "", open},
      {std::string(250, 'x') + "%NUMBER%%NUMBER%%NUMBER%", place,
       " 6@1(10,290)" + std::string(250, 'x') + "%NUMBER%%NUMBER%%NUMBER%",
       L"E:The line is too long with its variables"},
  };
  for (const Case& entry : cases) {
    World own;
    own.member("models/note.txt", entry.bytes);
    const bool hasPath = entry.attributes.find("notepath") != std::string::npos;
    const std::wstring log =
        work(own, task("addNote", entry.attributes + (hasPath ? "" : " notepath='@project_dir@/note.txt'")));
    EXPECT_EQ(all() + entry.added, notes(own)) << entry.attributes << text::toUtf8(log);
    EXPECT_TRUE(has(log, entry.said)) << entry.attributes << text::toUtf8(log);
    EXPECT_EQ(1, saved(own).currentSheet);
  }
}

TEST_F(Notes, LieOverTheViewsOfTheirSheet) {
  World own;
  writeBytes(own.models() + "/note.txt", "x");
  work(own, task("addNote", "notepath='note.txt' fn_0='' posx_0='1' posy_0='1' sheet_0='2'"));  // of the working folder
  EXPECT_EQ(-4, saved(own).notes.back().view);
}

TEST_F(Notes, AreFoundByPlaceOrText) {
  const std::string edges = kEdges, scale = kScale, other = kOther;
  struct Case {
    std::string attributes, left;
  };
  const Case cases[] = {
      {"posx_0='105' posy_0='45'", scale + " " + other},
      {"posx_0='105.1' posy_0='45'", all()},
      {"posx_0='-110' posy_0='-287' sheet_0='2'", edges + " " + scale},
      {"notetext_0='*BURRS'", scale + " " + other},
      {"notetext_0='all edges*burrs'", all()},  // no text holds both
      {"notetext_0='Scale*' fn_0='frame*'", edges + " " + other},
      {"notetext_0='Scale*' posx_1='100' posy_1='50'", ""},
      {"notetext_0='*' sheet_0='-1'", ""},
  };
  for (const Case& entry : cases) {
    World own;
    work(own, task("deleteNote", entry.attributes));
    EXPECT_EQ(entry.left, notes(own)) << entry.attributes;
  }
}

TEST_F(Notes, AreSearchedUpToTheFirstTextThatFits) {
  World own;
  const std::wstring log = work(own, task("deleteNote", "notetext_0='free*' sheet_0='1'"));
  EXPECT_TRUE(
      has(log, L"|check free* => All edges|check free* => free|found a note|Note is deleted|check free* => Scale"))
      << text::toUtf8(log);
  EXPECT_FALSE(has(log, L"of burrs"));
}

TEST_F(Notes, MoveWithAllTheyHold) {
  World own;
  work(own, task("moveNote",
                 "notetext_0='All*' nposx_0='-20' nposy_0='30' posx_1='100' posy_1='10' sheet_1='2' "
                 "nposx_1='50' nposy_1='9' notetext_2='Scale*' posx_2='1' nposx_3='1' notetext_3='Scale*'"));
  EXPECT_EQ("3@1(400,30)All edges/free <5>|of burrs 4@1(200,100)Scale 1:2 5@2(20,20)Scale 1:5", notes(own));
  const headless::ModelRecord record = saved(own);
  EXPECT_EQ("EDGES", record.notes[0].name);
  EXPECT_EQ("iso", record.notes[0].lines[1].texts[0].font);
  EXPECT_EQ(-2, record.notes[1].view);
}

// One goes, one comes, and there are as many as before: each is still found by its own id.
TEST_F(Notes, CanBeDeletedWrittenAndMovedInOneRun) {
  writeBytes(world.models() + "/note.txt", "new");
  work(world, task("deleteNote", "notetext_0='*1:2' sheet_0='1'") +
                  task("addNote", "notepath='d:\\note.txt' fn_0='' posx_0='1' posy_0='1' sheet_0='1'") +
                  task("moveNote", "notetext_0='*1:5' nposx_0='50' nposy_0='9'") +
                  task("moveNote", "notetext_0='NEW' nposx_0='3' nposy_0='3'"));
  EXPECT_EQ(std::string(kEdges) + " 5@2(20,20)Scale 1:5 6@1(3,3)new", notes(world));
}

TEST_F(Notes, StayWholeWhereAnOperationFails) {
  struct Case {
    const char *action, *operation;
    std::wstring said;
  };
  const std::wstring created = L"E:Note can't be created";
  const Case cases[] = {
      {"moveNote", "ProDtlnoteModify", L"E:Can't move the note"},
      {"moveNote", "ProDtlattachAlloc", L"E:Can't move the note"},
      {"moveNote", "ProDtlnoteDataGet", L"E:A note can't be read"},
      {"deleteNote", "ProDtlnoteDelete", L"E:Can't delete the note"},
      {"deleteNote", "ProDrawingDtlnoteVisit", L"E:The notes can't be visited"},
      {"addNote", "ProDtlnoteCreate", created},
      {"addNote", "ProDtlnoteShow", created},
      {"addNote", "ProDrawingOverlayviewGet", created},
      {"addNote", "ProDtlattachAlloc", created},
      {"addNote", "ProDrawingSheetTrfGet", L"E:The matrix of sheet 1 can't be read"},
      {"addNote", "ProDrawingCurrentSheetSet", L"E:Can't make sheet 1 the current one"},
  };
  for (const Case& entry : cases) {
    World failing;
    writeBytes(failing.models() + "/note.txt", "x");
    const std::wstring reported = work(failing,
                                       task(entry.action,
                                            "notepath='d:\\note.txt' fn_0='' notetext_0='All*' sheet_0='1' "
                                            "nposx_0='1' nposy_0='1' posx_0='9' posy_0='9'"),
                                       entry.operation);
    EXPECT_TRUE(has(reported, entry.said)) << entry.operation << "\n" << text::toUtf8(reported);
    EXPECT_EQ(all(), notes(failing)) << entry.operation;
  }
  World left;
  writeBytes(left.models() + "/note.txt", "x");
  const std::string add = task("addNote", "notepath='d:\\note.txt' fn_0='' sheet_0='1' posx_0='9' posy_0='9'");
  const std::wstring log = work(left, add, "ProDtlnoteShow", creo::ProGeneralError, "ProDtlnoteDelete");
  EXPECT_TRUE(has(log, L"E:The note that isn't shown can't be deleted|" + created)) << text::toUtf8(log);
}

class NotesFromFile : public Notes {
 protected:
  static std::wstring edit(World& own, const std::string& csv, const std::string& attributes = "",
                           const std::string& failing = "", creo::ProError code = creo::ProGeneralError) {
    writeBytes(own.models() + "/notes.csv", csv);
    return work(own, task("editModelNotesFromFile", "path='d:\\notes.csv' " + attributes), failing, code);
  }
};

TEST_F(NotesFromFile, TakeTheirValues) {
  const std::string edges = kEdges, scale = kScale, other = kOther;
  struct Case {
    std::string csv, attributes, left;
  };
  const Case cases[] = {
      // By id.
      {"ID;file name;Item value\n3;;New\n", "", "3@1(100,50)New " + scale + " " + other},
      {"ID;file name;Item value\n3;sheets.drw;\"Sharp\nkind of\nnothing\"\n", "",
       "3@1(100,50)Sharp/kind of<5>|of burrs/nothing " + scale + " " + other},
      {"id;FILENAME;item VALUE\n4;S*.DRW;a\\nb\n5;sheets;x\n", "", edges + " 4@1(200,100)a/b " + other},
      {"ID,Item value\n4,\"a,b\"\n", "sep='com'", edges + " 4@1(200,100)a,b " + other},
      {"ID;Item value\n4;H\xC3\xB6he\n", "filetype='1'", edges + " 4@1(200,100)Höhe " + other},
      {"ID;Item value\n4;H\xF6he\n", "", edges + " 4@1(200,100)Höhe " + other},
      {"ID;Item value\n5;x\n4;y\n", "curpage='true'", edges + " 4@1(200,100)y " + other},
      {"ID;Item value\nfour;x\n99;y\n", "", all()},
      {"ID;Item value\n4th;x\n", "", all()},
      {"ID;Item value\n4;Scale 1:2\n", "", all()},
      // A row that ends early empties nothing; one that says so does.
      {"ID;Item value old;Item value\n3\n;edges\n", "", all()},
      {"ID;Item value\n4;\n", "", edges + " 4@1(200,100) " + other},
      // By the text that they had.
      {"Item value old;Item value\nscale 1:;1 : \n", "", edges + " 4@1(200,100)1 : 2 5@2(45,22)1 : 5"},
      {"file name;Item value old;Item value\nother.drw;Scale;x\nSHEETS.DRW;burrs;%NUMBER%\n", "",
       "3@1(100,50)All edges/free <5>|of D-22 " + scale + " " + other},
      {"Item value old;Item value\nfree;a\\nb\n", "",
       "3@1(100,50)All edges/a<5>|of burrs/b <5> " + scale + " " + other},
      {"Item value old;Item value\nedges;corners\ncorners;tips\n;x\n", "",
       "3@1(100,50)All tips/free <5>|of burrs " + scale + " " + other},
      {"Item value old;Item value\n1:2;2:1\n", "curpage='true'", edges + " 4@1(200,100)Scale 2:1 " + other},
      // A row that set a note by its id doesn't find its own value there again, but in other notes.
      {"ID;Item value old;Item value\n4;Scale;Scale is\n", "", edges + " 4@1(200,100)Scale is 5@2(45,22)Scale is 1:5"},
  };
  for (const Case& entry : cases) {
    World own;
    const std::wstring log = edit(own, entry.csv, entry.attributes);
    EXPECT_EQ(entry.left, notes(own)) << entry.csv << text::toUtf8(log);
  }
}

TEST_F(NotesFromFile, TellWhatTheyTook) {
  World own;
  EXPECT_EQ(
      L"B0 Edit model notes from file|Create new Memory Tables|head: 0: ID *|head: 1: Remark|"
      L"head: 2: Item value *|head: 3: Item value old *|read 3 values|found for id|replace All edges -> Sharp|"
      L"remove a line|found for id|replace Scale 1:2 -> a|add a new line with b|set to Scale one:5|B1 Save model",
      edit(own, "ID;Remark;Item value;Item value old\n3;r;Sharp;\n4;r;\"a\nb\";\n;r;one;1\n"));
}

TEST_F(NotesFromFile, NeedTheirColumns) {
  struct Case {
    std::string csv;
    std::wstring said;
  };
  const Case cases[] = {
      {"ID;Value\n3;x\n", L"E:d:\\notes.csv: there is no column 'Item value'"},
      {"Item value\nx\n", L"E:d:\\notes.csv: there is no column 'ID' or 'Item value old'"},
      {"", L"there is no column 'Item value'"},
      {"ID;Item value;Item value old\n3\n;;\n",
       L"read 1 values|W:d:\\notes.csv: a row for '3' ends before its value, nothing is set by it"},
  };
  for (const Case& entry : cases) {
    World own;
    const std::wstring log = edit(own, entry.csv);
    EXPECT_TRUE(has(log, entry.said)) << entry.csv << text::toUtf8(log);
    EXPECT_EQ(std::string(kScale) + " " + kOther, notes(own).substr(notes(own).find("4@"))) << entry.csv;
  }
  EXPECT_TRUE(has(work(world, task("editModelNotesFromFile", "path='d:\\none.csv'")), L"E:"));
}

// Whatever fails: no note is lost or hidden, and the log says so.
TEST_F(NotesFromFile, StayWholeWhereAnOperationFails) {
  struct Case {
    const char* operation;
    creo::ProError code;
    std::wstring said;
  };
  const std::wstring bad = L"E:Can't set this stuff - BI", other = L"E:Can't set this stuff - MI";
  const Case byId[] = {{"ProDtlnoteModify", creo::ProBadInputs, bad},
                       {"ProDtlnoteModify", creo::ProGeneralError, other},
                       {"ProDtlnoteDataGet", creo::ProNotFound, other},
                       {"ProDrawingDtlnotesCollect", creo::ProGeneralError, L"E:The notes of sheet 1 can't be read"},
                       {"ProDrawingSheetsCount", creo::ProGeneralError, L"E:The sheets of the drawing can't be read"}};
  for (const Case& entry : byId) {
    World own;
    const std::wstring log = edit(own, "ID;Item value\n4;x\n", "", entry.operation, entry.code);
    EXPECT_TRUE(has(log, entry.said)) << entry.operation << text::toUtf8(log);
    EXPECT_EQ(all(), notes(own)) << entry.operation;
  }
  const Case byOld[] = {{"ProDtlnoteModify", creo::ProGeneralError, L"E:Can't set this new value - GE"},
                        {"ProDtlnoteDataGet", creo::ProGeneralError, L"E:Can't set this new value - GE"}};
  for (const Case& item : byOld) {
    World own;
    const std::wstring log = edit(own, "Item value old;Item value\nburrs;x\n", "", item.operation, item.code);
    EXPECT_TRUE(has(log, item.said)) << item.operation << text::toUtf8(log);
    EXPECT_EQ(all(), notes(own)) << item.operation;
  }
}

// A drawing with a window of its own isn't displayed in another one: its window is the current one meanwhile.
TEST_F(Notes, AreShownInTheWindowOfTheirDrawing) {
  fill(world);
  world.start();
  const creo::ProDtlnote note{world.open(L"SHEETS", creo::ProMdlType::drawing), 3};
  const creo::ProMdl part = creo::ProMdlRetrieve(L"GEAR", creo::ProMdlType::part).value;
  const int own = creo::ProWindowCurrentGet().value;
  const int front = creo::ProObjectwindowCreate(L"GEAR", creo::ProMdlType::part).value;
  EXPECT_EQ(creo::ProNoError, creo::ProMdlDisplay(part));
  EXPECT_EQ(creo::ProNoError, creo::ProWindowCurrentSet(front));
  EXPECT_EQ(creo::ProGeneralError, creo::ProDtlnoteShow(note));

  EXPECT_EQ(creo::ProNoError, actions::showNote(note));
  EXPECT_EQ(front, creo::ProWindowCurrentGet().value);
  EXPECT_EQ(own, creo::ProMdlWindowGet(note.drawing).value);
  EXPECT_EQ(part, creo::ProWindowMdlGet(front).value);
  EXPECT_EQ(note.drawing, creo::ProMdlCurrentGet().value) << "the person's own window stays in front";

  world.session().failNext("ProWindowCurrentSet", creo::ProGeneralError);
  EXPECT_EQ(creo::ProGeneralError, actions::showNote(note));
  EXPECT_EQ(front, creo::ProWindowCurrentGet().value);
}

}  // namespace
}  // namespace test
