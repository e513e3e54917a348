#include "kelvane/check/filter_check.h"

#include <algorithm>

#include "documents/predicate_table.h"
#include "kelvane/base/nearest.h"
#include "kelvane/check/text_check.h"
#include "kelvane/vocabulary/words.h"
#include "text/encoding.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

using core::Attribute;
using core::Kind;

constexpr const char* kRule = "filter-attribute";

// What the evaluation reads of each item.
constexpr Attribute kItemAttributes[] = {
    {.name = L"type"},
    {.name = L"filtertype", .kind = Kind::flag},
    {.name = L"opand", .kind = Kind::flag},
};

class Item {
 public:
  explicit Item(const core::XmlNode& item) : item_(item), type_(valueOf(L"type")) {}

  void readPredicate() {
    const documents::Predicate* predicate = documents::findPredicate(text::fromUtf8(type_));
    if (!predicate)
      return add("filter-unknown", "type", "unknown filter '" + type_ + "'" + didYouMean(type_, predicateKeys()));
    for (const Attribute& row : predicate->attributes) readAttribute(row);
    if (type_ == "parameter") readComparedNumber();
    addUnknown(*predicate);
    addConstant(*predicate);
  }
  void readSwitches() {
    if (!has(L"filtertype"))
      add("filter-without-filtertype", "filtertype",
          "filter '" + type_ + "' has no 'filtertype': its item holds where the test fails");
    for (const wchar_t* name : {L"filtertype", L"opand"}) readSwitch(name);
  }
  [[nodiscard]] bool hasType() const { return has(L"type"); }
  void add(std::string_view rule, std::string attribute, std::string text, Mend mend = {}) {
    faults_.push_back({rule, std::move(attribute), std::move(text), std::move(mend)});
  }
  std::vector<AttributeFault> take() {
    dropEqualNames(faults_);
    return std::move(faults_);
  }

 private:
  [[nodiscard]] bool has(std::wstring_view name) const { return core::attrFind(item_.attributes, name) != nullptr; }
  [[nodiscard]] std::string valueOf(std::wstring_view name) const {
    const core::XmlAttr* found = core::attrFind(item_.attributes, name);
    return found ? text::toUtf8(found->value) : std::string();
  }
  void tell(const std::string& name, const std::string& fault, Mend mend) {
    add(kRule, name, "filter '" + type_ + "', '" + name + "': " + fault + ": '" + valueOf(text::fromUtf8(name)) + "'",
        std::move(mend));
  }

  void readSwitch(std::wstring_view name) {
    const std::string value = valueOf(name), shown = text::toUtf8(name);
    if (value.empty() || value == "true" || value == "false") return;
    if (auto fault = lettersFault(name, text::fromUtf8(value)))
      faults_.push_back(std::move(*fault));
    else
      add("word-unknown", shown, "'" + shown + "': neither 'true' nor 'false': '" + value + "'");
  }

  void readAttribute(const Attribute& row) {
    const core::XmlAttr* found = core::attrFind(item_.attributes, row.name);
    const std::string name = text::toUtf8(row.name);
    const bool isNeeded = row.need == core::Need::needed;
    if (!found) {
      if (isNeeded) add(kRule, name, "filter '" + type_ + "' has no '" + name + "'");
      return;
    }
    if (row.variables)
      for (const std::string& fault : templateFaults(found->value))
        add("template", name, std::string("'").append(name).append("': ").append(fault));
    const bool isPattern = row.kind == Kind::pattern && !(row.variables && hasVariables(found->value));
    std::string fault = isPattern ? patternFault(found->value) : std::string();
    // An optional value may be empty: it asks nothing then.
    if (row.kind != Kind::pattern && (isNeeded || !found->value.empty())) fault = valueFault(found->value, row);
    if (!fault.empty()) tell(name, fault, mendOf(text::toUtf8(found->value), row));
  }
  static Mend mendOf(const std::string& value, const Attribute& row) {
    if (row.kind == Kind::flag) return flagMend(value);
    return row.kind == Kind::word ? wordMend(value, wordsOf(row)) : Mend();
  }
  static std::string valueFault(std::wstring_view value, const Attribute& row) {
    switch (row.kind) {
      case Kind::integer:
        return isInteger(value) ? "" : "no whole number";
      case Kind::index:
        return value == L"*" || isInteger(value) ? "" : "neither a whole number nor '*'";
      case Kind::feature:
        return isFeatureCode(value) ? "" : "no code of a feature type";
      case Kind::number:
        return isNumber(value) ? "" : "no number";
      case Kind::measure:
        return isNumber(value) && isReadAsNumber(value) ? "" : "no number such as '297' or '-1.5e2'";
      case Kind::flag:
        return value == L"true" || value == L"false" ? "" : "neither 'true' nor 'false'";
      case Kind::word:
        return isWordOf(value, row) ? "" : noneOf(row);
      default:
        return {};
    }
  }
  static bool isWordOf(std::wstring_view value, const Attribute& row) {
    const auto words = text::split(row.words, L'|');  // an empty one, too
    return std::find(words.begin(), words.end(), value) != words.end();
  }

