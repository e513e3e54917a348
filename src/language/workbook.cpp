#include "language/workbook.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "core/log.h"
#include "core/messages.h"
#include "core/state.h"
#include "os/doors.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/units.h"

namespace language {
namespace {

using core::Message;

constexpr std::wstring_view kScript = L"xls2csv.vbs";
constexpr std::wstring_view kEndings[] = {L".xls", L".xlsx", L".ods"};
constexpr std::wstring_view kUtf8 = L",ccs=UTF-8";

// How the script ended: once a run for each workbook, as one that can't be converted would be tried for each model.
struct Conversion {
  std::wstring workbook, target;
  std::optional<os::Result<int>> status{};  // nothing: the script wasn't started
  bool isMade = false;
};
std::vector<Conversion>& conversions() {
  static std::vector<Conversion> made;
  return made;
}

bool fail(std::wstring_view text) {
  core::logWrite(text, core::kError);
  return false;
}

// As it stands above; empty for a file that is no workbook.
std::wstring_view endingOf(std::wstring_view path) {
  for (const std::wstring_view ending : kEndings)
    if (text::endsWithNoCase(path, ending)) return ending;
  return {};
}

bool canBeOpened(std::wstring_view path) { return os::files().exists(path) && !os::files().isFolder(path); }

bool isTaken(std::wstring_view target) {
  return std::any_of(conversions().begin(), conversions().end(),
                     [&](const Conversion& conversion) { return text::equalNoCase(conversion.target, target); });
}

// Two workbooks of one name, from two folders, get two files.
std::wstring targetOf(std::wstring_view path) {
  std::wstring name = os::nameOf(path);
  const std::wstring_view ending = endingOf(path);
  name.resize(name.size() - ending.size());
  const std::wstring stem = core::pluginState().tempPath + name + L"_" + std::wstring(ending.substr(1));
  std::wstring target = stem + L".csv";
  for (int i = 2; isTaken(target); ++i) target = stem + text::format(L"_%d.csv", i);
  return target;
}

// An older file under the target's name would pass for the result.
bool makeRoom(const std::wstring& target) {
  if (!os::files().exists(target)) return true;
  core::logWrite(text::format(core::msgText(Message::csvOverridden), os::nameOf(target)), core::kWarning);
  if (!os::files().remove(target)) return true;
  return fail(text::format(core::msgText(Message::deleteFile), target));
}

// A dry run converts as well: nobody could tell what its actions would do without the values. The script's result lies
// in the temp folder.
os::Result<int> startScript(const std::wstring& command) {
  const os::DoorsGuard doors;
  if (os::doors().programs == os::Door::withheld) os::doors().programs = os::Door::open;
  return os::processes().run(command, {});
}

// A second time only the lines of the first come again.
bool convert(Conversion& conversion) {
  const std::wstring script = core::pluginState().confPath + std::wstring(kScript);
  if (!canBeOpened(script)) return fail(text::format(L"%s: %s", script, core::msgText(Message::fileNotFound)));
  const std::wstring command = text::format(L"%s \"%s\" \"%s\"", script, conversion.workbook, conversion.target);
  core::logIndented(command, core::kNormal, 1);
  // A quote in a name would end the argument, and the rest would be a command.
  if (conversion.workbook.find(L'"') != std::wstring::npos)
    return fail(L"A workbook with a quote in its name can't be converted");
  if (!conversion.status) {
    conversion.status = startScript(command);
    conversion.isMade = *conversion.status && canBeOpened(conversion.target);
  }
  const os::Result<int>& status = *conversion.status;
  if (!status) return fail(text::format(L"%s isn't started: %s", kScript, text::fromUtf8(status.error.message())));
  core::logWrite(text::format(L"exit status %d", status.value), core::kDebug);
  if (conversion.isMade) return true;
  return fail(
      text::format(L"%s made no file of %s, its exit status is %d", kScript, conversion.workbook, status.value));
}

}  // namespace

bool isWorkbook(std::wstring_view path) { return !endingOf(path).empty(); }

int convertWorkbook(std::wstring& out, std::size_t outSize, std::wstring_view path) {
  if (!canBeOpened(path)) {
    fail(text::format(core::msgText(Message::fileWasNotFound), path));
    return -1;
  }
  if (!isWorkbook(path)) return 0;
  auto entry = std::find_if(conversions().begin(), conversions().end(),
                            [&](const Conversion& known) { return text::equalNoCase(known.workbook, path); });
  std::wstring target = entry == conversions().end() ? targetOf(path) : entry->target;
  if (!text::fits(target, outSize)) {
    fail(text::format(L"The name of the csv file of %s is too long", path));
    return -1;
  }
  out = target;
  if (entry == conversions().end())
    entry = conversions().insert(entry, Conversion{std::wstring(path), std::move(target)});
  if (entry->isMade) return 1;
  const bool hasRoom = entry->status || makeRoom(entry->target);
  return hasRoom && convert(*entry) ? 0 : -1;
}

void deleteConvertedFiles() {
  core::logMsgPlain(Message::deleteConvertedFiles, core::kDebug);
  for (const Conversion& conversion : conversions()) {
    if (!conversion.isMade) continue;
    const bool removed = !os::files().remove(conversion.target);
    core::logWrite(text::format(core::msgText(Message::deleteFile), conversion.target),
                   removed ? core::kDebug : core::kError);
  }
  conversions().clear();
}

TableForm tableForm(const core::XmlNode& task) {
  const auto is = [&task](std::wstring_view name, std::wstring_view value) {
    const core::XmlAttr* attribute = core::attrFind(task.attributes, name);
    return attribute && attribute->value == value;
  };
  return {is(L"sep", L"com") ? L',' : L';', is(L"filetype", L"1") ? kUtf8 : std::wstring_view()};
}

const CsvTable* tableAt(const std::wstring& path, const TableForm& form) {
  std::wstring file = path;
  if (convertWorkbook(file, text::kTextSize, path) < 0) return nullptr;
  // What the script writes is UTF-8 with semicolons.
  const TableForm read = isWorkbook(path) ? TableForm{L';', kUtf8} : form;
  std::size_t table = 0;
  if (readCSVtoTable(table, file, read.separator, read.encoding) != 0) return nullptr;
  return &csvTable(table);
}

}  // namespace language
