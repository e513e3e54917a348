// kelvane diff: two folders of models by content; history and version numbers are no difference.
#include <nlohmann/json.hpp>

#include "kelvane/base/columns.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "kelvane/base/verb.h"
#include "kelvane/show/changes.h"
#include "kelvane/show/model_folder.h"
#include "kelvane/show/picture_pages.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

using Paths = std::map<std::string, std::wstring>;

Paths currentModels(const std::string& folder) {
  const std::wstring path = systemFolder(folder);
  Paths paths;
  for (const headless::DocumentFile& file : headless::Folder(path).documents()) {
    paths[label(file.name, file.type)] = path + file.fileName;
  }
  return paths;
}

std::string content(const std::wstring& path) {
  const auto read = os::files().read(path);
  if (!read) throw Fault(shown(path) + " can't be read: " + read.error.message());
  headless::Json tree;
  if (const auto fault = headless::parseJson(read.value, tree)) {
    throw Fault(shown(path) + ":" + std::to_string(fault.line) + ": " + text::toUtf8(fault.reason));
  }
  return read.value;
}

std::vector<ModelChanges> differences(const Paths& before, const Paths& after) {
  Paths all = before;
  all.insert(after.begin(), after.end());
  std::vector<ModelChanges> differing;
  for (const auto& [model, path] : all) {
    const auto a = before.find(model);
    const auto b = after.find(model);
    ModelChanges changes{model, a == before.end() ? Presence::onlyAfter : Presence::onlyBefore, {}};
    if (a != before.end() && b != after.end()) changes = compared(model, content(a->second), content(b->second));
    if (changes.any()) differing.push_back(std::move(changes));
  }
  return differing;
}

class Diff : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"before", "DIR_A", "folder of models", &before_},
            {"after", "DIR_B", "folder that it is compared with", &after_},
            {"--stat", "", "only how much each model differs", &stat_},
            {"--json", "", "as JSON", &json_},
            {"--pictures", "OUT", "make a folder with pictures of both, what changed marked: open its index.html",
             &pictures_}};
  }
  // kErrors when they differ.
  int run(Console& console) override {
    const std::vector<ModelChanges> differing = differences(currentModels(before_), currentModels(after_));
    if (json_) {
      showJson(console, differing);
    } else if (stat_) {
      showCounts(console, differing);
    } else {
      for (const ModelChanges& changes : differing) show(console, changes);
    }
    if (!pictures_.empty()) {
      writePicturePages(differing, before_, after_, pictures_, console);
      console.note("pictures  " + pictures_ + "/index.html");
    }
    return differing.empty() ? kFine : kErrors;
  }

 private:
  static void showCounts(Console& console, const std::vector<ModelChanges>& differing) {
    std::vector<std::vector<std::string>> rows;
    for (const ModelChanges& changes : differing) {
      const std::size_t count = changes.changes.size();
      const std::string word = changes.presence == Presence::onlyBefore  ? "gone"
                               : changes.presence == Presence::onlyAfter ? "new"
                                                                         : std::to_string(count);
      rows.push_back({changes.model, word});
    }
    for (const std::string& line : aligned(rows)) console.result(line);
    console.result(std::to_string(differing.size()) + (differing.size() == 1 ? " model differs" : " models differ"));
  }

  static void showJson(Console& console, const std::vector<ModelChanges>& differing) {
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    for (const ModelChanges& changes : differing) {
      nlohmann::ordered_json list = nlohmann::ordered_json::array();
      for (const headless::Change& change : changes.changes) {
        list.push_back({{"path", text::toUtf8(change.path)},
                        {"old", text::toUtf8(change.before)},
                        {"new", text::toUtf8(change.after)}});
      }
      nlohmann::ordered_json entry = {{"model", changes.model}};
      if (changes.presence == Presence::both) {
        entry["changes"] = std::move(list);
      } else {
        entry["only"] = changes.presence == Presence::onlyBefore ? "before" : "after";
      }
      all.push_back(std::move(entry));
    }
    console.resultJson(all.dump(2));
  }

  std::string before_, after_, pictures_;
  bool stat_ = false, json_ = false;
};

}  // namespace

std::unique_ptr<Verb> makeDiff() { return std::make_unique<Diff>(); }

}  // namespace kelvane
