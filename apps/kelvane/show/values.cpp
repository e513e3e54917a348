#include "kelvane/show/values.h"

#include <array>

#include "kelvane/base/fault.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/numbers.h"

namespace kelvane {
namespace {

using creo::ProParamvalueType;

struct TypeWord {
  const char* word;
  ProParamvalueType type;
};
constexpr std::array<TypeWord, 5> kWords = {{{"String", ProParamvalueType::string},
                                             {"Integer", ProParamvalueType::integer},
                                             {"Double", ProParamvalueType::real},
                                             {"Boolean", ProParamvalueType::boolean},
                                             {"Note", ProParamvalueType::noteId}}};

// No blanks, no other base: a value is written as it will be shown.
bool hasNumberForm(const std::wstring& text, bool fraction) {
  const std::wstring_view allowed = fraction ? L"0123456789+-.eE" : L"0123456789+-";
  return !text.empty() && text.find_first_not_of(allowed) == text.npos;
}

constexpr std::size_t kLongestName = 31;

bool isParameterName(const std::wstring& name) {
  const auto isDigit = [](wchar_t c) { return c >= L'0' && c <= L'9'; };
  const auto isLetter = [](wchar_t c) {
    return (text::lower(c) >= L'a' && text::lower(c) <= L'z') || c == L'_' || c > 127;
  };
  return !name.empty() && name.size() <= kLongestName && !isDigit(name[0]) &&
         std::all_of(name.begin(), name.end(), [&](wchar_t c) { return isDigit(c) || isLetter(c); });
}

void setValue(creo::ProParamvalue& value, const std::wstring& text, const std::string& shown) {
  const auto refuse = [&](const char* what) { throw Fault("'" + shown + "': the value is no " + what); };
  if (value.type == ProParamvalueType::string) {
    value.string = text;
  } else if (value.type == ProParamvalueType::integer) {
    const auto read = hasNumberForm(text, false) ? text::wholeInt(text) : std::nullopt;
    if (!read) return refuse("whole number");
    value.integer = *read;
  } else if (value.type == ProParamvalueType::real) {
    const auto read = hasNumberForm(text, true) ? text::wholeDouble(text) : std::nullopt;
    if (!read) return refuse("number");
    value.real = *read;
  } else {
    value.boolean = text::equalNoCase(text, L"true") || text::equalNoCase(text, L"yes");
    const bool isNo = text::equalNoCase(text, L"false") || text::equalNoCase(text, L"no");
    if (!value.boolean && !isNo) refuse("'true' or 'false'");
  }
}

}  // namespace

std::string valueText(const creo::ProParamvalue& value) {
  switch (value.type) {
    case ProParamvalueType::string:
      return text::toUtf8(value.string);
    case ProParamvalueType::real:
      return text::toUtf8(text::shortest(value.real));
    case ProParamvalueType::boolean:
      return value.boolean ? "true" : "false";
    case ProParamvalueType::integer:
    case ProParamvalueType::noteId:
      return std::to_string(value.integer);
    case ProParamvalueType::none:
      break;
  }
  return {};
}

std::string typeWord(ProParamvalueType type) {
  for (const TypeWord& row : kWords) {
    if (row.type == type) return row.word;
  }
  return "none";
}

GivenParameter givenParameter(const std::string& written) {
  const std::size_t equals = written.find('=');
  if (equals == written.npos || equals == 0) throw Fault("'" + written + "' is no parameter; write NAME[:Type]=VALUE");
  const std::string head = written.substr(0, equals);
  const std::size_t colon = head.find(':');
  GivenParameter given;
  given.name = head.substr(0, colon);
  if (!isParameterName(text::fromUtf8(given.name))) {
    throw Fault("'" + given.name + "' is no parameter's name; at most 31 letters, digits and '_', no digit first");
  }
  given.value.type = ProParamvalueType::string;
  if (colon != head.npos) {
    given.value.type = ProParamvalueType::none;
    for (const TypeWord& row : kWords) {
      const bool settable = row.type != ProParamvalueType::noteId;
      if (settable && text::equalNoCase(row.word, head.substr(colon + 1))) given.value.type = row.type;
    }
    if (given.value.type == ProParamvalueType::none) {
      throw Fault("'" + written + "': the type is one of String, Integer, Double, Boolean");
    }
  }
  setValue(given.value, text::fromUtf8(written.substr(equals + 1)), written);
  return given;
}

}  // namespace kelvane
