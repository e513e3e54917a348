#include "headless/store/json.h"

#include <charconv>
#include <cmath>
#include <iterator>
#include <nlohmann/json.hpp>

#include "text/encoding.h"
#include "text/format.h"

namespace headless {
namespace {

using Parser = nlohmann::json;

// Reads from a text and tells its builder how far the parser is.
class Cursor {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;
  Cursor(const char* at, const char** seen) : at_(at), seen_(seen) {}
  reference operator*() const { return *at_; }
  Cursor& operator++() {
    *seen_ = ++at_;
    return *this;
  }
  Cursor operator++(int) {
    Cursor before = *this;
    ++*this;
    return before;
  }
  bool operator==(const Cursor& other) const { return at_ == other.at_; }

 private:
  const char* at_;
  const char** seen_;
};

// Builds the tree from the parser's events. `last_` is where the previous token ended; a value begins behind it and
// the separators.
class Builder : public nlohmann::json_sax<Parser> {
 public:
  Builder(std::string_view source, const char* const& seen, Json& root) : source_(source), seen_(seen), root_(root) {}

  bool null() override { return leaf(JsonKind::null); }
  bool boolean(bool v) override {
    return leaf(JsonKind::boolean, [v](Json& j) { j.boolean = v; });
  }
  bool number_integer(number_integer_t v) override {
    return leaf(JsonKind::integer, [v](Json& j) {
      j.integer = v;
      j.real = static_cast<double>(v);
    });
  }
  bool number_unsigned(number_unsigned_t v) override {
    // Beyond the signed range it is a real number that keeps its digits.
    if (v > static_cast<number_unsigned_t>(INT64_MAX)) return number_float(static_cast<double>(v), std::to_string(v));
    return number_integer(static_cast<number_integer_t>(v));
  }
  bool number_float(number_float_t v, const string_t& s) override {
    return leaf(JsonKind::real, [&](Json& j) {
      j.real = v;
      j.text = s;
    });
  }
  bool string(string_t& v) override {
    return leaf(JsonKind::text, [&](Json& j) { j.text = std::move(v); });
  }
  bool binary(binary_t&) override { return false; }
  bool start_object(std::size_t) override { return open(JsonKind::object); }
  bool start_array(std::size_t) override { return open(JsonKind::array); }
  bool end_object() override { return close(); }
  bool end_array() override { return close(); }
  bool key(string_t& v) override {
    name_ = std::move(v);
    last_ = here();
    return true;
  }
  bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception& e) override {
    // The library's text begins with its own name and, of wrong syntax, with the place.
    std::string_view what = e.what();
    if (const auto cut = what.find("] "); cut != std::string_view::npos) what.remove_prefix(cut + 2);
    if (what.starts_with("parse error")) what.remove_prefix(std::min(what.size(), what.find(": ") + 2));
    return fail(position > 0 ? position - 1 : 0, text::fromUtf8(what));
  }

  [[nodiscard]] const JsonFault& fault() const { return fault_; }

 private:
  [[nodiscard]] std::size_t here() const { return static_cast<std::size_t>(seen_ - source_.data()); }

  bool fail(std::size_t offset, std::wstring reason) {
    fault_ = {lineAt(source_, offset), std::move(reason)};
    return false;
  }

  Json& add(JsonKind kind) {
    Json* value = &root_;
    if (!open_.empty()) value = &open_.back()->items.emplace_back();
    value->kind = kind;
    value->name = std::move(name_);
    name_.clear();
    while (last_ < source_.size() && std::string_view(" \t\r\n,:").find(source_[last_]) != std::string_view::npos)
      ++last_;
    value->begin = static_cast<std::uint32_t>(last_);
    return *value;
  }

  template <class Fill>
  bool leaf(JsonKind kind, Fill fill) {
    Json& value = add(kind);
    fill(value);
    std::size_t end = here();
    if (value.isNumber()) {  // the parser has read one character further
      end = source_.find_first_not_of("+-0123456789.eE", value.begin);
      if (end == std::string_view::npos) end = source_.size();
    }
    value.end = static_cast<std::uint32_t>(end);
    last_ = end;
    return true;
  }
  bool leaf(JsonKind kind) {
    return leaf(kind, [](Json&) {});
  }

