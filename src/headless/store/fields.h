// Records and their JSON members. One table of fields per record drives reading and writing alike, so that neither can
// forget one. What a table doesn't know is kept with the record and written where it stood.
#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "headless/store/json.h"
#include "headless/store/names.h"
#include "headless/store/schema.h"
#include "text/encoding.h"
#include "text/format.h"

namespace headless {

// What a record was written with beyond the form that its table would give it.
struct Extra {
  static constexpr char kUnknown = static_cast<char>(0xFF);
  std::string order;                                         // a byte a member: its field's number, or kUnknown
  std::vector<std::pair<std::string, std::string>> unknown;  // name, value as written
};
// The base of all records. extra is null where the table's own form says everything.
struct Open {
  std::unique_ptr<Extra> extra;
};

// A value that is stored and not looked into, as it was written.
struct RawJson {
  std::string text;
};
// A text, a number, yes or no; none where nothing was given.
using Scalar = std::variant<std::monostate, std::string, double, int, bool>;

// A list whose elements are found by name.
template <class T>
struct NamedList {
  std::vector<T> list;
  NameIndex index;
};
// An object whose members' names are data.
template <class T>
struct Member {
  std::string name;
  T value;
};
template <class T>
using Members = NamedList<Member<T>>;

// Reading stops at the first fault.
class Reader {
 public:
  explicit Reader(std::string_view source) : source_(source) {}
  void fail(const Json& at, std::wstring reason) {
    if (!fault_) fault_ = {at.end == 0 ? 1 : lineAt(source_, at.begin), std::move(reason)};
  }
  // "'value' must be a text"; an array's element has no name.
  void failKind(const Json& at, std::wstring_view wanted) {
    const std::wstring who = at.name.empty() ? L"an element" : L"'" + text::fromUtf8(at.name) + L"'";
    fail(at, text::format(L"%s must be %s", who, wanted));
  }
  [[nodiscard]] bool failed() const { return static_cast<bool>(fault_); }
  [[nodiscard]] const JsonFault& fault() const { return fault_; }
  // As it was written, with line feeds alone.
  [[nodiscard]] std::string asWritten(const Json& value) const;

