#include "headless/proui/resource.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>

#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/format.h"

namespace headless {
namespace {

using Json = nlohmann::json;

constexpr const char* kLine = "#line";  // member that the reader gives each object: the line where it starts
constexpr int kFormat = 1;
constexpr int kDeepest = 16;  // layouts in layouts

struct Fault {
  int line;
  std::string text;
};

[[noreturn]] void fail(const Json& where, std::string text) {
  throw Fault{where.is_object() ? where.value(kLine, 1) : 1, std::move(text)};
}

std::string inQuotes(std::string_view text) { return "'" + std::string(text) + "'"; }

// Walks the bytes and counts the lines that went by.
class Counting {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;
  Counting(const char* at, int* line) : at_(at), line_(line) {}
  reference operator*() const { return *at_; }
  Counting& operator++() {
    if (*at_ == '\n') ++*line_;
    ++at_;
    return *this;
  }
  bool operator==(const Counting& other) const { return at_ == other.at_; }
  bool operator!=(const Counting& other) const { return at_ != other.at_; }

 private:
  const char* at_;
  int* line_;
};

Json parse(std::string_view content) {
  int line = 1;
  std::vector<int> open;
  const auto mark = [&](int /*depth*/, Json::parse_event_t event, Json& parsed) {
    if (event == Json::parse_event_t::object_start) open.push_back(line);
    if (event == Json::parse_event_t::object_end) {
      parsed[kLine] = open.back();
      open.pop_back();
    }
    return true;
  };
  try {
    const char* end = content.data() + content.size();
    return Json::parse(Counting(content.data(), &line), Counting(end, &line), mark);
  } catch (const Json::parse_error&) {
    throw Fault{line, "it isn't valid JSON from here on"};
  }
}

struct Reader {
  Dialog& dialog;
  std::string language;

