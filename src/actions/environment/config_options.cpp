// Creo's configuration options: saved under a name, set, and set again as they were saved.
#include "actions/environment/config_options.h"

#include "actions/families.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProUtil.h"
#include "engine/saved_options.h"
#include "engine/task.h"
#include "text/format.h"

namespace actions {

using namespace engine;

namespace {

constexpr int kSetTitle = 297, kRestore = 298, kValuesFound = 299, kSetTo = 300, kSetDeclared = 301, kIsSet = 302,
              kNotFound = 303, kUnset = 304;
constexpr int kSaveTitle = 305, kSaveTo = 306, kSave = 307;

}  // namespace

void tellUnset(std::wstring_view option) { core::logWrite(text::format(core::msgText(kUnset), option), core::kError); }

namespace {

// Runs f(task, its number) on each child element.
template <class F>
void eachChild(const Task& task, F f) {
  int number = 0;
  core::xmlEachChild(task.node(), [&](const XmlNode& child) { f(Task(child, task.subject()), number++); });
}

Outcome saveConfigOptions(const Task& task) {
  if (const auto ended = begin(task, {.title = core::msgText(kSaveTitle)})) return *ended;
  const std::wstring_view saveName = task.attribute(L"savename");
  if (saveName.empty()) return done;
  core::logIndented(text::format(core::msgText(kSaveTo), saveName), core::kNormal, 1);
  eachChild(task, [&](const Task& child, int number) {
    const auto option = child.numbered(L"name_%d", number);
    if (!option) return;
    core::logIndented(text::format(core::msgText(kSave), *option), core::kNormal, 2);
    auto values = creo::ProConfigoptArrayGet(std::wstring(*option));
    saveConfigOption(saveName, {std::wstring(*option), std::move(values.value)});
  });
  return done;
}

void restore(std::wstring_view saveName) {
  core::logIndented(text::format(core::msgText(kRestore), saveName), core::kNormal, 1);
  for (const SavedConfigOption& saved : savedConfigOptions(saveName)) {
    core::logIndented(text::format(core::msgText(kValuesFound), saved.values.size(), saved.option), core::kNormal, 2);
    for (const std::wstring& value : saved.values) {
      core::logIndented(text::format(core::msgText(kSetTo), saved.option, value), core::kNormal, 3);
      if (creo::ProConfigoptSet(saved.option, value) != creo::ProNoError) tellUnset(saved.option);
    }
  }
}

void setDeclared(std::wstring_view option, std::wstring_view value) {
  // A name that was cut would be another option's.
  const bool nameFits = text::fits(option, text::kNameSize), valueFits = text::fits(value, text::kTextSize);
  const creo::ProError result = !nameFits    ? creo::ProNotFound
                                : !valueFits ? creo::ProBadInputs
                                             : creo::ProConfigoptSet(std::wstring(option), std::wstring(value));
  if (result == creo::ProNoError) {
    core::logIndented(text::format(core::msgText(kIsSet), option, value), core::kNormal, 2);
  } else if (result == creo::ProNotFound) {
    core::logWrite(text::format(core::msgText(kNotFound), option), core::kError);
  } else {
    tellUnset(option);
  }
}

Outcome setConfigOption(const Task& task) {
  if (const auto ended = begin(task, {.title = core::msgText(kSetTitle)})) return *ended;
  if (const auto saveName = task.attribute(L"safename"); !saveName.empty()) restore(saveName);
  core::logMsgId(kSetDeclared, core::kNormal, 1);
  eachChild(task, [](const Task& child, int number) {
    const auto option = child.numbered(L"name_%d", number);
    const auto value = child.numbered(L"value_%d", number);
    if (option && value) setDeclared(*option, *value);
  });
  return done;
}

constexpr ActionFunction kActions[] = {{L"setConfigOption", &setConfigOption},
                                       {L"saveConfigOptions", &saveConfigOptions}};

}  // namespace

std::span<const ActionFunction> configOptionActions() { return kActions; }

}  // namespace actions
