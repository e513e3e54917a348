// `kelvane run` with little memory for documents comes to what it comes to with all of them in memory.
#include "kelvane/run/memory.h"

#include <regex>

#include "kelvane/run/run_fixture.h"

namespace test {
namespace {

// For its life a run keeps that much.
class Kept {
 public:
  explicit Kept(std::size_t bytes) { kelvane::documentsKept = bytes; }
  ~Kept() { kelvane::documentsKept = before_; }
  Kept(const Kept&) = delete;
  Kept& operator=(const Kept&) = delete;

 private:
  std::size_t before_ = kelvane::documentsKept;
};
constexpr std::size_t kAll = std::size_t{1} << 40;

// How often a document's file was read whole.
class ReadCount {
 public:
  ReadCount() : counting_(std::make_shared<Counting>(*os::surroundings().files)) {
    os::surroundings().files = counting_;
  }
  [[nodiscard]] int documents() const { return counting_->documents; }

 private:
  struct Counting : os::FilesWrapper {
    using FilesWrapper::FilesWrapper;
    os::Result<std::string> read(std::wstring_view path) override {
      if (path.find(L".prt.") != path.npos || path.find(L".PRT.") != path.npos) ++documents;
      return FilesWrapper::read(path);
    }
    std::atomic<int> documents{0};
  };
  os::SurroundingsGuard before_;
  std::shared_ptr<Counting> counting_;
};

class RunMemory : public RunFixture {
 protected:
  // Times aside.
  static std::string timeless(std::string text) {
    static const std::regex times(
        R"(\d{1,4}[-./]\d{1,2}[-./]\d{1,4}|\d{1,2}:\d{2}(:\d{2})?(\.\d+)?|seconds=[0-9.]+|after \d+ ms)");
    static const std::regex caches("cache/kelvane/[0-9a-f]+");  // a folder for each folder of models
    return std::regex_replace(std::regex_replace(text, times, "TIME"), caches, "CACHE");
  }
  // The same with the folder's own name left out.
  std::string spoken(const Ended& ended, const std::string& folder) const {
    std::string all = timeless(ended.out + ended.err + readBytes(path(folder) + "/kelvane.log"));
    for (std::size_t at = 0; (at = all.find(path(folder), at)) != std::string::npos;)
      all.replace(at, path(folder).size(), "FOLDER");
    return all;
  }
  void expectSame(const std::string& package, const std::string& list, const std::string& models) {
    const auto runInto = [&](const std::string& folder) {
      return kelvane({"run", package, list, models, "--into", path(folder), "--save", "all"});
    };
    Ended all, few;
    {
      const Kept kept(kAll);
      all = runInto("all");
    }
    {
      const Kept kept(0);
      few = runInto("few");
    }
    EXPECT_EQ(all.code, few.code) << list;
    EXPECT_EQ(spoken(all, "all"), spoken(few, "few")) << list;
    EXPECT_EQ(filesIn("all"), filesIn("few")) << list;
    for (const std::string& file : filesIn("all"))
      if (file != "kelvane.log") {
        EXPECT_EQ(timeless(readBytes(path("all/" + file))), timeless(readBytes(path("few/" + file)))) << list << file;
      }
    for (const char* folder : {"all", "few"}) std::filesystem::remove_all(path(folder));
  }
};

// The hand-over draws for minutes, and its PDF files have the time in them.
TEST_F(RunMemory, EachListOfTheExampleComesToTheSame) {
  for (const auto& entry : std::filesystem::directory_iterator(example("packages/standards/actionlists")))
    if (entry.path().extension() == ".xml" && entry.path().stem() != "hand_over")
      expectSame(example("packages/standards"), entry.path().stem(), example("workspace"));
}

// Names, groups that erase what they worked, and components that others use.
TEST_F(RunMemory, NewNamesAndGroupsThatEraseComeToTheSame) {
  const auto task = [](const std::string& type, const std::string& attributes, const std::string& inside = "") {
    return "<task type='" + type + "' version='3' forPRT='true' forASM='true' forDRW='true' forEF='false' " +
           attributes + (inside.empty() ? "/>" : ">" + inside + "</task>");
  };
  list("names.xml", kAddNorm + task("renameModel", "name='@mdln@_N'") + kSave);
  list("groups.xml", task("groupActions", "reworkMode='5' mdlname='P0.PRT' removeFromSession='1'",
                          "<subtasks>" + kAddNorm + "</subtasks>") +
                         task("eraseUndisplayedModels", "") + kSave);
  for (int i = 0; i < 6; ++i) part(L"P" + std::to_wstring(i)).with(L"A", i);
  part(L"NORM").column(L"A").with(L"A", 1).instance(L"N1", {"2"}).instance(L"N2", {"3"});
  for (int i = 0; i < 3; ++i)
    assembly(L"U" + std::to_wstring(i))
        .uses(L"P" + std::to_wstring(i), creo::ProMdlType::part)
        .uses(L"P" + std::to_wstring(i + 1), creo::ProMdlType::part)
        .uses(L"N1<NORM>", creo::ProMdlType::part);
  ModelBuilder(models(), L"PLAN", creo::ProMdlType::drawing).uses(L"P0", creo::ProMdlType::part);
  for (const char* name : {"names", "groups", "norm", "unsaved"}) expectSame(path("standards"), name, models());
}

TEST_F(RunMemory, DocumentsLeaveTheMemoryAndAreReadAgain) {
  for (int i = 0; i < 8; ++i) part(L"P" + std::to_wstring(i));
  const auto reads = [&](std::size_t bytes) {
    const Kept kept(bytes);
    const ReadCount count;
    EXPECT_EQ(0, run("unsaved", {"--again", "-n"}).code);
    return count.documents();
  };
  const int all = reads(kAll), few = reads(0);
  EXPECT_GE(few, all + 7) << "filling the table brings each, and its turn once more";
}

}  // namespace
}  // namespace test
