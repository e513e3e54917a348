#include "trace/head.h"

#include "trace/values.h"

namespace trace {
namespace {

constexpr std::string_view kFirstLine = "kelvane trace 2";

// Each line of the head: a word, then what is written with it.
template <class AnyHead, class EachLine>
void eachLine(AnyHead& head, const EachLine& line) {
  line("clock", head.clock);
  line("package", head.package);
  line("list", head.list);
  line("list-sum", head.listSum);
  line("programs", head.programs);
  line("confined", head.isConfined);
  line("packages", head.own.packages);
  line("unpacked", head.own.unpacked);
}

}  // namespace

std::string written(const Head& head) {
  Recorder nobody([](std::string_view /*line*/) {});
  std::string all = std::string(kFirstLine) + '\n';
  eachLine(head, [&](std::string_view word, const auto& value) {
    Line line;
    line.word(word);
    put(nobody, line, value);
    all += line.str() + '\n';
  });
  return all;
}

Head readHead(const std::vector<std::string>& lines, std::size_t& first) {
  first = 0;
  if (lines.empty() || lines.front() != kFirstLine)
    throw BadLine("it is no trace of this version: its first line isn't '" + std::string(kFirstLine) + "'");
  Recorder nobody([](std::string_view /*line*/) {});
  Head head;
  eachLine(head, [&](std::string_view word, auto& value) {
    if (++first >= lines.size()) throw BadLine("the trace ends in its head");
    Reading reading(lines[first]);
    if (const std::string_view found = reading.word(); found != word)
      throw BadLine("'" + std::string(word) + "' is expected, not '" + std::string(found) + "'");
    take(nobody, reading, value);
  });
  ++first;
  return head;
}

}  // namespace trace
