#include "sweep/runs.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "kelvane/program.h"
#include "support/folders.h"
#include "support/world.h"

namespace sweep {
namespace {

const std::string kOf = " version=\"3\" forPRT=\"true\" forASM=\"true\" forDRW=\"true\" forEF=\"false\"";

// Models that come between them to nearly every call that all of the example make.
const std::vector<std::string> kFew = {
    "--select",
    "/^((HOUSING_LOWER|BOLT_DIN933|SHAFT_OUT|COVER_OUT|GASKET)[.]PRT|GEARBOX[.]ASM|(GEAR|GEARBOX)[.]DRW)$/"};

std::vector<std::string> plus(std::vector<std::string> options, const std::vector<std::string>& more) {
  options.insert(options.end(), more.begin(), more.end());
  return options;
}

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

// The package of the run in a vault, and a list that checks its models in first.
void writeVaultLists(const std::string& place) {
  const std::string package = place + "/packages/release/";
  const std::string in = "<task type=\"checkinModel\"" + kOf + "/>";
  test::writeBytes(package + "system/index.kvane", "Release\nChecks models in\n");
  test::writeBytes(package + "actionlists/first.xml", listOf(in));
  test::writeBytes(package + "actionlists/release.xml",
                   listOf("<task type=\"addModelParameter\"" + kOf +
                          " forInstances=\"false\" count=\"1\" name_0=\"NORM\" type_0=\"String\" value_0=\"N 100\"/>"
                          "<task type=\"saveModel\"" +
                          kOf + "/>" + in));
}

// The hundred teeth of the gear take two thirds of a run, and no call is made for them that isn't made for the shaft.
void leaveGearOut(const std::string& assembly) {
  auto document = nlohmann::ordered_json::parse(test::readBytes(assembly));
  auto& components = document.at("components");
  const auto gear = std::ranges::find_if(components, [](const auto& entry) { return entry.at("name") == "GEAR"; });
  if (gear == components.end()) throw std::runtime_error(assembly + ": the gear isn't there");
  components.erase(gear);
  test::writeBytes(assembly, document.dump());
}

}  // namespace

const std::vector<Run>& runs() {
  static const std::vector<Run> all = {
      {"title_block", "title_block", kFew},
      {"drawing_check", "drawing_check", kFew},
      {"audit", "audit", kFew, false, false, 3},
      {"inventory", "inventory", kFew},
      {"repair", "repair", kFew, false, false, 2},
      {"standards", "standards", kFew, false, false, 2},
      {"clean_up", "clean_up", kFew, false, false, 3},
      {"raw_stock", "raw_stock", plus(kFew, {"--answer", "ORDER=4711", "--answer", "PRICES=http://prices.example"}),
       false, false, 2},
      {"drawing_office", "drawing_office", kFew, false, false, 5},
      // Pictures of sheets take most of its time: two solids and a drawing of one sheet pass every action of it.
      {"hand_over_solids", "hand_over", {"--select", "/^(KEY_DIN6885[.]PRT|OUTPUT_SHAFT[.]ASM)$/"}, false, true, 100},
      {"hand_over_drawing", "hand_over", {"--select", "SHAFT_OUT.DRW"}, false, true, 10},
      {"release", "release", {"--check-out"}, true, true, 2},
  };
  return all;
}

void prepare(const Run& run, const Tree& tree, std::int64_t now) {
  namespace fs = std::filesystem;
  const std::string& place = tree.folder();
  const std::string examples = test::sourceFolder() + "/examples/";
  if (!run.inVault) {
    fs::copy(examples + "workspace", place + "/models", fs::copy_options::recursive);
    fs::copy(examples + "packages", place + "/packages", fs::copy_options::recursive);
    if (run.name == "hand_over_solids") leaveGearOut(place + "/models/output_shaft.asm.1");
    tree.date(now);
    return;
  }
  fs::create_directories(place + "/models");
  for (const char* model : {"input_shaft.asm.1", "shaft_in.prt.1", "pinion.prt.1", "key_din6885.prt.1",
                            "bearing_6205.prt.1", "seal_25x40x7.prt.1"})
    fs::copy(examples + "workspace/" + model, place + "/models/" + model);
  writeVaultLists(place);
  tree.date(now);
  demand({"vault", place + "/vault", "--create"});
  demand(runOf("first", place));
  tree.date(now);
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
