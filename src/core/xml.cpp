#include "core/xml.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <iterator>
#include <memory_resource>
#include <string>
#include <type_traits>

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

// A node with the block that its next child goes into, so that appending doesn't walk the chain.
struct StoredNode : XmlNode {
  XmlChildBlock* lastChildren = nullptr;
};

// A document's memory goes as a whole, so that no destructor runs.
static_assert(std::is_trivially_destructible_v<StoredNode> && std::is_trivially_destructible_v<XmlAttr> &&
              std::is_trivially_destructible_v<XmlChildBlock> && std::is_trivially_destructible_v<XmlAttrBlock>);

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

// Reads UTF-8; what it makes lies in `memory`.
class Parser {
 public:
  Parser(std::string_view utf8, std::pmr::memory_resource& memory, StoredNode& document)
      : at_(utf8.data()), end_(at_ + utf8.size()), memory_(&memory), last_(&document), current_(&document) {}

  // False when a limit is exceeded; fault() then says which, and where.
  bool run() {
    while (skipBehind('<')) {
      if (at_ != end_ && *at_ == '?')
        skipInstruction();
      else
        readTag();
      if (fault_) return false;
    }
    return true;
  }
  [[nodiscard]] const text::Fault& fault() const { return fault_; }

 private:
  // A run of the text's bytes.
  struct Piece {
    std::string_view raw;
    std::uint32_t line = 0;  // of its first byte
    bool odd = false;        // not just ASCII that stands for itself
  };
  struct Tag {
    std::uint32_t line = 0;
    std::wstring_view name;
    Piece attribute;  // name of the last one, as it stands there
    XmlAttrBlock* attributes = nullptr;
    XmlAttrBlock* lastAttributes = nullptr;
    bool closing = false, empty = false;
  };

  [[nodiscard]] std::size_t left() const { return static_cast<std::size_t>(end_ - at_); }

