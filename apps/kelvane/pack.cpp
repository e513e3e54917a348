// kelvane pack: a folder becomes a package.
#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "kelvane/base/verb.h"
#include "kelvane/package/packing.h"
#include "os/surroundings.h"

namespace kelvane {
namespace {

class Pack : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"folder", "DIR", "folder with system/, actionlists/, filters/, models/ ...", &folder_},
            {"package", "PACKAGE", "the package that is written, with or without .kvz", &package_}};
  }
  int run(Console& console) override {
    (void)systemFolder(folder_);
    const std::string target = isPackageName(package_) ? package_ : package_ + ".kvz";
    const std::unique_ptr<PackageSource> source = openPackage(folder_);
    const std::string bytes = packed(*source);
    if (const auto error = os::files().write(systemPath(target), bytes)) {
      throw Fault(target + " can't be written: " + error.message());
    }
    const std::size_t lists = actionLists(*source).size();
    console.note(target + "  " + std::to_string(lists) + (lists == 1 ? " list  " : " lists  ") +
                 std::to_string(bytes.size()) + " bytes");
    return kFine;
  }

 private:
  std::string folder_, package_;
};

}  // namespace

std::unique_ptr<Verb> makePack() { return std::make_unique<Pack>(); }

}  // namespace kelvane
