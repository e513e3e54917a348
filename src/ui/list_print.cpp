#include "ui/list_print.h"

#include <string>

#include "core/log.h"
#include "core/state.h"
#include "core/xml.h"
#include "documents/action_list.h"
#include "os/surroundings.h"
#include "run/choosers.h"
#include "text/encoding.h"
#include "text/format.h"

namespace ui {
namespace {

using core::XmlNode;

constexpr std::wstring_view kFileName = L"kvd_actionlist.txt";

void addAttributes(std::wstring& page, const XmlNode& task, const std::wstring& margin) {
  for (const core::XmlAttrBlock* block = task.attributes; block; block = block->next)
    for (std::uint16_t i = 0; i < block->count; ++i)
      if (block->items[i]->name != L"type")
        page += text::format(L"%s%s = %s\n", margin, block->items[i]->name, block->items[i]->value);
}

// A task as a numbered heading, its attributes and what it holds further in.
void addTask(std::wstring& page, const XmlNode& task, const std::wstring& number, const std::wstring& margin) {
  const core::XmlAttr* type = core::attrFind(task.attributes, L"type");
  page += text::format(L"%s%s %s\n", margin, number, type ? type->value : task.name);
  addAttributes(page, task, margin + L"    ");
  int count = 0;
  core::xmlEachChild(task, [&](const XmlNode& inner) {
    addTask(page, inner, number + L"." + std::to_wstring(++count), margin + L"    ");
  });
}

void addSection(std::wstring& page, std::wstring_view title, const XmlNode* section) {
  page += text::format(L"\n%s\n", title);
  int count = 0;
  if (section)
    core::xmlEachChild(*section, [&](const XmlNode& task) { addTask(page, task, std::to_wstring(++count), L"  "); });
  if (count == 0) page += L"  -\n";
}

std::wstring pageOf(const core::XmlDocument& document) {
  const core::PluginState& state = core::pluginState();
  const documents::ActionList list = documents::actionList(document);
  std::wstring page = text::format(L"%s - %s\n%s\n", state.currentKvz, state.currentList, state.currentDate);
  addSection(page, L"Head", list.head);
  addSection(page, L"Body", list.body);
  addSection(page, L"Foot", list.foot);
  return page;
}

}  // namespace

void printActionList() {
  const auto loaded = core::xmlLoadFile(run::selectedListPath());
  if (!loaded) return core::creoLog(loaded.fault.sentence());
  const std::wstring path = core::pluginState().tempPath + std::wstring(kFileName);
  if (os::files().write(path, text::toUtf8(pageOf(*loaded.value)))) return core::creoLog(L"<KVD> Error opening file!");
  os::processes().open(path);
}

}  // namespace ui
