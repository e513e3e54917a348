#include "kelvane/check/attribute_check.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>

#include "actions/environment/number_format.h"
#include "core/feature_codes.h"
#include "kelvane/base/nearest.h"
#include "kelvane/check/text_check.h"
#include "kelvane/vocabulary/words.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/letters.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

using core::Attribute;
using core::Kind;
using core::Need;

// Without this counter a list is read up to its end, without any other not at all.
constexpr std::wstring_view kCountThatMayLack = L"count";

std::string inQuotes(std::wstring_view text) { return "'" + text::toUtf8(text) + "'"; }

// The digits at the end of a name; for "name_7" "7".
std::wstring_view numberAtEnd(std::wstring_view name) {
  const std::size_t last = name.find_last_not_of(L"0123456789");
  return last == name.npos ? name : name.substr(last + 1);
}
std::wstring numbered(const Attribute& attribute, std::wstring_view number) {
  return text::replaceAll(std::wstring(attribute.name), core::kNumberSign, number);
}

class Look {
 public:
  Look(const core::XmlNode& task, const actions::Action& action) : task_(task), action_(action) {}

  std::vector<AttributeFault> run() {
    eachAttribute(task_, [this](const core::XmlAttr& given) {
      if (const Attribute* attribute = actions::findAttribute(action_, given.name))
        readKnown(given, *attribute);
      else
        addUnknown(given.name);
    });
    addMissing();
    dropEqualNames(faults_);
    return std::move(faults_);
  }

 private:
  void add(std::string_view rule, std::wstring_view attribute, std::string text, Mend mend = {}) {
    faults_.push_back({rule, text::toUtf8(attribute), std::move(text), std::move(mend)});
  }
  [[nodiscard]] bool has(std::wstring_view name) const { return core::attrFind(task_.attributes, name) != nullptr; }
  [[nodiscard]] std::wstring_view valueOf(std::wstring_view name) const {
    const core::XmlAttr* found = core::attrFind(task_.attributes, name);
    return found ? found->value : std::wstring_view();
  }

  void addUnknown(std::wstring_view name) {
    std::vector<std::string> known;
    const std::wstring_view atEnd = numberAtEnd(name);
    const std::wstring_view number = atEnd.empty() ? L"0" : atEnd;
    for (const auto& list : {action_.attributes, actions::commonAttributes()})
      for (const Attribute& attribute : list) known.push_back(text::toUtf8(numbered(attribute, number)));
    add("attribute-unknown", name,
        "action '" + text::toUtf8(action_.key) + "' has no attribute " + inQuotes(name) +
            didYouMean(text::toUtf8(name), known),
        nameMend(text::toUtf8(name), known, lacked(number)));
  }

  // The names, with that number, any of which would give the one thing that the action lacks; none where it lacks
  // nothing, or more than one.
  [[nodiscard]] std::vector<std::string> lacked(std::wstring_view number) const {
    std::vector<std::string> names, choices;
    bool hasChoice = false;
    std::size_t count = 0;
    for (const auto& list : {action_.attributes, actions::commonAttributes()}) {
      for (const Attribute& attribute : list) {
        const bool isMissing = !isThere(attribute) && !(attribute.name == L"version" && action_.version.empty());
        if (attribute.need == Need::needed && isMissing) {
          names.push_back(text::toUtf8(numbered(attribute, number)));
          ++count;
        }
        if (attribute.need != Need::oneOf) continue;
        hasChoice = hasChoice || !isMissing;
        choices.push_back(text::toUtf8(numbered(attribute, number)));
      }
    }
    if (!hasChoice && !choices.empty()) {
      names.insert(names.end(), choices.begin(), choices.end());
      ++count;
    }
    return count == 1 ? names : std::vector<std::string>();
  }

  void readKnown(const core::XmlAttr& given, const Attribute& attribute) {
    if (isCounted(attribute)) readNumber(given.name, attribute);
    const bool isPutTogether = attribute.variables && hasVariables(given.value);
    if (given.value.empty() || (isPutTogether && attribute.kind != Kind::pattern)) return;
    readValue(given, attribute);
  }

