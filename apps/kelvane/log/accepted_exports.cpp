#include "kelvane/log/accepted_exports.h"

#include <algorithm>
#include <sstream>

#include "core/line.h"
#include "core/log.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/nearest.h"
#include "text/letters.h"

namespace kelvane {
namespace {

using core::Message;

struct Format {
  const char* name;
  core::Line title, failure;
};
constexpr Format kFormats[] = {
    {"sat", Message::exportSat, Message::satFailed},
    {"dwg", L"Export DWG file", L"Export failure"},  // of a sheet
    {"dwg", L"Export DWG file", L"Exportfailure"},   // of the drawing
    {"productview", Message::exportCreoView, Message::creoViewFailed},
    {"pdf3d", L"Export 3dPDF", L"failure -40"},
};

std::vector<std::string> names() {
  std::vector<std::string> all;
  for (const Format& format : kFormats)
    if (std::find(all.begin(), all.end(), format.name) == all.end()) all.emplace_back(format.name);
  return all;
}

}  // namespace

std::string acceptableExports() {
  std::string all;
  for (const std::string& name : names()) all += (all.empty() ? "" : ", ") + name;
  return all;
}

AcceptedExports::AcceptedExports(const std::vector<std::string>& written) {
  for (const std::string& some : written) {
    std::stringstream stream(some);
    for (std::string entry; std::getline(stream, entry, ',');) {
      const std::size_t before = lines_.size();
      for (const Format& format : kFormats) {
        if (text::equalNoCase(std::string_view(format.name), std::string_view(entry)))
          lines_.push_back({std::wstring(core::lineText(format.title)), std::wstring(core::lineText(format.failure))});
      }
      if (lines_.size() == before)
        throw Fault("--accept: there is no '" + entry + "'" + didYouMean(entry, names()) + "; there are " +
                    acceptableExports());
    }
  }
}

bool AcceptedExports::takes(const LogLine& line) const {
  return line.level == core::kError && std::any_of(lines_.begin(), lines_.end(), [&line](const Line& entry) {
           return line.text.ends_with(L" - " + entry.failure) &&
                  line.text.find(L" " + entry.title + L" - ") != line.text.npos;
         });
}

}  // namespace kelvane
