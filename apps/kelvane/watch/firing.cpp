#include "kelvane/watch/firing.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "core/state.h"
#include "creo/ProUI.h"
#include "creo/ProUITable.h"
#include "headless/model/models.h"
#include "kelvane/base/interrupt.h"
#include "kelvane/check/text_check.h"
#include "kelvane/run/durability.h"
#include "kelvane/run/watch.h"
#include "kelvane/show/model_folder.h"
#include "run/model_table.h"
#include "text/encoding.h"
#include "trace/tape.h"

namespace kelvane {
namespace {

bool isChecked(const std::string& button) {
  return creo::ProUICheckbuttonGetState(core::pluginState().dialogName, button).value;
}

bool isInMemory(headless::Session& session, const std::string& row) {
  const ModelFileName name = modelFileName(row);
  return static_cast<bool>(session.models().inMemory(name.name, name.type));
}

}  // namespace

FiringWatch::FiringWatch(headless::Session& session, const RunOptions& options, bool json, Console& console,
                         Events& events, os::Durable& durable)
    : session_(session),
      console_(console),
      events_(events),
      durable_(durable),
      json_(json),
      log_(console, events, options.maxErrors) {
  session_.observe(this);
  run::observeTriggers(this);
}

FiringWatch::~FiringWatch() {
  run::observeTriggers(nullptr);
  session_.observe(nullptr);
  log_.tellHidden();
}

void FiringWatch::message(const std::wstring& text) {
  lastMessage_ = text::toUtf8(text);
  // A document that can't be read or written, or lacks what another program wrote; a view that can't be drawn.
  if (text.starts_with(std::wstring(1, kModelsLetter) + L":\\") || text.starts_with(L"the view ")) {
    troubled_ = true;
    console_.trouble("error: " + readable(text));
  } else if (text.starts_with(L"warning: ")) {
    console_.trouble(readable(text));
  }
  if (events_.on()) events_.tell("message", {{"text", lastMessage_}});
}

void FiringWatch::operation(std::string_view name, int result, long long nanoseconds) {
  events_.tell("operation", {{"name", name}, {"result", result}, {"nanoseconds", nanoseconds}});
}

void FiringWatch::saved(const headless::SavedDocument& document) {
  const std::string name = label(document.name, document.type);
  if (running_) {
    Saved& known = running_->saved[name];
    if (known.firstVersion == 0) {
      const FoundVersion found = foundVersion(document);
      known = {found.stem, {}, found.next};
    }
    known.path = document.path;
  }
  if (events_.on()) events_.tell("saved", {{"model", name}, {"version", document.version}});
}

// What the trigger's run works on is followed under its new name.
void FiringWatch::renamed(const headless::RenamedDocument& model) {
  const std::string before = label(model.before, model.type), now = label(model.now, model.type);
  if (events_.on()) events_.tell("renamed", {{"model", before}, {"to", now}});
  if (!running_) return;
  const auto follow = [&](auto& all) {
    auto known = all.extract(before);
    if (!known) return;
    known.key() = now;
    all.insert(std::move(known));
  };
  follow(running_->unsavedBefore);
  follow(running_->saved);
  follow(running_->changesTold);
  // One without a file of its own keeps what is known of a backup's.
  if (const auto known = running_->saved.find(now); known != running_->saved.end() && !model.path.empty())
    known->second = {documentStem(model.path), model.path, known->second.firstVersion};
  for (Row& row : running_->rows) {
    if ((row.now.empty() ? row.name : row.now) == before) row.now = now;
  }
}

// Its line was told as a message. In a trigger's run it is a model that wasn't worked.
void FiringWatch::unreadable(const std::wstring& path) {
  troubled_ = true;
  if (running_ && running_->unreadable.insert(path).second) ++running_->recap.failed;
}

void FiringWatch::triggerBegins(const Firing& firing) {
  const trace::Unheard ours;
  Running& begun = running_.emplace(Running());
  begun.told = firing;
  if (const headless::Model* model = session_.models().find(firing.model))
    begun.model = label(model->name, model->type());
  begun.name = text::toUtf8(run::triggerName(firing.type));
  noteUnsaved();
  log_.begin(core::pluginState().logFile);
  begun.logBefore = log_.counts();
  if (events_.on()) {
    events_.tell(
        "trigger",
        {{"type", firing.type}, {"name", begun.name}, {"model", begun.model}, {"list", text::toUtf8(firing.list)}});
  }
}

void FiringWatch::progress(int value, int /*maximum*/) {
  if (!running_) return;
  if (value == 0) takeRows();  // the bar is set back right before the first model
  while (running_->done < running_->rows.size() && running_->done < static_cast<std::size_t>(std::max(value, 0))) {
    finishRow(running_->rows[running_->done++]);
  }
  if (Interrupt::code() == 0) return;
  std::vector<std::string> left;
  for (std::size_t i = running_->done; i < running_->rows.size(); ++i) left.push_back(running_->rows[i].name);
  leaveOut(session_, left);
}

void FiringWatch::noteUnsaved() {
  for (const headless::ModelInMemory& inMemory : session_.models().list()) {
    if (!inMemory.instanceOf.empty()) continue;
    const headless::ModelDocument& document = *session_.models().find(inMemory.handle)->document;
    if (document.isContentModified() || document.saveFolder().empty())
      running_->unsavedBefore[label(inMemory.name, inMemory.type)] =
          session_.models().documentText(inMemory.handle).value;
  }
}

std::string FiringWatch::documentOf(const std::string& name) const {
  const ModelFileName file = modelFileName(name);
  const auto there = session_.models().inMemory(file.name, file.type);
  if (!there) return name;
  const headless::ModelDocument& document = *session_.models().find(there.value)->document;
  return label(document.name, document.type);
}

std::pair<std::string, std::string> FiringWatch::beforeAndNow(const std::string& name) const {
  const headless::Models& models = session_.models();
  const ModelFileName file = modelFileName(name);
  const auto there = models.inMemory(file.name, file.type);
  const headless::ModelDocument* document = there ? models.find(there.value)->document.get() : nullptr;
  const std::string known = documentOf(name);
  const auto saved = running_->saved.find(known);
  const bool isSaved = saved != running_->saved.end();
  const auto unsaved = running_->unsavedBefore.find(known);
  const bool wasUnsaved = unsaved != running_->unsavedBefore.end();
  if (!isSaved && !wasUnsaved && document && !document->isContentModified()) return {};  // nobody touched it
  // A model that the list took out of memory again has what was saved of it.
  std::string now = document  ? models.documentText(there.value).value
                    : isSaved ? models.folders().read(saved->second.path).value
                              : std::string();
  if (wasUnsaved) return {unsaved->second, std::move(now)};
  std::wstring path;
  if (isSaved)
    path = versionBefore(saved->second.stem, saved->second.firstVersion);
  else if (document)
    path = headless::savedPath(*document);
  return {models.folders().read(path).value, std::move(now)};
}

void FiringWatch::takeRows() {
  running_->rows.clear();
  running_->recap.skipped = 0;
  const auto all = creo::ProUITableRownamesGet(core::pluginState().dialogName, run::kModelTable).value;
  for (const char* extension : {".PRT", ".ASM", ".DRW"}) {
    for (const std::string& row : all) {
      if (!row.ends_with(extension)) continue;
      if (isChecked(row + "_cb")) {
        running_->rows.push_back({row, isInMemory(session_, row)});
      } else if (isChecked(row + "_lock")) {
        ++running_->recap.skipped;
      }
    }
  }
}

void FiringWatch::finishRow(const Row& row) {
  Recap& recap = running_->recap;
  ++recap.models;
  const bool isRenamed = !row.now.empty() && row.now != row.name;
  const std::string& name = isRenamed ? row.now : row.name;
  const auto [before, now] = beforeAndNow(name);
  const bool failed = !row.isThere && !isInMemory(session_, name);
  const std::string document = documentOf(name);
  const ModelChanges changes = before.empty() || now.empty() ? ModelChanges() : compared(document, before, now);
  if (events_.on()) tell(events_, untold(changes, running_->changesTold[document]));
  const char* outcome = failed ? "failed" : isRenamed ? "renamed" : changes.any() ? "changed" : "unchanged";
  ++(failed ? recap.failed : isRenamed || changes.any() ? recap.changed : recap.unchanged);
  const int errors = log_.follow();
  if (errors > 0) ++recap.troubled;
  if (events_.on()) events_.tell("model", {{"model", row.name}, {"outcome", outcome}, {"errors", errors}});
}

bool FiringWatch::settle() {
  (void)os::settleWritten();
  const std::vector<os::Unsafe> failures = durable_.takeFailures();
  for (const os::Unsafe& file : failures) {
    console_.trouble("error: " + unsafeLine(file));
    if (running_) std::erase_if(running_->saved, [&](const auto& saved) { return saved.second.path == file.path; });
  }
  troubled_ = troubled_ || !failures.empty();
  return failures.empty();
}

void FiringWatch::triggerEnds(int result) {
  const trace::Unheard ours;
  if (!running_) return;
  log_.follow();
  settle();
  for (const language::RefusedExpression& expression : language::takeRefused())
    console_.trouble("warning: " + refusal(expression));
  Recap& recap = running_->recap;
  recap.models += recap.skipped + static_cast<int>(running_->unreadable.size());
  recap.saved = static_cast<int>(running_->saved.size());
  recap.errors = log_.counts().errors - running_->logBefore.errors;
  recap.warnings = log_.counts().warnings - running_->logBefore.warnings;
  recap.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - running_->start).count();
  troubled_ = troubled_ || result != 0 || recap.errors > 0 || recap.failed > 0;
  showEnd(result);
  running_.reset();
}

void FiringWatch::showEnd(int result) {
  const std::string list = text::toUtf8(running_->told.list);
  nlohmann::ordered_json line = {
      {"trigger", running_->name}, {"model", running_->model}, {"list", list}, {"result", result}};
  line.update(recapNumbers(running_->recap));
  if (result != 0) line["fault"] = lastMessage_;
  if (events_.on()) events_.tell("recap", line);
  if (json_) return console_.resultJson(line.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace));
  const std::string word = running_->name + "  " + running_->model + "  " + list;
  console_.result(result == 0 ? recapLine(running_->recap, word) : word + "  not started: " + lastMessage_);
}

}  // namespace kelvane
