// An action's view on the task element.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "actions/action.h"
#include "actions/subject.h"
#include "core/xml.h"
#include "language/variables.h"

namespace actions {

using core::XmlNode;

// A task with the model that it works on. Attributes stand as they are in the list until a function says otherwise.
class Task {
 public:
  Task(const XmlNode& node, const Subject& subject) : node_(node), subject_(subject) {}
  [[nodiscard]] const XmlNode& node() const { return node_; }
  [[nodiscard]] const Subject& subject() const { return subject_; }
  [[nodiscard]] creo::ProMdl model() const { return subject_.model; }
  // "PRT" and ".PRT" alike.
  [[nodiscard]] bool extensionIs(std::wstring_view extension) const;

  [[nodiscard]] bool has(std::wstring_view name) const;
  // Empty when it is absent.
  [[nodiscard]] std::wstring_view attribute(std::wstring_view name) const;
  // Exactly "true".
  [[nodiscard]] bool isTrue(std::wstring_view name) const { return attribute(name) == L"true"; }
  // The attribute `pattern` with a number, as "name_%d"; nothing when it is absent.
  [[nodiscard]] std::optional<std::wstring_view> numbered(std::wstring_view pattern, int number) const;
  // The numbers from 0 up to but not including count for which the attribute `stem` with the number is there,
  // ascending: with stem "name_" those of name_0, name_7. Its cost is that of the attributes, however large count is.
  [[nodiscard]] std::vector<int> numbers(std::wstring_view stem, int count) const;
  // The same with the attributes' values.
  struct Numbered {
    int number = 0;
    std::wstring_view value;
  };
  [[nodiscard]] std::vector<Numbered> numberedAll(std::wstring_view stem, int count) const;
  // The attribute through the template engine.
  [[nodiscard]] language::Replaced text(std::wstring_view name, std::size_t size = text::kTextSize) const;
  // A path attribute: with "@project_dir@", variables and backslashes.
  [[nodiscard]] std::wstring path(std::wstring_view name, std::wstring_view subdirectory,
                                  std::size_t size = text::kTextSize) const;

 private:
  const XmlNode& node_;
  const Subject& subject_;
};

}  // namespace actions
