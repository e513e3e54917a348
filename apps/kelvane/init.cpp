// kelvane init: the folder of a package that runs, for one's own lists to begin with.
#include <filesystem>

#include "kelvane/base/fault.h"
#include "kelvane/base/native_path.h"
#include "kelvane/base/places.h"
#include "kelvane/base/verb.h"
#include "kelvane/package/source.h"
#include "kelvane/vocabulary/relax_ng.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

// Its name begins with a point, so that it is no part of the package.
constexpr const char* kSchemas = ".schema/";

std::string opening(const std::string& schema) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<?xml-model href=\"../" + (kSchemas + schema) +
         "\" type=\"application/xml\" schematypens=\"http://relaxng.org/ns/structure/1.0\"?>\n";
}

constexpr const char* kList = R"(<actionlist>
  <head>
  </head>
  <body>
    <task type="writeToCreoLog" version="3" deak="false" forPRT="true" forASM="true" forDRW="true" forEF="false"
          message="@mdln@.@mdltype@"/>
  </body>
  <filter>
  </filter>
  <foot>
  </foot>
</actionlist>
)";
constexpr const char* kFilter = R"(<root>
  <item type="isInstance" filtertype="false" opand="true"/>
</root>
)";

class Init : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"folder", "NEWDIR", "the package's folder, which isn't there yet; its name is the package's", &folder_}};
  }
  int run(Console& console) override {
    if (folder_.empty()) throw Fault("init: the new folder needs a name");
    std::error_code error;
    if (std::filesystem::exists(std::filesystem::symlink_status(folder_, error)))
      throw Fault(folder_ + " is there already; a new package needs a folder of its own");
    const std::string file = packageFileName(folder_);
    const std::string name = file.substr(0, file.rfind('.'));
    write(kPackageIndex, "Kelvane package\n" + name + "\n");
    write("actionlists/first.xml", opening("lists.rng") + kList);
    write("actionlists/first.xmlinfo", "Writes the name of each model to the log.\n");
    write("filters/no_instances.xml", opening("filters.rng") + kFilter);
    for (const auto& [mark, content] : folderMarks()) write(mark, content);
    write(kSchemas + std::string("lists.rng"), listSchema() + "\n");
    write(kSchemas + std::string("filters.rng"), filterSchema() + "\n");
    const std::string word = folder_.find(' ') == folder_.npos ? folder_ : '"' + folder_ + '"';
    console.note(folder_ + "  1 list; 'kelvane run " + word + " first DIR' runs it");
    return kFine;
  }

 private:
  void write(const std::string& member, const std::string& content) const {
    const auto path = nativePath(folder_) / nativePath(member);
    const std::string parent = machinePath(path.parent_path());
    if (const auto error = os::files().createFolders(os::asFolder(systemPath(parent))))
      throw Fault(parent + " can't be made: " + error.message());
    if (const auto error = os::files().write(systemPath(machinePath(path)), content))
      throw Fault(machinePath(path) + " can't be written: " + error.message());
  }

  std::string folder_;
};

}  // namespace

std::unique_ptr<Verb> makeInit() { return std::make_unique<Init>(); }

}  // namespace kelvane
