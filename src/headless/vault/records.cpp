#include "headless/vault/records.h"

#include "headless/store/enum_texts.h"

namespace headless {

template <>
struct RecordTable<AttachmentRecord> {
  using R = AttachmentRecord;
  static constexpr std::array fields = {field<&R::name>("name", kRequired)};
};
template <>
struct RecordTable<IterationRecord> {
  using R = IterationRecord;
  static constexpr std::array fields = {field<&R::revision>("revision", kRequired),
                                        field<&R::iteration>("iteration", kRequired), field<&R::by>("by"),
                                        field<&R::at>("at"), field<&R::attachments>("attachments")};
};
template <>
struct RecordTable<CheckOutRecord> {
  using R = CheckOutRecord;
  static constexpr std::array fields = {field<&R::user>("user", kRequired),
                                        field<&R::workspace>("workspace", kRequired), field<&R::at>("at"),
                                        field<&R::names>("names")};
};
template <>
struct RecordTable<MemberRecord> {
  using R = MemberRecord;
  static constexpr std::array fields = {field<&R::user>("user", kRequired),
                                        field<&R::workspace>("workspace", kRequired), field<&R::base>("base"),
                                        field<&R::version>("version")};
};
template <>
struct RecordTable<ObjectRecord> {
  using R = ObjectRecord;
  static constexpr std::array fields = {field<&R::format>("format", kRequired), field<&R::number>("number", kRequired),
                                        field<&R::name>("name", kRequired),     field<&R::type>("type", kRequired),
                                        field<&R::location>("location"),        field<&R::iterations>("iterations"),
                                        field<&R::checkOut>("checkOut"),        field<&R::workspaces>("workspaces")};
  static void check(R& record, const Json& json, Reader& in) {
    if (record.iterations.empty()) in.fail(json, L"an object has at least one iteration");
    const int last = static_cast<int>(record.iterations.size());
    for (const MemberRecord& member : record.workspaces)
      if (member.base < 1 || member.base > last) in.fail(json, L"a workspace's 'base' is none of the iterations");
  }
};
template <>
struct RecordTable<VaultRecord> {
  using R = VaultRecord;
  static constexpr std::array fields = {field<&R::format>("format", kRequired), field<&R::name>("name", kRequired),
                                        field<&R::objects>("objects")};
};
template <>
struct RecordTable<WorkspaceRecord> {
  using R = WorkspaceRecord;
  static constexpr std::array fields = {field<&R::format>("format", kRequired), field<&R::folder>("folder")};
};

namespace {

template <class R>
JsonFault readAny(std::string_view source, R& into) {
  Json tree;
  if (JsonFault fault = parseJson(source, tree)) return fault;
  Reader in(source);
  readValue(into, tree, in);
  if (!in.failed() && into.format != kVaultFormat)
    in.fail(*tree.member("format"), text::format(L"format %d isn't known", into.format));
  return in.fault();
}

template <class R>
std::string writeAny(const R& record) {
  std::string out;
  writeValue(record, out, 0);
  out += '\n';
  return out;
}

}  // namespace

JsonFault readRecord(std::string_view source, ObjectRecord& into) { return readAny(source, into); }
JsonFault readRecord(std::string_view source, VaultRecord& into) { return readAny(source, into); }
JsonFault readRecord(std::string_view source, WorkspaceRecord& into) { return readAny(source, into); }
std::string writeRecord(const ObjectRecord& record) { return writeAny(record); }
std::string writeRecord(const VaultRecord& record) { return writeAny(record); }
std::string writeRecord(const WorkspaceRecord& record) { return writeAny(record); }

}  // namespace headless
