#include "headless/geometry/foreign_wire.h"

#include <BinTools.hxx>
#include <nlohmann/json.hpp>
#include <numbers>
#include <sstream>
#include <stdexcept>
#include <type_traits>
#include <unordered_map>

#include "headless/geometry/built_body.h"
#include "headless/geometry/foreign_shape.h"
#include "headless/geometry/library_failure.h"
#include "text/encoding.h"
#include "text/whole_number.h"

namespace headless::geometry {
namespace {

using nlohmann::json;

// One of an enumeration, as its number.
template <class Word>
Word wholeAs(const json& value) {
  return static_cast<Word>(text::neededWhole<std::underlying_type_t<Word>>(value));
}

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
  node->step = bytes.substr(0, text::neededWhole<std::size_t>(item.at("step")));
  bytes.remove_prefix(node->step.size());
  for (const auto& member : item.at("members"))
    node->members.push_back(
        {before.at(text::neededWhole<std::size_t>(member.at("node"))), transform(member.at("place"))});
  for (const auto& face : item.at("faces"))
    node->faceColors.emplace_back(text::neededWhole<int>(face.at("face")), face.at("color").get<Rgb>());
  if (item.contains("color")) node->color = item.at("color").get<Rgb>();
  return node;
}

// ---- shapes as bytes

std::string bytesOf(const TopoDS_Shape& shape) {
  std::ostringstream bytes;
  guarded([&] { BinTools::Write(shape, bytes, false, false, BinTools_FormatVersion_CURRENT); });  // without triangles
  return std::move(bytes).str();
}
TopoDS_Shape shapeFrom(std::string_view bytes) {
  TopoDS_Shape shape;
  std::istringstream stream{std::string(bytes)};
  guarded([&] { BinTools::Read(shape, stream); });
  if (shape.IsNull()) throw std::runtime_error("an answer without a body");
  return shape;
}

json numbers(const creo::ProVector& v) { return {v.x, v.y, v.z}; }
creo::ProVector vectorOf(const json& numbers) {
  return {numbers.at(0).get<double>(), numbers.at(1).get<double>(), numbers.at(2).get<double>()};
}

// ---- curves, each as the kind of line and its numbers: 4 of a line, 8 of an arc

enum class CurveCode { line, arc, path };

json numbers(const SeenCurve& entry) {
  json all = json::array({entry.as});
  const auto add = [&all](std::initializer_list<FlatPoint> points) {
    for (const FlatPoint& point : points) {
      all.push_back(point.x);
      all.push_back(point.y);
    }
  };
  if (const auto* line = std::get_if<FlatLine>(&entry.curve)) {
    all.push_back(CurveCode::line);
    add({line->from, line->to});
  } else if (const auto* arc = std::get_if<FlatArc>(&entry.curve)) {
    all.push_back(CurveCode::arc);
    add({arc->centre, arc->u, arc->v, {arc->from, arc->to}});
  } else {
    all.push_back(CurveCode::path);
    for (const FlatPoint& point : std::get<FlatPath>(entry.curve).points) add({point});
  }
  return all;
}
// What those who draw curves rely on: the answer may be that of a file that took the program over.
bool isSound(const FlatArc& arc) {
  constexpr double kTurn = 2 * std::numbers::pi, kSame = 1e-6;
  return lengthOf(arc.u) > 0 && arc.to > arc.from && arc.to - arc.from <= kTurn + kSame;
}
SeenCurve seenCurve(const json& numbers) {
  const auto point = [&](std::size_t place) -> FlatPoint {
    return {numbers.at(2 + 2 * place).get<double>(), numbers.at(3 + 2 * place).get<double>()};
  };
  const int as = text::neededWhole<int>(numbers.at(0));
  bool sound = as >= 0 && as < kSeenKinds;
  SeenCurve made{sound ? static_cast<SeenAs>(as) : SeenAs::edge, {}};
  const auto code = wholeAs<CurveCode>(numbers.at(1));
  if (code == CurveCode::line) {
    made.curve = FlatLine{point(0), point(1)};
  } else if (code == CurveCode::arc) {
    const FlatPoint range = point(3);
    const FlatArc arc{point(0), point(1), point(2), range.x, range.y};
    sound = sound && isSound(arc);
    made.curve = arc;
  } else {
    FlatPath path;
    for (std::size_t i = 0; 2 * i + 3 < numbers.size(); ++i) path.points.push_back(point(i));
    sound = sound && path.points.size() >= 2;
    made.curve = std::move(path);
  }
  if (!sound) throw std::runtime_error("an answer with a line that can't be drawn");
  return made;
}

// ---- gears: where each stands, then its diameters, its length, and whether it has teeth

constexpr std::size_t kPlaceNumbers = 12;

json gears(const std::vector<Gear>& list) {
  json all = json::array();
  for (const Gear& gear : list) {
    json own = numbers(gear.place);
    for (const double number : {gear.tip, gear.pitch, gear.root, gear.length, gear.isToothed ? 1.0 : 0.0})
      own.push_back(number);
    all.push_back(std::move(own));
  }
  return all;
}
std::vector<Gear> gears(const json& list) {
  std::vector<Gear> all;
  for (const auto& numbers : list) {
    const auto at = [&](std::size_t i) { return numbers.at(kPlaceNumbers + i).get<double>(); };
    all.push_back({transform(numbers), at(0), at(1), at(2), at(3), at(4) != 0});
  }
  return all;
}

json loops(const SeenCut& cut) {
  json all = json::array();
  for (const FlatLoop& loop : cut.loops) {
    json curves = json::array();
    for (const FlatCurve& curve : loop) curves.push_back(numbers(SeenCurve{SeenAs::edge, curve}));
    all.push_back(std::move(curves));
  }
  return all;
}
SeenCut seenCut(const json& item) {
  SeenCut cut;
  cut.number = text::neededWhole<int>(item.at("number"));
  for (const auto& curves : item.at("loops")) {
    FlatLoop& loop = cut.loops.emplace_back();
    for (const auto& entry : curves) loop.push_back(seenCurve(entry).curve);
    if (loop.empty()) throw std::runtime_error("an answer with a loop of nothing");
  }
  return cut;
}

}  // namespace

