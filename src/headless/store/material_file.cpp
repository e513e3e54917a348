#include "headless/store/material_file.h"

#include <algorithm>
#include <unordered_set>

#include "text/letters.h"
#include "text/numbers.h"
#include "text/pieces.h"
#include "text/units.h"

namespace headless {

using creo::ProParamvalueType;

namespace {

constexpr std::wstring_view kHead = L"ND_MATERIAL";
// Properties that the older form names without their prefix.
constexpr std::wstring_view kPrefix = L"PTC_";
constexpr std::wstring_view kStandard[] = {L"MASS_DENSITY", L"YOUNG_MODULUS", L"POISSON_RATIO", L"SHEAR_MODULUS",
                                           L"MATERIAL_DESCRIPTION"};

struct TypeWord {
  std::wstring_view word;
  ProParamvalueType type;
};
constexpr TypeWord kTypes[] = {{L"String", ProParamvalueType::string},
                               {L"Integer", ProParamvalueType::integer},
                               {L"Double", ProParamvalueType::real},
                               {L"Boolean", ProParamvalueType::boolean}};

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// A sign, digits with or without a point, an exponent, and nothing else. isWhole: without point and exponent.
bool isNumber(std::wstring_view text, bool& isWhole) {
  std::size_t at = 0;
  const auto digits = [&] {
    const std::size_t from = at;
    while (at < text.size() && isDigit(text[at])) ++at;
    return at - from;
  };
  const auto sign = [&] {
    if (at < text.size() && (text[at] == L'-' || text[at] == L'+')) ++at;
  };
  sign();
  std::size_t count = digits();
  isWhole = true;
  if (at < text.size() && text[at] == L'.') {
    ++at;
    count += digits();
    isWhole = false;
  }
  if (count == 0) return false;
  if (at < text.size() && (text[at] == L'e' || text[at] == L'E')) {
    ++at;
    sign();
    if (digits() == 0) return false;
    isWhole = false;
  }
  return at == text.size();
}

bool isTruth(std::wstring_view text, bool& value) {
  value = text::equalNoCase(text, L"YES") || text::equalNoCase(text, L"TRUE");
  return value || text::equalNoCase(text, L"NO") || text::equalNoCase(text, L"FALSE");
}

bool isName(std::wstring_view name) {
  const auto isLetter = [](wchar_t c) { return (text::lower(c) >= L'a' && text::lower(c) <= L'z') || c == L'_'; };
  return !name.empty() && text::fits(name, text::kNameSize) && isLetter(name.front()) &&
         std::all_of(name.begin(), name.end(), [&](wchar_t c) { return isLetter(c) || isDigit(c); });
}

// The line without its comment, which a sign outside quotes begins.
std::wstring_view withoutComment(std::wstring_view line, std::wstring_view sign) {
  bool quoted = false;
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (line[at] == L'"') quoted = !quoted;
    if (!quoted && line.substr(at).starts_with(sign)) return line.substr(0, at);
  }
  return line;
}

// Reads line after line; an empty reason means that the line is good.
class MaterialReader {
 public:
  MaterialReader(MaterialForm form, ParameterList& into) : form_(form), into_(into) {}

  std::wstring line(std::wstring_view whole) {
    const bool isPlain = form_ == MaterialForm::plain;
    const std::wstring_view line = text::trimmed(withoutComment(whole, isPlain ? L"/*" : L"!"));
    if (line.empty()) return {};
    const bool first = std::exchange(first_, false);
    const bool isHead = text::startsWithNoCase(line, kHead);
    if (!isPlain && first)
      return isHead ? L"" : L"an .mtl file begins with 'ND_MATERIAL'; 'NAME = value' alone is .mat";
    if (isPlain && isHead) return L"'ND_MATERIAL' begins an .mtl file; this one is .mat";
    const std::size_t equals = line.find(L'=');
    if (equals == line.npos) return L"a line must be 'NAME = value'";
    return isPlain ? plain(text::trimmed(line.substr(0, equals)), text::trimmed(line.substr(equals + 1)))
                   : property(text::trimmed(line.substr(0, equals)), text::trimmed(line.substr(equals + 1)));
  }
  // After the last line.
  [[nodiscard]] std::wstring end() const {
    if (first_) return L"there is no material in the file";
    return {};
  }

