// Walks over what a model holds and uses, with a line where one isn't whole.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "creo/ProMdl.h"

namespace actions {

// visited: what a visit gave. True: everything was visited, nothing is there, or the visit was to stop. False, with an
// error line that names what couldn't be visited: "The layers".
bool isWhole(creo::ProError visited, std::wstring_view what);

// An error line: "The type of a feature can't be read".
void cantRead(std::wstring_view what);
// The value; an empty one, with that line, where it can't be read.
template <class T>
T valueOrNone(creo::Got<T> got, std::wstring_view what) {
  if (!got) cantRead(what);
  return got ? std::move(got.value) : T{};
}
// The same for a name, of which what has none is empty without a line.
std::wstring nameOrNone(creo::Got<std::wstring> name, std::wstring_view what);

// The same for a list.
template <class T>
std::vector<T> listOrNone(creo::Got<std::vector<T>> list, std::wstring_view what) {
  if (!creo::isTold(list)) cantRead(what);
  return std::move(list.value);
}

// What a model uses directly. None, with an error line, where Creo can't tell.
std::vector<creo::ProDependency> usedBy(creo::ProMdl model);

}  // namespace actions
