// Goes over a list from its end.
#pragma once

namespace kelvane {

// For a loop: `for (const Deed& deed : Backwards(deeds))`. The list has to outlive it.
template <class List>
class Backwards {
 public:
  explicit Backwards(List& list) : list_(list) {}
  [[nodiscard]] auto begin() const { return list_.rbegin(); }
  [[nodiscard]] auto end() const { return list_.rend(); }

 private:
  List& list_;
};

}  // namespace kelvane