 private:
  std::wstring add(std::wstring_view name, ProParamvalueType type, Scalar value, std::wstring_view units = {}) {
    if (!isName(name)) return L"'" + std::wstring(name) + L"' is no name of a property";
    ParameterRecord record;
    record.name = text::toUtf8(text::upper(name));
    if (!names_.insert(record.name).second) return L"'" + std::wstring(name) + L"' stands there twice";
    record.type = type;
    record.value = std::move(value);
    record.units = text::toUtf8(units);
    into_.list.push_back(std::move(record));
    return {};
  }

  // Numbers and texts alone; a property without a value isn't set.
  std::wstring plain(std::wstring_view name, std::wstring_view value) {
    if (value.empty()) return {};
    const bool isStandard = std::any_of(std::begin(kStandard), std::end(kStandard),
                                        [&](std::wstring_view entry) { return text::equalNoCase(entry, name); });
    const std::wstring full = (isStandard ? std::wstring(kPrefix) : std::wstring()) + std::wstring(name);
    bool isWhole = false;
    if (!isNumber(value, isWhole)) return add(full, ProParamvalueType::string, text::toUtf8(value));
    const auto read = text::readDouble(value);
    if (read.fault != text::NumberFault::none) return L"the number is out of range";
    return add(full, ProParamvalueType::real, read.value);
  }

  // "NAME = 7.85 kg/m^3", "NAME : Integer = 7", "NAME = "text"", "NAME = YES".
  std::wstring property(std::wstring_view name, std::wstring_view value) {
    ProParamvalueType type = ProParamvalueType::none;
    if (const std::size_t colon = name.find(L':'); colon != name.npos) {
      const std::wstring_view word = text::trimmed(name.substr(colon + 1));
      for (const TypeWord& item : kTypes)
        if (text::equalNoCase(item.word, word)) type = item.type;
      if (type == ProParamvalueType::none) return L"the type must be one of String, Integer, Double, Boolean";
      name = text::trimmed(name.substr(0, colon));
    }
    if (value.starts_with(L'"')) return quoted(name, value, type);
    const std::size_t blank = std::min(value.find_first_of(L" \t"), value.size());
    const std::wstring_view units = text::trimmed(value.substr(blank));
    return single(name, value.substr(0, blank), units, type);
  }

  std::wstring quoted(std::wstring_view name, std::wstring_view value, ProParamvalueType type) {
    std::wstring text;
    std::size_t at = 1;
    for (; at < value.size(); ++at) {
      if (value[at] == L'"' && (at + 1 == value.size() || value[at + 1] != L'"')) break;
      if (value[at] == L'"') ++at;
      text += value[at];
    }
    if (at + 1 != value.size()) return L"a text must end with a quote, and nothing may follow";
    if (type != ProParamvalueType::none && type != ProParamvalueType::string) return L"the value is of another type";
    return add(name, ProParamvalueType::string, text::toUtf8(text));
  }

  // A number with or without a unit, yes or no.
  std::wstring single(std::wstring_view name, std::wstring_view word, std::wstring_view units, ProParamvalueType type) {
    bool truth = false, isWhole = false;
    using enum ProParamvalueType;
    if (isTruth(word, truth) && units.empty() && (type == none || type == boolean)) return add(name, boolean, truth);
    if (!isNumber(word, isWhole) || type == string || type == boolean || (type == integer && !isWhole))
      return type == none ? L"a value must be a number, YES, NO, or a text in quotes" : L"the value is of another type";
    if (type == integer || (type == none && isWhole && units.empty())) {
      const auto read = text::readInt(word);
      if (read.fault == text::NumberFault::none) return add(name, integer, read.value, units);
    } else {
      const auto read = text::readDouble(word);
      if (read.fault == text::NumberFault::none) return add(name, real, read.value, units);
    }
    return L"the number is out of range";
  }

  MaterialForm form_;
  ParameterList& into_;
  bool first_ = true;
  std::unordered_set<std::string> names_;
};

}  // namespace

std::optional<MaterialForm> materialKind(std::wstring_view path) {
  if (text::endsWithNoCase(path, kMaterialEnding)) return MaterialForm::properties;
  if (text::endsWithNoCase(path, kPlainMaterialEnding)) return MaterialForm::plain;
  return std::nullopt;
}

TextFault readMaterial(std::wstring_view content, MaterialForm form, ParameterList& into) {
  MaterialReader reader(form, into);
  std::size_t number = 0;
  for (const std::wstring& line : text::lines(content)) {
    ++number;
    if (std::wstring reason = reader.line(line); !reason.empty()) return {number, std::move(reason)};
  }
  return {std::max<std::size_t>(number, 1), reader.end()};
}

}  // namespace headless
