#include "core/xml.h"

#include <algorithm>

#include "core/arena.h"
#include "os/text_files.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/units.h"

namespace core {
namespace {

// A node with the block that its next child goes into, so that appending doesn't walk the chain.
struct StoredNode : XmlNode {
  XmlChildBlock* lastChildren = nullptr;
};

bool isBlank(wchar_t c) { return c == L' ' || c == L'\n' || c == L'\t' || c == L'\r'; }
bool isSlash(wchar_t c) { return c == L'/'; }

std::size_t lineAt(std::wstring_view text, std::size_t position) {
  return 1 + static_cast<std::size_t>(std::count(text.begin(), text.begin() + static_cast<long>(position), L'\n'));
}

// Entities stand for their characters in the order &quot; &gt; &amp; &lt;, one pass each. So what an "&amp;" leaves can
// only become a "<" any more, and one pass over the text does the work of the four.
std::size_t replaceEntities(std::wstring_view raw, wchar_t* out) {
  struct Entity {
    std::wstring_view form;
    wchar_t character;
  };
  static constexpr Entity kEntities[] = {
      {L"&quot;", L'"'}, {L"&gt;", L'>'}, {L"&amp;lt;", L'<'}, {L"&amp;", L'&'}, {L"&lt;", L'<'}};
  const wchar_t* const begin = out;
  while (!raw.empty()) {
    const auto* entity = raw[0] != L'&' ? std::end(kEntities)
                                        : std::find_if(std::begin(kEntities), std::end(kEntities),
                                                       [&](const Entity& e) { return raw.starts_with(e.form); });
    const bool found = entity != std::end(kEntities);
    *out++ = found ? entity->character : raw[0];
    raw.remove_prefix(found ? entity->form.size() : 1);
  }
  return static_cast<std::size_t>(out - begin);
}

class Parser {
 public:
  Parser(std::wstring_view text, Arena& arena, StoredNode& document)
      : begin_(text.data()),
        at_(begin_),
        end_(begin_ + text.size()),
        arena_(arena),
        last_(&document),
        current_(&document) {}

