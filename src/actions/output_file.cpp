#include "actions/output_file.h"

#include <algorithm>

#include "core/log.h"
#include "core/state.h"
#include "creo/ProUtil.h"
#include "os/links.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {
namespace {

bool isSeparator(wchar_t c) { return c == L'\\' || c == L'/'; }

// Systems that drop dots and blanks at a name's end would find the file without them.
std::wstring_view withoutLooseEnd(std::wstring_view name) { return name.substr(0, name.find_last_not_of(L". ") + 1); }

// "gear.prt" and "gear.prt.12".
bool isDocumentName(std::wstring_view path) {
  constexpr std::wstring_view kTypes[] = {L".prt", L".asm", L".drw", L".frm", L".mfg", L".lay", L".sec"};
  const std::wstring whole = os::nameOf(path);
  std::wstring_view name = withoutLooseEnd(whole);
  const std::size_t number = name.find_last_not_of(L"0123456789");
  if (number != name.npos && name[number] == L'.') name = name.substr(0, number);
  return std::any_of(std::begin(kTypes), std::end(kTypes),
                     [&](std::wstring_view type) { return text::endsWithNoCase(name, type); });
}

// A link is written through to its file.
bool isModelDocument(std::wstring_view path) { return isDocumentName(path) || isDocumentName(os::behindLinks(path)); }

// One spelling for all letters and links that lead to a file.
std::wstring settled(std::wstring_view path) { return text::lower(os::behindLinks(path)); }

bool isLog(std::wstring_view path) { return settled(path) == settled(core::pluginState().logFile); }

// "/x.csv" and "\x.csv": on a system without drives the disk's own root.
bool liesInRoot(std::wstring_view path) {
  return os::splitDevice(path).device.empty() && os::partsOf(path).size() == 1;
}

// Dots and blanks before the extension are no name either.
bool namesFile(std::wstring_view path, std::wstring_view extension) {
  const std::wstring whole = os::nameOf(path);
  std::wstring_view name = withoutLooseEnd(whole);
  if (text::endsWithNoCase(name, extension)) name.remove_suffix(extension.size());
  return !withoutLooseEnd(name).empty();
}

bool refuse(std::wstring_view form, std::wstring_view path) {
  core::logWrite(text::format(form, path), core::kError);
  return false;
}

}  // namespace

std::wstring wholePath(const std::wstring& path) {
  const bool isWhole = path.empty() || !os::splitDevice(path).device.empty() || isSeparator(path.front());
  return isWhole ? path : os::joined(creo::ProDirectoryCurrentGet().value, path);
}

bool isKeptFile(std::wstring_view path) { return isModelDocument(path) || isLog(path); }

bool mayBeWritten(std::wstring_view path, std::wstring_view extension) {
  if (!namesFile(path, extension)) return refuse(L"The path names no file: '%s'", path);
  if (isModelDocument(path)) return refuse(L"%s is the document of a model and isn't written over", path);
  if (isLog(path)) return refuse(L"%s is the log and isn't written over", path);
  return !liesInRoot(path) || refuse(L"%s would lie in the root of the disk", path);
}

}  // namespace actions
