// kelvane models: the models of a folder.
#include <nlohmann/json.hpp>

#include "headless/model/models.h"
#include "kelvane/base/columns.h"
#include "kelvane/base/verb.h"
#include "kelvane/show/model_folder.h"
#include "kelvane/show/values.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

using Entry = nlohmann::ordered_json;

class ModelList : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"folder", "DIR", "folder of models", &folder_},
            {"--param", "NAME", "shows that parameter with its type", &parameter_},
            {"--json", "", "as JSON", &json_}};
  }
  // kErrors when a model can't be read.
  int run(Console& console) override {
    const std::wstring folder = mountModels(folder_);
    bool damaged = false;
    Entry all = Entry::array();
    for (const headless::FolderDocument& document : headless::readFolder(folder)) {
      damaged = damaged || !document.fault.empty();
      add(all, document);
    }
    if (!parameter_.empty()) readParameters(folder, all);
    if (json_) {
      console.resultJson(all.dump(2));
    } else {
      show(console, all);
    }
    return damaged ? kErrors : kFine;
  }

 private:
  static void add(Entry& all, const headless::FolderDocument& document) {
    Entry entry = {{"model", label(document.file.name, document.file.type)}, {"version", document.file.version}};
    if (!document.fault.empty()) entry["fault"] = readable(document.fault);
    all.push_back(std::move(entry));
    for (const auto& instance : document.instances) {
      all.push_back({{"model", label(instance.name, document.file.type)},
                     {"version", document.file.version},
                     {"instanceOf", text::toUtf8(instance.generic)}});
    }
  }

  void readParameters(const std::wstring& folder, Entry& all) const {
    headless::Session session(lookingAt(folder));
    for (Entry& entry : all) {
      const ModelFileName model = modelFileName(entry["model"]);
      const auto handle = creo::ProMdlRetrieve(model.name, model.type);
      if (!handle) continue;
      const auto owner = creo::ProMdlToModelitem(handle.value);
      const auto parameter = creo::ProParameterInit(owner.value, text::fromUtf8(parameter_));
      if (!parameter) continue;
      const auto value = creo::ProParameterScaledvalueGet(parameter.value);
      if (value) entry["type"] = typeWord(value.value.type);
      if (value) entry["value"] = valueText(value.value);
      const auto units = creo::ProParameterUnitsGet(parameter.value);
      if (value && units) entry["units"] = text::toUtf8(units.value);
    }
  }

  static std::string text(const Entry& entry, const char* member) {
    return entry.contains(member) ? entry[member].get<std::string>() : std::string();
  }

  void show(Console& console, const Entry& all) const {
    std::vector<std::vector<std::string>> rows;
    for (const Entry& entry : all) {
      if (entry.contains("fault")) console.trouble(text(entry, "fault"));
      const std::string generic = text(entry, "instanceOf");
      std::vector<std::string> row = {text(entry, "model"), "." + std::to_string(entry["version"].get<int>())};
      if (!parameter_.empty()) {
        row.push_back(entry.contains("value") ? text(entry, "type") : "-");
        row.push_back(text(entry, "value") + (entry.contains("units") ? " " + text(entry, "units") : ""));
      }
      row.push_back(generic.empty() ? "" : "instance of " + generic);
      rows.push_back(std::move(row));
    }
    for (const std::string& line : aligned(rows)) console.result(line);
  }

  std::string folder_, parameter_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Verb> makeModels() { return std::make_unique<ModelList>(); }

}  // namespace kelvane