 private:
  std::string_view source_;
  JsonFault fault_;
};

// Texts of an enumeration in documents: specialised where a record is described.
template <class E>
struct EnumTexts;

template <class R>
struct Field {
  std::string_view name;
  bool required;
  void (*read)(R&, const Json&, Reader&);
  void (*write)(const R&, std::string&, int level);
  void (*copy)(const R& from, R& into);
  bool (*isDefault)(const R&);
  bool (*hasText)(const R&);  // no: JSON has nothing to say of the value, such as of a record that went
  void (*describe)(Schema&);
};
// The table of a record: specialised with `static constexpr auto fields`, and `static void check(R&, const Json&,
// Reader&)` for what concerns several members. `static constexpr std::string_view schema` says the same to a JSON
// Schema, as members of the record's definition.
template <class R>
struct RecordTable;

// ---- single values

void readValue(std::string& into, const Json& json, Reader& in);
void readValue(int& into, const Json& json, Reader& in);
void readValue(double& into, const Json& json, Reader& in);
void readValue(bool& into, const Json& json, Reader& in);
void readValue(std::optional<bool>& into, const Json& json, Reader& in);
void readValue(Scalar& into, const Json& json, Reader& in);
void readValue(RawJson& into, const Json& json, Reader& in);
void writeValue(const std::string& value, std::string& out, int level);
void writeValue(int value, std::string& out, int level);
void writeValue(double value, std::string& out, int level);
void writeValue(bool value, std::string& out, int level);
void writeValue(const std::optional<bool>& value, std::string& out, int level);
void writeValue(const Scalar& value, std::string& out, int level);
void writeValue(const RawJson& value, std::string& out, int level);
inline bool isDefault(const std::string& v) { return v.empty(); }
inline bool isDefault(const Scalar& v) { return v.index() == 0; }
inline bool isDefault(const RawJson& v) { return v.text.empty(); }
inline bool isDefault(const std::optional<bool>& v) { return !v; }
template <class T>
bool hasText(const T&) {
  return true;
}
inline bool hasText(const Scalar& v) { return v.index() != 0; }
inline bool hasText(const RawJson& v) { return !v.text.empty(); }
inline bool hasText(const std::optional<bool>& v) { return v.has_value(); }

inline void newLine(std::string& out, int level) {
  out.append(1, '\n').append(static_cast<std::size_t>(level) * 2, ' ');
}

template <class E>
requires std::is_enum_v<E>
void readValue(E& into, const Json& json, Reader& in) {
  std::wstring known;
  for (const auto& [name, value] : EnumTexts<E>::texts) {
    if (json.is(JsonKind::text) && sameName(json.text, name)) {
      into = value;
      return;
    }
    if (!name.empty()) known += (known.empty() ? L"" : L", ") + text::fromUtf8(name);
  }
  if (json.is(JsonKind::text))
    in.fail(json, text::format(L"unknown %s '%s'; known are %s", text::fromUtf8(json.name), text::fromUtf8(json.text),
                               known));
  else
    in.failKind(json, L"one of the texts " + known);
}
template <class E>
requires std::is_enum_v<E>
void writeValue(E value, std::string& out, int) {
  for (const auto& [name, v] : EnumTexts<E>::texts)
    if (v == value) return appendQuoted(out, name);
  out += "null";
}
template <class E>
requires std::is_enum_v<E>
bool hasText(const E& value) {
  return std::any_of(std::begin(EnumTexts<E>::texts), std::end(EnumTexts<E>::texts),
                     [value](const auto& entry) { return entry.second == value; });
}
// ---- records, lists and objects; declared first, as they hold one another

template <class R>
requires std::is_base_of_v<Open, R>
void readValue(R& into, const Json& json, Reader& in);
template <class R>
requires std::is_base_of_v<Open, R>
void writeValue(const R& record, std::string& out, int level);
template <class T>
void readValue(std::unique_ptr<T>& into, const Json& json, Reader& in) {
  into = std::make_unique<T>();
  readValue(*into, json, in);
}
template <class T>
void writeValue(const std::unique_ptr<T>& value, std::string& out, int level) {
  if (value) return writeValue(*value, out, level);
  out += "null";
}
template <class T>
bool isDefault(const std::unique_ptr<T>& value) {
  return !value;
}
template <class T>
bool hasText(const std::unique_ptr<T>& value) {
  return static_cast<bool>(value);
}

template <class T>
void readValue(std::vector<T>& into, const Json& json, Reader& in) {
  if (!json.is(JsonKind::array)) return in.failKind(json, L"an array");
  into.reserve(json.items.size());
  for (const Json& item : json.items) {
    if (in.failed()) return;
    readValue(into.emplace_back(), item, in);
  }
}
template <class T>
void writeValue(const std::vector<T>& values, std::string& out, int level) {
  out += '[';
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (i > 0) out += ',';
    newLine(out, level + 1);
    writeValue(values[i], out, level + 1);
  }
  if (!values.empty()) newLine(out, level);
  out += ']';
}
template <class T>
bool isDefault(const std::vector<T>& values) {
  return values.empty();
}

template <class T>
void readValue(NamedList<T>& into, const Json& json, Reader& in) {
  readValue(into.list, json, in);
}
template <class T>
void writeValue(const NamedList<T>& value, std::string& out, int level) {
  writeValue(value.list, out, level);
}
template <class T>
bool isDefault(const NamedList<T>& value) {
  return value.list.empty();
}

template <class T>
void readMembers(std::vector<Member<T>>& into, const Json& json, Reader& in) {
  if (!json.is(JsonKind::object)) return in.failKind(json, L"an object");
  into.reserve(json.items.size());
  for (const Json& item : json.items) {
    if (in.failed()) return;
    Member<T>& member = into.emplace_back();
    member.name = item.name;
    readValue(member.value, item, in);
  }
}
template <class T>
void writeMembers(const std::vector<Member<T>>& members, std::string& out, int level) {
  out += '{';
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (i > 0) out += ',';
    newLine(out, level + 1);
    appendQuoted(out, members[i].name);
    out += ": ";
    writeValue(members[i].value, out, level + 1);
  }
  if (!members.empty()) newLine(out, level);
  out += '}';
}
template <class T>
void readValue(std::vector<Member<T>>& into, const Json& json, Reader& in) {
  readMembers(into, json, in);
}
template <class T>
void writeValue(const std::vector<Member<T>>& members, std::string& out, int level) {
  writeMembers(members, out, level);
}

