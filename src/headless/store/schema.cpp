#include "headless/store/schema.h"

#include "headless/store/json.h"

namespace headless {
namespace {

std::string inQuotes(std::string_view text) {
  std::string out;
  appendQuoted(out, text);
  return out;
}

void addPart(std::string& to, std::string_view part) {
  if (!to.empty()) to += ", ";
  to += part;
}

}  // namespace

void Schema::words(std::span<const std::string_view> words) {
  std::string all;
  for (const std::string_view word : words) addPart(all, inQuotes(word));
  out_ += "{\"enum\": [" + all + "]}";
}

void Schema::eachItem(const Describe& item) {
  out_ += "{\"type\": \"array\", \"items\": ";
  item();
  out_ += '}';
}

void Schema::eachMember(const Describe& member) {
  out_ += "{\"type\": \"object\", \"additionalProperties\": ";
  member();
  out_ += '}';
}

void Schema::either(const Describe& describe, const Describe& other) {
  out_ += "{\"anyOf\": [";
  describe();
  out_ += ", ";
  other();
  out_ += "]}";
}

std::string Schema::placeName() const {
  std::string name;
  for (const std::string_view member : place_) name.append(name.empty() ? "" : ".").append(member);
  return name.empty() ? "model" : name;
}

void Schema::record(const void* table, const Describe& members) {
  const auto [known, isNew] = names_.emplace(table, placeName());
  const std::string name = known->second;
  if (isNew) {
    const std::string out = std::exchange(out_, {});
    const std::string properties = std::exchange(properties_, {});
    const std::string required = std::exchange(required_, {});
    const std::string more = std::exchange(more_, {});
    members();
    std::string definition = "{\"type\": \"object\", \"properties\": {" + properties_ + "}";
    if (!required_.empty()) definition += ", \"required\": [" + required_ + "]";
    if (!more_.empty()) definition += ", " + more_;
    definitions_.emplace_back(name, definition + ", \"additionalProperties\": true}");
    out_ = out;
    properties_ = properties;
    required_ = required;
    more_ = more;
  }
  out_ += "{\"$ref\": " + inQuotes("#/$defs/" + name) + "}";
}

void Schema::member(std::string_view name, bool isRequired, const Describe& value) {
  const std::string out = std::exchange(out_, {});
  place_.push_back(name);
  value();
  place_.pop_back();
  addPart(properties_, inQuotes(name) + ": " + out_);
  out_ = out;
  if (isRequired) addPart(required_, inQuotes(name));
}

std::string Schema::finished(std::string_view title, std::string_view comment) const {
  std::string definitions = R"("int32": {"type": "integer", "minimum": -2147483648, "maximum": 2147483647})";
  for (const auto& [name, definition] : definitions_) addPart(definitions, inQuotes(name) + ": " + definition);
  std::string whole = R"({"$schema": "https://json-schema.org/draft/2020-12/schema", "title": )" + inQuotes(title) +
                      ", \"$comment\": " + inQuotes(comment) + ", \"allOf\": [" + out_ + "], \"$defs\": {" +
                      definitions + "}}";
  Json tree;
  if (parseJson(whole, tree)) return whole;
  return prettyJson(tree);
}

}  // namespace headless
