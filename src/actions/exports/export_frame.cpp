#include "actions/exports/export_frame.h"

#include <algorithm>

#include "actions/output_file.h"
#include "core/log.h"
#include "language/variables.h"
#include "os/surroundings.h"
#include "text/format.h"
#include "text/letters.h"

namespace actions {

using namespace language;

namespace {

bool carries(const ExportForm& form, std::wstring_view name) {
  const std::wstring_view extension = form.extension;
  const bool hasIt =
      name.size() >= extension.size() && text::equalNoCase(name.substr(name.size() - extension.size()), extension);
  return hasIt || (form.carriesExtension && form.carriesExtension(name));
}

// The name before its variables have their values.
std::wstring nameTemplate(const Task& task, const ExportForm& form) {
  std::wstring path(task.isTrue(L"folderFromModel") ? L"@mdlpath@" : task.attribute(L"folder"));
  // Nothing before a name: it counts from the working folder.
  if (!path.empty() && !path.ends_with(L'/') && !path.ends_with(L'\\')) path += L'/';
  path += task.attribute(form.nameAttribute);
  if (!carries(form, task.attribute(form.nameAttribute))) path += form.extension;
  return path;
}

}  // namespace

std::optional<std::wstring> namedTarget(const Task& task, const ExportForm& form) {
  if (task.attribute(form.nameAttribute).empty()) {
    core::logWrite(text::format(L"The attribute '%s' is missing", form.nameAttribute), core::kError);
    return std::nullopt;
  }
  Replaced name = replaceVariables(nameTemplate(task, form), task.model());
  if (!name.hasText()) return std::nullopt;  // the substitution has told why
  std::wstring path = wholePath(name.text);
  if (!mayBeWritten(path, form.extension)) return std::nullopt;
  std::replace(path.begin(), path.end(), L'\\', L'/');
  return path;
}

std::optional<std::wstring> exportTarget(const Task& task, const ExportForm& form) {
  auto target = namedTarget(task, form);
  return target && mayWrite(task, *target) ? target : std::nullopt;
}

bool mayWrite(const Task& task, const std::wstring& path) {
  if (task.isTrue(L"overwriteExisting")) return true;
  if (!os::files().exists(path) || os::files().isFolder(path)) return true;
  core::logMsgPlain(Message::imageExists, core::kWarning);
  return false;
}

Outcome endExport(creo::ProError result, Message failure) {
  if (result == creo::ProNoError)
    core::logMsgId(Message::exportCompleted, core::kNormal, 1);
  else
    core::logMsgPlain(failure, core::kError);
  return done;
}

}  // namespace actions