  // Goes to the next byte that `stops` has in its mask, or to the end. What it passes is odd when `oddities`, which has
  // all line ends, has a byte of it in its mask.
  template <class Stops, class Oddities>
  Piece advance(Stops stops, Oddities oddities) {
    const char* const from = at_;
    const std::uint32_t line = line_;
    bool odd = false;
    for (;;) {
      const Sixteen bytes(at_, left());
      const unsigned stop = stops(bytes) | (left() < Sixteen::kSize ? 1U << left() : 0U);
      const unsigned before = below(stop);
      if ((oddities(bytes) & before) != 0) {
        odd = true;
        for (unsigned ends = bytes.anyOf('\n') & before; ends != 0; ends &= ends - 1) ++line_;
      }
      if (stop != 0) {
        at_ += std::countr_zero(stop);
        return {{from, static_cast<std::size_t>(at_ - from)}, line, odd};
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
    while (at_ != end_ && *at_ != '>' && !fault_) {
      if (*at_ == '"' && at_[-1] == '=')
        readValue(tag);
      else
        readAttributeName(tag);
    }
    if (fault_) return;
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
    const Piece name = advance([](const Sixteen& bytes) { return bytes.anyOf('>', ' ', '\n', '\t', '\r'); },
                               [](const Sixteen& bytes) { return bytes.anyOf('/', '\n') | bytes.high(); });
    tag.empty = name.odd && name.raw.find('/') != std::string_view::npos;
    if (checkName(name, isSlash) && !tag.closing)
      tag.name = nameOf(name, isSlash, memory_.allocate_object<wchar_t>(name.raw.size()));
    if (at_ != end_ && *at_ != '>') skipBlank();
  }

  void skipBlank() { line_ += *at_++ == '\n' ? 1U : 0U; }

  void readAttributeName(Tag& tag) {
    while (at_ != end_ && isBlank(*at_)) skipBlank();
    tag.attribute = advance([](const Sixteen& bytes) { return bytes.anyOf('=', '>'); },
                            [](const Sixteen& bytes) { return bytes.anyOf(' ', '\n', '\t', '\r') | bytes.high(); });
    checkName(tag.attribute, isBlank);  // refused also without value
    if (at_ != end_ && *at_ == '=') ++at_;
  }

  void readValue(Tag& tag) {
    ++at_;
    const Piece value = advance([](const Sixteen& bytes) { return bytes.anyOf('"'); },
                                [](const Sixteen& bytes) { return bytes.anyOf('&', '\n') | bytes.high(); });
    if (!checkLimit(value.raw, kXmlValueLimit, L"value", value.line)) return;
    auto* const attribute = memory_.new_object<XmlAttr>();
    // Both texts in one piece of memory: asking for a second one costs a sixth of all the reading.
    const std::size_t nameSize = tag.attribute.raw.size();
    auto* const letters = memory_.allocate_object<wchar_t>(nameSize + value.raw.size());
    attribute->name = nameOf(tag.attribute, isBlank, letters);
    attribute->value = valueOf(value, letters + nameSize);
    append<const XmlAttr>(tag.attributes, tag.lastAttributes, attribute);
    if (at_ != end_) ++at_;
  }

  void addNode(const Tag& tag) {
    auto* const node = memory_.new_object<StoredNode>();
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
    if (!first) first = last = memory_.new_object<XmlBlock<T>>();
    last->items[last->count++] = item;
    if (last->count == last->items.size()) last = last->next = memory_.new_object<XmlBlock<T>>();
  }

  static std::string without(std::string_view raw, bool (*dropped)(char)) {
    std::string kept;
    std::remove_copy_if(raw.begin(), raw.end(), std::back_inserter(kept), dropped);
    return kept;
  }

  // A piece as a name or a value, written to `letters`, which have room for one a byte. What a name drops is odd.
  static std::wstring_view nameOf(const Piece& name, bool (*dropped)(char), wchar_t* letters) {
    if (!name.odd) return plain(name.raw, letters);
    return {letters, text::fromUtf8(without(name.raw, dropped), letters)};
  }
  static std::wstring_view valueOf(const Piece& value, wchar_t* letters) {
    if (!value.odd) return plain(value.raw, letters);
    return {letters, replaceEntities(letters, text::fromUtf8(value.raw, letters))};
  }
  static std::wstring_view plain(std::string_view ascii, wchar_t* letters) {
    std::copy(ascii.begin(), ascii.end(), letters);
    return {letters, ascii.size()};
  }

  bool checkName(const Piece& name, bool (*dropped)(char)) {
    return name.raw.size() <= kXmlNameLimit ||
           checkLimit(without(name.raw, dropped), kXmlNameLimit, L"name", name.line);
  }
  bool checkLimit(std::string_view read, std::size_t limit, const wchar_t* what, std::uint32_t line) {
    // A byte counts one unit at most.
    if (read.size() <= limit || text::units(text::fromUtf8(read)) <= limit) return true;
    fault_ = {text::format(L"a %s holds more than %d characters", what, limit), text::format(L"line %d", line)};
    return false;
  }

  const char* at_;
  const char* const end_;
  std::pmr::polymorphic_allocator<> memory_;
  StoredNode* last_;     // in document order
  StoredNode* current_;  // what the next element goes into
  std::uint32_t line_ = 1;
  text::Fault fault_;
};

}  // namespace

struct XmlDocument::Store {
  std::pmr::monotonic_buffer_resource memory;  // all but the root; given back at once
  StoredNode root;
};

XmlDocument::XmlDocument() : store_(std::make_unique<Store>()) {
  store_->root.name = L"root";
  store_->root.parent = &store_->root;
}

XmlDocument::~XmlDocument() = default;

XmlNode* XmlDocument::root() const { return &store_->root; }

std::size_t XmlDocument::lineOf(const XmlNode& node) const { return node.line; }

text::Result<std::unique_ptr<XmlDocument>> xmlParse(std::string_view bytes) {
  std::string recoded;
  if (!text::isUtf8(bytes)) {
    recoded = text::toUtf8(text::fromTextFile(bytes));
    bytes = recoded;
  }
  auto document = std::make_unique<XmlDocument>();
  XmlDocument::Store& store = *document->store_;
  Parser parser(bytes, store.memory, store.root);
  if (!parser.run()) return parser.fault();
  return document;
}

text::Result<std::unique_ptr<XmlDocument>> xmlParse(std::wstring_view text) {
  return xmlParse(std::string_view(text::toUtf8(text)));
}

text::Result<std::unique_ptr<XmlDocument>> xmlLoadFile(std::wstring_view path) {
  const auto bytes = os::files().read(path);
  if (!bytes) return os::faultOf(bytes.error, std::wstring(path));
  auto loaded = xmlParse(bytes.value);
  if (!loaded) loaded.fault = std::move(loaded.fault).within(path);
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
