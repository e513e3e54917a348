// Models from trees that files of other systems hold.
#include <cmath>
#include <unordered_map>

#include "creo/ProAppearance.h"
#include "headless/exports/exchange_tree.h"
#include "headless/model/accuracy.h"
#include "headless/model/create.h"
#include "headless/model/erase.h"
#include "headless/model/models.h"
#include "headless/model/new_document.h"
#include "headless/model/units.h"
#include "headless/store/json.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace headless {

using creo::Got;
using creo::ProError;
using creo::ProMdl;
using creo::ProMdlType;
using creo::ProVector;
using geometry::ExchangeNode;
using geometry::ExchangeNodePtr;

namespace {

// Creo's limit of a model's name.
constexpr std::size_t kLongestName = 31;
// Names that are taken by models of the session before an import gives up.
constexpr int kMostTaken = 10000;

// The system whose lengths are so many mm; empty, which is the default, for the others.
std::string systemOfUnit(double unit) {
  constexpr std::pair<double, const char*> kSystems[] = {{25.4, "inlbs"}, {304.8, "fps"}, {1000, "mks"}, {10, "cgs"}};
  for (const auto& [length, system] : kSystems)
    if (std::abs(unit - length) < 1e-9 * length) return system;
  return {};
}

// A product's name as that of a model.
std::wstring modelNameOf(const std::wstring& product) {
  std::wstring name = text::upper(text::trimmed(product)).substr(0, kLongestName);
  for (wchar_t& c : name)
    if (c == L' ' || !isFileName(std::wstring(1, c))) c = L'_';
  return name.empty() ? L"PART" : name;
}

bool isPart(const ExchangeNode& node) { return !node.step.empty(); }

std::string vectorText(const ProVector& v) {
  return "[" + realText(v.x) + ", " + realText(v.y) + ", " + realText(v.z) + "]";
}

// Why an import ends.
struct ImportFault {
  ProError error;
  std::wstring reason;
};

// Makes the models from the deepest up, each product once, so that what one uses is there.
class Importer {
 public:
  // name: of the whole; no part may take it.
  Importer(Models& models, double unit, const std::wstring& name, ProMdlType type)
      : models_(models), system_(systemOfUnit(unit)), taken_{modelKey(name, type)} {}

  ProMdl part(const ExchangeNode& node, const std::wstring& name) {
    const auto document = begin(name, ProMdlType::part);
    fillPart(*document, node);
    return enter(document);
  }
  // A tree that is a part alone becomes the assembly's only component.
  ProMdl assembly(const ExchangeNodePtr& root, const std::wstring& name) {
    const auto document = begin(name, ProMdlType::assembly);
    if (isPart(*root))
      addComponent(*document, root, {});
    else
      addComponents(*document, *root);
    return enter(document);
  }
  // Takes what was made out of memory again, users before what they use.
  void undo() {
    for (; !made_.empty(); made_.pop_back()) eraseModel(models_, made_.back());
  }

 private:
  struct Used {
    std::wstring name;
    ProMdlType type;
  };

  [[nodiscard]] std::shared_ptr<ModelDocument> begin(const std::wstring& name, ProMdlType type) const {
    auto document = newDocument(name, type);
    document->record.units = system_;
    stateAccuracyOfTemplates(document->record);
    return document;
  }
  ProMdl enter(const std::shared_ptr<ModelDocument>& document) {
    const auto made = createModel(models_, document);
    if (!made) throw ImportFault{made.error, {}};
    made_.push_back(made.value);
    return made.value;
  }

  static void fillPart(ModelDocument& document, const ExchangeNode& node) {
    std::string& solid = document.record.solid.text;
    solid = R"({"primitives": [{"type": "import", "step": )";
    appendQuoted(solid, node.step);
    solid += "}]}";
    if (node.color) {
      document.record.appearance = std::make_unique<AppearanceRecord>();
      document.record.appearance->color.assign(node.color->begin(), node.color->end());
    }
    for (const auto& [number, color] : node.faceColors) {
      SurfaceAppearanceRecord& look = document.record.surfaceAppearances.emplace_back();
      look.surface = number;
      look.side = static_cast<int>(creo::ProSurfaceSide::outer);
      look.appearance.color.assign(color.begin(), color.end());
    }
  }

  void addComponents(ModelDocument& document, const ExchangeNode& assembly) {
    for (const geometry::ExchangeMember& member : assembly.members) addComponent(document, member.node, member.place);
  }
  void addComponent(ModelDocument& document, const ExchangeNodePtr& node, const creo::ProTransform& place) {
    const Used& used = made(node);
    UsedModelRecord& component = document.record.components.emplace_back();
    component.name = text::toUtf8(used.name);
    component.type = used.type;
    const double scale = inSystem(1, "mm", document.record);
    const ProVector& at = place.origin;
    component.placement.text = R"({"position": )" + vectorText({at.x * scale, at.y * scale, at.z * scale}) +
                               R"(, "xAxis": )" + vectorText(place.xAxis) + R"(, "zAxis": )" + vectorText(place.zAxis) +
                               "}";
  }

  // The model of a product. Assemblies of a file aren't deeper than what reads it lets through.
  const Used& made(const ExchangeNodePtr& node) {
    if (const auto known = used_.find(node.get()); known != used_.end()) return known->second;
    const ProMdlType type = isPart(*node) ? ProMdlType::part : ProMdlType::assembly;
    const auto document = begin(freeName(modelNameOf(node->name), type), type);
    if (isPart(*node))
      fillPart(*document, *node);
    else
      addComponents(*document, *node);
    enter(document);
    return used_.emplace(node.get(), Used{document->name, type}).first->second;
  }

  // The name, or the name with the first number under which no model is known. The number goes on from product to
  // product, so that many of one name cost no more each.
  std::wstring freeName(const std::wstring& wanted, ProMdlType type) {
    int& number = numbers_[modelKey(wanted, type)];
    for (int tries = 0; tries < kMostTaken; ++tries, ++number) {
      const std::wstring tail = number == 0 ? L"" : L"_" + std::to_wstring(number);
      std::wstring name = wanted.substr(0, kLongestName - tail.size()) + tail;
      if (taken_.insert(modelKey(name, type)).second && !isNameKnown(models_, name, type)) return name;
    }
    throw ImportFault{creo::ProExists, L"all names of its parts are taken"};
  }

  Models& models_;
  std::string system_;
  std::vector<ProMdl> made_;
  std::unordered_map<const ExchangeNode*, Used> used_;
  std::unordered_map<std::wstring, int> numbers_;
  std::unordered_set<std::wstring> taken_;
};

}  // namespace

Got<ProMdl> importTree(Models& models, const geometry::ExchangeRead& read, std::wstring_view name, ProMdlType type) {
  if (type != ProMdlType::part && type != ProMdlType::assembly) return creo::ProInvalidType;
  if (!isFileName(name)) return creo::ProBadInputs;
  const std::wstring upper = text::upper(name);
  if (isNameKnown(models, upper, type)) return creo::ProExists;
  Importer importer(models, read.unit, upper, type);
  try {
    return type == ProMdlType::part ? importer.part(*read.root, upper) : importer.assembly(read.root, upper);
  } catch (const ImportFault& fault) {
    importer.undo();
    if (!fault.reason.empty()) models.message(std::wstring(name) + L": " + fault.reason);
    return fault.error;
  }
}

}  // namespace headless
