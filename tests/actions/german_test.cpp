// What actions log where the language is German.
#include "actions/action_fixture.h"

namespace test {
namespace {

TEST_F(ActionTest, AGermanLogIsGerman) {
  world.config("kvd_lang=de");
  writeBytes(world.models() + "/bracket.prt.1",
             R"({"format": 1, "parameters": [{"name": "A", "type": "double", "value": 1.0},
                 {"name": "B", "type": "double", "value": 1.0}],
                 "relations": ["A = 1", "A = 2", "A = 3", "A = 4"]})");
  const std::string option = "<option name_0='display' value_0='wireframe'/>";
  const std::wstring log =
      run(task("addModelRelationLines", "postlinec='1' postline0='A = 5'") +
          task("editModelRelationLines",
               "rel='true' editlinec='1' editline0='A = 2' replWord='2' through='7' locline='A = 1' location='2' "
               "addTextc='1' addText0='A = 6'") +
          task("deleteModelRelationLines", "rel='true' dellinec='1' delline0='none' startline='none' endline='A = 4'") +
          task("deleteModelProProgramLines", "delline='none' endif='false'") +
          task("saveConfigOptions", "savename='old'", option) + task("setConfigOption", "safename='old'", option) +
          task("clearAllWindows") + task("editModelParameter", "name='B' searchin='1' totype='2' value='2.5'") +
          task("runMapkey", "kvpmode='true' rfe='1'"));
  EXPECT_EQ(
      L"B0 Zeilen der Modellbeziehungen hinzufügen|Beziehungen:|Beziehungen nach der Regenerierung:|A = 5|"
      L"B1 Zeilen der Modellbeziehungen bearbeiten|Zeilen bearbeiten|A = 7|Zeilen hinzufügen|A = 6|"
      L"B2 Zeilen der Modellbeziehungen löschen|Einzelne Zeilen löschen|Einen Block von Zeilen löschen|"
      L"No changes done on relations|"
      L"B3 Pro/PROGRAM-Zeilen löschen|folgende Pro/PROGRAM-Zeilen löschen:|No changes done on the Pro/PROGRAM|"
      L"temporäre Dateien löschen|"
      L"B4 Konfigurationsoptionen speichern|Konfigurationsoptionen nach old speichern|Speichere display|"
      L"B5 Konfigurationsoption setzen|Gespeicherte Konfigurationsoptionen aus old zurücksetzen|"
      L"0 Konfigurationswerte für die Option 'display' gefunden|Angegebene Konfigurationsoptionen setzen|"
      L"Konfigurationsoption 'display' ist auf 'wireframe' gesetzt|"
      L"B6 Alle Fenster leeren|W:arbeite nun an BRACKET.PRT - Diese Funktion hat im Kelvane Player keinen Sinn|"
      L"B7 Modellparameter bearbeiten|Suche im Namen|B|B|Wert von 'B' auf '2.500000' gesetzt|"
      L"B8 Mapkey ausführen|E:arbeite nun an BRACKET.PRT - Der Mapkey wurde abgebrochen, da er mit der Option 'für "
      L"jedes Blatt' nur für Zeichnungen ausgeführt werden kann",
      log);
}

}  // namespace
}  // namespace test
