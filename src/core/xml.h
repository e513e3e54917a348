// The reader of action lists and filters. A small language of its own, not all of XML: elements and double-quoted
// attributes; text between tags, the <?...?> forms and a byte-order mark have no effect; closing tags aren't compared.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "text/fault.h"

namespace core {

// Limits of a document, in UTF-16 units. What exceeds them is refused with an error, never cut.
constexpr std::size_t kXmlNameLimit = 259;
constexpr std::size_t kXmlValueLimit = 25999;

struct XmlAttr {
  std::wstring_view name, value;  // into the document
};

// A chain of blocks of eight. A full block always has a next one, possibly empty.
template <class T>
struct XmlBlock {
  std::array<T*, 8> items{};
  XmlBlock* next = nullptr;
  std::uint16_t count = 0;
};
struct XmlNode;
using XmlChildBlock = XmlBlock<XmlNode>;
using XmlAttrBlock = XmlBlock<const XmlAttr>;

struct XmlNode {
  XmlNode* next = nullptr;  // document order
  XmlNode* prev = nullptr;
  XmlNode* parent = nullptr;  // the document node is its own parent
  XmlChildBlock* children = nullptr;
  XmlAttrBlock* attributes = nullptr;
  std::wstring_view name;  // "root" for the document node
  std::uint32_t line = 0;  // of the tag's "<", from 1
  std::uint16_t isElement = 0;
};

// Owns all nodes, blocks and attributes, and nothing of the text. `root()` is the synthetic node named "root": its
// `next` and its child 0 are the element that the file opens with (null in an empty document).
class XmlDocument {
 public:
  XmlDocument();
  ~XmlDocument();
  XmlDocument(const XmlDocument&) = delete;
  XmlDocument& operator=(const XmlDocument&) = delete;
  [[nodiscard]] XmlNode* root() const;
  // The line, from 1, of a node's tag.
  [[nodiscard]] std::size_t lineOf(const XmlNode& node) const;

 private:
  friend text::Result<std::unique_ptr<XmlDocument>> xmlParse(std::string_view bytes);
  struct Store;
  std::unique_ptr<Store> store_;
};

// Of a file's bytes: UTF-8, with a mark or without, else Windows-1252. Far faster than of a wide text. The one fault is
// a name or value over its limit, in "line 12". The document is null with a fault, and only then.
text::Result<std::unique_ptr<XmlDocument>> xmlParse(std::string_view bytes);
text::Result<std::unique_ptr<XmlDocument>> xmlParse(std::wstring_view text);
// A fault names the file: one that can't be read, or the line in it.
text::Result<std::unique_ptr<XmlDocument>> xmlLoadFile(std::wstring_view path);

// Number of children: the sum of the block counts along the chain. Null is 0.
std::size_t xmlChildCount(const XmlNode* node);
// The child at an index counted from this block on; null when there is none.
XmlNode* xmlChildAt(const XmlChildBlock* block, std::size_t index);
// The first attribute of that exact name, or null.
const XmlAttr* attrFind(const XmlAttrBlock* block, std::wstring_view name);

// Calls f(XmlNode&) for each child in order; linear, unlike counting with xmlChildAt.
template <class F>
void xmlEachChild(const XmlNode& node, F&& f) {
  for (const XmlChildBlock* block = node.children; block; block = block->next)
    for (std::uint16_t i = 0; i < block->count; ++i) f(*block->items[i]);
}

}  // namespace core
