// Walks over a document's things, whose list must stand still as long as they go on.
#pragma once

#include <memory>
#include <utility>

#include "headless/model/document.h"

namespace headless {

// What knows the walks of one kind: they are on the stack, one inside the other, over whatever document. Walk derives
// from it.
template <class Walk>
class WalkOver {
 public:
  WalkOver(const WalkOver&) = delete;
  WalkOver& operator=(const WalkOver&) = delete;
  // The outermost walk that goes on over a document; null without one.
  static Walk* of(const ModelDocument& document) {
    WalkOver* found = nullptr;
    for (WalkOver* walk = innermost_; walk; walk = walk->outer_)
      if (walk->document_.get() == &document) found = walk;
    return static_cast<Walk*>(found);
  }

 protected:
  explicit WalkOver(std::shared_ptr<ModelDocument> document)
      : document_(std::move(document)), outer_(std::exchange(innermost_, this)) {}
  ~WalkOver() { innermost_ = outer_; }
  [[nodiscard]] ModelDocument& document() const { return *document_; }

 private:
  static inline WalkOver* innermost_ = nullptr;
  std::shared_ptr<ModelDocument> document_;
  WalkOver* outer_;  // the walk that went on when this one began
};

}  // namespace headless