  // A comparison with an order or a margin is one of numbers, and reads them up to a comma.
  void readComparedNumber() {
    const std::string order = valueOf(L"ncomp");
    const bool isOrdered = order == "1" || order == "2" || order == "4" || order == "5";
    if (!isOrdered && valueOf(L"epsilon").empty()) return;
    const std::string value = valueOf(L"value");
    if (value.find(',') != value.npos && isReadAsNumber(text::fromUtf8(value)))
      add(kRule, "value", "filter 'parameter', 'value': a number ends at its comma: '" + value + "'");
  }

  void addUnknown(const documents::Predicate& predicate) {
    std::vector<std::string> known, lacked;
    for (const Attribute& row : predicate.attributes)
      if (row.need == core::Need::needed && !has(row.name)) lacked.push_back(text::toUtf8(row.name));
    if (lacked.size() > 1) lacked.clear();
    for (const auto& list :
         {predicate.attributes, actions::commonAttributes(), std::span<const Attribute>(kItemAttributes)})
      for (const Attribute& row : list) known.push_back(text::toUtf8(row.name));
    eachAttribute(item_, [&](const core::XmlAttr& given) {
      const std::string name = text::toUtf8(given.name);
      if (std::find(known.begin(), known.end(), name) != known.end()) return;
      add("attribute-unknown", name, "filter '" + type_ + "' has no attribute '" + name + "'" + didYouMean(name, known),
          nameMend(name, known, lacked));
    });
  }

  // What has one answer for all models.
  void addConstant(const documents::Predicate& predicate) {
    // Each model has one; a layer or a view of any name is still a question.
    constexpr std::wstring_view kOfEachModel[] = {L"filename", L"path", L"unitSystem"};
    if (std::find(std::begin(kOfEachModel), std::end(kOfEachModel), predicate.key) != std::end(kOfEachModel)) {
      const std::string name = text::toUtf8(predicate.attributes.front().name), pattern = valueOf(text::fromUtf8(name));
      if (pattern == "*" || pattern == "/.*/" || pattern == "/^.*$/")
        add("predicate-constant", name, "filter '" + type_ + "': '" + pattern + "' fits everything");
      if (pattern.empty() && has(text::fromUtf8(name)))
        add("predicate-constant", name, "filter '" + type_ + "': an empty text fits nothing");
    }
    addWithoutQuestion(predicate);
  }
  void addWithoutQuestion(const documents::Predicate& predicate) {
    bool asks = false;
    std::string names, first;
    for (const Attribute& row : predicate.attributes) {
      if (row.need != core::Need::oneOf) continue;
      const std::string value = valueOf(row.name), name = text::toUtf8(row.name);
      asks = asks || (!value.empty() && !(row.kind == Kind::flag && value == "false"));
      if (names.empty()) first = name;
      names += (names.empty() ? "'" : ", '") + name + "'";
    }
    if (!names.empty() && !asks)
      add("predicate-constant", first, "filter '" + type_ + "' asks nothing: none of " + names + " is set");
  }

  const core::XmlNode& item_;
  std::string type_;
  std::vector<AttributeFault> faults_;
};

}  // namespace

std::vector<AttributeFault> predicateFaults(const core::XmlNode& item) {
  Item look(item);
  look.readPredicate();
  return look.take();
}

std::vector<AttributeFault> itemFaults(const core::XmlNode& item) {
  Item look(item);
  if (!look.hasType()) {
    look.add("filter-without-type", "type", "a filter item without 'type'" + misspelt(item, "type"));
    return look.take();
  }
  look.readPredicate();
  look.readSwitches();
  return look.take();
}

}  // namespace kelvane
