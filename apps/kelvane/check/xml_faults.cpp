#include "kelvane/check/xml_faults.h"

#include <algorithm>
#include <array>

#include "kelvane/base/nearest.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
bool endsName(char c) { return isBlank(c) || c == '>' || c == '/' || c == '='; }
// What stands behind a value's closing quote.
bool endsTagPart(char c) { return isBlank(c) || c == '/' || c == '>'; }

constexpr std::string_view kMark = "\xEF\xBB\xBF";

std::string inQuotes(std::string_view text) { return "'" + std::string(text) + "'"; }

// Goes through a text tag by tag, as a reader of XML would, and notes where the plug-in's reads it otherwise.
class Scan {
 public:
  // isUtf8: else it is Windows-1252. Its marks are the same bytes in both.
  Scan(std::string_view text, bool isUtf8)
      : text_(text), at_(text.starts_with(kMark) ? kMark.size() : 0), isUtf8_(isUtf8) {}

  XmlScan run() {
    while (!atEnd()) {
      if (peek() == '<')
        readMarkup();
      else
        readText();
    }
    for (const Open& open : open_)
      add("tag-unclosed", open.line, "the element " + inQuotes(open.name) + " is never closed");
    std::stable_sort(faults_.begin(), faults_.end(),
                     [](const XmlFault& a, const XmlFault& b) { return a.line < b.line; });
    return {std::move(faults_), std::move(elements_)};
  }

 private:
  struct Open {
    std::string name;
    std::size_t line;
  };
  struct Unclosed {
    std::string name;
    std::size_t fault;  // its place among the faults
  };

  [[nodiscard]] bool atEnd() const { return at_ >= text_.size(); }
  [[nodiscard]] char peek(std::size_t ahead = 0) const {
    return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0';
  }
  [[nodiscard]] bool startsWith(std::string_view word) const { return text_.substr(at_).starts_with(word); }
  void add(std::string_view rule, std::size_t line, std::string text, Edits mend = {}) {
    if (!isUtf8_) text = text::toUtf8(text::fromWindows1252(text));
    faults_.push_back({rule, line, std::move(text), element_, std::move(mend)});
  }
  // To the place, or to the end where there is none.
  void goTo(std::size_t place) {
    place = std::min(place, text_.size());
    line_ += static_cast<std::size_t>(std::count(text_.begin() + static_cast<std::ptrdiff_t>(at_),
                                                 text_.begin() + static_cast<std::ptrdiff_t>(place), '\n'));
    at_ = place;
  }
  void goBehind(std::string_view word) {
    const std::size_t found = text_.find(word, at_);
    goTo(found == text_.npos ? text_.size() : found + word.size());
  }
  void skipBlanks() {
    while (isBlank(peek())) goTo(at_ + 1);
  }

  // Blank, or it was meant to be something.
  void readText() {
    skipBlanks();
    if (atEnd() || peek() == '<') return;
    const std::size_t end = std::min(text_.find('<', at_), text_.size());
    std::string_view stray = text_.substr(at_, std::min(end - at_, kShown));
    stray = stray.substr(0, stray.find_first_of("\r\n"));
    add("text-dropped", line_, "text between tags isn't read: " + inQuotes(stray));
    goTo(end);
  }

  void readMarkup() {
    if (startsWith("<?")) return goBehind("?>");
    if (startsWith("<!--")) {
      add("comment", line_,
          "a comment is read as an element that holds all that follows; 'deak' switches an action off");
      return goBehind("-->");
    }
    if (startsWith("<!")) {
      add("comment", line_, "a declaration is read as an element that holds all that follows");
      return goBehind(">");
    }
    goTo(at_ + 1);
    if (peek() == '/')
      readClosingTag();
    else
      readOpeningTag();
  }

  std::string readName() {
    const std::size_t from = at_;
    while (!atEnd() && !endsName(peek())) goTo(at_ + 1);
    return std::string(text_.substr(from, at_ - from));
  }

  // The reader compares no names: whatever it is called, a closing tag closes the innermost element.
  void readClosingTag() {
    const std::size_t line = line_;
    goTo(at_ + 1);
    const std::string name = readName();
    goBehind(">");
    const auto meant = std::find_if(open_.rbegin(), open_.rend(), [&](const Open& open) { return open.name == name; });
    if (meant != open_.rend()) return closeTo(name, line);
    if (wasCrossed(name, line)) return;
    // Misspelt, or one too many. The reader would close the element around; what follows from that isn't told again.
    const std::vector<std::string> innermost = {open_.empty() ? std::string() : open_.back().name};
    if (nearest(name, innermost).empty())
      return add("tag-extra", line, "'</" + name + ">' closes no element of that name");
    add("tag-crossed", line, "'</" + name + ">' closes the element " + shown(open_.back()));
    open_.pop_back();
  }

