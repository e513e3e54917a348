// What goes out through the doors while a list runs, as the effects of rows name it. Not watched: windows and models
// that only came into memory, which every run brings along, and the clipboard, which nothing can write.
#pragma once

#include <unistd.h>

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "actions/action.h"
#include "headless/model/models.h"
#include "language/variables.h"
#include "os/paths.h"
#include "os/web.h"
#include "support/world.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace test {

// A door and what was seen there.
using Seen = std::vector<std::pair<actions::Touched, std::string>>;

// Notes what is written, removed and renamed, also what goes again.
class WatchedFiles : public os::FilesWrapper {
 public:
  using FilesWrapper::FilesWrapper;
  std::error_code write(std::wstring_view path, std::string_view bytes) override {
    return noted(path, under_.write(path, bytes));
  }
  std::error_code create(std::wstring_view path, std::string_view bytes) override {
    return noted(path, under_.create(path, bytes));
  }
  os::Result<std::unique_ptr<os::Appender>> append(std::wstring_view path) override {
    auto opened = under_.append(path);
    noted(path, opened.error);
    return opened;
  }
  std::error_code remove(std::wstring_view path) override { return noted(path, under_.remove(path)); }
  std::error_code rename(std::wstring_view from, std::wstring_view to) override {
    const std::error_code error = under_.rename(from, to);
    noted(from, error);
    return noted(to, error);
  }
  std::error_code removeFolder(std::wstring_view path, std::wstring_view within) override {
    return noted(path, under_.removeFolder(path, within));
  }
  std::set<std::wstring> changed;  // in small letters

 private:
  std::error_code noted(std::wstring_view path, std::error_code error) {
    const bool isLog = path.starts_with(L"t:\\kvd_log");  // each run has one of its own
    if (!error && !isLog) changed.insert(text::lower(os::withBackslashes(path)));
    return error;
  }
};

// Stands before the doors of a world; made before the world's session starts.
class WatchedDoors : public headless::SessionObserver {
 public:
  explicit WatchedDoors(World& world)
      : world_(world),
        files_(std::make_shared<WatchedFiles>(world.disk())),
        processes_(std::make_shared<os::RecordedProcesses>()),
        web_(std::make_shared<os::WithheldWeb>(L"there is no network here")),
        webGuard_(web_) {
    os::surroundings().files = files_;
    os::surroundings().processes = processes_;
    environment_ = environment();
  }
  ~WatchedDoors() override {
    world_.endSession();
    for (const std::string& line : environment())
      if (!environment_.contains(line)) ::unsetenv(line.substr(0, line.find('=')).c_str());
  }
  WatchedDoors(const WatchedDoors&) = delete;
  WatchedDoors& operator=(const WatchedDoors&) = delete;

  void saved(const headless::SavedDocument& document) override { saved_.insert(document.name); }
  void renamed(const headless::RenamedDocument& model) override { names_.insert(text::lower(model.now)); }
  void operation(std::string_view name, int /*result*/, long long /*nanoseconds*/) override {
    ++operations_[std::string(name)];
  }

  // What a run does that has nothing to do: that is no action's.
  template <class Run>
  void learnIdle(Run run) {
    world_.session().observe(this);
    world_.session().trace(true);
    forget();
    run();
    idleOperations_ = operations_;
    idleFiles_ = files_->changed;
  }
  // What a run does beyond that. underWork: the models that its actions work on, in small letters.
  template <class Run>
  Seen during(std::set<std::wstring> underWork, Run run) {
    forget();
    names_ = std::move(underWork);
    const State before = state();
    run();
    world_.session().observe(nullptr);
    seen_.clear();
    compareModels(before, state());
    compareState(before, state());
    for (const auto& [name, door] : kOperations)
      if (operations_[name] > idleOperations_[name]) add(door, name);
    for (const std::wstring& path : files_->changed)
      if (!idleFiles_.contains(path) && !path.starts_with(L"t:\\log - ")) addFile(path, before);
    return std::move(seen_);
  }

