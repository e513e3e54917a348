#include "core/xml.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>

#include "os/arena.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/sixteen.h"
#include "text/units.h"

namespace core {
namespace {

using text::Sixteen;

// The bits below the lowest one that is set; all where none is.
constexpr std::uint32_t below(std::uint32_t mask) { return (mask & (~mask + 1)) - 1; }

class Thirtytwo {
 public:
  explicit Thirtytwo(const char* at) : low_(at), high_(at + Sixteen::kSize) {}
  template <class... Chars>
  [[nodiscard]] std::uint32_t anyOf(Chars... chars) const {
    return low_.anyOf(chars...) | high_.anyOf(chars...) << Sixteen::kSize;
  }
  [[nodiscard]] std::uint32_t high() const { return low_.high() | high_.high() << Sixteen::kSize; }

 private:
  Sixteen low_, high_;
};

// A node with the block that its next child goes into, so that appending doesn't walk the chain.
struct StoredNode : XmlNode {
  XmlChildBlock* lastChildren = nullptr;
};

bool isBlank(char c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; }
bool isSlash(char c) { return c == '/'; }
// Entities stand for their characters in the order &quot; &gt; &amp; &lt;, one pass each. So what an "&amp;" leaves can
// only become a "<" any more, and one pass over the text, in its place, does the work of the four.
std::size_t replaceEntities(wchar_t* letters, std::size_t count) {
  struct Entity {
    std::wstring_view form;
    wchar_t character;
  };
  static constexpr Entity kEntities[] = {
      {L"&quot;", L'"'}, {L"&gt;", L'>'}, {L"&amp;lt;", L'<'}, {L"&amp;", L'&'}, {L"&lt;", L'<'}};
  const wchar_t* const end = letters + count;
  wchar_t* out = letters;
  for (const wchar_t* at = letters; at != end;) {
    std::size_t length = 1;
    wchar_t character = *at;
    if (character == L'&') {
      for (const Entity& entity : kEntities) {
        const std::size_t size = entity.form.size();
        if (size > static_cast<std::size_t>(end - at) || !std::equal(entity.form.begin(), entity.form.end(), at))
          continue;
        length = size;
        character = entity.character;
        break;
      }
    }
    *out++ = character;
    at += length;
  }
  return static_cast<std::size_t>(out - letters);
}

// Eight bytes as a number, zeros where there are no more.
std::uint64_t wordAt(const char* at, std::size_t size) {
  std::uint64_t word = 0;
  if (size >= sizeof word) {
    std::memcpy(&word, at, sizeof word);
  } else {
    for (std::size_t i = 0; i < size; ++i) word = word << 8U | static_cast<unsigned char>(at[i]);
  }
  return word;
}

// What was made of some bytes, kept for when they come again: documents hold few different names and attributes. Each
// has one place by its bytes; the last comer stays there.
template <class Made>
class Recent {
 public:
  struct Entry {
    std::string_view raw;
    std::uint64_t first = 0, last = 0;  // the bytes at both ends; all bytes, where there are no more than sixteen
    Made made{};
  };

  // The entry at the place of these bytes, and whether it is theirs. If not, it is to be made so.
  struct Found {
    Entry& entry;
    bool known;
  };
  Found find(std::string_view raw) {
    const std::uint64_t first = wordAt(raw.data(), raw.size());
    const std::uint64_t last = raw.size() <= 8 ? 0 : wordAt(raw.data() + raw.size() - 8, 8);
    Entry& entry = entries_[((first ^ std::rotl(last, 29) ^ raw.size()) * 0x9E3779B97F4A7C15U) >> 56U];
    const bool known = entry.raw.size() == raw.size() && entry.first == first && entry.last == last &&
                       (raw.size() <= 16 || entry.raw == raw);
    if (!known) entry = {raw, first, last, {}};
    return {entry, known};
  }

 private:
  std::array<Entry, 256> entries_{};
};

// Reads UTF-8.
class Parser {
 public:
  Parser(std::string_view utf8, os::Arena& arena, StoredNode& document)
      : at_(utf8.data()), end_(at_ + utf8.size()), arena_(arena), last_(&document), current_(&document) {}