  // Elements inside that are still open would be told by each later tag, too.
  void closeTo(const std::string& name, std::size_t line) {
    for (; open_.back().name != name; open_.pop_back()) {
      unclosed_.push_back({open_.back().name, faults_.size()});
      add("tag-unclosed", open_.back().line,
          "the element " + inQuotes(open_.back().name) + " isn't closed before '</" + name + ">' in line " +
              std::to_string(line));
    }
    open_.pop_back();
  }
  // The closing tag of an element that was closed by one around it: both were one slip.
  bool wasCrossed(const std::string& name, std::size_t line) {
    const auto found = std::find_if(unclosed_.begin(), unclosed_.end(),
                                    [&](const Unclosed& unclosed) { return unclosed.name == name; });
    if (found == unclosed_.end()) return false;
    XmlFault& fault = faults_[found->fault];
    fault.rule = "tag-crossed";
    fault.text += ", but behind it, in line " + std::to_string(line);
    unclosed_.erase(found);
    return true;
  }
  static std::string shown(const Open& open) { return inQuotes(open.name) + " of line " + std::to_string(open.line); }

  void readOpeningTag() {
    const std::size_t line = line_, from = at_;
    const std::string name = readName();
    element_ = static_cast<int>(elements_.size());
    elements_.push_back({line, {from, at_ - from}, {}});
    names_.clear();
    bool isEmpty = false;
    for (skipBlanks(); !atEnd() && peek() != '>'; skipBlanks()) {
      isEmpty = peek() == '/';
      if (isEmpty)
        readSlash(name, at_ == from + name.size());
      else if (!readAttribute())
        break;
    }
    // Broken off inside a value: the tag ends where its author meant it to.
    if (!atEnd() && peek() == '>') {
      isEmpty = isEmpty || (at_ > 0 && text_[at_ - 1] == '/');
      goTo(at_ + 1);
    }
    if (!isEmpty) open_.push_back({name, line});
    element_ = -1;
  }

  // The reader sees an element's end in "/>" alone, or where the slash stands right behind the name.
  void readSlash(const std::string& name, bool isBehindName) {
    const std::size_t line = line_, from = at_ + 1;
    goTo(from);
    skipBlanks();
    if (at_ > from && peek() == '>' && !isBehindName)
      add("tag-unclosed", line, "the element " + inQuotes(name) + " isn't closed: a blank stands between '/' and '>'",
          withoutBlanks(from));
  }

  // False: the rest of the tag can't be told.
  bool readAttribute() {
    const std::size_t line = line_, from = at_;
    const std::string name = readName();
    skipBlanks();
    if (name.empty()) {
      goTo(at_ + 1);
      return true;
    }
    if (peek() != '=') {
      add("value-missing", line,
          "the attribute " + inQuotes(name) + " has no value; its name becomes part of the next one's");
      return true;
    }
    goTo(at_ + 1);
    if (std::find(names_.begin(), names_.end(), name) != names_.end())
      add("attribute-twice", line, "the attribute " + inQuotes(name) + " stands here twice; the first one counts");
    names_.push_back(name);
    return readValue(name, {from, name.size()}, line);
  }

  bool readValue(const std::string& name, const Piece& place, std::size_t line) {
    const bool isBehindBlank = isBlank(peek());
    if (isBehindBlank) {
      const std::size_t from = at_;
      skipBlanks();
      if (peek() != '"' && peek() != '\'') return valueWithoutQuote(name, line);
      add("blank-after-equals", line,
          "a blank behind '=': neither the attribute " + inQuotes(name) + " nor the one behind it is read",
          withoutBlanks(from));
    }
    if (peek() == '\'') {
      add("single-quotes", line,
          "the attribute " + inQuotes(name) + " stands in single quotes: neither it nor the one behind it is read",
          inDoubleQuotes());
      goTo(at_ + 1);
      goBehind("'");
      return true;
    }
    if (peek() != '"') return valueWithoutQuote(name, line);
    const std::size_t from = at_ + 1;
    if (!readQuoted(name, line)) return false;
    if (!isBehindBlank) elements_.back().attributes.push_back({place, {from, at_ - 1 - from}});
    return true;
  }