  // Is the number one of those that are read?
  void readNumber(std::wstring_view name, const Attribute& attribute) {
    const std::wstring_view digits = name.substr(attribute.name.find(core::kNumberSign));
    const auto tellUnread = [&](const std::string& why) {
      add("attribute-number", name, inQuotes(name) + " isn't read: " + why);
    };
    const int number = text::parseInt(digits);
    if (digits.size() > 1 && digits.front() == L'0')
      tellUnread("its number is written " + std::to_string(number));
    else if (attribute.numbers == core::Numbers::counted)
      readCounted(name, number, attribute);
    else if (number >= attribute.most)
      tellUnread("the numbers end at " + std::to_string(attribute.most - 1));
    else if (attribute.numbers == core::Numbers::toFirstGap)
      for (int before = 0; before < number; ++before)
        if (const std::wstring gap = numberedName(attribute, before); !has(gap))
          return tellUnread("the numbers end before " + inQuotes(gap) + ", which isn't there");
  }
  void readCounted(std::wstring_view name, int number, const Attribute& attribute) {
    if (number < endOf(attribute)) return;
    if (!told_.insert(attribute.counter).second) return;
    if (has(attribute.counter))
      return add("count-below-list", attribute.counter,
                 inQuotes(attribute.counter) + " is '" + text::toUtf8(valueOf(attribute.counter)) + "', so that " +
                     inQuotes(name) + " isn't read");
    const Attribute* counter = actions::findAttribute(action_, attribute.counter);
    if (!counter || counter->need != Need::needed)
      add("attribute-missing", attribute.counter,
          "action '" + text::toUtf8(action_.key) + "' has no " + inQuotes(attribute.counter) + ", so that " +
              inQuotes(name) + " isn't read");
  }
  // The first number that isn't read; beyond all where it can't be told.
  [[nodiscard]] int endOf(const Attribute& attribute) const {
    if (attribute.numbers != core::Numbers::counted) return attribute.most;
    const std::wstring_view count = valueOf(attribute.counter);
    if (count.empty()) return attribute.counter == kCountThatMayLack ? attribute.most : 0;
    return hasVariables(count) || !isInteger(count) ? std::numeric_limits<int>::max() : text::parseInt(count);
  }

  void readValue(const core::XmlAttr& given, const Attribute& attribute) {
    switch (attribute.kind) {
      case Kind::word:
        return readWord(given, attribute);
      case Kind::flag:
        return readFlag(given);
      case Kind::integer:
      case Kind::number:
        return readRange(given, attribute);
      case Kind::feature:
        if (!isFeatureCode(given.value)) add("number-broken", given.name, said(given, "no code of a feature type"));
        return;
      case Kind::pattern:
        return readPatterns(given);
      case Kind::newModel:
        if (!text::isModelName(given.value)) add("model-name", given.name, said(given, "no name for a new model"));
        return;
      case Kind::format:
        if (!actions::NumberFormat::read(given.value))
          add("number-broken", given.name,
              inQuotes(given.name) + ": not one of a single floating number: " + inQuotes(given.value));
        return;
      default:
        return;
    }
  }
  static std::string said(const core::XmlAttr& given, const std::string& fault) {
    return inQuotes(given.name) + ": " + fault + ": " + inQuotes(given.value);
  }

  void readWord(const core::XmlAttr& given, const Attribute& attribute) {
    const std::vector<std::string> known = wordsOf(attribute);
    const std::string value = text::toUtf8(given.value);
    if (std::find(known.begin(), known.end(), value) != known.end()) return;
    // A number isn't the slip of another one, and a sign or two are as near to any word as to the one that was meant.
    const bool isSlip = value.size() > 2 && !isInteger(given.value);
    const std::string hint = isSlip ? didYouMean(value, known) : std::string();
    add("word-unknown", given.name, said(given, noneOf(attribute)) + hint, wordMend(value, known));
  }
  void readFlag(const core::XmlAttr& given) {
    if (given.value == L"true" || given.value == L"false") return;
    if (auto fault = lettersFault(given.name, given.value))
      faults_.push_back(std::move(*fault));
    else
      add("word-unknown", given.name, said(given, "neither 'true' nor 'false'"));
  }
  void readRange(const core::XmlAttr& given, const Attribute& attribute) {
    const bool isWhole = attribute.kind == Kind::integer;
    if (isWhole ? !isInteger(given.value) : !isNumber(given.value))
      return add("number-broken", given.name, said(given, isWhole ? "no whole number" : "no number"));
    const double number = text::parseDouble(given.value);
    if (!attribute.range.isThere() || (number >= attribute.range.least && number <= attribute.range.most)) return;
    add("number-range", given.name,
        said(given, "not between " + text::toUtf8(text::shortest(attribute.range.least)) + " and " +
                        text::toUtf8(text::shortest(attribute.range.most))));
  }
  // An attribute may hold a pattern a line.
  void readPatterns(const core::XmlAttr& given) {
    for (const std::wstring& pattern : text::split(text::replaceAll(std::wstring(given.value), L"&#10;", L"\n"), L'\n'))
      if (const std::string fault = expressionFault(pattern); !fault.empty())
        add("pattern-broken", given.name, inQuotes(given.name) + ": " + fault);
  }

