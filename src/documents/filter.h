// Filters: whether an action applies to a model, and which models enter the table.
#pragma once

#include <string>
#include <string_view>

#include "core/xml.h"
#include "creo/ProTypes.h"
#include "documents/predicates.h"

namespace documents {

constexpr int kFilterHolds = 0;
constexpr int kFilterRefuses = 2;

// The gate of each action: the type switches, then, with forEF "true", the filter block. 0 or 2. Children that look
// like items, or groups of them, beside which there is no group get a warning line: they let every model pass.
int filterCheck(const core::XmlNode& task, std::wstring_view extension, creo::ProMdl model);
// Told how an evaluation goes, item by item.
class FilterWatch {
 public:
  virtual ~FilterWatch() = default;
  virtual void groupBegins() {}
  virtual void itemBegins(const core::XmlNode& /*item*/) {}
  // result: the predicate's answer. fails: with the item's negation.
  virtual void itemEnds(const core::XmlNode& /*item*/, Answer /*result*/, bool /*fails*/) {}
  // What stands between an item and the next one. settled: the group holds, the items behind aren't evaluated.
  enum class Link { withAnd, withOr, settled };
  virtual void linked(Link /*link*/) {}
};

// Items are read left to right as groups of ANDs joined by ORs, without brackets. silent: no numbered log lines. 0
// or 2.
int evaluateFilter(const core::XmlNode& block, std::wstring_view extension, creo::ProMdl model, bool silent,
                   FilterWatch* watch = nullptr);
// The attribute that opens an action to models of a type: "forPRT"; empty for a type that has none.
std::wstring_view typeSwitch(creo::ProMdlType type);
// The block of a filter file: the document itself where the file's element is a group of items, else that element.
// Null for an empty file.
const core::XmlNode* filterFileBlock(const core::XmlDocument& document);
// Whether a block has an item at all; without one it holds for every model.
bool holdsItems(const core::XmlNode& block);
// Whether a block has children none of which is a group of items: whatever they were meant for, every model passes.
bool lacksGroups(const core::XmlNode& block);
// The predicate of that key; undecided where a comparison was given up. silentLookup: an unknown key gives noKey
// without its line.
Answer runPredicate(const core::XmlNode& item, std::wstring_view type, creo::ProMdl model, bool silentLookup = false);
bool isPredicate(std::wstring_view type);

// A table row's model: "BRACKET.PRT" less its last four characters, retrieved by the type of the extension ("PRT",
// "ASM", "DRW"; any other is a part). Null on failure.
creo::ProMdl retrieveByFileName(std::string_view fileName, std::wstring_view extension);

}  // namespace documents
