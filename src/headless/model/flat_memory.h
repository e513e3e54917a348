// Which documents came into memory, and which are read ahead of their turn.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "headless/model/model.h"
#include "headless/store/read_ahead.h"

namespace headless {

// For as long as one lives documents leave the memory when they are put away (away.h), and come back ahead of their
// turn. One at a time; without one all stay.
class FlatMemory {
 public:
  // most: bytes of the files of documents that may stay.
  explicit FlatMemory(std::size_t most);
  ~FlatMemory();
  FlatMemory(const FlatMemory&) = delete;
  FlatMemory& operator=(const FlatMemory&) = delete;
  // Null without one.
  static FlatMemory* inForce() { return current_; }

  // ---- for what brings documents in; nothing happens without one
  static void noteArrived(const Model& model);
  static std::optional<ReadAhead::Document> takeAhead(const std::wstring& path);

  // ---- for what puts them away
  std::size_t keep = 0;
  std::vector<creo::ProMdl> arrived;  // models whose documents are in memory, in the order of their coming
  std::size_t bytes = 0;              // of the files of those that came since some were put away
  ReadAhead ahead;

 private:
  static inline FlatMemory* current_ = nullptr;
};

}  // namespace headless
