// Handles that never dangle, for an adapter whose system hands out pointers. A number in place of the pointer tells,
// when the plug-in comes back with it, whether the object is still there: the notification of an erasure takes the
// object out, and no later object gets the same number.
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "creo/ProTypes.h"

namespace creo {

// Object: what the system names a thing by, such as a pointer; copied, compared by ==, hashed by std::hash. Of one
// thread, as all operations are.
template <class Tag, class Object>
class HandleTable {
 public:
  // The object's handle; the same one for as long as the object is in the table. Never 0.
  Handle<Tag> handleOf(const Object& object) {
    const auto [known, isNew] = places_.try_emplace(object, static_cast<std::uint32_t>(entries_.size()));
    if (!isNew) return handleAt(known->second);
    if (free_.empty()) {
      entries_.emplace_back();
    } else {
      known->second = free_.back();
      free_.pop_back();
    }
    entries_[known->second].object = object;
    return handleAt(known->second);
  }

  // Nothing for 0, for an object that has been forgotten, and for a number that is no handle: an operation answers
  // ProBadInputs then.
  [[nodiscard]] std::optional<Object> find(Handle<Tag> handle) const {
    const std::uint64_t place = handle.value & kPlaces;
    if (place >= entries_.size() || entries_[place].use != handle.value >> kPlaceBits) return std::nullopt;
    return entries_[place].object;
  }

  // Its handles are dead from now on; an object that comes later at the same address has a new one. Nothing happens for
  // one that isn't in the table.
  void forget(const Object& object) {
    const auto known = places_.find(object);
    if (known == places_.end()) return;
    const std::uint32_t place = known->second;
    places_.erase(known);
    Entry& entry = entries_[place];
    entry.object.reset();
    // A place whose uses have all been is never given again: the first would come back.
    if (++entry.use != 0) free_.push_back(place);
  }

  // Where an erasure doesn't tell what it took: forgets each object of which isThere says no.
  template <class IsThere>
  void keepOnly(IsThere isThere) {
    std::vector<Object> gone;
    for (const auto& [object, place] : places_)
      if (!isThere(object)) gone.push_back(object);
    for (const Object& object : gone) forget(object);
  }

  [[nodiscard]] std::size_t size() const { return places_.size(); }

 private:
  static constexpr unsigned kPlaceBits = 32;
  static constexpr std::uint64_t kPlaces = (std::uint64_t{1} << kPlaceBits) - 1;
  struct Entry {
    std::optional<Object> object;  // nothing: the place is free
    std::uint32_t use = 1;         // how often the place has been given; in the upper half of the handle
  };
  [[nodiscard]] Handle<Tag> handleAt(std::uint32_t place) const {
    return {std::uint64_t{entries_[place].use} << kPlaceBits | place};
  }

  std::unordered_map<Object, std::uint32_t> places_;
  std::vector<Entry> entries_;
  std::vector<std::uint32_t> free_;
};

}  // namespace creo
