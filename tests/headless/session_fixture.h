// A folder of models under the letter "d" and a session over it.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "creo/ProParameter.h"
#include "headless/model/models.h"
#include "headless/session.h"
#include "os/files_wrapper.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace test {

class HeadlessSession : public ::testing::Test {
 protected:
  HeadlessSession() {
    std::string pattern = std::filesystem::temp_directory_path() / "kelvane-headless-XXXXXX";
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
    folder_ = pattern;
    os::mounts().set(L'd', folder_);
    std::filesystem::create_directories(folder_ + "/models");
    std::filesystem::create_directories(folder_ + "/text/usascii");
  }
  ~HeadlessSession() override {
    session_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  void write(const std::string& file, const std::string& content) const {
    std::ofstream(folder_ + "/" + file, std::ios::binary) << content;
  }
  // A document of "models"; what stands between the braces behind the format. Empty: nothing.
  void model(const std::string& file, const std::string& members = "") const {
    write("models/" + file, "{\"format\": 1" + (members.empty() ? "" : ", " + members) + "}");
  }
  [[nodiscard]] std::string read(const std::string& file) const {
    std::ifstream in(folder_ + "/" + file, std::ios::binary);
    std::ostringstream all;
    all << in.rdbuf();
    return all.str();
  }
  // Names in "models", a blank between them.
  [[nodiscard]] std::string files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_ + "/models"))
      names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    std::string out;
    for (const std::string& name : names) out += (out.empty() ? "" : " ") + name;
    return out;
  }

  headless::SessionOptions options;  // for the first use of session()
  headless::Session& session() {
    if (!session_) {
      options.modelFolder = L"d:\\models\\";
      options.textFolder = L"d:\\text\\";
      session_ = std::make_unique<headless::Session>(options);
    }
    return *session_;
  }
  void endSession() { session_.reset(); }

  creo::ProMdl retrieve(const std::wstring& name, creo::ProMdlType type = creo::ProMdlType::part) {
    session();
    const auto model = creo::ProMdlRetrieve(name, type);
    EXPECT_EQ(creo::ProNoError, model.error) << text::toUtf8(name);
    return model.value;
  }
  // A part of its own whose body is made of these primitives, with further members.
  creo::ProMdl part(const std::string& primitives, const std::string& members = "") {
    const std::string name = "m" + std::to_string(++parts_);
    model(name + ".prt.1",
          (members.empty() ? "" : members + ", ") + R"("solid": {"primitives": [)" + primitives + "]}");
    return retrieve(text::fromUtf8(name));
  }
  // Out of memory, control being back behind it.
  void erase(creo::ProMdl model) {
    EXPECT_EQ(creo::ProNoError, creo::ProMdlErase(model));
    session().settle();
  }
  static creo::ProModelitem item(creo::ProMdl model) { return creo::ProMdlToModelitem(model).value; }
  static creo::ProParamvalue real(double value) {
    creo::ProParamvalue out;
    out.type = creo::ProParamvalueType::real;
    out.real = value;
    return out;
  }
  static creo::ProParamvalue string(const std::wstring& value) {
    creo::ProParamvalue out;
    out.type = creo::ProParamvalueType::string;
    out.string = value;
    return out;
  }
  static creo::ProError set(creo::ProMdl model, const std::wstring& name, const creo::ProParamvalue& value) {
    const auto parameter = creo::ProParameterInit(item(model), name);
    return parameter ? creo::ProParameterValueSet(parameter.value, value) : parameter.error;
  }
  // "MASS=2.5 COLOR=red": all parameters of a model, in their order.
  static std::string parameters(creo::ProMdl model) {
    std::ostringstream out;
    creo::ProParameterVisit(item(model), [&](const creo::ProParameter& candidate) {
      const auto value = creo::ProParameterValueGet(candidate).value;
      out << (out.tellp() > 0 ? " " : "") << text::toUtf8(candidate.id) << '=';
      switch (value.type) {
        case creo::ProParamvalueType::string:
          out << text::toUtf8(value.string);
          break;
        case creo::ProParamvalueType::real:
          out << value.real;
          break;
        case creo::ProParamvalueType::boolean:
          out << (value.boolean ? "true" : "false");
          break;
        default:
          out << value.integer;
      }
      return creo::ProNoError;
    });
    return out.str();
  }
  // The message area, a line each.
  std::string messages() {
    std::string out;
    for (const std::wstring& line : session().messages()) out += text::toUtf8(line) + "\n";
    return out;
  }

  std::string folder_;

 private:
  os::SurroundingsGuard surroundings_;
  int parts_ = 0;
  std::unique_ptr<headless::Session> session_;
};

}  // namespace test