  // False when a limit is exceeded; fault() then says which, and where.
  bool run() {
    while (skipBehind(L'<')) {
      if (at_ != end_ && *at_ == L'?')
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
    const wchar_t* start = nullptr;  // of its "<"
    std::wstring_view name;
    std::wstring_view attributeName;  // the last one read
    XmlAttrBlock* attributes = nullptr;
    XmlAttrBlock* lastAttributes = nullptr;
    bool closing = false, empty = false;
  };

  [[nodiscard]] std::size_t left() const { return static_cast<std::size_t>(end_ - at_); }

  bool skipBehind(wchar_t c) {
    const wchar_t* found = std::char_traits<wchar_t>::find(at_, left(), c);
    at_ = found ? found + 1 : end_;
    return found;
  }

  // To the ">" that stands in no string.
  void skipInstruction() {
    while (at_ != end_) {
      const wchar_t c = *at_++;
      if (c == L'>') return;
      if (c == L'"') skipBehind(L'"');
    }
  }

  void readTag() {
    Tag tag;
    tag.start = at_ - 1;
    readName(tag);
    while (at_ != end_ && *at_ != L'>' && fault_.empty()) {
      if (*at_ == L'"' && at_[-1] == L'=')
        readValue(tag);
      else
        readAttributeName(tag);
    }
    if (!fault_.empty()) return;
    if (at_[-1] == L'/') tag.empty = true;
    if (at_ != end_) ++at_;
    if (tag.closing)
      current_ = static_cast<StoredNode*>(current_->parent);
    else
      addNode(tag);
  }

  void readName(Tag& tag) {
    if (at_ != end_ && *at_ == L'/') {
      tag.closing = true;
      ++at_;
    }
    const wchar_t* const from = at_;
    while (at_ != end_ && *at_ != L'>' && !isBlank(*at_)) tag.empty |= isSlash(*at_++);
    const std::wstring_view raw(from, static_cast<std::size_t>(at_ - from));
    tag.name = tag.empty ? without(raw, isSlash) : raw;
    checkLimit(tag.name, kXmlNameLimit, L"name", from);
    if (at_ != end_ && *at_ != L'>') ++at_;
  }

  void readAttributeName(Tag& tag) {
    while (at_ != end_ && isBlank(*at_)) ++at_;
    const wchar_t* const from = at_;
    bool blanks = false;
    while (at_ != end_ && *at_ != L'=' && *at_ != L'>') blanks |= isBlank(*at_++);
    const std::wstring_view raw(from, static_cast<std::size_t>(at_ - from));
    tag.attributeName = blanks ? without(raw, isBlank) : raw;
    checkLimit(tag.attributeName, kXmlNameLimit, L"name", from);
    if (at_ != end_ && *at_ == L'=') ++at_;
  }

  void readValue(Tag& tag) {
    const wchar_t* const from = ++at_;
    bool entities = false;
    while (at_ != end_ && *at_ != L'"') entities |= *at_++ == L'&';
    std::wstring_view value(from, static_cast<std::size_t>(at_ - from));
    if (at_ != end_) ++at_;
    if (!checkLimit(value, kXmlValueLimit, L"value", from)) return;
    if (entities) {
      wchar_t* const letters = arena_.letters(value.size());
      value = {letters, replaceEntities(value, letters)};
    }
    auto* attribute = arena_.make<XmlAttr>();
    attribute->name = tag.attributeName;
    attribute->value = value;
    append(tag.attributes, tag.lastAttributes, attribute);
  }

  void addNode(const Tag& tag) {
    auto* node = arena_.make<StoredNode>();
    node->isElement = 1;
    node->name = tag.name;
    node->attributes = tag.attributes;
    node->position = static_cast<std::size_t>(tag.start - begin_);
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

  // The text less what `dropped` names; copied only when that stands between other characters.
  std::wstring_view without(std::wstring_view raw, bool (*dropped)(wchar_t)) {
    while (!raw.empty() && dropped(raw.back())) raw.remove_suffix(1);
    if (std::find_if(raw.begin(), raw.end(), dropped) == raw.end()) return raw;
    wchar_t* const letters = arena_.letters(raw.size());
    const wchar_t* const end = std::remove_copy_if(raw.begin(), raw.end(), letters, dropped);
    return {letters, static_cast<std::size_t>(end - letters)};
  }

  bool checkLimit(std::wstring_view read, std::size_t limit, std::wstring_view what, const wchar_t* from) {
    // A character counts two units at most.
    if (read.size() <= limit / 2 || (read.size() <= limit && text::units(read) <= limit)) return true;
    const std::wstring_view whole(begin_, static_cast<std::size_t>(end_ - begin_));
    fault_ = text::format(L"line %d: a %s holds more than %d characters",
                          lineAt(whole, static_cast<std::size_t>(from - begin_)), what, limit);
    return false;
  }

  const wchar_t* const begin_;
  const wchar_t* at_;
  const wchar_t* const end_;
  Arena& arena_;
  StoredNode* last_;     // in document order
  StoredNode* current_;  // what the next element goes into
  std::wstring fault_;
};

}  // namespace

struct XmlDocument::Store {
  std::wstring text;
  Arena arena;
  StoredNode root;
  std::vector<std::size_t> lineStarts;  // filled when first asked for
};

XmlDocument::XmlDocument(std::wstring text) : store_(std::make_unique<Store>()) {
  store_->text = std::move(text);
  store_->root.name = L"root";
  store_->root.parent = &store_->root;
}

XmlDocument::~XmlDocument() = default;

XmlNode* XmlDocument::root() const { return &store_->root; }

std::size_t XmlDocument::lineOf(const XmlNode& node) const {
  auto& starts = store_->lineStarts;
  if (starts.empty()) {
    starts.push_back(0);
    const std::wstring& text = store_->text;
    for (auto at = text.find(L'\n'); at != std::wstring::npos; at = text.find(L'\n', at + 1)) starts.push_back(at + 1);
  }
  return static_cast<std::size_t>(std::upper_bound(starts.begin(), starts.end(), node.position) - starts.begin());
}

XmlLoaded xmlParse(std::wstring text) {
  XmlLoaded loaded{std::make_unique<XmlDocument>(std::move(text)), {}};
  XmlDocument::Store& store = *loaded.document->store_;
  Parser parser(store.text, store.arena, store.root);
  if (!parser.run()) return {nullptr, parser.fault()};
  return loaded;
}

XmlLoaded xmlLoadFile(std::wstring_view path) {
  auto content = os::readText(path);
  if (!content) return {nullptr, text::format(L"%s: %s", path, text::fromUtf8(content.error.message()))};
  XmlLoaded loaded = xmlParse(std::move(content.value));
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
