#include "kelvane/vocabulary/relax_ng_attributes.h"

#include <algorithm>
#include <set>

#include "core/feature_codes.h"
#include "kelvane/base/xml_text.h"
#include "kelvane/vocabulary/words.h"
#include "text/encoding.h"
#include "text/numbers.h"

namespace kelvane {
namespace {

using core::Attribute;
using core::Kind;
using core::Need;

// Name classes hold whole names, so that the numbers of a list are written out. A list with a counter has no end of
// its own; hundred names are more than lists have.
constexpr int kMostNumbers = 100;
constexpr const char* kText = "<text/>";
constexpr std::size_t kLineOfNames = 100;  // characters

std::string valueElement(std::string_view value) { return R"(<value type="string">)" + escaped(value) + "</value>"; }

std::string rangeElement(std::string_view type, const core::Range& range) {
  const auto limit = [](std::string_view name, double value) {
    return "<param name=\"" + std::string(name) + "\">" + text::toUtf8(text::shortest(value)) + "</param>";
  };
  return "<choice><data type=\"" + std::string(type) + "\">" + limit("minInclusive", range.least) +
         limit("maxInclusive", range.most) + "</data>" + valueElement("") + "</choice>";
}

// What stands as the value, where nothing has to be put together.
std::string plainFormOf(const Attribute& attribute) {
  switch (attribute.kind) {
    case Kind::word: {
      std::string words = "<choice>";
      for (const std::string& word : wordsOf(attribute)) words += valueElement(word);
      return words + valueElement("") + "</choice>";
    }
    case Kind::flag:
      return R"(<ref name="flag"/>)";
    case Kind::integer:
      return attribute.range.isThere() ? rangeElement("integer", attribute.range) : R"(<ref name="whole"/>)";
    case Kind::number:
      return attribute.range.isThere() ? rangeElement("double", attribute.range) : R"(<ref name="number"/>)";
    case Kind::feature:
      return R"(<ref name="featureCode"/>)";
    default:
      return kText;
  }
}

std::string formOf(const Attribute& attribute) {
  const std::string plain = plainFormOf(attribute);
  return !attribute.variables || plain == kText ? plain : "<choice>" + plain + R"(<ref name="template"/></choice>)";
}

std::vector<std::string> namesOf(const Attribute& attribute) {
  if (!isCounted(attribute)) return {text::toUtf8(attribute.name)};
  const int count = attribute.numbers == core::Numbers::counted ? kMostNumbers : std::min(attribute.most, kMostNumbers);
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(std::max(count, 0)));
  for (int i = 0; i < count; ++i) names.push_back(text::toUtf8(numberedName(attribute, i)));
  return names;
}

// Attributes of one form.
struct Family {
  std::string form;
  std::vector<std::string> names;
};
using Families = std::vector<Family>;

void addTo(Families& families, const std::string& form, const std::vector<std::string>& names) {
  auto family = std::find_if(families.begin(), families.end(), [&](const Family& entry) { return entry.form == form; });
  if (family == families.end()) family = families.insert(family, {form, {}});
  family->names.insert(family->names.end(), names.begin(), names.end());
}

void addFamily(XmlText& to, const Family& family) {
  if (family.names.size() == 1)
    return to.line("<attribute name=\"" + family.names.front() + "\">" + family.form + "</attribute>");
  to.open("attribute");
  to.open("choice");
  std::string line;
  for (const std::string& name : family.names) {
    line += "<name>" + name + "</name>";
    if (line.size() < kLineOfNames) continue;
    to.line(line);
    line.clear();
  }
  if (!line.empty()) to.line(line);
  to.close();
  to.line(family.form);
  to.close();
}

// head: "zeroOrMore" or "oneOrMore".
void addRepeated(XmlText& to, std::string_view head, const Families& families) {
  to.open(head);
  if (families.size() > 1) to.open("choice");
  for (const Family& family : families) addFamily(to, family);
  if (families.size() > 1) to.close();
  to.close();
}

}  // namespace

void XmlText::open(std::string_view head) {
  line("<" + std::string(head) + ">");
  open_.emplace_back(head.substr(0, head.find(' ')));
}
void XmlText::close() {
  const std::string name = std::move(open_.back());
  open_.pop_back();
  line("</" + name + ">");
}
void XmlText::leaf(std::string_view head) { line("<" + std::string(head) + "/>"); }
void XmlText::line(std::string_view xml) {
  if (!text_.empty()) text_ += '\n';
  text_.append(open_.size() * 2, ' ').append(xml);
}

void addAttributes(XmlText& to, std::span<const Attribute> attributes) {
  std::set<std::string> seen;
  Families free, work;
  for (const Attribute& attribute : attributes) {
    std::vector<std::string> names = namesOf(attribute);
    std::erase_if(names, [&seen](const std::string& name) { return !seen.insert(name).second; });
    if (names.empty()) continue;
    const std::string form = formOf(attribute);
    if (attribute.need == Need::optional)
      addTo(free, form, names);
    else if (attribute.need == Need::oneOf)
      addTo(work, form, names);
    else if (isCounted(attribute))
      addRepeated(to, "oneOrMore", {{form, names}});
    else
      addFamily(to, {form, names});
  }
  if (!work.empty()) addRepeated(to, "oneOrMore", work);
  for (const Family& family : free) addRepeated(to, "zeroOrMore", {family});
}

void addAttributeForms(XmlText& to) {
  const auto form = [&to](std::string_view name, const std::string& pattern) {
    to.line("<define name=\"" + std::string(name) + "\">" + pattern + "</define>");
  };
  const auto orEmpty = [](const std::string& pattern) { return "<choice>" + pattern + valueElement("") + "</choice>"; };
  form("flag", orEmpty(valueElement("true") + valueElement("false")));
  form("whole", orEmpty(R"(<data type="integer"/>)"));
  form("number", orEmpty(R"(<data type="double"/>)"));
  form("template", R"(<data type="string"><param name="pattern">[\s\S]*[%@$)"
                   "\u00A7"
                   R"(][\s\S]*</param></data>)");
  form("featureCode", rangeElement("integer", {.least = 0, .most = core::kLastFeatureCode}));
}

}  // namespace kelvane
