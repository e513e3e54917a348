// Lists whose actions fill a report, run on models; the report is looked at byte for byte.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "actions/action_fixture.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace test {

// "\"a\";\"b\"" with its line end.
inline std::string line(const std::vector<std::string>& values) {
  std::string out;
  for (const std::string& value : values) out += (out.empty() ? "\"" : ";\"") + value + "\"";
  return out + "\r\n";
}

class ReportTest : public testing::Test {
 protected:
  ReportTest() { world.config("kvd_write_history_in_models=0"); }

  // A document, "gear.prt", from its members.
  void model(const std::string& file, const std::string& members = "") const {
    writeBytes(world.models() + "/" + file + ".1", R"({"format": 1)" + (members.empty() ? "" : ", " + members) + "}");
  }
  // The models' folder as reports name it.
  [[nodiscard]] std::string folder() const { return text::toUtf8(os::mounts().system(world.models())); }
  static std::string task(const std::string& type, const std::string& attributes, const std::string& children = "",
                          const std::string& version = "3") {
    return "<task type='" + type + "' version='" + version + "' forPRT='true' forASM='true' forDRW='true' " +
           "forEF='false' reporter='audit' " + attributes + ">" + children + "</task>";
  }
  // The same for other models than parts.
  static std::string notParts(const std::string& tasks) {
    return text::replaceAll(tasks, "forPRT='true'", "forPRT='false'");
  }
  // "all='true' missing='true'".
  static std::string on(const std::vector<std::string>& attributes) {
    std::string out;
    for (const std::string& attribute : attributes) out += attribute + "='true' ";
    return out;
  }
  // Packs the tasks as a list and opens a model.
  void prepare(const std::string& tasks, const std::wstring& name, creo::ProMdlType type = creo::ProMdlType::part) {
    const std::string file = text::toUtf8(os::mounts().system(path()));
    world.list("report.xml", tasks,
               "<task type='openCSVReport' version='3' name='audit' sep='sem' overwrite='true' file='" + file + "'/>");
    world.start();
    world.open(name, type);
  }
  // The report of a run, the header line left out.
  std::string rows() {
    const std::string report = run();
    return report.substr(std::min(report.find("\r\n") + 2, report.size()));
  }
  std::string run() {
    world.run("report.xml");
    return readBytes(path());
  }
  std::string report(const std::string& tasks, const std::wstring& name,
                     creo::ProMdlType type = creo::ProMdlType::part) {
    prepare(tasks, name, type);
    return run();
  }
  [[nodiscard]] std::string path() const { return world.temp() + "/audit.csv"; }
  [[nodiscard]] std::wstring log() const { return told(world.log()); }

  World world;
};

}  // namespace test
