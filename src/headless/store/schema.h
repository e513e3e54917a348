// A JSON Schema of documents, put together while the tables of their records are read.
#pragma once

#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace headless {

class Schema {
 public:
  using Describe = std::function<void()>;

  // What a value is: a schema, as written.
  void is(std::string_view json) { out_ += json; }
  // One of the texts.
  void words(std::span<const std::string_view> words);
  // An array each item of which is what `item` describes; an object each member of which is.
  void eachItem(const Describe& item);
  void eachMember(const Describe& member);
  void either(const Describe& describe, const Describe& other);

  // An object. It has a definition of its own, named by the place where it was met first ("features.pattern"); `table`
  // tells records apart. `members` calls member() for each of its members, then add() for what is true of several.
  // Other members may stand there.
  void record(const void* table, const Describe& members);
  void member(std::string_view name, bool isRequired, const Describe& value);
  // Members of the definition, as written.
  void add(std::string_view json) { more_ = json; }

  // The whole schema, pretty-printed, once its outermost record has been described.
  [[nodiscard]] std::string finished(std::string_view title, std::string_view comment) const;

 private:
  [[nodiscard]] std::string placeName() const;

  std::string out_;
  std::vector<std::string_view> place_;                           // the members on the way
  std::map<const void*, std::string> names_;                      // of definitions
  std::vector<std::pair<std::string, std::string>> definitions_;  // name, JSON; those inside come first
  // Of the record that is being described.
  std::string properties_, required_, more_;
};

}  // namespace headless
