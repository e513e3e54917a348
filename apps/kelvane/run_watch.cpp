#include "kelvane/run_watch.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "core/log.h"
#include "core/state.h"
#include "creo/ProUITable.h"
#include "headless/model/models.h"
#include "headless/proui/ui.h"
#include "kelvane/interrupt.h"
#include "kelvane/log_follower.h"
#include "kelvane/log_lines.h"
#include "kelvane/model_folder.h"
#include "kelvane/places.h"
#include "os/surroundings.h"
#include "reports/csv_report.h"
#include "text/encoding.h"
#include "text/units.h"

namespace kelvane {
namespace {

using nlohmann::ordered_json;

std::string labelOf(const headless::ModelDocument& document) { return label(document.name, document.type); }

// The path of the version before: "d:\shaft.prt.3" for version 4, "d:\shaft.prt" for version 1.
std::wstring versionBefore(const std::wstring& path, int version) {
  const std::wstring stem = path.substr(0, path.rfind(L'.'));
  return version > 1 ? stem + L"." + std::to_wstring(version - 1) : stem;
}

}  // namespace

void leaveOut(headless::Session& session, const std::vector<std::string>& rows) {
  for (const std::string& row : rows) session.ui().setCheck(core::pluginState().dialogName, row + "_cb", false);
}

RunWatch::RunWatch(headless::Session& session, const RunOptions& options, Console& console, Events& events)
    : session_(session),
      options_(options),
      console_(console),
      events_(events),
      progress_(console),
      log_(console, events, options.maxErrors) {
  session_.observe(this);
}

void RunWatch::tellFilling() {
  LogFollower follower;
  int count = 0;
  for (const std::wstring& written : follower.more(core::pluginState().logFile)) {
    for (const LogLine& line : logLines(written)) {
      const std::string text = text::toUtf8(line.text);
      if (line.level != core::kError || told_.contains(text)) continue;
      if (options_.maxErrors == 0 || ++count <= options_.maxErrors) tellTrouble(text);
    }
  }
  if (options_.maxErrors > 0 && count > options_.maxErrors)
    console_.trouble("... and more error lines in the log, from filling the table");
}

void RunWatch::begin(std::vector<std::string> rows) {
  rows_ = std::move(rows);
  running_ = true;
  log_.begin(core::pluginState().logFile);
  progress_.begin(static_cast<int>(rows_.size()));
}

void RunWatch::message(const std::wstring& text) {
  // A document that can't be read or written, a vault that can't be had, what a file of another system is like; all
  // other lines are in the log or the events.
  const bool isOfModels = text.starts_with(std::wstring(1, kModelsLetter) + L":\\");
  if (isOfModels || text.starts_with(L"the vault ") || text.starts_with(L"import of ")) tellTrouble(readable(text));
  if (text.starts_with(L"warning: ") && told_.insert(text::toUtf8(text)).second) console_.trouble(readable(text));
  if (events_.on()) events_.tell("message", {{"text", text::toUtf8(text)}});
}

void RunWatch::tellTrouble(const std::string& line) {
  if (told_.insert(line).second) console_.trouble("error: " + line);
}

void RunWatch::operation(std::string_view name, int result, long long nanoseconds) {
  events_.tell("operation", {{"name", name}, {"result", result}, {"nanoseconds", nanoseconds}});
}

void RunWatch::saved(const headless::SavedDocument& document) {
  if (options_.readOnly) return;
  const std::string name = label(document.name, document.type);
  Document& known = saved_[name];
  if (known.firstVersion == 0) known.firstVersion = document.version;
  known.name = document.name;
  known.type = document.type;
  known.path = document.path;
  paths_.insert(document.path);
  noteWritten(name);
}

// A document was written, or withheld; then it stands nowhere but in memory, where it may go on changing.
void RunWatch::noteWritten(const std::string& name) {
  uncompared_.insert(name);
  if (options_.writesModels()) return;
  const headless::Models& models = session_.models();
  const auto model = models.inMemory(saved_[name].name, saved_[name].type);
  if (model) saved_[name].withheld = models.documentText(model.value).value;
}

void RunWatch::progress(int value, int /*maximum*/) {
  while (running_ && done_ < rows_.size() && done_ < static_cast<std::size_t>(std::max(value, 0))) {
    finishModel(rows_[done_++]);
  }
}

void RunWatch::finishModel(const std::string& row) {
  const ModelFileName name = modelFileName(row);
  const auto model = session_.models().inMemory(name.name, name.type);
  Worked worked{row, row, !model};
  if (model) {
    worked.document = labelOf(*session_.models().find(model.value)->document);
    worked.passedOver = isPassedOver(model.value);
    worked.failed = !keepHistory(model.value, worked.document);
  }
  log_.follow();
  compareSaved();
  const bool changed = changed_.contains(worked.document);
  const std::string outcome = worked.failed       ? "failed"
                              : worked.passedOver ? "skipped"
                              : changed           ? "changed"
                                                  : "unchanged";
  if (events_.on()) events_.tell("model", {{"model", row}, {"outcome", outcome}});
  for (const auto& report : reports::reportRegistry().all())
    if (report->beginsAnew) reportsBegunAnew_.insert(text::toUtf8(os::nameOf(report->path)));
  worked_.push_back(std::move(worked));
  progress_.step(static_cast<int>(done_), row, outcome);
  if (Interrupt::code() != 0) leaveOut(session_, {rows_.begin() + static_cast<std::ptrdiff_t>(done_), rows_.end()});
}

bool RunWatch::isPassedOver(creo::ProMdl model) const {
  const headless::ModelDocument& held = *session_.models().find(model)->document;
  // What the list checked in is closed too, but behind its work.
  const bool wasClosed = held.closed && !saved_.contains(labelOf(held));
  return (held.record.readOnly || wasClosed) && core::pluginState().checkModifiable;
}

// Saves the model with the history that its Body ended with, as --save says. False when it can't be written.
bool RunWatch::keepHistory(creo::ProMdl model, const std::string& document) {
  headless::Models& models = session_.models();
  const headless::ModelDocument& held = *models.find(model)->document;
  // Looking for the history of a read-only model that wasn't worked leaves nothing that is worth a version.
  // The vault has what the list checked in; what it left closed was passed over.
  if (held.closed) return true;
  if (!held.isModified(nullptr) || isPassedOver(model) || options_.save == "none") return true;
  if (saved_.contains(document)) {
    const bool good = models.saveReplacing(model) == creo::ProNoError;
    noteWritten(document);
    return good;
  }
  return options_.save != "all" || models.save(model) == creo::ProNoError;
}

ModelChanges RunWatch::changesOf(const std::string& label, const Document& document) const {
  const auto before = os::files().read(versionBefore(document.path, document.firstVersion));
  if (!before) return {label, Presence::onlyAfter, {}};
  if (!options_.writesModels()) return compared(label, before.value, document.withheld);
  return compared(label, before.value, os::files().read(document.path).value);
}

void RunWatch::compareSaved() {
  for (const std::string& name : uncompared_) {
    ModelChanges changes = changesOf(name, saved_[name]);
    tell(events_, changes);
    changed_.erase(name);
    changes_.erase(name);
    if (!changes.any()) continue;
    changed_.insert(name);
    if (options_.dryRun) changes_.emplace(name, std::move(changes));
  }
  uncompared_.clear();
}

// A macro step that nothing was done for is no part of the log: the plug-in can't know.
void RunWatch::tellUnknownSteps() {
  constexpr std::size_t kMost = 20, kLength = 300;
  const std::vector<std::wstring>& steps = session_.unknownSteps();
  for (std::size_t i = 0; i < std::min(steps.size(), kMost); ++i)
    console_.trouble("warning: nothing was done for the macro step: " + text::toUtf8(text::cut(steps[i], kLength)));
  if (steps.size() > kMost)
    console_.trouble("... and for " + std::to_string(steps.size() - kMost) + " more; --events FILE has them all");
}

void RunWatch::end(Recap& recap) {
  log_.follow();
  compareSaved();
  running_ = false;
  tellUnknownSteps();
  log_.tellHidden();
  std::string passedOver;
  for (const Worked& worked : worked_) {
    if (worked.failed) {
      ++recap.failed;
    } else if (worked.passedOver) {
      ++recap.skipped;
      passedOver += (passedOver.empty() ? "" : ", ") + worked.row;
    } else {
      ++(changed_.contains(worked.document) ? recap.changed : recap.unchanged);
    }
  }
  if (!passedOver.empty()) console_.note("warning: passed over, as it can't be modified: " + passedOver);
  recap.models += static_cast<int>(worked_.size());
  recap.saved = static_cast<int>(saved_.size());
  recap.seconds = progress_.seconds();
}

}  // namespace kelvane