// The members that a record's table gives it, in the table's order.
template <class R>
std::string ownOrder(const R& record) {
  const auto& fields = RecordTable<R>::fields;
  std::string own;
  for (std::size_t i = 0; i < fields.size(); ++i)
    if (fields[i].required || !fields[i].isDefault(record)) own += static_cast<char>(i);
  return own;
}

template <class R>
requires std::is_base_of_v<Open, R>
void readValue(R& into, const Json& json, Reader& in) {
  if (!json.is(JsonKind::object)) return in.failKind(json, L"an object");
  const auto& fields = RecordTable<R>::fields;
  static_assert(fields.size() < 255);
  Extra extra;
  std::array<bool, fields.size()> seen{};
  for (const Json& item : json.items) {
    const auto field = std::find_if(fields.begin(), fields.end(), [&](const auto& f) { return f.name == item.name; });
    if (field == fields.end()) {
      extra.order += Extra::kUnknown;
      extra.unknown.emplace_back(item.name, in.asWritten(item));
      continue;
    }
    const auto number = static_cast<std::size_t>(field - fields.begin());
    if (seen[number]) return in.fail(item, text::format(L"'%s' stands twice", text::fromUtf8(item.name)));
    seen[number] = true;
    field->read(into, item, in);
    if (in.failed()) return;
    extra.order += static_cast<char>(number);
  }
  for (std::size_t i = 0; i < fields.size(); ++i)
    if (fields[i].required && !seen[i])
      return in.fail(json, text::format(L"'%s' is missing", text::fromUtf8(fields[i].name)));
  if (ownOrder(into) != extra.order) into.extra = std::make_unique<Extra>(std::move(extra));
  if constexpr (requires { RecordTable<R>::check(into, json, in); }) RecordTable<R>::check(into, json, in);
}

template <class R>
requires std::is_base_of_v<Open, R>
void writeValue(const R& record, std::string& out, int level) {
  const auto& fields = RecordTable<R>::fields;
  bool first = true;
  const auto member = [&](std::string_view name) {
    if (!first) out += ',';
    first = false;
    newLine(out, level + 1);
    appendQuoted(out, name);
    out += ": ";
  };
  const auto known = [&](std::size_t number) {
    member(fields[number].name);
    fields[number].write(record, out, level + 1);
  };
  out += '{';
  std::array<bool, fields.size()> written{};
  std::size_t unknown = 0;
  if (record.extra) {
    for (const char c : record.extra->order) {
      if (c == Extra::kUnknown) {
        const auto& [name, value] = record.extra->unknown[unknown++];
        member(name);
        out += value;
        continue;
      }
      const auto number = static_cast<std::size_t>(static_cast<unsigned char>(c));
      written[number] = true;
      if (fields[number].required || fields[number].hasText(record)) known(number);
    }
  }
  for (std::size_t i = 0; i < fields.size(); ++i)
    if (!written[i] && (fields[i].required || !fields[i].isDefault(record))) known(i);
  if (!first) newLine(out, level);
  out += '}';
}

// ---- copies: all that a document would say, unknown members too; what isn't written isn't copied. They don't fail

template <class T>
void copyValue(const T& from, T& into) {
  into = from;
}
template <class R>
requires std::is_base_of_v<Open, R>
void copyValue(const R& from, R& into);
template <class T>
void copyValue(const std::vector<T>& from, std::vector<T>& into) {
  if constexpr (std::is_arithmetic_v<T>) {
    into = from;
  } else {
    into.clear();
    into.reserve(from.size());
    for (const T& entry : from) copyValue(entry, into.emplace_back());
  }
}
template <class T>
void copyValue(const std::unique_ptr<T>& from, std::unique_ptr<T>& into) {
  into.reset();
  if (!from) return;
  into = std::make_unique<T>();
  copyValue(*from, *into);
}
template <class T>
void copyValue(const Member<T>& from, Member<T>& into) {
  into.name = from.name;
  copyValue(from.value, into.value);
}
template <class T>
void copyValue(const NamedList<T>& from, NamedList<T>& into) {
  into.index.drop();
  copyValue(from.list, into.list);
}
template <class R>
requires std::is_base_of_v<Open, R>
void copyValue(const R& from, R& into) {
  for (const auto& field : RecordTable<R>::fields) field.copy(from, into);
  into.extra = from.extra ? std::make_unique<Extra>(*from.extra) : nullptr;
}

