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
    for (std::string one; std::getline(stream, one, ',');) {
      const std::size_t before = lines_.size();
      for (const Format& format : kFormats) {
        if (text::equalNoCase(std::string_view(format.name), std::string_view(one)))
          lines_.push_back({std::wstring(core::lineText(format.title)), std::wstring(core::lineText(format.failure))});
      }
      if (lines_.size() == before)
        throw Fault("--accept: there is no '" + one + "'" + didYouMean(one, names()) + "; there are " +
                    acceptableExports());
    }
  }
}

bool AcceptedExports::takes(const LogLine& line) const {
  return line.level == core::kError && std::any_of(lines_.begin(), lines_.end(), [&line](const Line& one) {
           return line.text.ends_with(L" - " + one.failure) &&
                  line.text.find(L" " + one.title + L" - ") != line.text.npos;
         });
}

}  // namespace kelvane
