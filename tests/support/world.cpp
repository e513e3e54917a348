#include "support/world.h"

#include <stdlib.h>
#include <zip.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "core/state.h"
#include "creo/ProUITable.h"
#include "headless/proui/ui.h"
#include "language/user_variables.h"
#include "language/variables.h"
#include "os/text_files.h"
#include "run/model_table.h"
#include "support/folders.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace test {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

std::string readBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream all;
  all << in.rdbuf();
  return all.str();
}

void writeBytes(const std::string& path, const std::string& bytes) {
  fs::create_directories(fs::path(path).parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
}

void writeZip(const std::string& path, const std::map<std::string, std::string>& members) {
  fs::create_directories(fs::path(path).parent_path());
  int error = 0;
  zip_t* zip = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
  if (!zip) throw std::runtime_error("no zip " + path);
  for (const auto& [name, content] : members) {
    zip_source_t* source = zip_source_buffer(zip, content.data(), content.size(), 0);
    zip_file_add(zip, name.c_str(), source, ZIP_FL_ENC_UTF_8);
  }
  if (zip_close(zip) != 0) throw std::runtime_error("unwritten zip " + path);
}

TempFolder::TempFolder() {
  std::string pattern = fs::temp_directory_path() / "kelvane-test-XXXXXX";
  if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
  path_ = pattern;
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

// ---- models

struct ModelBuilder::Parts {
  std::string path;
  creo::ProMdlType type{};
  Json json;
};

ModelBuilder::ModelBuilder(std::string folder, std::wstring name, creo::ProMdlType type)
    : parts_(std::make_unique<Parts>()) {
  const std::string extension = text::toUtf8(text::lower(creo::typeExtension(type)));
  parts_->path = folder + "/" + text::toUtf8(name) + "." + extension + ".1";
  parts_->type = type;
  parts_->json["format"] = 1;
}

ModelBuilder::ModelBuilder(ModelBuilder&&) noexcept = default;

ModelBuilder::~ModelBuilder() {
  if (parts_) writeBytes(parts_->path, parts_->json.dump(2) + "\n");
}

ModelBuilder& ModelBuilder::parameter(std::wstring_view name, const char* type, const std::string& jsonValue) {
  parts_->json["parameters"].push_back(
      {{"name", text::toUtf8(name)}, {"type", type}, {"value", Json::parse(jsonValue)}});
  return *this;
}
ModelBuilder& ModelBuilder::with(std::wstring_view name, double value) {
  return parameter(name, "double", Json(value).dump());
}
ModelBuilder& ModelBuilder::with(std::wstring_view name, int value) {
  return parameter(name, "integer", Json(value).dump());
}
ModelBuilder& ModelBuilder::with(std::wstring_view name, bool value) {
  return parameter(name, "boolean", Json(value).dump());
}
ModelBuilder& ModelBuilder::with(std::wstring_view name, const wchar_t* value) {
  return parameter(name, "string", Json(text::toUtf8(value)).dump());
}

ModelBuilder& ModelBuilder::uses(std::wstring_view name, creo::ProMdlType type) {
  const char* list = parts_->type == creo::ProMdlType::drawing ? "models" : "components";
  parts_->json[list].push_back(
      {{"name", text::toUtf8(name)}, {"type", text::toUtf8(text::lower(creo::typeExtension(type)))}});
  return *this;
}

ModelBuilder& ModelBuilder::dimension(std::wstring_view symbol, bool reference) {
  Json& list = parts_->json["dimensions"];
  Json dimension = {{"id", list.size()}, {"symbol", text::toUtf8(symbol)}, {"value", 1.0}};
  if (reference) dimension["reference"] = true;
  list.push_back(dimension);
  return *this;
}

ModelBuilder& ModelBuilder::column(std::wstring_view parameter) {
  parts_->json["familyTable"]["items"].push_back({{"type", "parameter"}, {"name", text::toUtf8(parameter)}});
  return *this;
}

ModelBuilder& ModelBuilder::instance(std::wstring_view name, const std::vector<std::string>& jsonValues) {
  Json& table = parts_->json["familyTable"];
  if (!table.contains("items")) table["items"] = Json::array();
  Json row = {{"name", text::toUtf8(name)}, {"values", Json::object()}};
  for (std::size_t i = 0; i < jsonValues.size(); ++i) {
    row["values"][table["items"][i]["name"].get<std::string>()] = Json::parse(jsonValues[i]);
  }
  table["instances"].push_back(row);
  return *this;
}

ModelBuilder& ModelBuilder::skeleton() {
  parts_->json["skeleton"] = true;
  return *this;
}
ModelBuilder& ModelBuilder::readOnly() {
  parts_->json["readOnly"] = true;
  return *this;
}

// ---- the world

World::World() : realFiles_(os::surroundings().files) {
  for (const std::string& folder : {models(), temp(), packages(), folder_.path() + "/conf"}) {
    fs::create_directories(folder);
  }
  os::Mounts& mounts = os::mounts();
  mounts.set(L'd', models());
  mounts.set(L'p', packages());
  mounts.set(L't', temp());
  mounts.set(L'i', sourceFolder() + "/installation");
  mounts.set(L'c', folder_.path());
  disk_ = std::make_shared<os::FaultyFiles>(*realFiles_);
  os::surroundings().files = disk_;
  os::surroundings().processes = std::make_shared<os::RecordedProcesses>();
  os::surroundings().clipboard = std::make_shared<os::FixedClipboard>();
  members_ = {{"system/index.kvane", "1\nA package for tests;;second line\n"},
              {"models/readme.txt", "models"},
              {"reports/readme.txt", "reports"},
              {"checklist/readme.txt", "checklist"}};
  config_ = "kvd_kvz_path=p:\\\nkvd_temp_path=t:\\\nkvd_no_user_cfg=1\nkvd_lang=en\n";
}

World::~World() {
  session_.reset();
  language::userVariables().clear();
}

void World::list(const std::string& name, const std::string& body, const std::string& head, const std::string& foot,
                 const std::string& filter) {
  const auto quoted = [](std::string text) {
    for (char& c : text) c = c == '\'' ? '"' : c;
    return text;
  };
  member("actionlists/" + name, "<?xml version=\"1.0\"?>\n<actionlist>\n<head>" + quoted(head) + "</head>\n<body>" +
                                    quoted(body) + "</body>\n<filter>" + quoted(filter) + "</filter>\n<foot>" +
                                    quoted(foot) + "</foot>\n</actionlist>\n");
}

void World::member(const std::string& path, const std::string& content) { members_[path] = content; }
void World::config(const std::string& line) { config_ += line + "\n"; }

void World::writeConfiguration() const { writeBytes(folder_.path() + "/conf/kvd_main.cfg", config_); }
void World::writePackage() const { writeZip(packages() + "/standards.kvz", members_); }

int World::start(bool graphics) {
  if (!fs::exists(packages() + "/standards.kvz")) writePackage();
  writeConfiguration();
  os::setEnvironment(L"KVD_CONF_DIR", L"c:\\");
  os::setEnvironment(L"username", L"tester");
  headless::SessionOptions options;
  options.modelFolder = L"d:\\";
  options.textFolder = L"i:\\text\\";
  options.graphics = graphics;
  session_ = std::make_unique<headless::Session>(options);
  return session_->loadPlugin();
}

creo::ProMdl World::open(const std::wstring& name, creo::ProMdlType type) {
  const auto model = session_->open(name, type);
  session_->settle();
  return model.value;
}

void World::openTool() {
  session_->runCommand("KVANEVisitParametersCmd");
  session_->settle();
}

void World::closeTool() {
  session_->ui().press(core::pluginState().dialogName, "kvaneCancel");
  session_->settle();
}

void World::choose(const std::string& list) {
  session_->ui().choose(core::pluginState().dialogName, "kvaneActionlistChooser", list);
  session_->settle();
}

void World::run(const std::string& list) {
  if (!core::pluginState().toolOpen) openTool();
  choose(list);
  pressStart();
}

void World::pressStart() {
  session_->ui().press(core::pluginState().dialogName, "kvaneStart");
  session_->settle();
}

void World::runOn(const std::wstring& name, creo::ProMdlType type, const std::string& list) {
  if (!session_) start();
  open(name, type);
  run(list);
}

std::vector<std::string> World::rows() const {
  return creo::ProUITableRownamesGet(core::pluginState().dialogName, run::kModelTable).value;
}

std::wstring World::log() const {
  std::wstring content = os::readText(core::pluginState().logFile).value;
  std::erase(content, L'\r');
  return content;
}

std::wstring World::messages() const {
  std::wstring all;
  for (const std::wstring& line : session_->messages()) all += line + L"\n";
  return all;
}

int World::version(const std::string& file) const {
  int newest = 0;
  for (const auto& entry : fs::directory_iterator(models())) {
    const std::string name = entry.path().filename();
    if (text::lower(name).starts_with(text::lower(file) + ".")) {
      newest = std::max(newest, std::atoi(name.substr(file.size() + 1).c_str()));
    }
  }
  return newest;
}

std::string World::document(const std::string& file) const {
  const std::string wanted = text::lower(file) + "." + std::to_string(version(file));
  for (const auto& entry : fs::directory_iterator(models())) {
    if (text::lower(entry.path().filename().string()) == wanted) return readBytes(entry.path());
  }
  return {};
}

std::wstring World::savedParameters(const std::string& file) const {
  std::string all;
  const Json json = Json::parse(document(file));
  for (const Json& parameter : json.value("parameters", Json::array())) {
    const Json& value = parameter["value"];
    all += (all.empty() ? "" : " ") + parameter["name"].get<std::string>() + "=" +
           (value.is_string() ? value.get<std::string>() : value.dump());
  }
  return text::fromUtf8(all);
}

}  // namespace test