 private:
  using Touched = actions::Touched;
  struct State {
    std::vector<headless::ModelInMemory> models;
    std::vector<std::wstring> names, values;  // of user variables
    std::set<std::string> environment;
    std::size_t programs = 0, requests = 0;
    std::set<std::wstring> documents;  // names of models in the folder, in small letters
    [[nodiscard]] const headless::ModelInMemory* find(creo::ProMdl model) const {
      for (const headless::ModelInMemory& inMemory : models)
        if (inMemory.handle == model) return &inMemory;
      return nullptr;
    }
  };
  static inline const std::map<std::string, Touched> kOperations = {
      {"ProConfigoptSet", Touched::options},        {"ProDirectoryChange", Touched::session},
      {"ProServerActivate", Touched::server},       {"ProServerObjectsCheckout", Touched::server},
      {"ProServerObjectsCheckin", Touched::server}, {"ProServerObjectsRemove", Touched::server},
      {"ProFileCopyToWS", Touched::server},
  };

  static std::set<std::string> environment() {
    std::set<std::string> all;
    for (char** line = environ; line && *line; ++line) all.insert(*line);
    return all;
  }
  static std::wstring stemOf(const std::wstring& path) {
    const std::wstring name = text::lower(os::nameOf(path));
    return name.substr(0, name.find(L'.'));
  }
  std::set<std::wstring> documents() {
    std::set<std::wstring> all;
    for (const os::Entry& entry : world_.disk().list(L"d:\\").value)
      if (!entry.isFolder) all.insert(stemOf(entry.name));
    return all;
  }
  State state() {
    const language::UserVariableTable& variables = language::userVariables();
    return {world_.session().models().list(), variables.names(),    variables.values(), environment(),
            processes_->asked().size(),       web_->asked().size(), documents()};
  }
  void forget() {
    operations_.clear();
    files_->changed.clear();
    saved_.clear();
  }
  void add(Touched door, std::string what) { seen_.emplace_back(door, std::move(what)); }
  void add(Touched door, std::wstring_view what) { add(door, text::toUtf8(what)); }

  void compareModels(const State& before, const State& after) {
    for (const headless::ModelInMemory& item : before.models)
      if (!after.find(item.handle)) add(Touched::session, item.name + L" has left memory");
    for (const headless::ModelInMemory& candidate : after.models) {
      const headless::ModelInMemory* was = before.find(candidate.handle);
      const bool isChanged = (candidate.modified && !(was && was->modified)) || saved_.contains(candidate.name);
      if (!isChanged) continue;
      const bool isNew = !was && candidate.version == 0;
      const bool isFamily = !candidate.instanceOf.empty();
      const Touched door = names_.contains(text::lower(candidate.name)) ? Touched::model
                           : isNew                                      ? Touched::session
                           : isFamily                                   ? Touched::family
                                                                        : Touched::users;
      add(door, candidate.name + L" is changed");
    }
  }
  void compareState(const State& before, const State& after) {
    if (before.names != after.names || before.values != after.values) add(Touched::variables, "user variables");
    if (before.environment != after.environment) add(Touched::surroundings, "environment variables");
    for (std::size_t i = before.programs; i < after.programs; ++i) add(Touched::programs, processes_->asked()[i]);
    for (std::size_t i = before.requests; i < after.requests; ++i) add(Touched::web, web_->asked()[i]);
  }

  // A document of a model, "d:\bolt.prt.2", is that of the model; one that wasn't there is another file.
  void addFile(const std::wstring& path, const State& before) {
    const std::wstring name = os::nameOf(path);
    const bool isDocument =
        os::asFolder(os::folderOf(path)) == L"d:\\" && name.find_first_of(L"0123456789", name.rfind(L'.')) != name.npos;
    if (path.starts_with(L"c:\\plm"))
      add(Touched::server, path);
    else if (name.find(L".csv") != name.npos)
      add(Touched::reports, path);
    else if (isDocument && names_.contains(stemOf(path)))
      add(Touched::model, path);
    else if (isDocument && before.documents.contains(stemOf(path)))
      add(Touched::users, path);
    else
      add(Touched::files, path);
  }

  World& world_;
  std::shared_ptr<WatchedFiles> files_;
  std::shared_ptr<os::RecordedProcesses> processes_;
  std::shared_ptr<os::WithheldWeb> web_;
  const os::SurroundingsGuard surroundings_;  // made before files and programs are watched
  const os::WebGuard webGuard_;
  std::set<std::string> environment_;
  std::set<std::wstring> saved_, names_;  // of models: saved ones; the one under work, also by its new name
  std::map<std::string, int> operations_, idleOperations_;
  std::set<std::wstring> idleFiles_;
  Seen seen_;
};

}  // namespace test