  // False when a limit is exceeded; fault() then says which, and where.
  bool run() {
    while (skipBehind('<')) {
      if (at_ != end_ && *at_ == '?')
        skipInstruction();
      else
        readTag();
      if (!fault_.empty()) return false;
    }
    return true;
  }
  [[nodiscard]] const std::wstring& fault() const { return fault_; }

 private:
  struct Tag {
    std::uint32_t line = 0;
    std::wstring_view name;
    std::string_view attribute;   // name of the last one, as it stands there
    bool attributeDrops = false;  // the name has blanks
    XmlAttrBlock* attributes = nullptr;
    XmlAttrBlock* lastAttributes = nullptr;
    bool closing = false, empty = false;
  };

  [[nodiscard]] std::size_t left() const { return static_cast<std::size_t>(end_ - at_); }
  [[nodiscard]] std::string_view since(const char* from) const { return {from, static_cast<std::size_t>(at_ - from)}; }

  // Goes to the next byte that `stops` has in its mask, or to the end. True when `notes`, which has all line ends, has
  // a byte before that in its mask.
  template <class Stops, class Notes>
  bool advance(Stops stops, Notes notes) {
    unsigned noted = 0;
    for (;;) {
      const Sixteen bytes(at_, left());
      const unsigned stop = stops(bytes) | (left() < Sixteen::kSize ? 1U << left() : 0U);
      const unsigned before = below(stop);
      if (const unsigned found = notes(bytes) & before; found != 0) {
        noted |= found;
        for (unsigned ends = bytes.anyOf('\n') & before; ends != 0; ends &= ends - 1) ++line_;
      }
      if (stop != 0) {
        at_ += std::countr_zero(stop);
        return noted != 0;
      }
      at_ += Sixteen::kSize;
    }
  }

  bool skipBehind(char c) {
    advance([c](const Sixteen& bytes) { return bytes.anyOf(c); }, lineEnds);
    if (at_ == end_) return false;
    ++at_;
    return true;
  }

  static unsigned lineEnds(const Sixteen& bytes) { return bytes.anyOf('\n'); }

  // To the ">" that stands in no string.
  void skipInstruction() {
    while (at_ != end_) {
      advance([](const Sixteen& bytes) { return bytes.anyOf('>', '"'); }, lineEnds);
      if (at_ == end_ || *at_++ == '>') return;
      skipBehind('"');
    }
  }

  void readTag() {
    Tag tag;
    tag.line = line_;
    readName(tag);
    while (at_ != end_ && *at_ != '>' && fault_.empty()) {
      if (*at_ == '"' && at_[-1] == '=')
        readValue(tag);
      else if (!readShortAttribute(tag))
        readAttributeName(tag);
    }
    if (!fault_.empty()) return;
    if (at_[-1] == '/') tag.empty = true;
    if (at_ != end_) ++at_;
    if (tag.closing)
      current_ = static_cast<StoredNode*>(current_->parent);
    else
      addNode(tag);
  }

  void readName(Tag& tag) {
    if (at_ != end_ && *at_ == '/') {
      tag.closing = true;
      ++at_;
    }
    const char* const from = at_;
    tag.empty = advance([](const Sixteen& bytes) { return bytes.anyOf('>', ' ', '\n', '\t', '\r'); },
                        [](const Sixteen& bytes) { return bytes.anyOf('/', '\n'); });
    tag.name = tag.empty ? nameWithout(since(from), isSlash, tag.line) : nameOf(since(from), tag.line);
    if (at_ != end_ && *at_ != '>') skipBlank();
  }

  void skipBlank() { line_ += *at_++ == '\n' ? 1U : 0U; }

