#include "headless/geometry/foreign.h"

#include <filesystem>

#include "headless/geometry/foreign_place.h"
#include "headless/geometry/foreign_wire.h"
#include "os/helper.h"
#include "os/program.h"
#include "text/encoding.h"
#include "text/format.h"

namespace headless::geometry {
namespace {

constexpr const char* kProgram = "kelvane-import";
constexpr std::uint64_t kMegabyte = 1'000'000;

std::string programFor(const ForeignPlace& place) {
  if (!place.program.empty()) return place.program;
  const std::filesystem::path here = std::filesystem::path(os::codeFile()).parent_path();
  std::error_code error;
  for (const auto& folder : {here, here.parent_path()})
    if (std::filesystem::is_regular_file(folder / kProgram, error)) return (folder / kProgram).string();
  return (here / kProgram).string();
}

std::wstring faultOf(std::error_code error, std::chrono::milliseconds time) {
  if (error == std::errc::timed_out)
    return text::format(L"reading it wasn't done within %d seconds", static_cast<int>(time.count() / 1000));
  return L"it ended the program that reads it: the file is damaged";
}

// The program that runs, for all files: starting it costs more than a small file does. Behind whatever went wrong the
// next file has a new one, so that no file has to do with another.
class Reader {
 public:
  struct Answer {
    std::string wire;
    std::wstring fault;
    bool isLate = false;
  };
  // size: of what is read.
  Answer ask(ForeignRequest request, std::uint64_t size) {
    const ForeignPlace& place = foreignPlace();
    const std::chrono::milliseconds time = place.time + place.timePerMegabyte * (size / kMegabyte);
    request.memory = place.memory + place.memoryPerByte * size;
    request.processor = std::chrono::ceil<std::chrono::seconds>(time).count();
    if (program_ != programFor(place)) helper_.reset();
    const bool isUsed = helper_ != nullptr;
    Answer answer = askOnce(request, time);
    // What an earlier file left behind is no fault of this one; what takes too long would take as long again.
    return !answer.fault.empty() && !answer.isLate && isUsed ? askOnce(request, time) : answer;
  }
  void end() { helper_.reset(); }

 private:
  Answer askOnce(const ForeignRequest& request, std::chrono::milliseconds time) {
    if (!helper_) {
      program_ = programFor(foreignPlace());
      auto started = os::startHelper(program_);
      if (!started)
        return {{},
                text::format(L"the program that reads it doesn't start: %s: %s", text::fromUtf8(program_),
                             text::fromUtf8(started.error.message())),
                false};
      helper_ = std::move(started.value);
    }
    auto answer = helper_->ask(written(request), time);
    if (answer) return {std::move(answer.value), {}, false};
    helper_.reset();
    return {{}, faultOf(answer.error, time), answer.error == std::errc::timed_out};
  }

  std::string program_;
  std::unique_ptr<os::Helper> helper_;
};

Reader& reader() {
  static Reader entry;
  return entry;
}

// What the answer says; its fault ends the program, which has read something odd.
template <class Said>
Said asked(const ForeignRequest& request, std::uint64_t size, Said (*read)(std::string_view)) {
  Said said;
  const Reader::Answer answer = reader().ask(request, size);
  if (answer.fault.empty()) {
    try {
      said = read(answer.wire);
    } catch (const std::exception& failure) {
      said.fault = L"the program that reads it gives no answer: " + text::fromUtf8(failure.what());
    }
  } else {
    said.fault = answer.fault;
  }
  if (!said.fault.empty()) reader().end();
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

ForeignPlace& foreignPlace() {
  static ForeignPlace place;
  return place;
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
