// Creo's configuration options: saved under a name, set, and set again as they were saved.
#include "actions/environment/config_options.h"

#include <limits>

#include "actions/saved_options.h"
#include "actions/task.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProUtil.h"
#include "text/format.h"

namespace actions {

void tellUnset(std::wstring_view option) {
  core::logWrite(text::format(core::msgText(Message::optionNotSet), option), core::kError);
}

namespace {

// Runs f(task, its number) on each child element.
template <class F>
void eachChild(const Task& task, F f) {
  int number = 0;
  core::xmlEachChild(task.node(), [&](const XmlNode& child) { f(Task(child, task.subject()), number++); });
}

Outcome saveConfigOptions(const Task& task) {
  const std::wstring_view saveName = task.attribute(L"savename");
  if (saveName.empty()) return done;
  core::logIndented(text::format(core::msgText(Message::saveOptionsTo), saveName), core::kNormal, 1);
  eachChild(task, [&](const Task& child, int number) {
    const auto option = child.numbered(L"name_%d", number);
    if (!option) return;
    core::logIndented(text::format(core::msgText(Message::saveOption), *option), core::kNormal, 2);
    auto values = creo::ProConfigoptArrayGet(std::wstring(*option));
    saveConfigOption(saveName, {std::wstring(*option), std::move(values.value)});
  });
  return done;
}

void restore(std::wstring_view saveName) {
  core::logIndented(text::format(core::msgText(Message::restoreOptions), saveName), core::kNormal, 1);
  for (const SavedConfigOption& saved : savedConfigOptions(saveName)) {
    core::logIndented(text::format(core::msgText(Message::optionValuesFound), saved.values.size(), saved.option),
                      core::kNormal, 2);
    for (const std::wstring& value : saved.values) {
      core::logIndented(text::format(core::msgText(Message::setOptionTo), saved.option, value), core::kNormal, 3);
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
    core::logIndented(text::format(core::msgText(Message::optionSet), option, value), core::kNormal, 2);
  } else if (result == creo::ProNotFound) {
    core::logWrite(text::format(core::msgText(Message::optionNotFound), option), core::kError);
  } else {
    tellUnset(option);
  }
}

Outcome setConfigOption(const Task& task) {
  if (const auto saveName = task.attribute(L"safename"); !saveName.empty()) restore(saveName);
  core::logMsgId(Message::setDeclaredOptions, core::kNormal, 1);
  eachChild(task, [](const Task& child, int number) {
    const auto option = child.numbered(L"name_%d", number);
    const auto value = child.numbered(L"value_%d", number);
    if (option && value) setDeclared(*option, *value);
  });
  return done;
}

// The numbered ones stand in child elements: that of number N has name_N. There may be any number of them.
constexpr int kAnyNumber = std::numeric_limits<int>::max();
constexpr Attribute kSetAttributes[] = {
    {.name = L"safename", .about = "a name of saveConfigOptions: what was saved under it is set first"},
    {.name = L"name_%d", .most = kAnyNumber, .about = "in the child element of that number: an option"},
    {.name = L"value_%d", .most = kAnyNumber, .about = "there too: its value, as it stands"},
};
constexpr Attribute kSaveAttributes[] = {
    {.name = L"savename", .need = Need::needed, .about = "the name under which they are kept"},
    {.name = L"name_%d", .most = kAnyNumber, .about = "in the child element of that number: an option"},
};

constexpr Action kActions[] = {
    {.key = L"setConfigOption",
     .place = 2,
     .group = Group::withoutModel,
     .title = Message::setConfigOption,
     .attributes = kSetAttributes,
     .effects = {.reads = Touched::options, .changes = Touched::options},
     .about = "sets Creo's options, those that were saved first",
     .function = &setConfigOption},
    {.key = L"saveConfigOptions",
     .place = 3,
     .group = Group::withoutModel,
     .title = Message::saveConfigOptions,
     .attributes = kSaveAttributes,
     .effects = {.reads = Touched::options},
     .about = "keeps the values of Creo's options under a name",
     .function = &saveConfigOptions},
};

}  // namespace

std::span<const Action> configOptionActions() { return kActions; }

}  // namespace actions
