// The reader of lists and filters.
#include "core/xml.h"

#include <string>

#include "fuzz/target.h"
#include "text/encoding.h"

namespace {

using core::XmlDocument;
using core::XmlNode;

// One node with all below it, as a text; what the tree promises of counts, links, lines and sizes holds on the way.
std::string shown(const XmlDocument& document, const XmlNode& node, int depth) {
  constexpr int kDeepest = 200;
  std::string text(node.name.begin(), node.name.end());
  text += ':' + std::to_string(document.lineOf(node));
  fuzz::holds(node.name.size() <= core::kXmlNameLimit, "a name within its limit");
  for (const core::XmlAttrBlock* block = node.attributes; block; block = block->next) {
    fuzz::holds(block->count <= block->items.size(), "a block holds what it counts");
    for (std::uint16_t i = 0; i < block->count; ++i) {
      fuzz::holds(block->items[i]->name.size() <= core::kXmlNameLimit, "an attribute's name within its limit");
      fuzz::holds(block->items[i]->value.size() <= core::kXmlValueLimit, "a value within its limit");
      fuzz::holds(core::attrFind(node.attributes, block->items[i]->name) != nullptr,
                  "an attribute is found by its name");
      text += ' ' + text::toUtf8(block->items[i]->name) + '=' + text::toUtf8(block->items[i]->value);
    }
  }
  std::size_t count = 0;
  text += '{';
  core::xmlEachChild(node, [&](const XmlNode& child) {
    fuzz::holds(child.parent == &node, "a child knows its parent");
    fuzz::holds(core::xmlChildAt(node.children, count) == &child, "a child is found by its place");
    ++count;
    if (depth < kDeepest) text += shown(document, child, depth + 1);
  });
  fuzz::holds(core::xmlChildCount(&node) == count, "children are counted");
  return text + '}';
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzz::bytesOf(data, size);
  const auto narrow = core::xmlParse(bytes);
  fuzz::holds((narrow.value == nullptr) == static_cast<bool>(narrow.fault), "a document or a fault");
  if (!narrow.value) return 0;
  const std::string tree = shown(*narrow.value, *narrow.value->root(), 0);
  if (!text::isUtf8(bytes)) return 0;
  const std::wstring letters = text::fromUtf8(bytes);
  const auto wide = core::xmlParse(letters);
  if (wide.value)
    fuzz::holds(tree == shown(*wide.value, *wide.value->root(), 0), "bytes and letters give the same tree");
  return 0;
}
