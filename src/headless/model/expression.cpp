#include "headless/model/expression.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "headless/model/text_functions.h"
#include "headless/store/names.h"
#include "text/encoding.h"
#include "text/format.h"

namespace headless {
namespace {

constexpr int kDeepest = 200;
constexpr double kDegree = std::numbers::pi / 180;

// What rounding passes over, so that a number that is whole but for its last digits stays.
constexpr double kWhole = 1e-9;
constexpr int kMostPlaces = 8;

// sign: 1 upwards, -1 downwards. places: decimals, a whole number; with more than 8 nothing is rounded.
double rounded(double value, double places, int sign) {
  const double whole = std::trunc(places);
  if (whole > kMostPlaces) return value;
  const double scale = std::pow(10, whole);
  return sign * std::ceil((sign * value - kWhole) * scale) / scale + 0.0;
}

double dead(double value, double low, double high) {
  return value < low ? value - low : value > high ? value - high : 0;
}

struct Function {
  std::string_view name;
  std::size_t arguments;
  double (*value)(const double* arguments);
};
constexpr Function kFunctions[] = {
    {"sin", 1, [](const double* a) { return std::sin(a[0] * kDegree); }},
    {"cos", 1, [](const double* a) { return std::cos(a[0] * kDegree); }},
    {"tan", 1, [](const double* a) { return std::tan(a[0] * kDegree); }},
    {"asin", 1, [](const double* a) { return std::asin(a[0]) / kDegree; }},
    {"acos", 1, [](const double* a) { return std::acos(a[0]) / kDegree; }},
    {"atan", 1, [](const double* a) { return std::atan(a[0]) / kDegree; }},
    {"atan2", 2, [](const double* a) { return std::atan2(a[0], a[1]) / kDegree; }},
    {"sinh", 1, [](const double* a) { return std::sinh(a[0]); }},
    {"cosh", 1, [](const double* a) { return std::cosh(a[0]); }},
    {"tanh", 1, [](const double* a) { return std::tanh(a[0]); }},
    {"sqrt", 1, [](const double* a) { return std::sqrt(a[0]); }},
    {"log", 1, [](const double* a) { return std::log10(a[0]); }},
    {"ln", 1, [](const double* a) { return std::log(a[0]); }},
    {"exp", 1, [](const double* a) { return std::exp(a[0]); }},
    {"abs", 1, [](const double* a) { return std::abs(a[0]); }},
    {"ceil", 1, [](const double* a) { return rounded(a[0], 0, 1); }},
    {"ceil", 2, [](const double* a) { return rounded(a[0], a[1], 1); }},
    {"floor", 1, [](const double* a) { return rounded(a[0], 0, -1); }},
    {"floor", 2, [](const double* a) { return rounded(a[0], a[1], -1); }},
    {"max", 2, [](const double* a) { return std::max(a[0], a[1]); }},
    {"min", 2, [](const double* a) { return std::min(a[0], a[1]); }},
    {"mod", 2, [](const double* a) { return std::fmod(a[0], a[1]); }},
    {"pow", 2, [](const double* a) { return std::pow(a[0], a[1]); }},
    {"sign", 2, [](const double* a) { return std::copysign(a[0], a[1]); }},
    {"near", 3, [](const double* a) { return std::abs(a[0] - a[1]) <= a[2] ? 1.0 : 0.0; }},
    {"dead", 3, [](const double* a) { return dead(a[0], a[1], a[2]); }},
    {"bound", 3, [](const double* a) { return std::min(std::max(a[0], a[1]), a[2]); }},
};
// What asks for graphs, other models, or a model that nobody tells of: known, not worked out.
constexpr std::string_view kOtherFunctions[] = {
    "evalgraph",      "comparegraphs",  "graph",          "trajpar_of_pnt", "cable_len", "lookup_inst",
    "rel_model_name", "rel_model_type", "material_param", "massprop_param", "mp_mass",   "mp_assigned_mass",
    "mp_density",     "mp_volume",      "mp_surf_area",   "mp_cg_x",        "mp_cg_y",   "mp_cg_z"};

struct Constant {
  std::string_view name;
  RelationValue value;
};
const std::vector<Constant>& constants() {
  static const std::vector<Constant> all = {{"PI", std::numbers::pi},
                                            {"G", 9.8},
                                            {"C1", 1.0},
                                            {"C2", 2.0},
                                            {"C3", 3.0},
                                            {"C4", 4.0},
                                            {"YES", true},
                                            {"NO", false},
                                            {"TRUE", true},
                                            {"FALSE", false},
                                            {"TRAJPAR", {}}};
  return all;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isNameStart(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
bool isNamePart(char c) { return isNameStart(c) || isDigit(c); }

bool isKnown(const RelationValue& value) { return value.index() != 0; }
bool isText(const RelationValue& value) { return std::holds_alternative<std::string>(value); }

struct Argument {
  RelationValue value;
  std::wstring fault;  // of its values
};

// Reads and works out in one go. What can't be read ends both. What can't be worked out gives no value, and the reading
// goes on: it may turn out that the value isn't wanted.
class Parser {
 public:
  Parser(std::string_view text, const RelationLookup& lookup, const std::unordered_set<std::string>* guarded,
         const RelationCall& ofModel)
      : rest_(text), lookup_(lookup), guarded_(guarded), ofModel_(ofModel) {}
  Evaluated run() {
    RelationValue value = either();
    skipBlanks(rest_);
    if (!rest_.empty())
      fail(rest_.front() == ')' ? L"a bracket closes that wasn't opened"
                                : text::format(L"'%s' isn't expected", text::fromUtf8(rest_)));
    if (!fault_.empty()) return {{}, std::move(fault_)};
    if (!valueFault_.empty()) return {{}, std::move(valueFault_), true};
    return {std::move(value), {}, false, std::move(unworked_)};
  }

 private:
  // Counts what calls itself.
  class Level {
   public:
    explicit Level(Parser& parser) : parser_(parser) {
      if (++parser_.depth_ > kDeepest) parser_.fail(L"it is nested too deeply");
    }
    ~Level() { --parser_.depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

   private:
    Parser& parser_;
  };

  RelationValue fail(std::wstring reason) {
    if (fault_.empty()) fault_ = std::move(reason);
    rest_ = {};
    return {};
  }
  RelationValue failByValue(std::wstring reason) {
    if (valueFault_.empty()) valueFault_ = std::move(reason);
    return {};
  }
  RelationValue notWorkedOut(std::string_view name) {
    if (unworked_.empty()) unworked_ = name;
    return {};
  }
  RelationValue answered(std::string_view name, Evaluated answer) {
    if (!answer.fault.empty()) return failByValue(std::move(answer.fault));
    return isKnown(answer.value) ? std::move(answer.value) : notWorkedOut(name);
  }
  bool take(std::string_view sign) {
    skipBlanks(rest_);
    if (!rest_.starts_with(sign)) return false;
    rest_.remove_prefix(sign.size());
    return true;
  }
  // The longest of the signs that stands next; empty for none.
  std::string_view takeOneOf(std::initializer_list<std::string_view> signs) {
    for (const std::string_view sign : signs)
      if (take(sign)) return sign;
    return {};
  }

  RelationValue either() {
    RelationValue left = both();
    while (take("|")) left = joined(left, both(), [](bool a, bool b) { return a || b; });
    return left;
  }
  RelationValue both() {
    RelationValue left = negation();
    while (take("&")) left = joined(left, negation(), [](bool a, bool b) { return a && b; });
    return left;
  }
  RelationValue joined(const RelationValue& left, const RelationValue& right, bool (*join)(bool, bool)) {
    if (isText(left) || isText(right)) return failByValue(L"a text is neither yes nor no");
    if (!isKnown(left) || !isKnown(right)) return {};
    return join(truth(left).value_or(false), truth(right).value_or(false));
  }
  RelationValue negation() {
    bool turned = false, any = false;
    while (!takeOneOf({"!", "~"}).empty()) {
      turned = !turned;
      any = true;
    }
    RelationValue value = comparison();
    if (!any || !isKnown(value)) return value;
    if (isText(value)) return failByValue(L"a text is neither yes nor no");
    return truth(value).value_or(false) != turned;
  }

  RelationValue comparison() {
    RelationValue left = sum();
    const std::string_view sign = takeOneOf({"==", "!=", "~=", "<>", ">=", "<=", ">", "<"});
    if (sign.empty()) return left;
    const RelationValue right = sum();
    if (!isKnown(left) || !isKnown(right)) return {};
    if (isText(left) != isText(right)) return failByValue(L"a text is compared with a number");
    const int order = isText(left) ? std::get<std::string>(left).compare(std::get<std::string>(right))
                                   : compareNumbers(*number(left), *number(right));
    if (sign == "==") return order == 0;
    if (sign == ">=") return order >= 0;
    if (sign == "<=") return order <= 0;
    if (sign == ">") return order > 0;
    if (sign == "<") return order < 0;
    return order != 0;
  }
  static int compareNumbers(double left, double right) { return left < right ? -1 : left > right ? 1 : 0; }

  RelationValue sum() {
    RelationValue left = product();
    for (std::string_view sign = takeOneOf({"+", "-"}); !sign.empty(); sign = takeOneOf({"+", "-"})) {
      const RelationValue right = product();
      if (sign == "+" && isText(left) && isText(right))
        left = std::get<std::string>(left) + std::get<std::string>(right);
      else
        left = computed(sign.front(), left, right);
    }
    return left;
  }
  RelationValue product() {
    RelationValue left = signedPower();
    for (std::string_view sign = takeOneOf({"*", "/"}); !sign.empty(); sign = takeOneOf({"*", "/"}))
      left = computed(sign.front(), left, signedPower());
    return left;
  }
  RelationValue signedPower() {
    bool minus = false;
    for (std::string_view sign = takeOneOf({"+", "-"}); !sign.empty(); sign = takeOneOf({"+", "-"}))
      if (sign == "-") minus = !minus;
    RelationValue value = power();
    return minus ? computed('-', 0.0, value) : value;
  }
  RelationValue power() {
    const Level level(*this);
    RelationValue base = operand();
    if (!take("^")) return base;
    return computed('^', base, signedPower());
  }
  RelationValue computed(char sign, const RelationValue& left, const RelationValue& right) {
    if (isText(left) || isText(right)) return failByValue(L"a text stands where a number is needed");
    if (!isKnown(left) || !isKnown(right)) return {};
    const double a = *number(left), b = *number(right);
    const double result = sign == '+'   ? a + b
                          : sign == '-' ? a - b
                          : sign == '*' ? a * b
                          : sign == '/' ? (b == 0 ? std::nan("") : a / b)
                                        : std::pow(a, b);
    return finite(result);
  }
  RelationValue finite(double value) {
    if (!std::isfinite(value)) return failByValue(L"it gives no number");
    return value;
  }

  RelationValue operand() {
    const Level level(*this);
    RelationValue value = bareOperand();
    if (!take("[")) return value;
    const auto close = rest_.find(']');
    if (close == std::string_view::npos) return fail(L"a bracket isn't closed");
    const std::string unit = "[" + std::string(rest_.substr(0, close)) + "]";
    rest_.remove_prefix(close + 1);
    const auto factor = lookup_(unit);
    if (!factor) return fail(text::format(L"'%s' is no unit", text::fromUtf8(unit)));
    return computed('*', value, *factor);
  }
  RelationValue bareOperand() {
    skipBlanks(rest_);
    if (rest_.empty()) return fail(L"an operand is missing");
    const char c = rest_.front();
    if (c == '(') {
      rest_.remove_prefix(1);
      RelationValue value = either();
      if (!take(")")) return fail(L"a bracket isn't closed");
      return value;
    }
    if (c == '"' || c == '\'') return quoted(c);
    if (isDigit(c) || c == '.') return literal();
    if (c == '$' || c == '&') rest_.remove_prefix(1);
    const std::string_view name = takeName(rest_);
    if (name.empty()) return fail(text::format(L"an operand is missing before '%s'", text::fromUtf8(rest_)));
    if (take("(")) return call(name);
    return named(name);
  }
  RelationValue quoted(char quote) {
    const auto close = rest_.find(quote, 1);
    if (close == std::string_view::npos) return fail(L"a text isn't closed");
    std::string value(rest_.substr(1, close - 1));
    rest_.remove_prefix(close + 1);
    return value;
  }
  RelationValue literal() {
    double value = 0;
    const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
    if (error != std::errc()) return fail(text::format(L"'%s' is no number", text::fromUtf8(rest_)));
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    if (!rest_.empty() && isNamePart(rest_.front()))
      return fail(text::format(L"'%s' isn't expected", text::fromUtf8(rest_)));
    return value;
  }
  RelationValue named(std::string_view name) {
    if (auto found = lookup_(name)) return std::move(*found);
    for (const Constant& constant : constants())
      if (sameName(constant.name, name)) return isKnown(constant.value) ? constant.value : notWorkedOut(name);
    if (auto answer = ofModel_ ? ofModel_(name, nullptr) : std::nullopt) return answered(name, std::move(*answer));
    if (name.find(':') != std::string_view::npos) return notWorkedOut(name);  // of another model or feature
    std::wstring reason = text::format(L"'%s' is neither a parameter nor a dimension", text::fromUtf8(name));
    return guarded_ && guarded_->contains(folded(name)) ? failByValue(std::move(reason)) : fail(std::move(reason));
  }
  // exists("LENGTH"): whether the model has such a parameter or dimension.
  RelationValue exists(const std::vector<RelationValue>& arguments) {
    if (arguments.size() != 1) return fail(L"'exists' asks for a name in quotes");
    if (!isKnown(arguments[0])) return {};
    if (!isText(arguments[0])) return failByValue(L"'exists' asks for a name in quotes");
    const std::string& name = std::get<std::string>(arguments[0]);
    if (name.find(':') != std::string::npos) return notWorkedOut(name);  // of another model or feature
    return lookup_(name).has_value();
  }
  // if(condition, then, otherwise)
  RelationValue chosen(std::vector<Argument>& arguments) {
    Argument& condition = arguments[0];
    if (!condition.fault.empty()) return failByValue(std::move(condition.fault));
    if (isText(condition.value)) return failByValue(L"a text is neither yes nor no");
    const auto holds = truth(condition.value);
    if (!holds) return {};
    Argument& entry = arguments[*holds ? 1 : 2];
    return entry.fault.empty() ? std::move(entry.value) : failByValue(std::move(entry.fault));
  }
  // An argument with the fault of its own values.
  Argument argument() {
    std::wstring before = std::exchange(valueFault_, {});
    RelationValue value = either();
    return {std::move(value), std::exchange(valueFault_, std::move(before))};
  }
  RelationValue call(std::string_view name) {
    std::vector<Argument> given;
    if (!take(")")) {
      do given.push_back(argument());
      while (take(","));
      if (!take(")")) return fail(L"a bracket isn't closed");
    }
    if (sameName(name, "if") && given.size() == 3) return chosen(given);
    std::vector<RelationValue> arguments;
    for (Argument& argument : given) {
      if (!argument.fault.empty()) failByValue(std::move(argument.fault));
      arguments.push_back(std::move(argument.value));
    }
    return calledByName(name, arguments);
  }
  RelationValue calledByName(std::string_view name, const std::vector<RelationValue>& arguments) {
    for (const Function& function : kFunctions)
      if (function.arguments == arguments.size() && sameName(function.name, name)) return called(function, arguments);
    if (sameName(name, "exists")) return exists(arguments);
    if (auto evaluated = textFunction(name, arguments))
      return evaluated->fault.empty() ? std::move(evaluated->value) : failByValue(std::move(evaluated->fault));
    if (auto answer = ofModel_ ? ofModel_(name, &arguments) : std::nullopt) return answered(name, std::move(*answer));
    const bool isOfAnother = name.find(':') != std::string_view::npos;
    if (isOfAnother || std::any_of(std::begin(kOtherFunctions), std::end(kOtherFunctions),
                                   [name](std::string_view other) { return sameName(other, name); }))
      return notWorkedOut(name);
    return fail(
        text::format(L"'%s' is no function of %d arguments", text::fromUtf8(name), static_cast<int>(arguments.size())));
  }
  RelationValue called(const Function& function, const std::vector<RelationValue>& arguments) {
    std::vector<double> numbers;
    for (const RelationValue& argument : arguments) {
      if (isText(argument)) return failByValue(L"a text stands where a number is needed");
      if (!isKnown(argument)) return {};
      numbers.push_back(*number(argument));
    }
    return finite(function.value(numbers.data()));
  }

  std::string_view rest_;
  const RelationLookup& lookup_;
  const std::unordered_set<std::string>* guarded_;
  const RelationCall& ofModel_;
  std::wstring fault_, valueFault_;
  std::string unworked_;
  int depth_ = 0;
};

}  // namespace

Evaluated evaluate(std::string_view expression, const RelationLookup& lookup,
                   const std::unordered_set<std::string>* guarded, const RelationCall& ofModel) {
  return Parser(expression, lookup, guarded, ofModel).run();
}

std::string_view takeName(std::string_view& text) {
  if (text.empty() || !isNameStart(text.front())) return {};
  std::size_t end = 1;
  while (end < text.size() &&
         (isNamePart(text[end]) || (text[end] == ':' && end + 1 < text.size() && isNamePart(text[end + 1]))))
    ++end;
  const std::string_view name = text.substr(0, end);
  text.remove_prefix(end);
  return name;
}

void skipBlanks(std::string_view& text) {
  const auto first = text.find_first_not_of(" \t\r");
  text.remove_prefix(first == std::string_view::npos ? text.size() : first);
}

}  // namespace headless
