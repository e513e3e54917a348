#include "headless/store/fields.h"

#include <climits>

namespace headless {

std::string Reader::asWritten(const Json& value) const {
  if (value.end == 0) return prettyJson(value);
  std::string out(source_.substr(value.begin, value.end - value.begin));
  std::erase(out, '\r');
  return out;
}

void readValue(std::string& into, const Json& json, Reader& in) {
  if (!json.is(JsonKind::text)) return in.failKind(json, L"a text");
  into = json.text;
}

void readValue(int& into, const Json& json, Reader& in) {
  if (!json.is(JsonKind::integer) || json.integer < INT_MIN || json.integer > INT_MAX)
    return in.failKind(json, L"a whole number of 32 bits");
  into = static_cast<int>(json.integer);
}

void readValue(double& into, const Json& json, Reader& in) {
  if (!json.isNumber()) return in.failKind(json, L"a number");
  into = json.real;
}

void readValue(bool& into, const Json& json, Reader& in) {
  if (!json.is(JsonKind::boolean)) return in.failKind(json, L"true or false");
  into = json.boolean;
}

void readValue(std::optional<bool>& into, const Json& json, Reader& in) { readValue(into.emplace(), json, in); }

void readValue(Scalar& into, const Json& json, Reader& in) {
  switch (json.kind) {
    case JsonKind::text:
      into = json.text;
      return;
    case JsonKind::boolean:
      into = json.boolean;
      return;
    case JsonKind::real:
      into = json.real;
      return;
    case JsonKind::integer:
      if (json.integer >= INT_MIN && json.integer <= INT_MAX)
        into = static_cast<int>(json.integer);
      else
        into = json.real;
      return;
    case JsonKind::null:
    case JsonKind::array:
    case JsonKind::object:
      break;
  }
  in.failKind(json, L"a text, a number, true or false");
}

void readValue(RawJson& into, const Json& json, Reader& in) { into.text = in.asWritten(json); }

void writeValue(const std::string& value, std::string& out, int) { appendQuoted(out, value); }
void writeValue(int value, std::string& out, int) { out += std::to_string(value); }
void writeValue(double value, std::string& out, int) { out += realText(value); }
void writeValue(bool value, std::string& out, int) { out += value ? "true" : "false"; }
void writeValue(const std::optional<bool>& value, std::string& out, int level) {
  writeValue(value.value_or(false), out, level);
}
void writeValue(const RawJson& value, std::string& out, int) { out += value.text; }

void writeValue(const Scalar& value, std::string& out, int level) {
  if (const auto* text = std::get_if<std::string>(&value)) return writeValue(*text, out, level);
  if (const auto* real = std::get_if<double>(&value)) {
    out += realText(*real);
  } else if (const auto* integer = std::get_if<int>(&value)) {
    writeValue(*integer, out, level);
  } else if (const auto* boolean = std::get_if<bool>(&value)) {
    writeValue(*boolean, out, level);
  } else {
    out += "null";
  }
}

void describeValue(Schema& schema, Of<std::string>) { schema.is(R"({"type": "string"})"); }
void describeValue(Schema& schema, Of<int>) { schema.is(R"({"$ref": "#/$defs/int32"})"); }
void describeValue(Schema& schema, Of<double>) { schema.is(R"({"type": "number"})"); }
void describeValue(Schema& schema, Of<bool>) { schema.is(R"({"type": "boolean"})"); }
void describeValue(Schema& schema, Of<std::optional<bool>>) { describeValue(schema, Of<bool>()); }
void describeValue(Schema& schema, Of<Scalar>) { schema.is(R"({"type": ["string", "number", "boolean"]})"); }
void describeValue(Schema& schema, Of<RawJson>) { schema.is("true"); }

}  // namespace headless
