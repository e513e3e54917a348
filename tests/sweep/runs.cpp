#include "sweep/runs.h"

#include <filesystem>
#include <sstream>
#include <stdexcept>

#include "kelvane/program.h"
#include "support/folders.h"
#include "support/world.h"

namespace sweep {
namespace {

const std::string kOf = " version=\"3\" forPRT=\"true\" forASM=\"true\" forDRW=\"true\" forEF=\"false\"";

std::string listOf(const std::string& body) {
  return "<list><head/><body>" + body + "</body><filter/><foot/></list>\n";
}

void demand(const std::vector<std::string>& words) {
  std::ostringstream out, err;
  if (kelvane::program(words, out, err) != 0) throw std::runtime_error(words.front() + ": " + err.str());
}

std::vector<std::string> runOf(const std::string& list, const std::string& place) {
  return {"run", place + "/packages/release", list, place + "/models", "--quiet", "--vault", place + "/vault", "--user",
          "ann"};
}

// Models of the workspace that lie in a vault.
void prepareVault(const std::string& place) {
  const std::string package = place + "/packages/release/";
  const std::string in = "<task type=\"checkinModel\"" + kOf + "/>";
  test::writeBytes(package + "system/index.kvane", "Release\nChecks models in\n");
  test::writeBytes(package + "actionlists/first.xml", listOf(in));
  test::writeBytes(package + "actionlists/release.xml",
                   listOf("<task type=\"addModelParameter\"" + kOf +
                          " forInstances=\"false\" count=\"1\" name_0=\"NORM\" type_0=\"String\" value_0=\"N 100\"/>"
                          "<task type=\"saveModel\"" +
                          kOf + "/>" + in));
  demand({"vault", place + "/vault", "--create"});
  demand(runOf("first", place));
}

}  // namespace

const std::vector<Run>& runs() {
  static const std::vector<Run> all = {
      {"title_block", "title_block", {}},
      {"drawing_check", "drawing_check", {}},
      {"audit", "audit", {}},
      {"inventory", "inventory", {}},
      {"repair", "repair", {}},
      {"standards", "standards", {}},
      {"clean_up", "clean_up", {}},
      {"raw_stock", "raw_stock", {"--answer", "ORDER=4711", "--answer", "PRICES=http://prices.example"}},
      {"drawing_office", "drawing_office", {}},
      // Pictures of sheets take most of its time: two solids and a drawing of one sheet pass every action of it.
      {"hand_over_solids", "hand_over", {"--select", "/^(KEY_DIN6885[.]PRT|OUTPUT_SHAFT[.]ASM)$/"}, false, true},
      {"hand_over_drawing", "hand_over", {"--select", "SHAFT_OUT.DRW"}, false, true},
      {"release", "release", {"--check-out"}, true, true},
  };
  return all;
}

void prepare(const Run& run, const std::string& place) {
  namespace fs = std::filesystem;
  const std::string examples = test::sourceFolder() + "/examples/";
  if (!run.inVault) {
    fs::copy(examples + "workspace", place + "/models", fs::copy_options::recursive);
    fs::copy(examples + "packages", place + "/packages", fs::copy_options::recursive);
    return;
  }
  fs::create_directories(place + "/models");
  for (const char* model : {"input_shaft.asm.1", "shaft_in.prt.1", "pinion.prt.1", "key_din6885.prt.1",
                            "bearing_6205.prt.1", "seal_25x40x7.prt.1"})
    fs::copy(examples + "workspace/" + model, place + "/models/" + model);
  prepareVault(place);
}

std::vector<std::string> wordsOf(const Run& run, const std::string& place) {
  std::vector<std::string> words = run.inVault ? runOf(run.list, place)
                                               : std::vector<std::string>{"run", place + "/packages/standards",
                                                                          run.list, place + "/models", "--quiet"};
  words.insert(words.end(), run.options.begin(), run.options.end());
  words.insert(words.end(), {"--collect", place + "/collected"});
  return words;
}

}  // namespace sweep