  bool open(JsonKind kind) {
    if (open_.size() >= static_cast<std::size_t>(kJsonDepth))
      return fail(here(), text::format(L"nested deeper than %d levels", kJsonDepth));
    Json& value = add(kind);
    last_ = here();
    open_.push_back(&value);
    return true;
  }
  bool close() {
    last_ = here();
    open_.back()->end = static_cast<std::uint32_t>(last_);
    open_.back()->items.shrink_to_fit();
    open_.pop_back();
    return true;
  }

  std::string_view source_;
  const char* const& seen_;
  Json& root_;
  std::vector<Json*> open_;  // a parent's items don't grow while its child is open
  std::string name_;
  std::size_t last_ = 0;
  JsonFault fault_;
};

void append(std::string& out, const Json& value, int level, bool pretty);

void appendItems(std::string& out, const Json& value, int level, bool pretty) {
  const bool object = value.is(JsonKind::object);
  out += object ? '{' : '[';
  bool first = true;
  for (const Json& item : value.items) {
    if (!first) out += pretty ? "," : ", ";
    first = false;
    if (pretty) out.append("\n").append(static_cast<std::size_t>(level + 1) * 2, ' ');
    if (object) {
      appendQuoted(out, item.name);
      out += ": ";
    }
    append(out, item, level + 1, pretty);
  }
  if (pretty && !value.items.empty()) out.append("\n").append(static_cast<std::size_t>(level) * 2, ' ');
  out += object ? '}' : ']';
}

void append(std::string& out, const Json& value, int level, bool pretty) {
  switch (value.kind) {
    case JsonKind::null:
      out += "null";
      break;
    case JsonKind::boolean:
      out += value.boolean ? "true" : "false";
      break;
    case JsonKind::integer:
      out += std::to_string(value.integer);
      break;
    case JsonKind::real:
      out += value.text.empty() ? realText(value.real) : value.text;
      break;
    case JsonKind::text:
      appendQuoted(out, value.text);
      break;
    case JsonKind::array:
    case JsonKind::object:
      appendItems(out, value, level, pretty);
      break;
  }
}

}  // namespace

const Json* Json::member(std::string_view wanted) const {
  for (const Json& item : items)
    if (item.name == wanted) return &item;
  return nullptr;
}

JsonFault parseJson(std::string_view source, Json& into) {
  if (source.size() > UINT32_MAX) return {1, L"larger than 4 gigabytes"};
  const char* seen = source.data();
  Builder builder(source, seen, into);
  const char* const end = source.data() + source.size();
  const bool good = Parser::sax_parse(Cursor(source.data(), &seen), Cursor(end, &seen), &builder);
  if (good) return {};
  return builder.fault() ? builder.fault() : JsonFault{lineAt(source, source.size()), L"no JSON"};
}

std::size_t lineAt(std::string_view source, std::size_t offset) {
  std::size_t line = 1;
  for (const char c : source.substr(0, offset)) line += c == '\n' ? 1 : 0;
  return line;
}

std::string compactJson(const Json& value) {
  std::string out;
  append(out, value, 0, false);
  return out;
}

std::string prettyJson(const Json& value, int level) {
  std::string out;
  append(out, value, level, true);
  return out;
}

void appendQuoted(std::string& out, std::string_view text) {
  static constexpr char kHex[] = "0123456789abcdef";
  out += '"';
  for (const char c : text) {
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        if (const auto code = static_cast<unsigned char>(c); code < 0x20 || code == 0x7F)
          out.append("\\u00").append(1, kHex[code >> 4]).append(1, kHex[code & 15]);
        else
          out += c;
    }
  }
  out += '"';
}

std::string realText(double value) {
  if (!std::isfinite(value)) return {kNoNumber};
  // Common magnitudes are written as people write them, without an exponent.
  const double size = std::abs(value);
  const bool isCommon = size == 0 || (size >= 1e-5 && size < 1e15);
  char buffer[40];
  const auto written = isCommon ? std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed)
                                : std::to_chars(buffer, buffer + sizeof buffer, value);
  std::string out(buffer, written.ptr);
  if (out.find_first_of(".e") == std::string::npos) out += ".0";
  return out;
}

}  // namespace headless
