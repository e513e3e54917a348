#include "headless/pictures/dimension_anchors.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <variant>

#include "headless/model/features.h"
#include "headless/model/measures.h"
#include "headless/model/models.h"
#include "headless/model/placed.h"
#include "headless/store/names.h"

namespace headless {

using creo::ProTransform;
using creo::ProVector;

namespace {

constexpr double kSame = 1e-6;  // of the value

bool isSame(double a, double b) { return std::fabs(a - b) <= kSame * std::max(1.0, std::fabs(b)); }

struct Wanted {
  std::string symbol;  // empty: none
  int id = 0;          // of the dimension; 0: features don't know it
  double value = 0;
  bool isAngle = false;
};

// A word of the text, as relations know names.
bool hasWord(std::string_view text, std::string_view word) {
  const auto isPart = [](char c) { return c == '_' || std::isalnum(static_cast<unsigned char>(c)); };
  for (std::size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) {
    const std::size_t end = at + word.size();
    if ((at == 0 || !isPart(text[at - 1])) && (end == text.size() || !isPart(text[end]))) return true;
  }
  return false;
}

class Search {
 public:
  Search(const Model& part, Wanted wanted) : part_(part), wanted_(std::move(wanted)), measurer_(part) {
    wanted_.symbol = folded(wanted_.symbol);
  }

  std::vector<DimensionAnchor> all() {
    const LeftOut leftOut(part_);
    for (const PrimitiveRecord& record : part_.document->solid().primitives) {
      if (record.feature != 0 && leftOut.has(record.feature)) continue;
      if (hasGeometry(part_, record.feature)) look(record);
    }
    std::vector<DimensionAnchor> anchors;
    if (found_.empty()) return anchors;
    const Rank best = std::ranges::min_element(found_, {}, &Found::rank)->rank;
    for (Found& found : found_)
      if (found.rank == best) anchors.push_back(std::move(found.anchor));
    return anchors;
  }

 private:
  // How a number of the body comes to be the dimension's.
  enum Rank { symbolAlone, workedOut, ofFeature, sameValue };
  struct Found {
    Rank rank;
    DimensionAnchor anchor;
  };

  // factor: of the dimension's value that the measure would have.
  std::optional<Rank> rankOf(const Measure& measure, double factor = 1) {
    if (measure.index() == 0) return std::nullopt;
    const auto* text = std::get_if<std::string>(&measure);
    const std::string expression = text ? folded(*text) : std::string();
    const bool isNamed = !wanted_.symbol.empty() && hasWord(expression, wanted_.symbol);
    if (!isSame(std::fabs(measurer_.number(measure, "measure")), factor * wanted_.value)) return std::nullopt;
    if (isNamed) {
      const std::size_t from = expression.find_first_not_of(' '), to = expression.find_last_not_of(' ');
      return expression.substr(from, to - from + 1) == wanted_.symbol ? symbolAlone : workedOut;
    }
    if (factor != 1) return std::nullopt;  // twice a number is no sign by itself
    const bool isAnothers = text && !wanted_.symbol.empty();
    if (isAnothers && !isOfFeature_) return std::nullopt;
    return isOfFeature_ ? ofFeature : sameValue;
  }
  void add(Rank rank, DimensionAnchor anchor) {
    anchor.isBore = isBore_;
    found_.push_back({rank, std::move(anchor)});
  }
  [[nodiscard]] ProVector at(double x, double y, double z) const { return creo::transformPoint(place_, {x, y, z}); }

  void look(const PrimitiveRecord& record) {
    const auto feature = record.feature != 0 ? featureOf(part_, record.feature) : std::nullopt;
    const FeatureRecord* known = feature ? feature->record() : nullptr;
    isOfFeature_ =
        known && wanted_.id != 0 && std::ranges::find(known->dimensions, wanted_.id) != known->dimensions.end();
    isBore_ = record.type == geometry::PrimitiveKind::hole || record.use == geometry::PrimitiveUse::cut;
    place_ = measurer_.placement(record.placement.get());
    length_ = measurer_.number(record.length, "length");
    if (wanted_.isAngle) return angle(record);
    using geometry::PrimitiveKind;
    switch (record.type) {
      case PrimitiveKind::box:
        sides(record);
        break;
      case PrimitiveKind::cylinder:
      case PrimitiveKind::cone:
      case PrimitiveKind::sphere:
      case PrimitiveKind::hole:
        turned(record);
        break;
      case PrimitiveKind::extrusion:
        drawn(record);
        break;
      case PrimitiveKind::revolution:
        for (const Measures& point : record.profile) ring(point, record);
        break;
      case PrimitiveKind::import:
        break;
    }
    if (record.placement) position(*record.placement);
  }

  // The way from the first corners to the second is one of the placement's axes.
  DimensionAnchor length(const ProVector& way, std::vector<ProVector> first, std::vector<ProVector> second) {
    DimensionAnchor anchor{.first = std::move(first), .second = std::move(second)};
    anchor.place.zAxis = way;
    return anchor;
  }

  void sides(const PrimitiveRecord& record) {
    const ProVector size = measurer_.vector(record.size, "size");
    const ProVector axes[] = {place_.xAxis, place_.yAxis, place_.zAxis};
    constexpr double ProVector::*const kParts[] = {&ProVector::x, &ProVector::y, &ProVector::z};
    for (std::size_t i = 0; i < record.size.size() && i < 3; ++i) {
      const auto rank = rankOf(record.size[i]);
      if (!rank) continue;
      std::vector<ProVector> first, second;
      for (int corner = 0; corner < 4; ++corner) {
        ProVector p;
        p.*kParts[(i + 1) % 3] = corner % 2 == 0 ? 0 : size.*kParts[(i + 1) % 3];
        p.*kParts[(i + 2) % 3] = corner < 2 ? 0 : size.*kParts[(i + 2) % 3];
        first.push_back(creo::transformPoint(place_, p));
        p.*kParts[i] = size.*kParts[i];
        second.push_back(creo::transformPoint(place_, p));
      }
      add(*rank, length(axes[i], std::move(first), std::move(second)));
    }
  }

