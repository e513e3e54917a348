// A world for tests: a folder of models, a package, a configuration, a session with the plug-in loaded. It goes the way
// of a user: the start entry of the menu, the choosers, the start button.
//
//   World world;
//   world.part(L"BRACKET").with(L"MASS", 2.5).with(L"COLOR", L"red");
//   world.list("clean.xml", "<task type='saveModel' version='3' forPRT='true' forEF='false'/>");
//   world.start();
//   world.open(L"BRACKET", ProMdlType::part);
//   world.run("clean.xml");
//   EXPECT_EQ(L"COLOR=red MASS=2.5", world.savedParameters("BRACKET.prt"));
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "creo/ProTypes.h"
#include "headless/session.h"
#include "os/files_wrapper.h"
#include "os/surroundings.h"

namespace test {

// A folder in the machine's temp folder that goes with the object.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
};

// Writes one model document; it stands on disk when the object goes (at the end of the statement).
class ModelBuilder {
 public:
  ModelBuilder(std::string folder, std::wstring name, creo::ProMdlType type);
  ~ModelBuilder();
  ModelBuilder(ModelBuilder&&) noexcept;
  ModelBuilder& with(std::wstring_view name, double value);
  ModelBuilder& with(std::wstring_view name, int value);
  ModelBuilder& with(std::wstring_view name, bool value);
  ModelBuilder& with(std::wstring_view name, const wchar_t* value);
  // A component of an assembly, or a model of a drawing.
  ModelBuilder& uses(std::wstring_view name, creo::ProMdlType type);
  // A dimension or a reference dimension of that symbol.
  ModelBuilder& dimension(std::wstring_view symbol, bool reference = false);
  // A column of the family table, and a row with the values of the columns, in their order.
  ModelBuilder& column(std::wstring_view parameter);
  ModelBuilder& instance(std::wstring_view name, const std::vector<std::string>& jsonValues = {});
  ModelBuilder& skeleton();
  ModelBuilder& readOnly();

 private:
  ModelBuilder& parameter(std::wstring_view name, const char* type, const std::string& jsonValue);
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

class World {
 public:
  World();
  ~World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  ModelBuilder part(std::wstring name) { return {models(), std::move(name), creo::ProMdlType::part}; }
  ModelBuilder assembly(std::wstring name) { return {models(), std::move(name), creo::ProMdlType::assembly}; }
  ModelBuilder drawing(std::wstring name) { return {models(), std::move(name), creo::ProMdlType::drawing}; }

  // An action list of the package "standards.kvz" from the tasks of its sections. Single quotes stand for double ones.
  void list(const std::string& name, const std::string& body, const std::string& head = "",
            const std::string& foot = "", const std::string& filter = "");
  // A member of the package as it stands.
  void member(const std::string& path, const std::string& content);
  // A line of kvd_main.cfg.
  void config(const std::string& line);

  // Packs, starts the session and loads the plug-in; its result.
  int start(bool graphics = true);
  headless::Session& session() { return *session_; }
  // As a person opens it; its events have been worked.
  creo::ProMdl open(const std::wstring& name, creo::ProMdlType type);
  // Opens the tool.
  void openTool();
  // Presses cancel.
  void closeTool();
  // Ends the session before the world does.
  void endSession() { session_.reset(); }
  // Selects a list in the open tool.
  void choose(const std::string& list);
  // Presses start and lets the session settle.
  void pressStart();
  // Opens the tool where it isn't, selects the list, presses start, lets the session settle.
  void run(const std::string& list);
  // All of it for one part: start, open, run.
  void runOn(const std::wstring& name, creo::ProMdlType type, const std::string& list);

  [[nodiscard]] std::vector<std::string> rows() const;
  // Text of the last log, without the CR of its line ends.
  [[nodiscard]] std::wstring log() const;
  [[nodiscard]] bool logHas(std::wstring_view piece) const { return log().find(piece) != std::wstring::npos; }
  // The message area, a line each.
  [[nodiscard]] std::wstring messages() const;

  // Bytes of the newest document of a model, "BRACKET.prt"; empty without one. Its version.
  [[nodiscard]] std::string document(const std::string& file) const;
  [[nodiscard]] int version(const std::string& file) const;
  // "COLOR=red MASS=2.5" of the newest document, in its order.
  [[nodiscard]] std::wstring savedParameters(const std::string& file) const;

  // The machine's form of a path.
  [[nodiscard]] static std::string machine(const std::wstring& path) { return os::mounts().machine(path); }
  // Machine paths.
  [[nodiscard]] std::string models() const { return folder_.path() + "/models"; }
  [[nodiscard]] std::string temp() const { return folder_.path() + "/temp"; }
  [[nodiscard]] std::string packages() const { return folder_.path() + "/packages"; }
  // Arranged faults of the disk.
  os::FaultyFiles& disk() { return *disk_; }

 private:
  void writeConfiguration() const;
  void writePackage() const;
  TempFolder folder_;
  os::SurroundingsGuard surroundings_;
  std::shared_ptr<os::Files> realFiles_;
  std::shared_ptr<os::FaultyFiles> disk_;
  std::map<std::string, std::string> members_;
  std::string config_;
  std::unique_ptr<headless::Session> session_;
};

// Writes a zip file; for packages.
void writeZip(const std::string& path, const std::map<std::string, std::string>& members);
std::string readBytes(const std::string& path);
void writeBytes(const std::string& path, const std::string& bytes);

}  // namespace test