// Puts the unknown members of another record behind those of this one. A name that the table knows or that is there
// already is passed over.
template <class R>
void addUnknown(R& record, const Open& from) {
  if (!from.extra) return;
  const auto& fields = RecordTable<R>::fields;
  for (const auto& entry : from.extra->unknown) {
    if (std::any_of(fields.begin(), fields.end(), [&](const auto& f) { return f.name == entry.first; })) continue;
    if (!record.extra) record.extra = std::make_unique<Extra>(Extra{ownOrder(record), {}});
    auto& present = record.extra->unknown;
    if (std::any_of(present.begin(), present.end(), [&](const auto& there) { return there.first == entry.first; }))
      continue;
    record.extra->order += Extra::kUnknown;
    present.push_back(entry);
  }
}

// ---- what values are, for a JSON Schema

template <class T>
struct Of {};
void describeValue(Schema& schema, Of<std::string>);
void describeValue(Schema& schema, Of<int>);
void describeValue(Schema& schema, Of<double>);
void describeValue(Schema& schema, Of<bool>);
void describeValue(Schema& schema, Of<std::optional<bool>>);
void describeValue(Schema& schema, Of<Scalar>);
void describeValue(Schema& schema, Of<RawJson>);
template <class E>
requires std::is_enum_v<E>
void describeValue(Schema& schema, Of<E>);
template <class R>
requires std::is_base_of_v<Open, R>
void describeValue(Schema& schema, Of<R>);
template <class T>
void describeValue(Schema& schema, Of<std::unique_ptr<T>>) {
  describeValue(schema, Of<T>{});
}
template <class T>
void describeValue(Schema& schema, Of<std::vector<T>>) {
  schema.eachItem([&schema] { describeValue(schema, Of<T>{}); });
}
template <class T>
void describeValue(Schema& schema, Of<std::vector<Member<T>>>) {
  schema.eachMember([&schema] { describeValue(schema, Of<T>{}); });
}
template <class T>
void describeValue(Schema& schema, Of<NamedList<T>>) {
  describeValue(schema, Of<std::vector<T>>{});
}
template <class E>
requires std::is_enum_v<E>
void describeValue(Schema& schema, Of<E>) {
  std::vector<std::string_view> words;
  for (const auto& [name, value] : EnumTexts<E>::texts)
    if (!name.empty()) words.push_back(name);
  schema.words(words);
}
template <class R>
requires std::is_base_of_v<Open, R>
void describeValue(Schema& schema, Of<R>) {
  schema.record(&RecordTable<R>::fields, [&schema] {
    for (const auto& field : RecordTable<R>::fields)
      schema.member(field.name, field.required, [&] { field.describe(schema); });
    if constexpr (requires { RecordTable<R>::schema; }) schema.add(RecordTable<R>::schema);
  });
}

// ---- tables

template <class M>
struct ClassOfMember;
template <class R, class T>
struct ClassOfMember<T R::*> {
  using type = R;
};

// The members of a record that nothing was read into.
template <class R>
const R& blank() {
  static const R record{};
  return record;
}
template <class R, class T>
bool holdsDefault(const R& record, T R::*member) {
  if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T>)
    return record.*member == blank<R>().*member;
  else
    return isDefault(record.*member);
}

template <auto M>
constexpr auto field(std::string_view name, bool required = false) {
  using R = typename ClassOfMember<decltype(M)>::type;
  return Field<R>{
      name,
      required,
      [](R& record, const Json& json, Reader& in) { readValue(record.*M, json, in); },
      [](const R& record, std::string& out, int level) { writeValue(record.*M, out, level); },
      [](const R& from, R& into) { copyValue(from.*M, into.*M); },
      [](const R& record) { return holdsDefault(record, M); },
      [](const R& record) { return hasText(record.*M); },
      [](Schema& schema) { describeValue(schema, Of<std::remove_cvref_t<decltype(std::declval<R&>().*M)>>{}); }};
}
constexpr bool kRequired = true;

}  // namespace headless
