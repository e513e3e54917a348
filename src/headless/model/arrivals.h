// Who hears of documents as they come into memory, and has read some of them ahead.
#pragma once

#include <optional>
#include <string>

#include "headless/model/model.h"
#include "headless/store/read_ahead.h"

namespace headless {

// In force for as long as it lives; one at a time, and without one nothing is heard nor read ahead.
class Arrivals {
 public:
  Arrivals() { current_ = this; }
  virtual ~Arrivals() { current_ = nullptr; }
  Arrivals(const Arrivals&) = delete;
  Arrivals& operator=(const Arrivals&) = delete;

  static void note(const Model& model) {
    if (current_) current_->doNote(model);
  }
  // The document of a file, where it was read meanwhile.
  static std::optional<ReadAhead::Document> take(const std::wstring& path) {
    return current_ ? current_->doTake(path) : std::nullopt;
  }

 private:
  virtual void doNote(const Model& model) = 0;
  virtual std::optional<ReadAhead::Document> doTake(const std::wstring& path) = 0;

  static inline Arrivals* current_ = nullptr;
};

}  // namespace headless
