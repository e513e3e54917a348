// What of a model couldn't be read, so that its sheet lacks it: told once for each kind, when the sheet is written.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "creo/ProTypes.h"

namespace reports::sheet {

class Unread {
 public:
  // The value, or an empty one, which is noted under `what`, a text that lasts. That there is none is a failure, too.
  template <class T>
  T read(creo::Got<T> got, std::wstring_view what) {
    note(got.error, what);
    return std::move(got.value);
  }
  // The same of what a model need not have: that it isn't found is an answer.
  template <class T>
  T readAny(creo::Got<T> got, std::wstring_view what) {
    visited(got.error, what);
    return std::move(got.value);
  }
  // How a visit ended, which finds nothing where there is nothing, or is stopped by its visitor.
  void visited(creo::ProError result, std::wstring_view what) {
    if (result != creo::ProNotFound && result != creo::ProStopVisit) note(result, what);
  }
  // A warning for each kind: what, how often, the code of the first.
  void tell() const;

 private:
  void note(creo::ProError code, std::wstring_view what);
  struct Kind {
    std::wstring_view what;
    creo::ProError first{};
    int count = 0;
  };
  std::vector<Kind> kinds_;
};

}  // namespace reports::sheet
