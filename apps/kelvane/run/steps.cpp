#include "kelvane/run/steps.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "core/confinement.h"
#include "core/log_silence.h"
#include "core/state.h"
#include "creo/entry.h"
#include "run/model_table.h"
#include "run/triggers.h"
#include "trace/entered.h"
#include "trace/refused.h"

namespace kelvane::steps {
namespace {

std::vector<std::unique_ptr<run::TableHold>>& holds() {
  static std::vector<std::unique_ptr<run::TableHold>> all;
  return all;
}

void detach() {
  run::detachTriggers();
  for (core::TriggerSettings& trigger : core::pluginState().triggers) trigger.startKvz.clear();
}

void hold() { holds().push_back(std::make_unique<run::TableHold>()); }

void release() {
  if (holds().empty()) throw trace::BadLine("the table isn't held");
  holds().pop_back();
}

void fill(creo::ProMdl start) { (void)run::rebuildModelTable(start); }
void count(creo::ProMdl model) { (void)run::countTableFor(model); }
void look(creo::ProMdl model) {
  const core::LogSilence silence;
  (void)judgedByTable(model);
}

// Either form is null in a row of the other.
struct Step {
  std::string_view name;
  void (*plain)();
  void (*ofModel)(creo::ProMdl model);
};
constexpr Step kSteps[] = {
    {"leaveTriggersOut", &detach, nullptr},
    {"clearTable", &run::clearModelTable, nullptr},
    {"hold", &hold, nullptr},
    {"release", &release, nullptr},
    {"end", &user_terminate_plus, nullptr},
    {"fillTable", nullptr, &fill},
    {"countTable", nullptr, &count},
    {"judge", nullptr, &look},
};

void playStart(trace::Reading& arguments, trace::Line& result) {
  const std::string version = arguments.bytes(), build = arguments.bytes();
  std::array<wchar_t, creo::kErrorBufferSize> fault{};
  result.number(std::int64_t{user_initialize_plus(0, nullptr, version.c_str(), build.c_str(), fault.data())});
}

}  // namespace

void leaveTriggersOut() { trace::entered("leaveTriggersOut", &detach); }
void clearTable() { trace::entered("clearTable", &run::clearModelTable); }
void fillTable(creo::ProMdl start) {
  trace::entered(
      "fillTable", [start] { fill(start); }, start);
}
void countTable(creo::ProMdl model) {
  trace::entered(
      "countTable", [model] { count(model); }, model);
}
TableVerdict judge(creo::ProMdl model) {
  TableVerdict verdict;
  const auto judged = [&] {
    const core::LogSilence silence;
    verdict = judgedByTable(model);
  };
  trace::entered("judge", judged, model);
  return verdict;
}

TableHold::TableHold() { trace::entered("hold", &hold); }
TableHold::~TableHold() { trace::entered("release", &release); }

void play(std::string_view name, trace::Reading& arguments, trace::Line& result) {
  if (name == "start") return playStart(arguments, result);
  if (name == "refused") return core::tellRefused(trace::readRefused(arguments));
  for (const Step& step : kSteps) {
    if (step.name != name) continue;
    if (step.plain) return step.plain();
    creo::ProMdl model;
    trace::take(*trace::Tape::current(), arguments, model);
    return step.ofModel(model);
  }
  throw trace::BadLine("there is no step '" + std::string(name) + "'");
}

}  // namespace kelvane::steps
