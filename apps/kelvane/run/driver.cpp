#include "kelvane/run/driver.h"

#include <map>
#include <set>

#include "core/state.h"
#include "creo/ProMdl.h"
#include "creo/ProUI.h"
#include "creo/ProUITable.h"
#include "headless/model/models.h"
#include "headless/proui/ui.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/interrupt.h"
#include "kelvane/base/nearest.h"
#include "kelvane/run/memory.h"
#include "kelvane/run/steps.h"
#include "kelvane/run/table_verdict.h"
#include "language/compare.h"
#include "run/check_out.h"
#include "run/choosers.h"
#include "run/model_table.h"
#include "run/row_name.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

constexpr const char* kTool = "kvanerunner";
constexpr const char* kFilterDialog = run::kFilterDialog;
constexpr const char* kFilterChooser = "kvaneFilterChooser";
constexpr const char* kStartCommand = "KVANEVisitParametersCmd";

// "; did you mean 'BOLT_M8.PRT'?" for "BOLT_M8", and for "BOTL*", where the start of a name is meant. Nothing for an
// expression.
std::string nearestRow(const std::string& pattern, const std::vector<std::string>& rows) {
  if (pattern.starts_with('/')) return {};
  const std::size_t star = pattern.find('*');
  const std::string meant = pattern.substr(0, star);
  std::map<std::string, std::string> rowOf;
  for (const std::string& row : rows) {
    rowOf.emplace(row.substr(0, star), row);
    if (star == pattern.npos) rowOf.emplace(row.substr(0, row.rfind('.')), row);
  }
  std::vector<std::string> known;
  known.reserve(rowOf.size());
  for (const auto& [name, row] : rowOf) known.push_back(name);
  const std::string best = meant.empty() ? std::string() : nearest(meant, known);
  return best.empty() ? "" : "; did you mean '" + rowOf.at(best) + "'?";
}

void require(const headless::Session& session, creo::ProError error, const std::string& what) {
  if (error == creo::ProNoError) return;
  const auto& messages = session.messages();
  throw Fault(what + (messages.empty() ? "" : ": " + text::toUtf8(messages.back())));
}

}  // namespace

void startPlugin(headless::Session& session) {
  require(session, session.loadPlugin() == 0 ? creo::ProNoError : creo::ProGeneralError, "the plug-in doesn't start");
  steps::leaveTriggersOut();
  session.settle();
}

void RunDriver::require(creo::ProError error, const std::string& what) const {
  kelvane::require(session_, error, what);
}

bool RunDriver::isChecked(const std::string& button) const {
  return creo::ProUICheckbuttonGetState(kTool, button).value;
}

void RunDriver::openTool() {
  startPlugin(session_);
  require(session_.runCommand(kStartCommand), "the tool doesn't open");
  session_.settle();
  if (!session_.ui().dialog(kTool)) require(creo::ProGeneralError, "the tool doesn't open");
  choosePackage();
}

// A chooser that stands right already is left alone, as each choice reads package and list anew.
void RunDriver::choosePackage() {
  const auto choose = [this](const char* dialog, const char* chooser, const std::string& name) {
    const auto selected = creo::ProUIOptionmenuSelectednamesGet(dialog, chooser);
    if (selected && selected.value == std::vector<std::string>{name}) return;
    if (Interrupt::code() != 0) return;  // what would be chosen may not be unpacked
    require(session_.ui().choose(dialog, chooser, name), "'" + name + "' can't be chosen");
    session_.settle();
  };
  choose(kTool, "kvaneKVZChooser", place_.package);
  choose(kTool, "kvaneActionlistChooser", place_.list);
  if (!place_.filter.empty()) choose(kFilterDialog, kFilterChooser, place_.filter);
}

std::string RunDriver::missingFilter() const {
  const std::wstring& wanted = core::pluginState().extFilter;
  const auto chosen = creo::ProUIOptionmenuSelectednamesGet(kFilterDialog, kFilterChooser);
  const bool judges = chosen && chosen.value != std::vector<std::string>{run::kNoFilter};
  return judges ? std::string() : text::toUtf8(wanted);
}

RunDriver::Unopened RunDriver::unopened(const ModelFileName& model, std::size_t messages) const {
  const auto& reported = session_.messages();
  return {label(model.name, model.type), reported.size() > messages ? readable(reported.back()) : std::string()};
}

