#include "headless/geometry/foreign_wire.h"

#include <BinTools.hxx>
#include <nlohmann/json.hpp>
#include <sstream>
#include <unordered_map>

#include "headless/geometry/library_failure.h"
#include "text/encoding.h"

namespace headless::geometry {
namespace {

using nlohmann::json;

// ---- a line, and the bytes behind it

std::string joined(const json& line, std::string_view bytes) {
  // A name may hold what is no text anywhere.
  std::string wire = line.dump(-1, ' ', false, json::error_handler_t::replace);
  wire.reserve(wire.size() + 1 + bytes.size());
  return wire.append("\n").append(bytes);
}
struct Received {
  json line;
  std::string_view bytes;
};
Received received(std::string_view wire) {
  const std::size_t end = wire.find('\n');
  if (end == wire.npos) throw std::runtime_error("an answer without an end");
  return {json::parse(wire.substr(0, end)), wire.substr(end + 1)};
}

json texts(const std::vector<std::wstring>& list) {
  json all = json::array();
  for (const std::wstring& entry : list) all.push_back(text::toUtf8(entry));
  return all;
}
std::vector<std::wstring> texts(const json& list) {
  std::vector<std::wstring> all;
  for (const auto& entry : list) all.push_back(text::fromUtf8(entry.get<std::string>()));
  return all;
}

// ---- a tree, as a list in which each node stands behind its members

json numbers(const creo::ProTransform& place) {
  json all = json::array();
  for (const creo::ProVector& v : {place.xAxis, place.yAxis, place.zAxis, place.origin})
    for (const double number : {v.x, v.y, v.z}) all.push_back(number);
  return all;
}
creo::ProTransform transform(const json& numbers) {
  const auto vector = [&](std::size_t at) -> creo::ProVector {
    return {numbers.at(at).get<double>(), numbers.at(at + 1).get<double>(), numbers.at(at + 2).get<double>()};
  };
  return {vector(0), vector(3), vector(6), vector(9)};
}

class TreeLister {
 public:
  json nodes = json::array();
  std::string bytes;

  std::size_t add(const ExchangeNodePtr& node) {
    if (const auto known = places_.find(node.get()); known != places_.end()) return known->second;
    json members = json::array(), faces = json::array();
    for (const ExchangeMember& member : node->members)
      members.push_back({{"node", add(member.node)}, {"place", numbers(member.place)}});
    for (const auto& [face, color] : node->faceColors) faces.push_back({{"face", face}, {"color", color}});
    json entry = {
        {"name", text::toUtf8(node->name)}, {"step", node->step.size()}, {"members", members}, {"faces", faces}};
    if (node->color) entry["color"] = *node->color;
    nodes.push_back(std::move(entry));
    bytes += node->step;
    return places_.emplace(node.get(), nodes.size() - 1).first->second;
  }

 private:
  std::unordered_map<const ExchangeNode*, std::size_t> places_;
};

ExchangeNodePtr nodeOf(const json& item, const std::vector<ExchangeNodePtr>& before, std::string_view& bytes) {
  auto node = std::make_shared<ExchangeNode>();
  node->name = text::fromUtf8(item.at("name").get<std::string>());
  node->step = bytes.substr(0, item.at("step").get<std::size_t>());
  bytes.remove_prefix(node->step.size());
  for (const auto& member : item.at("members"))
    node->members.push_back({before.at(member.at("node").get<std::size_t>()), transform(member.at("place"))});
  for (const auto& face : item.at("faces"))
    node->faceColors.emplace_back(face.at("face").get<int>(), face.at("color").get<Rgb>());
  if (item.contains("color")) node->color = item.at("color").get<Rgb>();
  return node;
}

}  // namespace

std::string written(const ForeignRequest& request) {
  return joined({{"job", request.job},
                 {"format", request.format},
                 {"as", request.as},
                 {"path", request.path},
                 {"memory", request.memory},
                 {"processor", request.processor}},
                request.bytes);
}

ForeignRequest readRequest(std::string_view wire) {
  const auto [line, bytes] = received(wire);
  ForeignRequest request;
  request.job = line.at("job").get<ForeignJob>();
  request.format = line.at("format").get<ExchangeFormat>();
  request.as = line.at("as").get<ImportAs>();
  request.path = line.at("path").get<std::string>();
  request.memory = line.at("memory").get<std::uint64_t>();
  request.processor = line.at("processor").get<std::int64_t>();
  request.bytes = bytes;
  return request;
}

std::string written(const ExchangeRead& read) {
  TreeLister list;
  if (read.root) list.add(read.root);
  return joined({{"fault", text::toUtf8(read.fault)},
                 {"warnings", texts(read.warnings)},
                 {"unit", read.unit},
                 {"nodes", list.nodes}},
                list.bytes);
}

ExchangeRead readTree(std::string_view wire) {
  auto [line, bytes] = received(wire);
  ExchangeRead read;
  read.fault = text::fromUtf8(line.at("fault").get<std::string>());
  read.warnings = texts(line.at("warnings"));
  read.unit = line.at("unit").get<double>();
  std::vector<ExchangeNodePtr> nodes;
  for (const auto& entry : line.at("nodes")) nodes.push_back(nodeOf(entry, nodes, bytes));
  if (nodes.empty() && read.fault.empty()) throw std::runtime_error("an answer without a body");
  if (!nodes.empty()) read.root = nodes.back();
  return read;
}

std::string written(const ForeignBody& body) {
  std::ostringstream bytes;
  if (!body.shape.IsNull())
    BinTools::Write(body.shape, bytes, false, false, BinTools_FormatVersion_CURRENT);  // without triangles
  return joined({{"fault", text::toUtf8(body.fault)}, {"warnings", texts(body.warnings)}}, std::move(bytes).str());
}

ForeignBody readBody(std::string_view wire) {
  const auto [line, bytes] = received(wire);
  ForeignBody body;
  body.fault = text::fromUtf8(line.at("fault").get<std::string>());
  body.warnings = texts(line.at("warnings"));
  if (!body.fault.empty()) return body;
  std::istringstream stream{std::string(bytes)};
  guarded([&] { BinTools::Read(body.shape, stream); });
  if (body.shape.IsNull()) throw std::runtime_error("an answer without a body");
  return body;
}

}  // namespace headless::geometry
