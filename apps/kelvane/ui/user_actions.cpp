#include "kelvane/ui/user_actions.h"

#include <algorithm>
#include <iterator>

#include "creo/ProWindow.h"
#include "headless/proui/ui.h"
#include "kelvane/base/fault.h"
#include "kelvane/show/model_folder.h"
#include "text/encoding.h"
#include "text/whole_number.h"

namespace kelvane::view {
namespace {

using creo::ProError;
using headless::Session;
using nlohmann::json;

std::string dialog(const json& action) { return textOf(action, "dialog"); }
std::string component(const json& action) { return textOf(action, "component"); }
std::wstring wide(const json& action, const char* member) { return text::fromUtf8(textOf(action, member)); }

ProError press(Session& session, const json& action) { return session.ui().press(dialog(action), component(action)); }

ProError check(Session& session, const json& action) {
  return session.ui().setCheck(dialog(action), component(action), action.at("on").get<bool>());
}

ProError choose(Session& session, const json& action) {
  return session.ui().choose(dialog(action), component(action), textOf(action, "name"));
}

ProError type(Session& session, const json& action) {
  return session.ui().type(dialog(action), component(action), wide(action, "text"));
}

ProError enter(Session& session, const json& action) {
  const ProError typed = type(session, action);
  return typed ? typed : session.ui().pressEnter(dialog(action), component(action));
}

ProError close(Session& session, const json& action) { return session.ui().close(dialog(action)); }

ProError markRows(Session& session, const json& action) {
  return session.ui().selectRows(dialog(action), component(action), action.at("rows").get<std::vector<std::string>>());
}

template <creo::ProUITreeEvent Event>
ProError onNode(Session& session, const json& action) {
  return session.ui().onNode(dialog(action), component(action), textOf(action, "node"), Event);
}

ProError runCommand(Session& session, const json& action) { return session.runCommand(textOf(action, "command")); }

ProError open(Session& session, const json& action) {
  const ModelFileName model = modelFileName(textOf(action, "model"));
  return session.open(model.name, model.type).error;
}

ProError activate(Session& /*session*/, const json& action) {
  return creo::ProWindowActivate(text::neededWhole<int>(action.at("window")));
}

ProError save(Session& session, const json& /*action*/) { return session.save(); }
ProError closeWindow(Session& session, const json& /*action*/) { return session.close(); }

// The members that an action needs beside "do", by their types.
constexpr unsigned kDialog = 1, kComponent = 2, kName = 4, kText = 8, kOn = 16, kRows = 32, kNode = 64, kCommand = 128,
                   kModel = 256, kWindow = 512, kButton = 1024, kPath = 2048;
struct Member {
  unsigned bit;
  const char* name;
  bool (*fits)(const json& value);
};
bool isText(const json& value) { return value.is_string(); }
bool isNumber(const json& value) { return value.is_number_integer(); }
bool isTexts(const json& value) { return value.is_array() && std::all_of(value.begin(), value.end(), isText); }
constexpr Member kMembers[] = {
    {kDialog, "dialog", isText},
    {kComponent, "component", isText},
    {kName, "name", isText},
    {kText, "text", isText},
    {kOn, "on", [](const json& value) { return value.is_boolean(); }},
    {kRows, "rows", isTexts},
    {kNode, "node", isText},
    {kCommand, "command", isText},
    {kModel, "model", isText},
    {kWindow, "window", isNumber},
    {kButton, "button", isNumber},
    {kPath, "path", [](const json& value) { return value.is_string() || value.is_null(); }},
};

struct Row {
  const char* name;
  unsigned members;
  ProError (*carryOut)(Session&, const json&);  // null: only a question takes it
};
constexpr unsigned kPart = kDialog | kComponent;
constexpr Row kActions[] = {
    {"press", kPart, press},
    {"check", kPart | kOn, check},
    {"choose", kPart | kName, choose},
    {"type", kPart | kText, type},
    {"enter", kPart | kText, enter},
    {"close", kDialog, close},
    {"mark", kPart | kRows, markRows},
    {"expand", kPart | kNode, onNode<creo::ProUITreeEvent::expand>},
    {"collapse", kPart | kNode, onNode<creo::ProUITreeEvent::collapse>},
    {"select", kPart | kNode, onNode<creo::ProUITreeEvent::select>},
    {"activate", kPart | kNode, onNode<creo::ProUITreeEvent::activate>},
    {"command", kCommand, runCommand},
    {"open", kModel, open},
    {"window", kWindow, activate},
    {"closeWindow", 0, closeWindow},
    {"save", 0, save},
    {"answer", kButton, nullptr},
    {"path", kPath, nullptr},
};

const Row* rowOf(const json& action) {
  const std::string name = textOf(action, "do");
  const auto* row =
      std::find_if(std::begin(kActions), std::end(kActions), [&](const Row& entry) { return name == entry.name; });
  return row == std::end(kActions) ? nullptr : row;
}

std::string reason(ProError error) {
  switch (error) {
    case creo::ProNotFound:
      return "it isn't there any more";
    case creo::ProGeneralError:
      return "it can't be used now";
    default:
      return "it isn't possible here";
  }
}

}  // namespace

std::string faultOf(const json& action) {
  if (!action.is_object() || !action.contains("do") || !action["do"].is_string()) return "it says nothing to do";
  const Row* row = rowOf(action);
  if (!row) return "nobody can do '" + textOf(action, "do") + "'";
  for (const Member& member : kMembers) {
    if (!(row->members & member.bit)) continue;
    const auto found = action.find(member.name);
    if (found == action.end() || !member.fits(*found)) return std::string("'") + member.name + "' is missing or wrong";
  }
  return {};
}

std::string carryOut(Session& session, const json& action) {
  const Row* row = rowOf(action);
  if (!row || !row->carryOut) return "nobody asks for that";
  try {
    const ProError error = row->carryOut(session, action);
    return error == creo::ProNoError ? std::string() : reason(error);
  } catch (const std::exception& fault) {
    return fault.what();
  }
}

}  // namespace kelvane::view
