#include "headless/geometry/foreign.h"

#include "headless/geometry/foreign_place.h"
#include "headless/geometry/foreign_program.h"
#include "headless/geometry/foreign_wire.h"
#include "text/encoding.h"
#include "text/format.h"

namespace headless::geometry {
namespace {

constexpr std::uint64_t kMegabyte = 1'000'000;

std::wstring faultOf(const ForeignAnswer& answer, std::chrono::milliseconds time) {
  switch (answer.end) {
    case ForeignEnd::late:
      return text::format(L"reading it wasn't done within %d seconds", static_cast<int>(time.count() / 1000));
    case ForeignEnd::notStarted:
      return L"the program that reads it doesn't start: " + answer.program;
    default:
      return L"it ended the program that reads it: the file is damaged";
  }
}

// What the answer says; its fault ends the program, which has read something odd.
template <class Said>
Said asked(ForeignRequest request, std::uint64_t size, Said (*read)(std::string_view)) {
  const ForeignPlace& place = foreignPlace();
  const std::chrono::milliseconds time = place.time + place.timePerMegabyte * (size / kMegabyte);
  request.memory = place.memory + place.memoryPerByte * size;
  request.processor = std::chrono::ceil<std::chrono::seconds>(time).count();
  Said said;
  const ForeignAnswer answer = askForeign(written(request), time);
  if (answer.end == ForeignEnd::answered) {
    try {
      said = read(answer.wire);
    } catch (const std::exception& failure) {
      said.fault = L"the program that reads it gives no answer: " + text::fromUtf8(failure.what());
    }
  } else {
    said.fault = faultOf(answer, time);
  }
  if (!said.fault.empty()) endForeign();
  return said;
}

// ---- is the file whole?

std::string_view withoutBlanksAtEnd(std::string_view text) {
  const auto last = text.find_last_not_of(std::string_view(" \t\r\n\0", 5));
  return text.substr(0, last == text.npos ? 0 : last + 1);
}

// Why a file can't be of the format; empty for none. The library itself takes much for a file and reads part of it.
std::wstring stepFault(std::string_view bytes) {
  const auto first = bytes.find("ISO-10303-21;");
  if (first == bytes.npos || bytes.substr(0, first).find_first_not_of(" \t\r\n\xEF\xBB\xBF") != bytes.npos)
    return L"the file is no STEP file";
  if (!withoutBlanksAtEnd(bytes).ends_with("END-ISO-10303-21;")) return L"the file is cut: its end is missing";
  return {};
}

// Lines of IGES have the letter of their section in column 73.
constexpr std::size_t kSectionColumn = 72;
char sectionOf(std::string_view line) { return line.size() > kSectionColumn ? line[kSectionColumn] : '\0'; }

std::wstring igesFault(std::string_view bytes) {
  if (sectionOf(bytes.substr(0, bytes.find('\n'))) != 'S') return L"the file is no IGES file";
  const std::string_view whole = withoutBlanksAtEnd(bytes);
  const auto last = whole.rfind('\n');
  if (sectionOf(last == whole.npos ? whole : whole.substr(last + 1)) != 'T')
    return L"the file is cut: its end is missing";
  return {};
}

}  // namespace

std::wstring faultOfEnds(std::string_view bytes, ExchangeFormat format) {
  if (bytes.empty()) return L"the file is empty";
  return format == ExchangeFormat::step ? stepFault(bytes) : igesFault(bytes);
}

ExchangeRead readForeign(const ForeignFile& file, ImportAs as) {
  ForeignRequest request;
  request.job = ForeignJob::file;
  request.format = file.format;
  request.as = as;
  request.path = file.path;
  request.bytes = file.bytes;
  return asked(request, file.size, &readTree);
}

ForeignBody foreignBody(std::string_view step) {
  if (std::wstring fault = faultOfEnds(step, ExchangeFormat::step); !fault.empty()) return {{}, std::move(fault), {}};
  ForeignRequest request;
  request.bytes = step;
  return asked(request, step.size(), &readBody);
}

}  // namespace headless::geometry
