// Lines for the user in Creo's own message area.
#include "actions/task.h"
#include "core/log.h"
#include "core/state.h"
#include "creo/ProMessage.h"

namespace actions {
namespace {

constexpr std::size_t kMessageRead = 520;   // room of the message before it is cut
constexpr std::size_t kMessageShown = 255;  // characters that the message area takes

Outcome writeToCreoLog(const Task& task) {
  const std::wstring message = task.path(L"message", L"models", kMessageRead);
  const std::wstring shown(text::cut(message, kMessageShown));
  core::logIndented(shown, core::kNormal, 1);
  // Shown whatever the configuration lets the plug-in's own lines do.
  creo::ProMessageDisplay(core::pluginState().msgFile, "KVD USER %0s", shown);
  creo::ProMessageClear();
  return done;
}

constexpr Attribute kAttributes[] = {
    {.name = L"message",
     .variables = true,
     .need = Need::needed,
     .folder = L"models",
     .about = "the text; 255 characters of it are shown"},
};

constexpr Action kActions[] = {
    {.key = L"writeToCreoLog",
     .place = 16,
     .group = Group::withoutModel,
     .title = L"Write To Creo Log",
     .attributes = kAttributes,
     .about = "shows a text in Creo's message area and in the log",
     .function = &writeToCreoLog},
};

}  // namespace

std::span<const Action> creoLogActions() { return kActions; }

}  // namespace actions
