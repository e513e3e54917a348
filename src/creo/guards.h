// Guards put back what an action changes in the session, on every path.
#pragma once

#include "creo/ProDrawing.h"
#include "creo/ProSelection.h"
#include "creo/ProUtil.h"

namespace creo {

// What is put back is tried once more where Creo refuses it: nothing else would do it later. False: it stays.
template <class PutBack>
bool insist(const PutBack& putBack) {
  return putBack() == ProNoError || putBack() == ProNoError;
}

// Remembers the working folder; change() goes elsewhere; the destructor goes back.
class DirectoryGuard {
 public:
  DirectoryGuard() : saved_(ProDirectoryCurrentGet()) {}
  ~DirectoryGuard() {
    insist([this] { return back(); });
  }
  DirectoryGuard(const DirectoryGuard&) = delete;
  DirectoryGuard& operator=(const DirectoryGuard&) = delete;
  // As ProDirectoryChange; it stays where the former one can't be told.
  ProError change(const std::wstring& path) {
    if (!saved_) return saved_.error;
    const ProError result = ProDirectoryChange(path);
    changed_ = changed_ || result == ProNoError;
    return result;
  }
  // Goes back now; the destructor does it once more, for what went elsewhere meanwhile.
  ProError back() const { return changed_ ? ProDirectoryChange(saved_.value) : ProNoError; }

 private:
  Got<std::wstring> saved_;
  bool changed_ = false;
};

// Remembers a drawing's current sheet; change() makes another one current; the destructor goes back.
class SheetGuard {
 public:
  explicit SheetGuard(ProMdl drawing) : drawing_(drawing), saved_(ProDrawingCurrentSheetGet(drawing)) {}
  ~SheetGuard() {
    if (changed_) insist([this] { return ProDrawingCurrentSheetSet(drawing_, saved_.value); });
  }
  SheetGuard(const SheetGuard&) = delete;
  SheetGuard& operator=(const SheetGuard&) = delete;
  // As ProDrawingCurrentSheetSet; it stays where the former one can't be told.
  ProError change(int sheet) {
    if (!saved_) return saved_.error;
    const ProError result = ProDrawingCurrentSheetSet(drawing_, sheet);
    changed_ = changed_ || result == ProNoError;
    return result;
  }

 private:
  ProMdl drawing_;
  Got<int> saved_;
  bool changed_ = false;
};

// The same for a drawing's current model.
class SolidGuard {
 public:
  explicit SolidGuard(ProMdl drawing) : drawing_(drawing), saved_(ProDrawingCurrentsolidGet(drawing)) {}
  ~SolidGuard() {
    if (changed_ && saved_) insist([this] { return ProDrawingCurrentsolidSet(drawing_, saved_.value); });
  }
  SolidGuard(const SolidGuard&) = delete;
  SolidGuard& operator=(const SolidGuard&) = delete;
  // As ProDrawingCurrentsolidSet; it stays where the former one can't be told.
  ProError change(ProMdl solid) {
    if (!saved_ && saved_.error != ProNotFound) return saved_.error;
    const ProError result = ProDrawingCurrentsolidSet(drawing_, solid);
    changed_ = changed_ || result == ProNoError;
    return result;
  }

 private:
  ProMdl drawing_;
  Got<ProMdl> saved_;
  bool changed_ = false;
};

// Remembers what is selected; back() and the destructor select it again, in its order.
class SelectionGuard {
 public:
  SelectionGuard() : saved_(ProSelbufferSelectionsGet()), open_(static_cast<bool>(saved_)) {}
  ~SelectionGuard() { back(); }
  SelectionGuard(const SelectionGuard&) = delete;
  SelectionGuard& operator=(const SelectionGuard&) = delete;
  // False: something couldn't be selected again, as what doesn't belong to the current model.
  bool back() {
    if (!std::exchange(open_, false)) return true;
    bool all = ProSelbufferClear() == ProNoError;
    for (const ProSelection& selection : saved_.value) all = ProSelbufferSelectionAdd(selection) == ProNoError && all;
    return all;
  }
  // ProNotFound: nothing was selected.
  [[nodiscard]] const Got<std::vector<ProSelection>>& saved() const { return saved_; }

 private:
  Got<std::vector<ProSelection>> saved_;
  bool open_;
};

// Remembers the values of an option; change() leaves it with one alone; back() and the destructor give it back all that
// it had, in their order.
class OptionGuard {
 public:
  explicit OptionGuard(std::wstring option) : option_(std::move(option)), saved_(ProConfigoptArrayGet(option_)) {}
  ~OptionGuard() { back(); }
  OptionGuard(const OptionGuard&) = delete;
  OptionGuard& operator=(const OptionGuard&) = delete;
  // As ProConfigoptSet; nothing is set where the former values can't be told.
  ProError change(const std::wstring& value) {
    if (!saved_ && saved_.error != ProNotFound) return saved_.error;
    changed_ = true;
    if (saved_.value.size() > 1)
      if (const ProError cleared = ProConfigoptSet(option_, L"")) return cleared;
    return ProConfigoptSet(option_, value);
  }
  // False: a value couldn't be given back.
  bool back() {
    if (!std::exchange(changed_, false)) return true;
    const auto give = [this](const std::wstring& value) {
      return insist([&] { return ProConfigoptSet(option_, value); });
    };
    bool all = saved_.value.size() == 1 || give(L"");
    for (const std::wstring& value : saved_.value) all = give(value) && all;
    return all;
  }
  // In their order; none: it wasn't set.
  [[nodiscard]] const std::vector<std::wstring>& saved() const { return saved_.value; }

 private:
  std::wstring option_;
  Got<std::vector<std::wstring>> saved_;
  bool changed_ = false;
};

}  // namespace creo
