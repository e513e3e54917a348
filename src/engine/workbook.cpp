#include "engine/workbook.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "core/log.h"
#include "core/messages.h"
#include "core/state.h"
#include "engine/output_file.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"

namespace engine {
namespace {

constexpr int kNotFound = 369, kScriptNotFound = 108, kDeleteAll = 370, kDeleted = 371, kOverridden = 373;
constexpr std::wstring_view kScript = L"xls2csv.vbs";
constexpr std::wstring_view kEnding = L".xls";
constexpr std::wstring_view kUtf8 = L",ccs=UTF-8";

struct Conversion {
  std::wstring workbook, target;
};
// What was made of workbooks in this run.
std::vector<Conversion>& conversions() {
  static std::vector<Conversion> made;
  return made;
}

bool fail(std::wstring_view text) {
  core::logWrite(text, core::kError);
  return false;
}

bool isWorkbook(std::wstring_view path) {
  return path.size() >= kEnding.size() && text::equalNoCase(path.substr(path.size() - kEnding.size()), kEnding);
}

bool canBeOpened(std::wstring_view path) { return os::files().exists(path) && !os::files().isFolder(path); }

bool isTaken(std::wstring_view target) {
  return std::any_of(conversions().begin(), conversions().end(),
                     [&](const Conversion& one) { return text::equalNoCase(one.target, target); });
}

// Two workbooks of one name, from two folders, get two files.
std::wstring targetOf(std::wstring_view path) {
  std::wstring name = os::nameOf(path);
  name.resize(name.size() - kEnding.size());
  const std::wstring stem = core::pluginState().tempPath + name + L"_xls";
  std::wstring target = stem + L".csv";
  for (int i = 2; isTaken(target); ++i) target = stem + text::format(L"_%d.csv", i);
  return target;
}

// An older file under the target's name would pass for the result.
bool makeRoom(const std::wstring& target) {
  if (!os::files().exists(target)) return true;
  core::logWrite(text::format(core::msgText(kOverridden), os::nameOf(target)), core::kWarning);
  if (!os::files().remove(target)) return true;
  return fail(text::format(core::msgText(kDeleted), target));
}

bool runScript(std::wstring_view workbook, const std::wstring& target) {
  const std::wstring script = core::pluginState().confPath + std::wstring(kScript);
  if (!canBeOpened(script)) return fail(text::format(L"%s: %s", script, core::msgText(kScriptNotFound)));
  const std::wstring command = text::format(L"%s \"%s\" \"%s\"", script, workbook, target);
  core::logIndented(command, core::kNormal, 1);
  // A quote in a name would end the argument, and the rest would be a command.
  if (workbook.find(L'"') != workbook.npos) return fail(L"A workbook with a quote in its name can't be converted");
  const auto status = os::processes().run(command, {});
  if (!status) return fail(text::format(L"%s isn't started: %s", kScript, text::fromUtf8(status.error.message())));
  core::logWrite(text::format(L"exit status %d", status.value), core::kDebug);
  if (canBeOpened(target)) return true;
  return fail(text::format(L"%s made no file of %s, its exit status is %d", kScript, workbook, status.value));
}

}  // namespace

int convertWorkbook(std::wstring& out, std::size_t outSize, std::wstring_view path) {
  if (!canBeOpened(path)) {
    fail(text::format(core::msgText(kNotFound), path));
    return -1;
  }
  if (!isWorkbook(path)) return 0;
  const auto known = std::find_if(conversions().begin(), conversions().end(),
                                  [&](const Conversion& one) { return text::equalNoCase(one.workbook, path); });
  const bool isKnown = known != conversions().end();
  std::wstring target = isKnown ? known->target : targetOf(path);
  if (!text::fits(target, outSize)) {
    fail(text::format(L"The name of the csv file of %s is too long", path));
    return -1;
  }
  out = target;
  if (isKnown) return 1;
  if (!makeRoom(target) || !runScript(path, target)) return -1;
  conversions().push_back({std::wstring(path), std::move(target)});
  return 0;
}

void deleteConvertedFiles() {
  core::logMsgPlain(kDeleteAll, core::kDebug);
  for (const Conversion& one : conversions()) {
    const bool removed = !os::files().remove(one.target);
    core::logWrite(text::format(core::msgText(kDeleted), one.target), removed ? core::kDebug : core::kError);
  }
  conversions().clear();
}

TableForm tableForm(const XmlNode& task) {
  const auto is = [&task](std::wstring_view name, std::wstring_view value) {
    const core::XmlAttr* attribute = core::attrFind(task.attributes, name);
    return attribute && attribute->value == value;
  };
  return {is(L"sep", L"com") ? L',' : L';', is(L"filetype", L"1") ? kUtf8 : std::wstring_view()};
}

const CsvTable* tableOf(const Task& task) {
  const std::wstring path = wholePath(task.path(L"path", L"reports"));
  std::wstring file = path;
  if (convertWorkbook(file, text::kTextSize, path) < 0) return nullptr;
  // What the script writes is UTF-8 with semicolons.
  const TableForm form = isWorkbook(path) ? TableForm{L';', kUtf8} : tableForm(task.node());
  std::size_t table = 0;
  if (readCSVtoTable(table, file, form.separator, form.encoding) != 0) return nullptr;
  return &csvTable(table);
}

}  // namespace engine
