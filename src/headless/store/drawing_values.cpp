// Lines of notes and strokes: short forms in documents, since drawings hold thousands of them.
#include "headless/store/enum_texts.h"
#include "headless/store/tables_drawing.h"
#include "text/numbers.h"

namespace headless {
namespace {

constexpr std::size_t kNumbers = 7;

bool isPlain(const NoteLineRecord& line) {
  if (line.texts.size() != 1 || line.texts.front().extra) return false;
  const NoteTextRecord& record = line.texts.front();
  return record.height == 0 && record.width == 0 && record.slant == 0 && record.thickness == 0 && record.font.empty();
}

}  // namespace

void readValue(NoteLineRecord& into, const Json& json, Reader& in) {
  if (json.is(JsonKind::text)) return readValue(into.texts.emplace_back().text, json, in);
  if (!json.is(JsonKind::array)) return in.failKind(json, L"a text or an array of texts");
  readValue(into.texts, json, in);
}

void writeValue(const NoteLineRecord& line, std::string& out, int level) {
  if (isPlain(line)) return writeValue(line.texts.front().text, out, level);
  writeValue(line.texts, out, level);
}

void copyValue(const NoteLineRecord& from, NoteLineRecord& into) { copyValue(from.texts, into.texts); }

void describeValue(Schema& schema, Of<NoteLineRecord>) {
  schema.either([&schema] { describeValue(schema, Of<std::string>{}); },
                [&schema] { describeValue(schema, Of<std::vector<NoteTextRecord>>{}); });
}

void readValue(LineRecord& into, const Json& json, Reader& in) {
  if (!json.is(JsonKind::array) || json.items.size() < 4 || json.items.size() > kNumbers)
    return in.failKind(json, L"an array of four to seven numbers");
  double* const places[] = {&into.x1, &into.y1, &into.x2, &into.y2, &into.width};
  for (std::size_t i = 0; i < json.items.size() && !in.failed(); ++i) {
    if (i < std::size(places))
      readValue(*places[i], json.items[i], in);
    else
      readValue(i == 5 ? into.colorMethod : into.color, json.items[i], in);
  }
}

void writeValue(const LineRecord& line, std::string& out, int level) {
  const double numbers[kNumbers] = {line.x1,           line.y1, line.x2, line.y2, line.width, double(line.colorMethod),
                                    double(line.color)};
  std::size_t count = kNumbers;
  while (count > 4 && numbers[count - 1] == 0) --count;
  out += '[';
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0) out += ", ";
    if (i < 5)
      writeValue(numbers[i], out, level);
    else
      writeValue(i == 5 ? line.colorMethod : line.color, out, level);
  }
  out += ']';
}

void describeValue(Schema& schema, Of<LineRecord>) {
  schema.is(R"({"type": "array", "minItems": 4, "maxItems": 7,
    "prefixItems": [{"type": "number"}, {"type": "number"}, {"type": "number"}, {"type": "number"}, {"type": "number"}],
    "items": {"$ref": "#/$defs/int32"}})");
}

}  // namespace headless
