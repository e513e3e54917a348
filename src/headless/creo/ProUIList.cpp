#include "creo/ProUIList.h"

#include "headless/creo/proui_calls.h"

namespace creo {

using headless::ask;
using headless::change;
using headless::Component;
using headless::Kind;

ProError ProUIListNamesSet(const std::string& dialog, const std::string& list, std::vector<std::string> names) {
  return change("ProUIListNamesSet", dialog, list, Kind::list, [&](Component& c) {
    c.choices().names = std::move(names);
    c.choices().labels.clear();
    c.choices().selected.clear();
  });
}

ProError ProUIListLabelsSet(const std::string& dialog, const std::string& list, std::vector<std::wstring> labels) {
  return change("ProUIListLabelsSet", dialog, list, Kind::list, [&](Component& c) {
    if (labels.size() != c.choices().names.size()) return ProBadInputs;
    c.choices().labels = std::move(labels);
    return ProNoError;
  });
}

Got<std::vector<std::wstring>> ProUIListLabelsGet(const std::string& dialog, const std::string& list) {
  return ask<std::vector<std::wstring>>("ProUIListLabelsGet", dialog, list, Kind::list,
                                        [](const Component& c) { return c.choices().labels; });
}

}  // namespace creo
