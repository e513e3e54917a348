#include "headless/store/faults.h"

#include <string_view>

#include "text/encoding.h"
#include "text/format.h"

namespace headless {

std::wstring cantRead(const std::wstring& path, const JsonFault& fault) {
  return text::format(L"%s:%lld: %s", path, fault.line, fault.reason);
}
std::wstring cantRead(const std::wstring& path, std::error_code error) {
  return text::format(L"%s: can't be read: %s", path, text::fromUtf8(error.message()));
}
std::wstring cantWrite(const std::wstring& path, std::error_code error) {
  return text::format(L"%s: can't be written: %s", path, text::fromUtf8(error.message()));
}
std::wstring cantWriteReadOnly(const std::wstring& path) {
  return text::format(L"%s: can't be written: the model is read-only", path);
}
std::wstring cantWriteCheckedIn(const std::wstring& path) {
  return text::format(L"%s: can't be written: the model isn't checked out", path);
}
std::wstring writtenMeanwhile(const std::wstring& path, int version) {
  return text::format(L"%s: another program wrote version %d meanwhile", path, version);
}

namespace {

constexpr std::wstring_view kErased = L" is erased, and its changes with it";

}  // namespace

std::wstring erasedWithChanges(const std::wstring& model) { return model + std::wstring(kErased); }
std::wstring modelErasedWithChanges(const std::wstring& line) {
  return line.ends_with(kErased) ? line.substr(0, line.size() - kErased.size()) : std::wstring();
}

}  // namespace headless
