#include "kelvane/accepted_exports.h"

#include <algorithm>
#include <sstream>

#include "core/log.h"
#include "core/messages.h"
#include "kelvane/fault.h"
#include "kelvane/nearest.h"
#include "text/letters.h"

namespace kelvane {
namespace {

// The numbers of texts that are asked in the log's language, 0 where the action has a text of its own.
struct Format {
  const char* name;
  int title, failure;
  const wchar_t* ownTitle;
  const wchar_t* ownFailure;
};
constexpr Format kFormats[] = {
    {"sat", 239, 242, L"", L""},
    {"dwg", 0, 0, L"Export DWG file", L"Export failure"},  // of a sheet
    {"dwg", 0, 0, L"Export DWG file", L"Exportfailure"},   // of the drawing
    {"productview", 244, 245, L"", L""},
    {"pdf3d", 0, 0, L"Export 3dPDF", L"failure -40"},
};

std::wstring textOf(int number, const wchar_t* own) { return number == 0 ? std::wstring(own) : core::msgText(number); }

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
          lines_.push_back({textOf(format.title, format.ownTitle), textOf(format.failure, format.ownFailure)});
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