  void round(Rank rank, Measuring measuring, double radius, double from, double to) {
    DimensionAnchor anchor{
        .measuring = measuring, .place = place_, .first = {at(0, 0, from)}, .second = {at(0, 0, to)}, .radius = radius};
    anchor.place.origin = at(0, 0, from);
    add(rank, std::move(anchor));
  }
  void diameter(const Measure& measure, double from, double to) {
    if (const auto rank = rankOf(measure)) round(*rank, Measuring::diameter, wanted_.value / 2, from, to);
    if (const auto rank = rankOf(measure, 2)) round(*rank, Measuring::radius, wanted_.value, from, to);
  }

  void turned(const PrimitiveRecord& record) {
    const bool isCone = record.type == geometry::PrimitiveKind::cone;
    diameter(record.diameter, 0, isCone ? 0 : length_);
    if (isCone) diameter(record.topDiameter, length_, length_);
    const auto rank = rankOf(record.length);
    if (!rank) return;
    const double radius = measurer_.number(record.diameter, "diameter") / 2;
    add(*rank, length(place_.zAxis, around(0, radius), around(length_, isCone ? 0 : radius)));
  }
  [[nodiscard]] std::vector<ProVector> around(double z, double radius) const {
    return {at(radius, 0, z), at(-radius, 0, z), at(0, radius, z), at(0, -radius, z)};
  }

  // The height, and coordinates of corners from the profile's origin.
  void drawn(const PrimitiveRecord& record) {
    std::vector<ProVector> first, second;
    for (const Measures& point : record.profile) {
      const double x = measurer_.number(point[0], "profile"), y = measurer_.number(point[1], "profile");
      first.push_back(at(x, y, 0));
      second.push_back(at(x, y, length_));
      if (const auto rank = rankOf(point[0]))
        add(*rank,
            length(place_.xAxis, {at(0, y, 0), at(0, 0, 0), at(0, y, length_)}, {at(x, y, 0), at(x, y, length_)}));
      if (const auto rank = rankOf(point[1]))
        add(*rank,
            length(place_.yAxis, {at(x, 0, 0), at(0, 0, 0), at(x, 0, length_)}, {at(x, y, 0), at(x, y, length_)}));
    }
    if (const auto rank = rankOf(record.length)) add(*rank, length(place_.zAxis, std::move(first), std::move(second)));
  }

  // A corner that goes around: radius and height. What is cut away outside of it leaves a shaft.
  void ring(const Measures& point, const PrimitiveRecord& record) {
    const double radius = measurer_.number(point[0], "profile"), z = measurer_.number(point[1], "profile");
    const auto isFurtherIn = [&](const Measures& other) { return measurer_.number(other[0], "profile") < radius; };
    const bool isInmost = std::ranges::none_of(record.profile, isFurtherIn);
    isBore_ = isInmost != (record.use == geometry::PrimitiveUse::cut);
    if (const auto rank = rankOf(point[0])) round(*rank, Measuring::radius, radius, z, z);
    if (const auto rank = rankOf(point[0], 0.5)) round(*rank, Measuring::diameter, radius, z, z);
    if (const auto rank = rankOf(point[1])) add(*rank, length(place_.zAxis, around(0, radius), around(z, radius)));
  }

  void angle(const PrimitiveRecord& record) {
    if (record.type != geometry::PrimitiveKind::revolution) return;
    const auto rank = rankOf(record.angle);
    if (!rank) return;
    DimensionAnchor anchor{
        .measuring = Measuring::angle, .place = place_, .first = {place_.origin}, .angle = wanted_.value};
    for (const Measures& point : record.profile)
      anchor.radius = std::max(anchor.radius, measurer_.number(point[0], "profile"));
    add(*rank, std::move(anchor));
  }

  // How far from the part's origin it stands. What has no name for it would be anything that happens to be as long.
  void position(const PlacementRecord& placement) {
    constexpr ProVector kAxes[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    constexpr double ProVector::*const kParts[] = {&ProVector::x, &ProVector::y, &ProVector::z};
    for (std::size_t i = 0; i < placement.position.size() && i < 3; ++i) {
      const auto rank = rankOf(placement.position[i]);
      if (!rank || *rank == sameValue) continue;
      ProVector from = place_.origin;
      from.*kParts[i] = 0;
      add(*rank, length(kAxes[i], {from}, {place_.origin}));
    }
  }

  const Model& part_;
  Wanted wanted_;
  Measurer measurer_;
  std::vector<Found> found_;
  // Of the primitive that is looked at.
  ProTransform place_;
  double length_ = 0;
  bool isOfFeature_ = false, isBore_ = false;
};

std::vector<DimensionAnchor> searched(const Model& part, Wanted wanted) {
  if (part.type() != creo::ProMdlType::part || !(wanted.value > 0)) return {};
  try {
    return Search(part, std::move(wanted)).all();
  } catch (const MeasureFault&) {
    return {};  // the body can't be built: its view tells
  }
}

}  // namespace

std::vector<DimensionAnchor> anchorsOf(const Model& part, const DimensionRecord& dimension, double value) {
  return searched(part, {symbolOf(dimension), dimension.id, std::fabs(value), dimension.angular});
}

std::vector<DimensionAnchor> anchorsOf(const Model& part, double value, bool isAngle) {
  return searched(part, {{}, 0, std::fabs(value), isAngle});
}

}  // namespace headless