  // An attribute that is short and without oddities, as nearly all are, in one step. False where it is another.
  bool readShortAttribute(Tag& tag) {
    while (at_ != end_ && isBlank(*at_)) skipBlank();
    if (left() < 2 * Sixteen::kSize) return false;
    const Thirtytwo bytes(at_);
    const std::uint32_t quotes = bytes.anyOf('"');
    const std::uint32_t closing = quotes & (quotes - 1);  // less the first
    const std::uint32_t name = below(bytes.anyOf('='));
    const std::uint32_t whole = below(closing);
    const bool usual = closing != 0 && below(quotes) == (name << 1U | 1U) &&
                       (bytes.anyOf('>', ' ', '\t', '\r') & name) == 0 && (bytes.anyOf('\n') & whole) == 0;
    if (!usual) return false;
    const std::string_view raw(at_, static_cast<std::size_t>(std::countr_one(whole)));
    const auto found = attributes_.find(raw);
    if (!found.known) {
      const auto size = static_cast<std::size_t>(std::countr_one(name));
      const bool special = ((bytes.anyOf('&') | bytes.high()) & whole) != 0;
      found.entry.made = attributeOf(nameOf(raw.substr(0, size), line_), raw.substr(size + 2), special);
    }
    append(tag.attributes, tag.lastAttributes, found.entry.made);
    at_ += raw.size() + 1;
    return true;
  }

  void readAttributeName(Tag& tag) {
    const std::uint32_t line = line_;
    const char* const from = at_;
    tag.attributeDrops = advance([](const Sixteen& bytes) { return bytes.anyOf('=', '>'); },
                                 [](const Sixteen& bytes) { return bytes.anyOf(' ', '\n', '\t', '\r'); });
    tag.attribute = since(from);
    if (tag.attribute.size() > kXmlNameLimit) nameWithout(tag.attribute, isBlank, line);  // refused also without value
    if (at_ != end_ && *at_ == '=') ++at_;
  }

  void readValue(Tag& tag) {
    const std::uint32_t line = line_;
    const char* const from = ++at_;
    const bool special = advance([](const Sixteen& bytes) { return bytes.anyOf('"'); },
                                 [](const Sixteen& bytes) { return bytes.anyOf('&', '\n') | bytes.high(); });
    const std::string_view raw = since(from);
    const std::string_view whole = since(tag.attribute.data());
    const auto found = attributes_.find(whole);
    if (!found.known) {
      if (!checkLimit(raw, kXmlValueLimit, L"value", line)) return;
      const std::wstring_view name =
          tag.attributeDrops ? nameWithout(tag.attribute, isBlank, line) : nameOf(tag.attribute, line);
      found.entry.made = attributeOf(name, raw, special);
    }
    append(tag.attributes, tag.lastAttributes, found.entry.made);
    if (at_ != end_) ++at_;
  }

  void addNode(const Tag& tag) {
    auto* node = arena_.make<StoredNode>();
    node->isElement = 1;
    node->name = tag.name;
    node->attributes = tag.attributes;
    node->line = tag.line;
    node->prev = last_;
    node->parent = current_;
    last_->next = node;
    last_ = node;
    append(current_->children, current_->lastChildren, static_cast<XmlNode*>(node));
    if (!tag.empty) current_ = node;
  }

  template <class T>
  void append(XmlBlock<T>*& first, XmlBlock<T>*& last, T* item) {
    if (!first) first = last = arena_.make<XmlBlock<T>>();
    last->items[last->count++] = item;
    if (last->count == last->items.size()) last = last->next = arena_.make<XmlBlock<T>>();
  }

  // The bytes as a name; empty when it is over the limit.
  std::wstring_view nameOf(std::string_view raw, std::uint32_t line) {
    const auto found = names_.find(raw);
    if (!found.known && checkLimit(raw, kXmlNameLimit, L"name", line)) found.entry.made = wide(raw);
    return found.entry.made;
  }
  // The same of the bytes less those to drop.
  std::wstring_view nameWithout(std::string_view raw, bool (*dropped)(char), std::uint32_t line) {
    std::string kept;
    std::remove_copy_if(raw.begin(), raw.end(), std::back_inserter(kept), dropped);
    return checkLimit(kept, kXmlNameLimit, L"name", line) ? wide(kept) : std::wstring_view();
  }