ForeignJob jobOf(std::string_view wire) { return wholeAs<ForeignJob>(received(wire).line.at("job")); }

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
  request.job = wholeAs<ForeignJob>(line.at("job"));
  request.format = wholeAs<ExchangeFormat>(line.at("format"));
  request.as = wholeAs<ImportAs>(line.at("as"));
  request.path = line.at("path").get<std::string>();
  request.memory = text::neededWhole<std::uint64_t>(line.at("memory"));
  request.processor = text::neededWhole<std::int64_t>(line.at("processor"));
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
  return joined({{"fault", text::toUtf8(body.fault)}, {"warnings", texts(body.warnings)}},
                body.shape.IsNull() ? std::string() : bytesOf(body.shape));
}

ForeignBody readBody(std::string_view wire) {
  const auto [line, bytes] = received(wire);
  ForeignBody body;
  body.fault = text::fromUtf8(line.at("fault").get<std::string>());
  body.warnings = texts(line.at("warnings"));
  if (body.fault.empty()) body.shape = shapeFrom(bytes);
  return body;
}

std::string written(const ViewRequest& request, WrittenBodies& known) {
  json sizes = json::array(), places = json::array();
  std::string bytes;
  std::unordered_map<const Body*, std::size_t> numbered;
  for (const PlacedBody& entry : request.sight.bodies) {
    const auto [number, isNew] = numbered.try_emplace(entry.body.get(), numbered.size());
    if (isNew) {
      std::string& own = known[entry.body.get()];
      if (own.empty()) own = bytesOf(entry.body->shape);
      sizes.push_back(own.size());
      bytes += own;
    }
    places.push_back({{"body", number->second},
                      {"place", numbers(entry.place)},
                      {"scale", entry.scale},
                      {"number", entry.number},
                      {"cut", entry.isCut},
                      {"gears", gears(entry.gears)}});
  }
  json cut = json::array();
  if (request.sight.cut) cut = {numbers(request.sight.cut->point), numbers(request.sight.cut->normal)};
  return joined({{"job", ForeignJob::view},
                 {"by", request.by},
                 {"memory", request.memory},
                 {"processor", request.processor},
                 {"screen", numbers(request.sight.screen)},
                 {"scale", request.sight.scale},
                 {"hidden", request.sight.hidden},
                 {"axes", request.sight.axes},
                 {"cut", cut},
                 {"sizes", sizes},
                 {"places", places}},
                bytes);
}

ViewRequest readView(std::string_view wire) {
  auto [line, bytes] = received(wire);
  ViewRequest request;
  request.by = wholeAs<SeenBy>(line.at("by"));
  request.memory = text::neededWhole<std::uint64_t>(line.at("memory"));
  request.processor = text::neededWhole<std::int64_t>(line.at("processor"));
  request.sight.screen = transform(line.at("screen"));
  request.sight.scale = line.at("scale").get<double>();
  request.sight.hidden = line.at("hidden").get<bool>();
  request.sight.axes = line.at("axes").get<bool>();
  if (const json& cut = line.at("cut"); !cut.empty())
    request.sight.cut = SightCut{vectorOf(cut.at(0)), vectorOf(cut.at(1))};
  std::vector<BodyPtr> bodies;
  for (const auto& size : line.at("sizes")) {
    const std::string_view body = bytes.substr(0, text::neededWhole<std::size_t>(size));
    bodies.push_back(std::make_shared<Body>(shapeFrom(body)));
    bytes.remove_prefix(body.size());
  }
  for (const auto& entry : line.at("places"))
    request.sight.bodies.push_back({bodies.at(text::neededWhole<std::size_t>(entry.at("body"))),
                                    transform(entry.at("place")), entry.at("scale").get<double>(),
                                    text::neededWhole<int>(entry.at("number")), entry.at("cut").get<bool>(),
                                    gears(entry.at("gears"))});
  return request;
}

std::string written(const Seen& seen) {
  json curves = json::array();
  for (const SeenCurve& entry : seen.curves) curves.push_back(numbers(entry));
  json cuts = json::array();
  for (const SeenCut& cut : seen.cuts) cuts.push_back({{"number", cut.number}, {"loops", loops(cut)}});
  return joined({{"fault", text::toUtf8(seen.reason)},
                 {"width", seen.width},
                 {"height", seen.height},
                 {"faceted", seen.isFaceted},
                 {"corrected", seen.corrected},
                 {"middle", {seen.middle.x, seen.middle.y}},
                 {"cuts", cuts},
                 {"curves", curves}},
                {});
}

Seen readSeen(std::string_view wire) {
  const json line = received(wire).line;
  Seen seen;
  seen.reason = text::fromUtf8(line.at("fault").get<std::string>());
  seen.width = line.at("width").get<double>();
  seen.height = line.at("height").get<double>();
  seen.isFaceted = line.at("faceted").get<bool>();
  seen.corrected = text::neededWhole<int>(line.at("corrected"));
  const json& middle = line.at("middle");
  seen.middle = {middle.at(0).get<double>(), middle.at(1).get<double>()};
  for (const auto& entry : line.at("cuts")) seen.cuts.push_back(seenCut(entry));
  for (const auto& entry : line.at("curves")) seen.curves.push_back(seenCurve(entry));
  return seen;
}

}  // namespace headless::geometry
