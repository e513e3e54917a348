#include "kelvane/run/filter_explanation.h"

#include "documents/filter.h"
#include "kelvane/check/text_check.h"
#include "language/compare.h"
#include "language/comparison_watch.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

constexpr std::size_t kMostComparisons = 8;  // shown of one item
constexpr const char* kIndent = "    ";

std::string inQuotes(std::wstring_view text) { return '"' + text::toUtf8(text) + '"'; }

// The attributes that the predicate reads; those of the item itself are told in words.
std::string asked(const core::XmlNode& item) {
  std::string type, rest;
  for (const core::XmlAttrBlock* block = item.attributes; block; block = block->next) {
    for (std::uint16_t i = 0; i < block->count; ++i) {
      const core::XmlAttr& attribute = *block->items[i];
      if (attribute.name == L"type")
        type = text::toUtf8(attribute.value);
      else if (attribute.name != L"filtertype" && attribute.name != L"opand")
        rest += " " + text::toUtf8(attribute.name) + "=" + inQuotes(attribute.value);
    }
  }
  return type + rest;
}

std::string answer(documents::Answer result) {
  switch (result) {
    case documents::Answer::no:
      return "false";
    case documents::Answer::notApplicable:
      return "not applicable to this model";
    case documents::Answer::noKey:
      return "no such filter, which counts as true";
    case documents::Answer::undecided:
      return "a comparison was given up";
    case documents::Answer::yes:
      break;
  }
  return "true";
}

std::string answer(language::Compared result) {
  switch (result) {
    case language::Compared::match:
      return "match";
    case language::Compared::none:
      return "no match";
    case language::Compared::givenUp:
      break;
  }
  return "given up, it takes too many steps";
}

class Explainer : public documents::FilterWatch {
 public:
  Explainer(FilterExplanation& into, const std::function<std::vector<TroubleLine>()>& troubleOf)
      : into_(into), troubleOf_(troubleOf) {}

  void itemBegins(const core::XmlNode& item) override {
    ++number_;
    negated_ = true;
    if (const core::XmlAttr* type = core::attrFind(item.attributes, L"filtertype")) negated_ = type->value != L"true";
    line(std::to_string(number_) + "  " + (negated_ ? "not " : "") + asked(item));
    (void)comparisons_.take();
    (void)language::takeRefused();
  }

  void itemEnds(const core::XmlNode&, documents::Answer result, bool fails) override {
    tellComparisons();
    for (const language::RefusedExpression& expression : language::takeRefused()) line(kIndent + refusal(expression));
    if (troubleOf_) {
      for (const TroubleLine& trouble : troubleOf_())
        line(kIndent + std::string(trouble.level == 2 ? "error: " : "warning: ") + trouble.text);
    }
    const bool turned =
        negated_ && result != documents::Answer::notApplicable && result != documents::Answer::undecided;
    line(kIndent + answer(result) + (turned ? ", negated" : "") + ": the item " + (fails ? "fails" : "holds"));
    (fails ? failing_ : holding_).push_back(number_);
  }

  void linked(Link link) override {
    if (link == Link::withAnd) return line("AND");
    if (link == Link::settled) return line("OR  (it holds already: what follows in this group isn't asked)");
    line("OR");
    failing_.clear();
    holding_.clear();
  }

  // Of what stands behind the last OR that began anew.
  [[nodiscard]] std::string reason(bool holds) const {
    const std::vector<int>& items = holds ? holding_ : failing_;
    if (number_ == 0) return "it has no items";
    std::string text = items.size() == 1 ? "item " : "items ";
    for (std::size_t i = 0; i < items.size(); ++i) {
      if (i > 0) text += i + 1 == items.size() ? " and " : ", ";
      text += std::to_string(items[i]);
    }
    return text + (holds ? (items.size() == 1 ? " holds" : " hold") : (items.size() == 1 ? " fails" : " fail"));
  }

 private:
  void line(std::string_view text) { into_.lines.emplace_back(text); }

  void tellComparisons() {
    auto all = comparisons_.take();
    // By these the predicates only tell numbers from texts.
    std::erase_if(all, [](const language::NotedComparison& comparison) {
      return comparison.pattern == language::kIntegerPattern || comparison.pattern == language::kDoublePattern;
    });
    for (std::size_t i = 0; i < all.size() && i < kMostComparisons; ++i) {
      line(kIndent + inQuotes(all[i].pattern) + " against " + inQuotes(all[i].text) + ": " + answer(all[i].result));
    }
    if (all.size() > kMostComparisons) {
      line(kIndent + ("... and " + std::to_string(all.size() - kMostComparisons)) + " more comparisons");
    }
  }

  FilterExplanation& into_;
  const std::function<std::vector<TroubleLine>()>& troubleOf_;
  language::ComparisonWatch comparisons_;
  int number_ = 0;
  bool negated_ = false;
  std::vector<int> failing_, holding_;
};

}  // namespace

FilterExplanation explainFilter(const core::XmlNode& block, creo::ProMdl model,
                                const std::function<std::vector<TroubleLine>()>& troubleOf) {
  FilterExplanation explanation;
  if (troubleOf) (void)troubleOf();
  Explainer explainer(explanation, troubleOf);
  explanation.holds = documents::evaluateFilter(block, {}, model, true, &explainer) == documents::kFilterHolds;
  explanation.reason = explainer.reason(explanation.holds);
  return explanation;
}

}  // namespace kelvane
