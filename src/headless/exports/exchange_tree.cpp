#include "headless/exports/exchange_tree.h"

#include <algorithm>
#include <unordered_map>

#include "creo/ProAppearance.h"
#include "headless/model/measures.h"
#include "headless/model/models.h"
#include "headless/model/placed.h"
#include "headless/model/units.h"
#include "text/format.h"

namespace headless {

using creo::Got;
using creo::ProError;
using creo::ProMdl;
using geometry::ExchangeNode;
using geometry::ExchangeNodePtr;

namespace {

// A part may be beyond what a colour can be; files hold 0 to 1 alone.
std::optional<geometry::Rgb> colorOf(const AppearanceRecord& look) {
  if (look.color.size() != 3) return std::nullopt;
  geometry::Rgb color{};
  for (std::size_t i = 0; i < color.size(); ++i) color[i] = std::clamp(look.color[i], 0.0, 1.0);
  return color;
}

constexpr int kOuter = static_cast<int>(creo::ProSurfaceSide::outer);

void describe(ExchangeNode& node, const Model& model) {
  const ModelRecord& record = model.document->record;
  node.name = model.name;
  node.unit = 1 / inSystem(1, "mm", record);
  if (record.appearance) node.color = colorOf(*record.appearance);
  for (const SurfaceAppearanceRecord& entry : record.surfaceAppearances)
    if (const auto color = colorOf(entry.appearance); color && entry.side == kOuter)
      node.faceColors.emplace_back(entry.surface, *color);
}

class TreeBuilder {
 public:
  TreeBuilder(const Models& models, Bodies& bodies) : models_(models), bodies_(bodies) {}

  // Null for a model without geometry.
  Got<ExchangeNodePtr> of(const Model& model) {
    if (const auto known = known_.find(model.handle.value); known != known_.end()) return known->second;
    known_.emplace(model.handle.value, nullptr);  // an assembly inside itself holds nothing there
    auto node = model.type() == creo::ProMdlType::part ? part(model) : assembly(model);
    if (node) known_[model.handle.value] = node.value;
    return node;
  }

 private:
  Got<ExchangeNodePtr> part(const Model& model) {
    const auto body = bodies_.body(model);
    if (body.error == creo::ProNotFound) return ExchangeNodePtr();
    if (!body) return body.error;
    auto node = std::make_shared<ExchangeNode>();
    describe(*node, model);
    node->body = body.value;
    return ExchangeNodePtr(std::move(node));
  }
  Got<ExchangeNodePtr> assembly(const Model& model) {
    auto node = std::make_shared<ExchangeNode>();
    describe(*node, model);
    for (const PlacedModel& placed : placedComponents(models_, model)) {
      auto inner = of(*placed.model);
      if (!inner) return inner;
      if (inner.value) node->members.push_back({std::move(inner.value), placed.place});
    }
    if (node->members.empty()) return ExchangeNodePtr();
    return ExchangeNodePtr(std::move(node));
  }

  const Models& models_;
  Bodies& bodies_;
  std::unordered_map<std::uint64_t, ExchangeNodePtr> known_;
};

}  // namespace

Got<ExchangeNodePtr> exchangeTree(const Models& models, Bodies& bodies, const Model& solid) {
  const auto fails = [&](ProError error, std::wstring_view reason) {
    models.message(
        text::format(L"%s.%s: %s", solid.name, std::wstring(creo::typeExtension(solid.type())), std::wstring(reason)));
    return error;
  };
  try {
    auto tree = TreeBuilder(models, bodies).of(solid);
    if (tree && !tree.value) return fails(creo::ProNotFound, L"there is no geometry to write");
    return tree;
  } catch (const MeasureFault& fault) {
    return fails(creo::ProGeneralError, fault.reason);
  }
}

}  // namespace headless