  // special: the value may have more than ASCII in it, or entities.
  const XmlAttr* attributeOf(std::wstring_view name, std::string_view value, bool special) {
    auto* attribute = arena_.make<XmlAttr>();
    attribute->name = name;
    attribute->value = special ? withoutEntities(value) : plain(value);
    return attribute;
  }

  // ASCII.
  std::wstring_view plain(std::string_view raw) {
    auto* const letters = arena_.letters<wchar_t>(raw.size());
    std::copy(raw.begin(), raw.end(), letters);
    return {letters, raw.size()};
  }
  std::wstring_view wide(std::string_view raw) {
    auto* const letters = arena_.letters<wchar_t>(raw.size());
    return {letters, text::fromUtf8(raw, letters)};
  }
  std::wstring_view withoutEntities(std::string_view raw) {
    auto* const letters = arena_.letters<wchar_t>(raw.size());
    return {letters, replaceEntities(letters, text::fromUtf8(raw, letters))};
  }

  bool checkLimit(std::string_view read, std::size_t limit, std::wstring_view what, std::uint32_t line) {
    // A byte counts one unit at most.
    if (read.size() <= limit || text::units(text::fromUtf8(read)) <= limit) return true;
    fault_ = text::format(L"line %d: a %s holds more than %d characters", line, what, limit);
    return false;
  }

  const char* at_;
  const char* const end_;
  os::Arena& arena_;
  StoredNode* last_;     // in document order
  StoredNode* current_;  // what the next element goes into
  std::uint32_t line_ = 1;
  Recent<std::wstring_view> names_;
  Recent<const XmlAttr*> attributes_;
  std::wstring fault_;
};

}  // namespace

struct XmlDocument::Store {
  os::Arena arena;
  StoredNode root;
};

XmlDocument::XmlDocument() : store_(std::make_unique<Store>()) {
  store_->root.name = L"root";
  store_->root.parent = &store_->root;
}

XmlDocument::~XmlDocument() = default;

XmlNode* XmlDocument::root() const { return &store_->root; }

std::size_t XmlDocument::lineOf(const XmlNode& node) const { return node.line; }

XmlLoaded xmlParse(std::string_view bytes) {
  std::string recoded;
  if (!text::isUtf8(bytes)) {
    recoded = text::toUtf8(text::fromTextFile(bytes));
    bytes = recoded;
  }
  auto document = std::make_unique<XmlDocument>();
  XmlDocument::Store& store = *document->store_;
  Parser parser(bytes, store.arena, store.root);
  if (!parser.run()) return {nullptr, parser.fault()};
  return {std::move(document), {}};
}

XmlLoaded xmlParse(std::wstring_view text) { return xmlParse(std::string_view(text::toUtf8(text))); }

XmlLoaded xmlLoadFile(std::wstring_view path) {
  const auto bytes = os::files().read(path);
  if (!bytes) return {nullptr, text::format(L"%s: %s", path, text::fromUtf8(bytes.error.message()))};
  XmlLoaded loaded = xmlParse(bytes.value);
  if (!loaded) loaded.fault = text::format(L"%s: %s", path, loaded.fault);
  return loaded;
}

std::size_t xmlChildCount(const XmlNode* node) {
  std::size_t count = 0;
  for (const XmlChildBlock* block = node ? node->children : nullptr; block; block = block->next) count += block->count;
  return count;
}

XmlNode* xmlChildAt(const XmlChildBlock* block, std::size_t index) {
  constexpr std::size_t kSlots = std::tuple_size_v<decltype(XmlChildBlock::items)>;
  for (; block && index >= kSlots; index -= kSlots) block = block->next;
  return block ? block->items[index] : nullptr;
}

const XmlAttr* attrFind(const XmlAttrBlock* block, std::wstring_view name) {
  for (; block; block = block->next)
    for (std::uint16_t i = 0; i < block->count; ++i)
      if (block->items[i]->name == name) return block->items[i];
  return nullptr;
}

}  // namespace core
