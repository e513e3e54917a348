#include "headless/proui/resource.h"

#include <algorithm>
#include <iterator>

#include "headless/store/faults.h"
#include "headless/store/json.h"
#include "os/surroundings.h"
#include "text/encoding.h"

namespace headless {
namespace {

constexpr int kFormat = 1;

struct Fault {
  std::size_t offset;
  std::string text;
};

[[noreturn]] void fail(const Json& where, std::string text) { throw Fault{where.begin, std::move(text)}; }

std::string inQuotes(std::string_view text) { return "'" + std::string(text) + "'"; }

struct Reader {
  Dialog& dialog;
  std::string language;

  // A text that is shown: one for all languages, or one a language.
  [[nodiscard]] std::wstring shownText(const Json& value) const {
    const Json* text = &value;
    if (value.is(JsonKind::object)) {
      text = value.member(language);
      if (!text) text = value.member("usascii");
      if (!text) fail(value, "a text without 'usascii'");
    }
    if (!text->is(JsonKind::text)) fail(*text, "a text that is shown isn't a string");
    return text::fromUtf8(text->text);
  }
};

const Json& needed(const Json& owner, std::string_view member) {
  const Json* found = owner.member(member);
  if (!found) fail(owner, inQuotes(member) + " is missing");
  return *found;
}

const std::string& stringOf(const Json& value) {
  if (!value.is(JsonKind::text)) fail(value, inQuotes(value.name) + " isn't a string");
  return value.text;
}

bool flagOf(const Json& value) {
  if (!value.is(JsonKind::boolean)) fail(value, inQuotes(value.name) + " isn't true or false");
  return value.boolean;
}

int numberOf(const Json& value) {
  if (!value.is(JsonKind::integer) || value.integer < 0 || value.integer > 10000) {
    fail(value, inQuotes(value.name) + " isn't a whole number from 0 to 10000");
  }
  return static_cast<int>(value.integer);
}

// The objects of a list.
const std::vector<Json>& listOf(const Json& value) {
  if (!value.is(JsonKind::array)) fail(value, inQuotes(value.name) + " isn't a list");
  for (const Json& item : value.items) {
    if (!item.is(JsonKind::object)) fail(item, inQuotes(value.name) + " holds what is no object");
  }
  return value.items;
}

void onlyMembers(const Json& owner, std::initializer_list<std::string_view> allowed) {
  for (const Json& member : owner.items) {
    if (std::find(allowed.begin(), allowed.end(), member.name) == allowed.end()) {
      fail(member, "unknown member " + inQuotes(member.name));
    }
  }
}

std::vector<Column> columnsOf(const Reader& reader, const Json& list) {
  std::vector<Column> columns;
  for (const Json& item : listOf(list)) {
    onlyMembers(item, {"name", "text", "width"});
    const Json* text = item.member("text");
    columns.push_back(
        {stringOf(needed(item, "name")), text ? reader.shownText(*text) : L"", numberOf(needed(item, "width"))});
  }
  return columns;
}

std::vector<Tree::Type> typesOf(const Json& list) {
  std::vector<Tree::Type> types;
  for (const Json& item : listOf(list)) {
    onlyMembers(item, {"name", "image"});
    types.push_back({stringOf(needed(item, "name")), stringOf(needed(item, "image"))});
  }
  return types;
}

void readChoices(const Reader& reader, const Json& list, Component& made) {
  Choices& choices = made.choices();
  for (const Json& item : listOf(list)) {
    onlyMembers(item, {"name", "text"});
    choices.names.push_back(stringOf(needed(item, "name")));
    choices.labels.push_back(reader.shownText(needed(item, "text")));
  }
  if (made.kind == Kind::optionmenu && !choices.names.empty()) choices.selected = {choices.names.front()};
}

constexpr unsigned bit(Kind kind) { return 1U << static_cast<unsigned>(kind); }
constexpr unsigned kButtons = bit(Kind::pushbutton) | bit(Kind::checkbutton);
constexpr unsigned kEvery = ~0U;

struct Member {
  std::string_view name;
  unsigned kinds;
  void (*read)(const Reader&, const Json& value, Component&);
};

// Members with a null function are read where the component is made.
constexpr Member kMembers[] = {
    {"name", kEvery, nullptr},
    {"kind", kEvery, nullptr},
    {"components", bit(Kind::layout) | bit(Kind::menu) | bit(Kind::table) | bit(Kind::tree), nullptr},
    {"columns", bit(Kind::table), nullptr},
    {"types", bit(Kind::tree), nullptr},
    {"choices", bit(Kind::optionmenu) | bit(Kind::list), readChoices},
    {"text",
     kButtons | bit(Kind::label) | bit(Kind::textarea) | bit(Kind::inputpanel) | bit(Kind::layout) | bit(Kind::menu),
     [](const Reader& reader, const Json& value, Component& made) { made.text = reader.shownText(value); }},
    {"image", kButtons | bit(Kind::label),
     [](const Reader&, const Json& value, Component& made) { made.image = stringOf(value); }},
    {"shown", kEvery, [](const Reader&, const Json& value, Component& made) { made.shown = flagOf(value); }},
    {"enabled", kEvery, [](const Reader&, const Json& value, Component& made) { made.enabled = flagOf(value); }},
    {"checked", bit(Kind::checkbutton),
     [](const Reader&, const Json& value, Component& made) { made.checked = flagOf(value); }},
};

Kind kindOf(const Json& value) {
  const std::string& name = stringOf(value);
  for (int kind = 0; kind <= static_cast<int>(Kind::inputpanel); ++kind) {
    if (kindName(static_cast<Kind>(kind)) == name) return static_cast<Kind>(kind);
  }
  fail(value, "unknown kind " + inQuotes(name));
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
      made.content = std::make_unique<Table>(columnsOf(reader, needed(owner, "columns")));
      break;
    case Kind::tree:
      made.content = std::make_unique<TreeContent>(typesOf(needed(owner, "types")));
      break;
    default:
      break;
  }
}

void readMembers(const Reader& reader, const Json& owner, Component& made) {
  for (const Json& value : owner.items) {
    const auto* member =
        std::find_if(std::begin(kMembers), std::end(kMembers), [&](const Member& m) { return m.name == value.name; });
    if (member == std::end(kMembers)) fail(value, "unknown member " + inQuotes(value.name));
    if (!(member->kinds & bit(made.kind))) {
      fail(value, "a " + std::string(kindName(made.kind)) + " has no " + inQuotes(value.name));
    }
    if (member->read) member->read(reader, value, made);
  }
}

// inside: the component that holds them, "" for the dialog itself; none for templates.
void readComponents(const Reader& reader, const Json& list, const std::string* inside) {
  for (const Json& item : listOf(list)) {
    const std::string& name = stringOf(needed(item, "name"));
    if (name.empty()) fail(item, "a component without a name");
    Component made;
    made.kind = kindOf(needed(item, "kind"));
    makeContent(reader, item, made);
    readMembers(reader, item, made);
    if (reader.dialog.add(name, std::move(made))) fail(item, "a second component " + inQuotes(name));
    if (inside) reader.dialog.place(name, *inside);
    if (const Json* json = item.member("components")) readComponents(reader, *json, inside ? &name : nullptr);
  }
}

void readWhole(const Reader& reader, const Json& whole) {
  if (!whole.is(JsonKind::object)) fail(whole, "it isn't an object");
  onlyMembers(whole, {"format", "title", "image", "components", "templates"});
  const Json& format = needed(whole, "format");
  if (numberOf(format) != kFormat) fail(format, "'format' isn't " + std::to_string(kFormat));
  reader.dialog.title = reader.shownText(needed(whole, "title"));
  if (const Json* image = whole.member("image")) reader.dialog.icon = stringOf(*image);
  const std::string top;
  readComponents(reader, needed(whole, "components"), &top);
  if (const Json* templates = whole.member("templates")) readComponents(reader, *templates, nullptr);
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
  Json whole;
  if (const JsonFault fault = parseJson(content, whole)) return {nullptr, cantRead(path, fault)};
  auto dialog = std::make_shared<Dialog>(name);
  try {
    readWhole(Reader{*dialog, language}, whole);
  } catch (const Fault& fault) {
    return {nullptr, cantRead(path, {lineAt(content, fault.offset), text::fromUtf8(fault.text)})};
  }
  return {std::move(dialog), {}};
}

}  // namespace headless
