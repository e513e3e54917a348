#include "kelvane/check/document_mend.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

namespace kelvane {
namespace {

// Edits of one text that don't meet, by their places.
class EditsOfText {
 public:
  // All of them or, where one would meet another, none: they have their turn in the text that comes of the others.
  bool take(const Edits& edits) {
    for (const Edit& edit : edits)
      if (meets(edit.piece)) return false;
    for (const Edit& edit : edits) all_.emplace(edit.piece.at, edit);
    return true;
  }
  [[nodiscard]] bool empty() const { return all_.empty(); }
  [[nodiscard]] std::string made(const std::string& bytes) const {
    std::string result;
    std::size_t at = 0;
    for (const auto& [place, edit] : all_) {
      result.append(bytes, at, place - at).append(edit.with);
      at = place + edit.piece.size;
    }
    return result.append(bytes, at);
  }

 private:
  [[nodiscard]] bool meets(const Piece& piece) const {
    const auto next = all_.lower_bound(piece.at);
    if (next != all_.end() && next->first < piece.at + std::max<std::size_t>(1, piece.size)) return true;
    return next != all_.begin() && std::prev(next)->first + std::prev(next)->second.piece.size > piece.at;
  }

  std::map<std::size_t, Edit> all_;
};

class Mending {
 public:
  Mending(const std::string& bytes, const std::function<std::vector<Finding>(const std::string&)>& check,
          const std::function<bool(const Finding&)>& isMeant)
      : bytes_(bytes), check_(check), isMeant_(isMeant), first_(check(bytes)) {}

  MendedDocument run() {
    while (true) {
      MendedDocument mended = settled();
      const Finding* fresh = firstNew(mended.left);
      if (!fresh) {
        tellRefused(mended.left);
        return mended;
      }
      refuse(*fresh);
    }
  }

 private:
  using Key = std::tuple<std::string_view, std::size_t, std::string, std::string>;
  static Key keyOf(const Finding& entry) { return {entry.rule, entry.line, entry.attribute, entry.text}; }

  // One mend may show the need of the next: a value that is in double quotes now, and has a bare '&'.
  MendedDocument settled() {
    MendedDocument mended{bytes_, first_};
    elements_.clear();
    for (int pass = 0; pass < kMostPasses; ++pass) {
      EditsOfText edits;
      for (const Finding& finding : mended.left) {
        if (finding.mend.empty() || refused_.contains(finding.element) || !isMeant_(finding)) continue;
        if (edits.take(finding.mend)) elements_.insert(finding.element);
      }
      if (edits.empty()) break;
      mended.bytes = edits.made(mended.bytes);
      mended.left = check_(mended.bytes);
    }
    return mended;
  }

  [[nodiscard]] const Finding* firstNew(const std::vector<Finding>& left) const {
    std::multiset<Key> known;
    for (const Finding& finding : first_) known.insert(keyOf(finding));
    for (const Finding& finding : left) {
      const auto found = known.find(keyOf(finding));
      if (found != known.end())
        known.erase(found);
      else if (finding.use.empty())
        return &finding;
    }
    return nullptr;
  }

  // Each call refuses an element more, so that there is an end.
  void refuse(const Finding& fresh) {
    if (elements_.contains(fresh.element)) return void(refused_.emplace(fresh.element, fresh.text));
    for (const int element : elements_) refused_.emplace(element, fresh.text);
  }

  void tellRefused(std::vector<Finding>& left) const {
    for (Finding& finding : left) {
      const auto found = refused_.find(finding.element);
      if (!finding.mend.empty() && found != refused_.end() && isMeant_(finding))
        finding.text += "; not mended, as then this would be found: " + found->second;
    }
  }

  static constexpr int kMostPasses = 10;

  const std::string& bytes_;
  const std::function<std::vector<Finding>(const std::string&)>& check_;
  const std::function<bool(const Finding&)>& isMeant_;
  std::vector<Finding> first_;
  std::set<int> elements_;              // that were mended
  std::map<int, std::string> refused_;  // elements, and what would be found
};

}  // namespace

MendedDocument mendedDocument(const std::string& bytes,
                              const std::function<std::vector<Finding>(const std::string& bytes)>& check,
                              const std::function<bool(const Finding& finding)>& isMeant) {
  return Mending(bytes, check, isMeant).run();
}

}  // namespace kelvane
