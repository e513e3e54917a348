#include "headless/model/feature_tree.h"

#include <unordered_set>

namespace headless {

const std::vector<TreeFeature>& FeatureTree::all(const ModelRecord& record) {
  if (!built_ || features_ != record.features.size() || components_ != record.components.size()) build(record);
  return tree_;
}

const TreeFeature* FeatureTree::find(const ModelRecord& record, int id) {
  const auto& tree = all(record);
  const auto found = byId_.find(id);
  return found == byId_.end() ? nullptr : &tree[found->second];
}

void FeatureTree::build(const ModelRecord& record) {
  tree_.clear();
  byId_.clear();
  features_ = record.features.size();
  components_ = record.components.size();
  built_ = true;
  for (std::size_t i = 0; i < features_; ++i) {
    byId_.try_emplace(record.features[i].id, tree_.size());
    tree_.push_back({record.features[i].id, 0, i, TreeFeature::kNone});
  }
  std::vector<std::size_t> follow;
  for (std::size_t i = 0; i < components_; ++i) {
    const auto place = byId_.find(record.components[i].feature);
    if (place != byId_.end() && tree_[place->second].component == TreeFeature::kNone)
      tree_[place->second].component = i;
    else
      follow.push_back(i);
  }
  // A component whose feature isn't told, or is another's already, gets the next free id.
  std::unordered_set<int> ids;
  for (const std::size_t i : follow) ids.insert(record.components[i].feature);
  int free = 1;
  for (const std::size_t i : follow) {
    int id = record.components[i].feature;
    if (id <= 0 || byId_.contains(id)) {
      while (byId_.contains(free) || ids.contains(free)) ++free;
      id = free;
    }
    byId_.emplace(id, tree_.size());
    tree_.push_back({id, 0, TreeFeature::kNone, i});
  }
  for (std::size_t i = 0; i < tree_.size(); ++i) {
    const int own = tree_[i].record == TreeFeature::kNone ? 0 : record.features[tree_[i].record].number;
    tree_[i].number = own > 0 ? own : static_cast<int>(i) + 1;
  }
}

}  // namespace headless