  // A line's end stays, so that all that follows keeps its line.
  [[nodiscard]] Edits withoutBlanks(std::size_t from) const {
    const Piece blanks{from, at_ - from};
    return blanks.of(text_).find_first_of("\r\n") == text_.npos ? Edits{{blanks, ""}} : Edits();
  }
  // Where what stands between the single ones is surely the value: a forgotten one takes in what follows.
  [[nodiscard]] Edits inDoubleQuotes() const {
    const std::size_t close = text_.find('\'', at_ + 1);
    if (close == text_.npos || close + 1 == text_.size() || !endsTagPart(text_[close + 1])) return {};
    const std::string_view value = text_.substr(at_ + 1, close - at_ - 1);
    if (value.find_first_of("<\r\n") != value.npos || value.find("=\"") != value.npos) return {};
    Edits edits = {{{at_, 1}, "\""}};
    for (std::size_t i = value.find('"'); i != value.npos; i = value.find('"', i + 1))
      edits.push_back({{at_ + 1 + i, 1}, "&quot;"});
    edits.push_back({{close, 1}, "\""});
    return edits;
  }

  bool valueWithoutQuote(const std::string& name, std::size_t line) {
    add("quote-missing", line,
        "the value of " + inQuotes(name) +
            " has no opening quote: neither it nor what follows is read as it was meant");
    goTo(text_.find('>', at_));
    return false;
  }

  // A value's closing quote stands before a blank or the tag's end. Where it doesn't, one was forgotten: of this value,
  // whose quote is the opening one of the next.
  bool readQuoted(const std::string& name, std::size_t line) {
    goTo(at_ + 1);
    const std::size_t from = at_;
    const std::size_t close = text_.find('"', from);
    const char behind = close == text_.npos || close + 1 == text_.size() ? '\0' : text_[close + 1];
    if (close == text_.npos || !(endsTagPart(behind) || behind == '\0')) {
      add("quote-missing", line,
          "the value of " + inQuotes(name) + " has no closing quote: what follows isn't read as it was meant");
      goTo(text_.find('>', from));
      return false;
    }
    readEntities({from, close - from}, line);
    goTo(close + 1);
    return true;
  }

  void readEntities(const Piece& place, std::size_t line) {
    const std::string_view value = place.of(text_);
    for (std::size_t at = value.find('&'); at != value.npos; at = value.find('&', at + 1)) {
      std::size_t end = at + 1;
      while (end < value.size() && (std::isalnum(static_cast<unsigned char>(value[end])) != 0 || value[end] == '#'))
        ++end;
      const std::string_view entity = value.substr(at, end + 1 - at);
      const std::size_t there = line + static_cast<std::size_t>(std::count(
                                           value.begin(), value.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
      if (end == at + 1 || end == value.size() || value[end] != ';')
        add("ampersand", there, "a '&' stands for itself here; XML writes '&amp;'", {{{place.at + at, 1}, "&amp;"}});
      else if (std::find(kKnown.begin(), kKnown.end(), entity) == kKnown.end())
        add("entity-unknown", there, inQuotes(entity) + " stays as it stands; known are &quot; &gt; &lt; and &amp;");
    }
  }

  static constexpr std::size_t kShown = 40;  // of a stray text
  // The last one is read by the actions whose values have lines.
  static constexpr std::array<std::string_view, 5> kKnown = {"&quot;", "&gt;", "&lt;", "&amp;", "&#10;"};

  std::string_view text_;
  std::size_t at_ = 0, line_ = 1;
  bool isUtf8_ = true;
  int element_ = -1;  // the one whose tag is read
  std::vector<Open> open_;
  std::vector<Unclosed> unclosed_;
  std::vector<std::string> names_;  // of the tag's attributes
  std::vector<XmlFault> faults_;
  std::vector<XmlElementPlace> elements_;
};

}  // namespace

bool isUtf16(std::string_view bytes) { return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"); }

XmlScan scanXml(std::string_view bytes) {
  if (!isUtf16(bytes)) return Scan(bytes, text::isUtf8(bytes)).run();
  // Places in the text aren't those in the bytes.
  XmlScan scan = Scan(text::toUtf8(text::fromTextFile(bytes)), true).run();
  scan.elements.clear();
  for (XmlFault& fault : scan.faults) fault.mend.clear();
  return scan;
}

}  // namespace kelvane