  [[nodiscard]] bool isThere(const Attribute& attribute) const {
    if (!isCounted(attribute)) return has(attribute.name);
    bool found = false;
    eachAttribute(task_, [&](const core::XmlAttr& given) {
      found = found || actions::findAttribute(action_, given.name) == &attribute;
    });
    return found;
  }

  void addMissing() {
    const Attribute* first = nullptr;
    bool hasWork = false;
    std::string names;
    for (const Attribute& attribute : action_.attributes) {
      if (attribute.need == Need::needed) addMissing(attribute);
      if (attribute.need != Need::oneOf) continue;
      if (!first) first = &attribute;
      hasWork = hasWork || isThere(attribute);
      names += (names.empty() ? "" : ", ") + inQuotes(numberedName(attribute, 0));
    }
    if (first && !hasWork) return addMissing(numberedName(*first, 0), names);
    // The one thing that gives work does so in each entry.
    if (first && names.find(',') == names.npos) addMissing(*first);
  }
  void addMissing(const Attribute& attribute) {
    if (!isThere(attribute)) return addMissing(numberedName(attribute, 0), "");
    if (!isCounted(attribute)) return;
    for (const auto& [number, other] : entriesOf(attribute))
      if (const std::wstring name = numberedName(attribute, number); !has(name))
        add("attribute-missing", name,
            "action '" + text::toUtf8(action_.key) + "' has " + inQuotes(other) + " and no " + inQuotes(name));
  }
  // The entries of the list that the attribute is one of: each number that is read, and an attribute that has it.
  [[nodiscard]] std::map<int, std::wstring_view> entriesOf(const Attribute& attribute) const {
    std::map<int, std::wstring_view> entries;
    eachAttribute(task_, [&](const core::XmlAttr& given) {
      const Attribute* other = actions::findAttribute(action_, given.name);
      if (!other || !isCounted(*other) || other->counter != attribute.counter) return;
      const int number = text::parseInt(numberAtEnd(given.name));
      const bool isRead = number < endOf(attribute) && given.name == numberedName(*other, number);
      if (isRead) entries.emplace(number, given.name);
    });
    return entries;
  }
  // names: of those any of which would do; empty for the one alone.
  void addMissing(const std::wstring& name, const std::string& names) {
    const std::string action = "action '" + text::toUtf8(action_.key) + "' has ";
    const bool isAlone = names.empty() || names.find(',') == names.npos;
    add("attribute-missing", name, isAlone ? action + "no " + inQuotes(name) : action + "none of " + names);
  }

  const core::XmlNode& task_;
  const actions::Action& action_;
  std::set<std::wstring_view> told_;  // counters
  std::vector<AttributeFault> faults_;
};

}  // namespace

std::vector<AttributeFault> attributeFaults(const core::XmlNode& task, const actions::Action& action) {
  return Look(task, action).run();
}

bool isFeatureCode(std::wstring_view value) {
  return isInteger(value) && text::parseInt(value) >= 0 && text::parseInt(value) <= core::kLastFeatureCode;
}

std::string noneOf(const Attribute& attribute) {
  std::string words;
  for (const std::string& word : wordsOf(attribute)) words += (words.empty() ? "" : ", ") + word;
  return "none of " + words;
}

std::optional<AttributeFault> lettersFault(std::wstring_view name, std::wstring_view value) {
  Mend mend = flagMend(text::toUtf8(value));
  if (mend.of == Mend::Of::nothing) return std::nullopt;
  std::string text = inQuotes(name) + ": " + inQuotes(value) + " isn't '" + mend.with + "': only small letters count";
  return AttributeFault{"switch-letters", text::toUtf8(name), std::move(text), std::move(mend)};
}

std::string misspelt(const core::XmlNode& node, std::string_view name) {
  std::vector<std::string> given;
  eachAttribute(node, [&](const core::XmlAttr& attr) { given.push_back(text::toUtf8(attr.name)); });
  const std::string found = nearest(name, given);
  return found.empty() ? "" : "; '" + found + "' isn't it";
}

void dropEqualNames(std::vector<AttributeFault>& faults) {
  std::map<std::string, int> times;
  for (const AttributeFault& fault : faults)
    if (fault.mend.of == Mend::Of::name) ++times[fault.mend.with];
  for (AttributeFault& fault : faults)
    if (fault.mend.of == Mend::Of::name && times[fault.mend.with] > 1) fault.mend = {};
}

}  // namespace kelvane
