#include "kelvane/ui/view.h"

#include <filesystem>
#include <set>
#include <utility>

#include "headless/proui/resource.h"
#include "kelvane/base/exit_codes.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/interrupt.h"
#include "kelvane/base/places.h"
#include "kelvane/package/place.h"
#include "kelvane/run/confined.h"
#include "kelvane/run/doors.h"
#include "kelvane/run/place.h"
#include "kelvane/show/model_folder.h"
#include "kelvane/ui/lines.h"
#include "kelvane/ui/screen.h"
#include "kelvane/ui/server.h"
#include "kelvane/ui/trusted.h"
#include "text/encoding.h"
#include "text/whole_number.h"

namespace kelvane::view {
namespace {

constexpr milliseconds kPatience{15'000};  // for the session's thread, which may be in a long operation
constexpr int kHighestPort = 65'535;

// As a run's, but with all packages of the folder.
RunOptions surroundings(const ViewOptions& options) {
  RunOptions run = options.surroundings;
  run.settings.emplace_back("kvd_kvz_path=p:\\");
  // There it is asked of one package; here of each, when packages are placed.
  run.grants.confine |= std::exchange(run.grants.requireTrust, false);
  return run;
}

headless::SessionOptions sessionOf(const RunOptions& options, const RunPlace& place, const std::string& language) {
  headless::SessionOptions session = sessionOptions(options, place);
  session.language = language == "de" ? "german" : "usascii";
  return session;
}

// The images that the dialogs may name; those of the language before those of all languages.
std::vector<Image> imagesOf(const std::wstring& textFolder, const std::string& language) {
  std::vector<Image> images;
  const std::wstring ofAll = os::joined(textFolder, L"usascii");
  for (const std::wstring& place : {os::joined(textFolder, text::fromUtf8(language)), ofAll, textFolder}) {
    const std::wstring folder = os::joined(place, L"resource");
    for (const os::Entry& entry : os::files().list(folder).value) {
      const bool isPng = entry.name.ends_with(L".png"), isGif = entry.name.ends_with(L".gif");
      if (!isPng && !isGif) continue;
      auto read = os::files().read(os::joined(folder, entry.name));
      if (read) images.push_back({text::toUtf8(entry.name), isPng ? "image/png" : "image/gif", std::move(read.value)});
    }
  }
  return images;
}

class View {
 public:
  View(const ViewOptions& options, Console& console)
      : options_(options),
        console_(console),
        run_(surroundings(options)),
        place_(prepareWatch(run_)),
        doors_(run_),
        confinement_(run_, place_, console),
        session_(sessionOf(run_, place_, options.language)),
        screen_(session_, inbox_, feed_, written_, options.language) {
    for (const auto& [name, value] : place_.creoOptions) session_.setOption(name, value);
    for (const auto& vault : place_.vaults) {
      const std::wstring reason = session_.servers().connect(vault);
      if (!reason.empty()) throw Fault(text::toUtf8(reason));
    }
    screen_.beforeCommand = [this] { place(); };
  }

  int run() {
    place();
    if (session_.loadPlugin() != 0) throw Fault("the plug-in doesn't start: " + text::toUtf8(session_.startError()));
    session_.settle();
    if (!options_.open.empty()) open();
    Server server(inbox_, feed_, doors(), imagesOf(session_.options().textFolder, session_.options().language));
    if (!server.start(options_.port)) throw Fault("port " + std::to_string(options_.port) + " can't be had");
    screen_.tell();
    console_.result(server.address());
    console_.note("open this address in a browser of this machine; Ctrl-C ends the session");
    console_.flush();
    screen_.live();
    return Interrupt::code() == 0 ? kFine : Interrupt::code();
  }

 private:
  // Packages may change while the session lives; the tool lists them when it is opened.
  void place() {
    const std::string work = workFolder(shown(place_.models));
    tell(placePackages(options_.packages, work));
    const SessionTrust trust{options_.packages, place_.beforehand, options_.surroundings.grants.requireTrust};
    if (os::Grants* const grants = confinement_.grants()) tell(trustPackages(trust, work, *grants));
    console_.flush();
  }
  void tell(const std::vector<std::string>& faults) {
    for (const std::string& fault : faults) console_.trouble("warning: " + fault);
  }

  void open() {
    const ModelFileName model = modelFileName(options_.open);
    if (!session_.open(model.name, model.type)) {
      const auto& messages = session_.messages();
      throw Fault(options_.open + " can't be opened" + (messages.empty() ? "" : ": " + readable(messages.back())));
    }
    session_.settle();
  }

  Doors doors() {
    return {[this](const std::string& what, const json& about) {
              return inbox_.ask([this, what, about] { return lineOf(read(what, about)); }, kPatience);
            },
            [this] { screen_.stopRun(); }};
  }

  // On the session's thread.
  json read(const std::string& what, const json& about) {
    if (what == "lines")
      return linesOf(session_,
                     {about.at("dialog"), about.at("component"), text::neededWhole<std::size_t>(about.at("from")),
                      text::neededWhole<std::size_t>(about.at("count"))});
    if (what == "models") return models();
    const auto file = written_.place(text::neededWhole<std::size_t>(about));
    return file ? json({{"path", file->machine}, {"name", file->name}}) : json();
  }

  [[nodiscard]] json models() const {
    std::set<std::string> names;
    for (const auto& document : headless::readFolder(place_.models))
      names.insert(label(document.file.name, document.file.type));
    return names;
  }

  const ViewOptions& options_;
  Console& console_;
  RunOptions run_;
  RunPlace place_;
  RunDoors doors_;
  RunConfinement confinement_;
  Written written_;
  headless::Session session_;
  Inbox inbox_;
  Feed feed_;
  Screen screen_;
};

}  // namespace

int show(const ViewOptions& options, Console& console) {
  if (options.port > kHighestPort) throw Fault("--port: there is no port " + std::to_string(options.port));
  (void)systemFolder(options.packages);
  const Interrupt interrupt;
  return View(options, console).run();
}

}  // namespace kelvane::view
