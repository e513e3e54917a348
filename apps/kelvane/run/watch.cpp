#include "kelvane/run/watch.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <utility>

#include <nlohmann/json.hpp>

#include "actions/model/free_name.h"
#include "actions/run_names.h"
#include "core/log.h"
#include "core/state.h"
#include "creo/ProUITable.h"
#include "headless/model/models.h"
#include "headless/model/save.h"
#include "headless/proui/ui.h"
#include "headless/store/faults.h"
#include "kelvane/base/interrupt.h"
#include "kelvane/base/native_path.h"
#include "kelvane/base/places.h"
#include "kelvane/base/words.h"
#include "kelvane/check/text_check.h"
#include "kelvane/log/follower.h"
#include "kelvane/log/lines.h"
#include "kelvane/run/durability.h"
#include "kelvane/run/memory.h"
#include "kelvane/show/model_folder.h"
#include "language/comparison_watch.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "reports/csv_report.h"
#include "run/run.h"
#include "text/encoding.h"
#include "text/units.h"

namespace kelvane {
namespace {

using nlohmann::ordered_json;

std::string labelOf(const headless::ModelDocument& document) { return label(document.name, document.type); }

}  // namespace

void leaveOut(headless::Session& session, const std::vector<std::string>& rows) {
  for (const std::string& row : rows) session.ui().setCheck(core::pluginState().dialogName, row + "_cb", false);
}

RunWatch::RunWatch(headless::Session& session, const RunOptions& options, Console& console, Events& events,
                   os::Durable& durable)
    : session_(session),
      options_(options),
      console_(console),
      events_(events),
      progress_(console),
      log_(console, events, options.maxErrors),
      durable_(durable) {
  for (const std::string& vault : options.vaults)
    vaults_.push_back(text::fromUtf8(machinePath(std::filesystem::canonical(nativePath(vault))) + "/"));
  session_.observe(this);
  (void)language::takeRefused();
}

// It is told of all that happens, to the session's end, unless the run breaks off before.
RunWatch::~RunWatch() { session_.observe(nullptr); }

void RunWatch::countDamaged(Recap& recap) const {
  recap.models += static_cast<int>(damaged_.size());
  recap.failed += static_cast<int>(damaged_.size());
}

void RunWatch::tellFilling() {
  LogFollower follower;
  std::vector<LogLine> lines;
  for (const std::wstring& written : follower.more(core::pluginState().logFile))
    for (LogLine& line : logLines(written)) lines.push_back(std::move(line));
  const std::vector<RepeatedLine> together = takenTogether(lines);
  log_.countOnce(together);
  int count = 0;
  for (const RepeatedLine& entry : together) {
    const std::string text = text::toUtf8(entry.line.text);
    if (entry.line.level != core::kError || told_.contains(text)) continue;
    if (options_.maxErrors == 0 || ++count <= options_.maxErrors) tellTrouble(text);
  }
  if (options_.maxErrors > 0 && count > options_.maxErrors)
    console_.trouble("... and more error lines in the log, from filling the table");
  tellRefusedExpressions();
}

void RunWatch::tellRefusedExpressions() {
  for (const language::RefusedExpression& expression : language::takeRefused()) {
    const std::string line = refusal(expression);
    if (told_.insert(line).second) console_.trouble("warning: " + line);
  }
}

void RunWatch::begin(std::vector<std::string> rows) {
  rows_ = std::move(rows);
  running_ = true;
  countedFaults_ = faults_;  // what was damaged before isn't the first model's fault
  log_.begin(core::pluginState().logFile);
  progress_.begin(static_cast<int>(rows_.size()));
}

void RunWatch::message(const std::wstring& text) {
  lastMessage_ = readable(text);
  // A document that can't be read or written, a view that can't be drawn, a vault that can't be had, or a file of it,
  // what a file of another system is like; all other lines are in the log or the events.
  const bool isOfModels = text.starts_with(std::wstring(1, kModelsLetter) + L":\\");
  const bool isOfVault =
      std::any_of(vaults_.begin(), vaults_.end(), [&](const auto& vault) { return text.starts_with(vault); });
  const bool isFault = isOfModels || isOfVault || text.starts_with(L"the view ");
  const bool isTrouble = isFault || text.starts_with(L"the vault ") || text.starts_with(L"import of ");
  if (isTrouble && tellTrouble(readable(text)) && isFault) ++faults_;
  // A call that failed while the table was filled: models may be missing in it. What can't be retrieved has its own
  // line.
  if (text.starts_with(L"<KVD> sourceData - Failure") && !text.ends_with(L"Retrieve") && !text.ends_with(L"history") &&
      tellTrouble("the table of models may not be whole: " + readable(text)))
    ++faults_;
  // The run goes on without it. Its log isn't open yet.
  if (text.starts_with(L"failure while extract file ") && tellTrouble(options_.package + ": " + readable(text)))
    ++notUnpacked_;
  if (const std::wstring model = headless::modelErasedWithChanges(text); running_ && !model.empty())
    noteErased(text::toUtf8(model));
  if (text.starts_with(L"warning: ") && told_.insert(text::toUtf8(text)).second) console_.trouble(readable(text));
  if (events_.on()) events_.tell("message", {{"text", text::toUtf8(text)}});
}

bool RunWatch::tellTrouble(const std::string& line) {
  if (!told_.insert(line).second) return false;
  console_.trouble("error: " + line);
  return true;
}

core::LogCounts RunWatch::counts() const {
  core::LogCounts counts = log_.counts();
  counts.errors += notUnpacked_;
  return counts;
}

void RunWatch::operation(std::string_view name, int result, long long nanoseconds) {
  events_.tell("operation", {{"name", name}, {"result", result}, {"nanoseconds", nanoseconds}});
}

RunWatch::Document& RunWatch::documentOf(const std::string& model) {
  Document*& place = byLabel_[model];
  if (!place) {
    place = &documents_.emplace_back();
    place->label = model;
  }
  return *place;
}

void RunWatch::saved(const headless::SavedDocument& document) {
  if (options_.readOnly) return;
  Document& known = documentOf(label(document.name, document.type));
  FoundVersion found = foundVersion(document);
  if (!known.isSaved()) known.firstVersion = found.next;
  if (known.stem.empty()) known.stem = std::move(found.stem);
  known.path = document.path;
  known.isMoved = !document.readPath.empty();
  paths_.insert(document.path);
  noteWritten(known);
}

// The model stays the same one: what was saved under its old name is followed.
void RunWatch::renamed(const headless::RenamedDocument& model) {
  const std::string before = label(model.before, model.type), now = label(model.now, model.type);
  if (options_.readOnly) return;
  Document& known = documentOf(before);
  byLabel_.erase(before);
  byLabel_[now] = &known;
  known.label = now;
  if (known.before.empty()) known.before = before;
  if (known.before == now) known.before.clear();  // and back
  // One without a file of its own keeps what is known of a backup's, and so does one whose saves a backup has moved.
  if (!model.path.empty()) {
    // Where nothing is written, the versions that the run found still lie under their old name.
    const std::wstring stem = documentStem(options_.writesModels() ? model.path : model.pathBefore);
    if (known.stem.empty() || options_.writesModels()) known.stem = stem;
    if (!known.isMoved) known.path = model.path;
    renamedStems_.insert(documentStem(model.path));
  }
  if (events_.on()) events_.tell("renamed", {{"model", before}, {"to", now}});
}

void RunWatch::tellDamaged(const std::string& model, const std::string& fault) {
  if (!damaged_.insert(model).second) return;
  tellTrouble(fault);
  if (events_.on()) events_.tell("model", {{"model", model}, {"fault", fault}, {"outcome", "failed"}});
}

// One that was good when the folder was read may not be any more. A row's own model is found failed behind its turn.
void RunWatch::unreadable(const std::wstring& path) {
  const auto file = headless::documentFile(os::nameOf(path));
  if (!running_ && file) tellDamaged(label(file->name, file->type), lastMessage_);
}

bool RunWatch::isModel(const std::wstring& path) const {
  return paths_.contains(path) || renamedStems_.contains(documentStem(path));
}

void RunWatch::noteWritten(Document& document) {
  if (document.compared) uncompared_.push_back(&document);
  document.compared = false;
}

void RunWatch::progress(int value, int /*maximum*/) {
  while (running_ && done_ < rows_.size() && done_ < static_cast<std::size_t>(std::max(value, 0))) {
    finishModel(rows_[done_++]);
  }
  // The next one is about to be asked for; while it is worked there is time for the one behind it.
  if (running_ && done_ + 1 < rows_.size()) readAhead(session_, modelFileName(actions::rowNow(rows_[done_ + 1])));
  // The bar is set before the first Body too: a stop that was asked for in Head leaves every row out.
  if (running_ && Interrupt::code() != 0)
    leaveOut(session_, {rows_.begin() + static_cast<std::ptrdiff_t>(done_), rows_.end()});
}

std::string RunWatch::outcomeOf(const Worked& worked) {
  if (worked.failed) return "failed";
  if (worked.passedOver) return "skipped";
  if (!worked.isChanged()) return "unchanged";
  return actions::rowNow(worked.row) == worked.row ? "changed" : "renamed";  // an instance isn't with its generic
}

const headless::Model* RunWatch::modelOf(const std::string& row) {
  const headless::Models& models = session_.models();
  const ModelFileName name = modelFileName(actions::rowNow(row));
  const auto there = models.inMemory(name.name, name.type);
  if (!there) return nullptr;
  const headless::Model* model = models.look(there.value);
  const std::wstring fault = models.bringBack(*model);
  if (!fault.empty()) tellTrouble(readable(fault));
  return fault.empty() ? model : nullptr;
}

void RunWatch::finishModel(const std::string& row) {
  const headless::Model* model = modelOf(row);
  Worked worked{row, nullptr, !model};
  if (model) {
    Document& document = documentOf(labelOf(*model->document));
    worked.document = &document;
    worked.passedOver = isPassedOver(model->handle);
    worked.failed = !keepHistory(model->handle, document);
    if (worked.failed) tellTrouble(lastMessage_);
  }
  worked.errors = log_.follow();
  // What an action made of such a fault is in the log; a fault that it didn't notice is the model's all the same.
  const int faults = faults_ - std::exchange(countedFaults_, faults_);
  if (worked.errors == 0 && !worked.failed) worked.errors = faults;
  tellRefusedExpressions();
  compareSaved();
  const std::string outcome = outcomeOf(worked);
  ordered_json told = {{"model", row}, {"outcome", outcome}, {"errors", worked.errors}};
  if (events_.on()) events_.tell("model", told);
  if (worked.document && worked.document->isSaved()) told["wrote"] = readable(worked.document->path);
  tellUnsafe();
  if (finished_) finished_(told);
  for (const auto& report : reports::reportRegistry().all())
    if (report->beginsAnew) reportsBegunAnew_.insert(text::toUtf8(os::nameOf(report->path)));
  const std::string had = worked.errors == 0 ? "" : ", " + counted(static_cast<std::size_t>(worked.errors), "error");
  progress_.step(static_cast<int>(done_), row, outcome + had);
  worked_.push_back(std::move(worked));
  keepMemoryFlat(session_);
}

bool RunWatch::isPassedOver(creo::ProMdl model) {
  const headless::ModelDocument& inMemory = *session_.models().find(model)->document;
  // What the list checked in is closed too, but behind its work.
  const bool wasClosed = inMemory.closed && !documentOf(labelOf(inMemory)).isSaved();
  return (inMemory.record.readOnly || wasClosed) && core::pluginState().checkModifiable;
}

// Saves the model with the history that its Body ended with, as --save says. False when it can't be written.
bool RunWatch::keepHistory(creo::ProMdl model, Document& document) {
  headless::Models& models = session_.models();
  const headless::ModelDocument& inMemory = *models.find(model)->document;
  // Looking for the history of a read-only model that wasn't worked leaves nothing that is worth a version.
  // The vault has what the list checked in; what it left closed was passed over.
  if (inMemory.closed) return true;
  if (!inMemory.isModified(nullptr) || isPassedOver(model) || options_.save == "none") return true;
  if (document.isSaved()) {
    creo::ProError kept = headless::saveReplacing(models, model);
    if (kept == creo::ProNotFound) kept = headless::saveModel(models, model);  // it was handed out
    noteWritten(document);
    return kept == creo::ProNoError;
  }
  // A renamed model has changed on disk: without its history the next run would rename it once more.
  const bool isTouched = !document.before.empty();
  return (options_.save != "all" && !isTouched) || headless::saveModel(models, model) == creo::ProNoError;
}

ModelChanges RunWatch::changesOf(const Document& document) const {
  const auto before = os::files().read(versionBefore(document.stem, document.firstVersion));
  if (!before) return {document.label, Presence::onlyAfter, {}};
  return compared(document.label, before.value, session_.models().folders().read(document.path).value);
}

void RunWatch::compareSaved() {
  for (Document* document : uncompared_) {
    document->compared = true;
    ModelChanges changes = changesOf(*document);
    document->differs = changes.any();
    if (events_.on()) tell(events_, untold(changes, document->told));
    if (options_.dryRun) document->changes = std::move(changes);
  }
  uncompared_.clear();
}

void RunWatch::showChanges() const {
  std::vector<const Document*> ordered;
  for (const Document& document : documents_)
    if (document.isChanged()) ordered.push_back(&document);
  std::sort(ordered.begin(), ordered.end(), [](const Document* a, const Document* b) { return a->label < b->label; });
  for (const Document* document : ordered) {
    if (!document->before.empty())
      console_.result(console_.inked(Ink::bold, document->before) + ": renamed to " + document->label);
  }
  for (const Document* document : ordered)
    if (document->differs) show(console_, document->changes);
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

// Does the document differ from what lies on disk, or in a dry run would lie there, its history aside?
bool RunWatch::isLeftChanged(const headless::ModelDocument& document, creo::ProMdl model) const {
  if (!document.isContentModified()) return false;
  const auto before = session_.models().folders().read(headless::savedPath(document));
  return !before || compared({}, before.value, session_.models().documentText(model).value).any();
}

// It is about to leave the memory.
void RunWatch::noteErased(const std::string& model) {
  const ModelFileName name = modelFileName(model);
  if (actions::isAside(name.name)) return;
  const auto inMemory = session_.models().inMemory(name.name, name.type);
  if (inMemory && isLeftChanged(*session_.models().look(inMemory.value)->document, inMemory.value))
    erasedChanged_.insert(model);
}

// Changes that leave with the session: nobody else would tell of them.
void RunWatch::tellUnsaved() {
  if (options_.readOnly) return;
  constexpr std::size_t kMost = 20;
  std::set<std::string> unsaved = erasedChanged_;
  for (const headless::ModelInMemory& inMemory : session_.models().list()) {
    const headless::ModelDocument& document = *session_.models().look(inMemory.handle)->document;
    if (!unsaved.contains(labelOf(document)) && isLeftChanged(document, inMemory.handle))
      unsaved.insert(labelOf(document));
  }
  std::string line;
  std::size_t count = 0;
  for (const std::string& name : unsaved) {
    if (events_.on()) events_.tell("unsaved", {{"model", name}});
    if (count++ < kMost) line.append(line.empty() ? "" : ", ").append(name);
  }
  if (count > kMost) line += " and " + std::to_string(count - kMost) + " more; --events FILE has them all";
  if (!line.empty()) console_.trouble("warning: changed, but not saved: " + line);
}

// A backup moves where a model is saved: its own folder doesn't have what the run changed.
void RunWatch::tellMoved() {
  std::map<std::string, std::set<std::string>> byFolder;
  for (const Document& document : documents_) {
    std::wstring folder = os::folderOf(document.path);
    if (folder.ends_with(L'\\')) folder.pop_back();
    if (document.isMoved) byFolder[readable(folder)].insert(document.label);
  }
  for (const auto& [folder, models] : byFolder) {
    constexpr std::size_t kMost = 20;
    std::string line;
    std::size_t count = 0;
    for (const std::string& model : models)
      if (count++ < kMost) line.append(line.empty() ? "" : ", ").append(model);
    if (count > kMost) line += " and " + std::to_string(count - kMost) + " more";
    console_.note(std::string("saved in ").append(folder).append(" since a backup: ").append(line));
  }
}

void RunWatch::tellUnsafe() {
  for (const os::Unsafe& file : durable_.takeFailures()) {
    const std::string line = unsafeLine(file);
    unsafe_.insert(file.path);
    if (!tellTrouble(line)) continue;
    ++faults_;
    ++countedFaults_;  // a file of an earlier model: the one that is worked has nothing to do with it
    const auto document = headless::documentFile(os::nameOf(file.path));
    if (document && events_.on())
      events_.tell("model", {{"model", label(document->name, document->type)}, {"fault", line}, {"outcome", "failed"}});
  }
}

// A run that stands still tells nothing, as one that waits for a window that doesn't come. Where lines of its log have
// told why, or a person stops it, nothing has to be added.
void RunWatch::tellUnworked() {
  if (done_ >= rows_.size() || counts().errors > 0 || Interrupt::code() != 0) return;
  const std::size_t left = rows_.size() - done_;
  const std::string line = "the run ended before it was done with " + rows_[done_] +
                           (left > 1 ? " and " + counted(left - 1, "more model") : std::string());
  if (tellTrouble(line)) ++faults_;
}

void RunWatch::end(Recap& recap) {
  log_.follow();
  tellUnworked();
  tellRefusedExpressions();
  compareSaved();
  running_ = false;
  (void)os::settleWritten();
  tellUnsafe();
  tellUnknownSteps();
  tellMoved();
  tellUnsaved();
  log_.tellHidden();
  std::string passedOver;
  for (const Worked& worked : worked_) {
    if (worked.errors > 0) ++recap.troubled;
    if (worked.failed || (worked.document && !isSafe(*worked.document))) {
      ++recap.failed;
    } else if (worked.passedOver) {
      ++recap.skipped;
      passedOver += (passedOver.empty() ? "" : ", ") + worked.row;
    } else {
      ++(worked.isChanged() ? recap.changed : recap.unchanged);
    }
  }
  if (!passedOver.empty()) console_.note("warning: passed over, as it can't be modified: " + passedOver);
  recap.models += static_cast<int>(worked_.size());
  recap.saved = static_cast<int>(std::count_if(documents_.begin(), documents_.end(), [this](const Document& document) {
    return document.isSaved() && isSafe(document);
  }));
  recap.seconds = progress_.seconds();
}

}  // namespace kelvane