std::vector<RunDriver::Unopened> RunDriver::open(const std::vector<ModelFileName>& starts) {
  const steps::TableHold hold;
  std::vector<Unopened> failed;
  for (const ModelFileName& start : starts) {
    const std::size_t messages = session_.messages().size();
    if (session_.open(start.name, start.type)) {
      session_.settle();
      break;
    }
    failed.push_back(unopened(start, messages));
  }
  return failed;
}

std::vector<RunDriver::Unopened> RunDriver::fill(const std::vector<ModelFileName>& starts) {
  std::vector<Unopened> failed = open(starts);
  const std::size_t current = failed.size();
  steps::clearTable();
  // The one that stands before Creo comes last: for it the table counts as built.
  for (std::size_t i = starts.size(); i-- > current && Interrupt::code() == 0;) {
    const std::size_t messages = session_.messages().size();
    if (i > current) readAhead(session_, starts[i - 1]);
    if (const auto model = creo::ProMdlRetrieve(starts[i].name, starts[i].type))
      steps::fillTable(model.value);
    else
      failed.push_back(unopened(starts[i], messages));
    // What a filter built to judge it goes with it. No event of that fills the table meanwhile.
    const steps::TableHold hold;
    session_.settle();
    keepMemoryFlat(session_);
  }
  return failed;
}

RunDriver::Choice RunDriver::choose(const RunOptions& options, const std::set<std::string>& finished) {
  const std::wstring pattern = text::fromUtf8(options.select);
  Choice choice;
  std::size_t taken = 0;
  bool anyFits = false;
  const auto rows = creo::ProUITableRownamesGet(kTool, run::kModelTable);
  require(rows.error, "the table of models can't be read");
  const std::vector<std::string>& all = rows.value;
  for (const char* extension : {".PRT", ".ASM", ".DRW"}) {
    for (const std::string& row : all) {
      if (!row.ends_with(extension)) continue;
      const bool fits = pattern.empty() || language::matches(pattern, text::fromUtf8(row));
      anyFits = anyFits || fits;
      const bool wanted = fits && (options.limit == 0 || taken < static_cast<std::size_t>(options.limit));
      const bool before = finished.contains(row) || isChecked(row + "_lock");
      const bool works = wanted && (options.again || !before);
      if (wanted && !works) ++choice.skipped;
      if (!works)
        choice.left.emplace_back(row, wanted ? "this list has worked it before"
                                      : fits ? "--limit leaves it out"
                                             : "--select leaves it out");
      if (works) ++taken;
      if (works) choice.rows.push_back(row);
      session_.ui().setCheck(kTool, row + "_cb", works);
    }
  }
  if (options.keepsJournal()) addWithoutRow(all, choice);
  if (!anyFits && !all.empty())
    choice.unmatched = "--select: no model matches '" + options.select + "'" + nearestRow(options.select, all);
  return choice;
}

void RunDriver::bringForward(const std::string& row) {
  const std::wstring name = run::rowModelName(row);
  const creo::ProMdlType type = run::rowType(row);
  const auto current = creo::ProMdlCurrentGet();
  if (current && current.value == creo::ProMdlInit(name, type).value) return;
  const steps::TableHold hold;
  const auto model = session_.open(name, type);
  if (!model) return;
  steps::countTable(model.value);
  session_.settle();
}

// Models that the starts lead to and that the table refused.
void RunDriver::addWithoutRow(const std::vector<std::string>& rows, Choice& choice) const {
  const std::set<std::string> known(rows.begin(), rows.end());
  for (const headless::ModelInMemory& inMemory : session_.models().list()) {
    const std::string name = label(inMemory.name, inMemory.type);
    if (known.contains(name)) continue;
    const TableVerdict verdict = steps::judge(inMemory.handle);
    choice.left.emplace_back(name, verdict.worked ? "no row: the table was filled without it" : verdict.reason);
  }
}

std::vector<RunDriver::Refused> RunDriver::checkOut() {
  require(session_.ui().press(kTool, "kvaneCheckout"), "check-out can't be pressed");
  session_.settle();
  std::vector<Refused> refused;
  for (const run::RefusedCheckOut& refusal : run::refusedCheckOuts()) {
    const bool failed = refusal.conflicts.empty();
    refused.push_back({refusal.row, failed ? "the server failed" : text::toUtf8(refusal.conflicts), failed});
  }
  return refused;
}

void RunDriver::start() {
  require(session_.ui().press(kTool, "kvaneStart"), "start can't be pressed");
  session_.settle();
}

}  // namespace kelvane
