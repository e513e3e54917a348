// kelvane lists: the action lists of a package, with their descriptions.
#include <nlohmann/json.hpp>

#include "kelvane/base/verb.h"
#include "kelvane/package/source.h"
#include "kelvane/run/questions.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

std::string described(const PackageSource& package, const std::string& list) {
  const std::string info = "actionlists/" + list + "info";
  if (!package.has(info)) return {};
  return text::toUtf8(text::trimmed(text::fromTextFile(package.read(info))));
}

class Lists : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"package", "PACKAGE", "a .kvz, or a folder of that layout", &package_}, {"--json", "", "as JSON", &json_}};
  }
  int run(Console& console) override {
    const std::unique_ptr<PackageSource> package = openPackage(package_);
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    for (const std::string& list : actionLists(*package)) {
      nlohmann::ordered_json json = {{"list", list}, {"description", described(*package, list)}};
      for (const ListQuestion& question : questionsOf(*package, list)) {
        json["questions"].push_back({{"variable", question.variable}, {"asks", described(question)}});
      }
      all.push_back(std::move(json));
    }
    if (json_) {
      console.resultJson(all.dump(2));
    } else {
      show(console, all);
    }
    return kFine;
  }

 private:
  static void show(Console& console, const nlohmann::ordered_json& all) {
    std::size_t width = 0;
    for (const auto& list : all) width = std::max(width, list["list"].get<std::string>().size());
    for (const auto& list : all) {
      std::string name = list["list"];
      name.resize(width, ' ');
      std::string indented = text::replaceAll(list["description"].get<std::string>(), "\r\n", "\n");
      indented = text::replaceAll(indented, "\n", "\n" + std::string(width + 2, ' '));
      console.resultLines(indented.empty() ? list["list"].get<std::string>()
                                           : console.inked(Ink::bold, name) + "  " + indented);
      if (!list.contains("questions")) continue;
      for (const auto& question : list["questions"]) {
        console.result(std::string(width + 2, ' ') + "asks for " + question["variable"].get<std::string>() + ": " +
                       question["asks"].get<std::string>());
      }
    }
  }

  std::string package_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Verb> makeLists() { return std::make_unique<Lists>(); }

}  // namespace kelvane