  // A text that is shown: one for all languages, or one a language.
  [[nodiscard]] std::wstring shownText(const Json& owner, const Json& value) const {
    const Json* text = &value;
    if (value.is_object()) {
      auto found = value.find(language);
      if (found == value.end()) found = value.find("usascii");
      if (found == value.end()) fail(value, "a text without 'usascii'");
      text = &*found;
    }
    if (!text->is_string()) fail(value.is_object() ? value : owner, "a text that is shown isn't a string");
    return text::fromUtf8(text->get_ref<const std::string&>());
  }
};

std::string stringOf(const Json& owner, const char* member) {
  const auto found = owner.find(member);
  if (found == owner.end()) fail(owner, inQuotes(member) + " is missing");
  if (!found->is_string()) fail(owner, inQuotes(member) + " isn't a string");
  return found->get<std::string>();
}

bool flagOf(const Json& owner, const char* member) {
  if (!owner[member].is_boolean()) fail(owner, inQuotes(member) + " isn't true or false");
  return owner[member].get<bool>();
}

int numberOf(const Json& owner, const char* member) {
  if (!owner[member].is_number_integer()) fail(owner, inQuotes(member) + " isn't a whole number");
  return owner[member].get<int>();
}

// The objects of a list.
const Json& listOf(const Json& owner, const char* member) {
  const Json& list = owner[member];
  if (!list.is_array()) fail(owner, inQuotes(member) + " isn't a list");
  for (const Json& item : list) {
    if (!item.is_object()) fail(owner, inQuotes(member) + " holds what is no object");
  }
  return list;
}

void onlyMembers(const Json& owner, std::initializer_list<std::string_view> allowed) {
  for (const auto& [member, value] : owner.items()) {
    if (member != kLine && std::find(allowed.begin(), allowed.end(), member) == allowed.end()) {
      fail(owner, "unknown member " + inQuotes(member));
    }
  }
}

std::vector<Column> columnsOf(const Reader& reader, const Json& owner) {
  std::vector<Column> columns;
  for (const Json& item : listOf(owner, "columns")) {
    onlyMembers(item, {"name", "text", "width"});
    columns.push_back({stringOf(item, "name"), item.contains("text") ? reader.shownText(item, item["text"]) : L"",
                       item.contains("width") ? numberOf(item, "width") : 0});
  }
  return columns;
}

std::vector<Tree::Type> typesOf(const Json& owner) {
  std::vector<Tree::Type> types;
  for (const Json& item : listOf(owner, "types")) {
    onlyMembers(item, {"name", "image"});
    types.push_back({stringOf(item, "name"), stringOf(item, "image")});
  }
  return types;
}

void readChoices(const Reader& reader, const Json& owner, Component& made) {
  Choices& choices = made.choices();
  for (const Json& item : listOf(owner, "choices")) {
    onlyMembers(item, {"name", "text"});
    choices.names.push_back(stringOf(item, "name"));
    choices.labels.push_back(item.contains("text") ? reader.shownText(item, item["text"])
                                                   : text::fromUtf8(choices.names.back()));
  }
  if (made.kind == Kind::optionmenu && !choices.names.empty()) choices.selected = {choices.names.front()};
}

constexpr unsigned bit(Kind kind) { return 1U << static_cast<unsigned>(kind); }
constexpr unsigned kButtons = bit(Kind::pushbutton) | bit(Kind::checkbutton);
constexpr unsigned kEvery = ~0U;

struct Member {
  const char* name;
  unsigned kinds;
  void (*read)(const Reader&, const Json& owner, Component&);
};

// Members with a null function are read where the component is made.
constexpr Member kMembers[] = {
    {"name", kEvery, nullptr},
    {"kind", kEvery, nullptr},
    {"components", bit(Kind::layout) | bit(Kind::menu) | bit(Kind::table) | bit(Kind::tree), nullptr},
    {"columns", bit(Kind::table), nullptr},
    {"types", bit(Kind::tree), nullptr},
    {"text", kButtons | bit(Kind::label) | bit(Kind::textarea) | bit(Kind::layout) | bit(Kind::menu),
     [](const Reader& reader, const Json& owner, Component& made) {
       made.text = reader.shownText(owner, owner["text"]);
     }},
    {"image", kButtons | bit(Kind::label),
     [](const Reader&, const Json& owner, Component& made) { made.image = stringOf(owner, "image"); }},
    {"shown", kEvery, [](const Reader&, const Json& owner, Component& made) { made.shown = flagOf(owner, "shown"); }},
    {"enabled", kEvery,
     [](const Reader&, const Json& owner, Component& made) { made.enabled = flagOf(owner, "enabled"); }},
    {"checked", bit(Kind::checkbutton),
     [](const Reader&, const Json& owner, Component& made) { made.checked = flagOf(owner, "checked"); }},
    {"choices", bit(Kind::optionmenu) | bit(Kind::list), readChoices},
};

Kind kindOf(const Json& owner) {
  const std::string name = stringOf(owner, "kind");
  for (int kind = 0; kind <= static_cast<int>(Kind::menu); ++kind) {
    if (kindName(static_cast<Kind>(kind)) == name) return static_cast<Kind>(kind);
  }
  fail(owner, "unknown kind " + inQuotes(name));
}

// What only some kinds have, empty.
void makeContent(const Reader& reader, const Json& owner, Component& made) {
  switch (made.kind) {
    case Kind::progressbar:
      made.content = Progress{};
      break;
    case Kind::optionmenu:
    case Kind::list:
      made.content = std::make_unique<Choices>();
      break;
    case Kind::table:
      if (!owner.contains("columns")) fail(owner, "a table without 'columns'");
      made.content = std::make_unique<Table>(columnsOf(reader, owner));
      break;
    case Kind::tree:
      if (!owner.contains("types")) fail(owner, "a tree without 'types'");
      made.content = std::make_unique<TreeContent>(typesOf(owner));
      break;
    default:
      break;
  }
}

void readMembers(const Reader& reader, const Json& owner, Component& made) {
  for (const auto& [name, value] : owner.items()) {
    if (name == kLine) continue;
    const auto* member =
        std::find_if(std::begin(kMembers), std::end(kMembers), [&](const Member& m) { return m.name == name; });
    if (member == std::end(kMembers)) fail(owner, "unknown member " + inQuotes(name));
    if (!(member->kinds & bit(made.kind))) {
      fail(owner, "a " + std::string(kindName(made.kind)) + " has no " + inQuotes(name));
    }
    if (member->read) member->read(reader, owner, made);
  }
}

// depth: of the components around these.
void readComponents(const Reader& reader, const Json& owner, const char* list, int depth) {
  if (depth > kDeepest) fail(owner, "components are nested too deep");
  for (const Json& item : listOf(owner, list)) {
    const std::string name = stringOf(item, "name");
    if (name.empty()) fail(item, "a component without a name");
    Component made;
    made.kind = kindOf(item);
    makeContent(reader, item, made);
    readMembers(reader, item, made);
    if (reader.dialog.add(name, std::move(made))) fail(item, "a second component " + inQuotes(name));
    if (item.contains("components")) readComponents(reader, item, "components", depth + 1);
  }
}

void readWhole(const Reader& reader, const Json& whole) {
  if (!whole.is_object()) fail(whole, "it isn't an object");
  onlyMembers(whole, {"format", "title", "image", "components", "templates"});
  if (!whole.contains("format") || numberOf(whole, "format") != kFormat) {
    fail(whole, "'format' isn't " + std::to_string(kFormat));
  }
  if (whole.contains("title")) reader.dialog.title = reader.shownText(whole, whole["title"]);
  if (whole.contains("image")) reader.dialog.icon = stringOf(whole, "image");
  if (!whole.contains("components")) fail(whole, "'components' is missing");
  readComponents(reader, whole, "components", 0);
  if (whole.contains("templates")) readComponents(reader, whole, "templates", 0);
}

}  // namespace

std::wstring findResource(const std::wstring& textFolder, const std::string& language, const std::string& name) {
  const std::wstring wide = text::fromUtf8(name);
  if (wide.empty() || wide.find_first_of(L"\\/") != std::wstring::npos) return {};  // a name, never a path
  const std::wstring places[] = {os::joined(textFolder, text::fromUtf8(language)), textFolder};
  for (const std::wstring& place : places) {
    std::wstring path = os::joined(os::joined(place, L"resource"), wide);
    if (os::files().exists(path)) return path;
  }
  return {};
}

ReadDialog readDialog(const std::string& name, std::string_view content, const std::wstring& path,
                      const std::string& language) {
  auto dialog = std::make_shared<Dialog>(name);
  try {
    readWhole(Reader{*dialog, language}, parse(content));
  } catch (const Fault& fault) {
    return {nullptr, text::format(L"%s:%d: %s", path, fault.line, text::fromUtf8(fault.text))};
  }
  return {std::move(dialog), {}};
}

}  // namespace headless
