// The order of a model's tree: its features, and an assembly's components, which are features too.
#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

#include "headless/store/records.h"

namespace headless {

// A component whose `feature` stands among the features takes that record's place; the others follow.
struct TreeFeature {
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  int id = 0;
  int number = 0;                                 // from 1
  std::size_t record = kNone, component = kNone;  // places in `features` and `components`
};

// Built when first asked for, and anew when the lists have grown or shrunk; changed() tells of any other change.
class FeatureTree {
 public:
  const std::vector<TreeFeature>& all(const ModelRecord& record);
  // Null for none.
  const TreeFeature* find(const ModelRecord& record, int id);
  void changed() { built_ = false; }

 private:
  void build(const ModelRecord& record);

  bool built_ = false;
  std::size_t features_ = 0, components_ = 0;
  std::vector<TreeFeature> tree_;
  std::unordered_map<int, std::size_t> byId_;
};

}  // namespace headless
