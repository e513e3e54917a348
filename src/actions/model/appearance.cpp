// The looks of models and of their features.
#include "actions/model/appearance_file.h"
#include "actions/model/feature_choice.h"
#include "actions/model/named_states.h"
#include "actions/whole_model.h"
#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "text/format.h"
#include "text/numbers.h"

namespace actions {
namespace {

constexpr std::wstring_view kRgbVersion = L"5";
constexpr std::wstring_view kFailed = L"The color can't be set";
constexpr double kFullColor = 255, kFullTransparency = 100;

void giveModel(const Task& task, const creo::ProAppearance& look) {
  const auto item = creo::ProMdlToModelitem(task.model());
  if (item && creo::ProMdlVisibleAppearancepropsSet(item.value, look) == creo::ProNoError)
    core::logMsgId(Message::modelColored, core::kNormal, 1);
  else
    core::logWrite(kFailed, core::kError);
}

void giveFeatures(const Task& task, const creo::ProAppearance& look) {
  int failed = 0;
  const int chosen = visitChosenFeatures(task, [&](const creo::ProFeature& feature, const std::wstring& name) {
    core::logIndented(text::format(L"KE: %d %s", feature.id, name), core::kNormal, 2);
    if (creo::ProMdlVisibleAppearancepropsSet({creo::ProItemType::feature, feature.id, feature.owner, {}}, look) ==
        creo::ProNoError)
      return;
    ++failed;
    core::logWrite(text::format(L"%s: feature %d %s", kFailed, feature.id, name), core::kError);
  });
  if (chosen == 0)
    core::logWrite(L"No feature is chosen", core::kError);
  else if (failed < chosen)
    core::logMsgId(Message::featuresColored, core::kNormal, 1);
}

// To the features that `feat` chooses; to the model as a whole where it is absent, empty or "0".
void give(const Task& task, const creo::ProAppearance& look) {
  const std::wstring_view feat = task.attribute(L"feat");
  if (feat.empty() || feat == L"0") return giveModel(task, look);
  if (feat.size() != 1 || feat[0] < L'1' || feat[0] > L'4') return unknownWord(L"feat", feat, L"0 to 4");
  giveFeatures(task, look);
}

Outcome setAppearance(const Task& task) {
  const auto looks = readAppearanceFile(task.path(L"path", L"models"));
  if (!looks) {
    core::logWrite(looks.fault.sentence(), core::kError);
    return done;
  }
  const bool isNamed = !task.attribute(L"name").empty();
  const std::wstring name = nameIn(task, L"name");
  const creo::ProAppearance* look = isNamed && name.empty() ? nullptr : lookNamed(looks.value, name);
  if (look)
    give(task, *look);
  else
    core::logWrite(text::format(L"The file has no appearance '%s'", isNamed ? task.attribute(L"name") : L""),
                   core::kError);
  return done;
}

// The attribute's number over the full one, 0 to 1. Nothing, with an error line, for any other number.
std::optional<double> share(const Task& task, std::wstring_view attribute, double full) {
  const auto written = task.text(attribute);
  const auto number = text::wholeDouble(written.hasText() ? std::wstring_view(written.text) : L"");
  if (number && *number >= 0 && *number <= full) return *number / full;
  unknownWord(attribute, written.hasText() ? std::wstring_view(written.text) : task.attribute(attribute),
              text::format(L"a number from 0 to %d", static_cast<int>(full)));
  return std::nullopt;
}

Outcome setAppearanceFromRgb(const Task& task) {
  const auto red = share(task, L"r", kFullColor), green = share(task, L"g", kFullColor),
             blue = share(task, L"b", kFullColor);
  const auto transparency =
      task.attribute(L"transparency").empty() ? std::optional(0.0) : share(task, L"transparency", kFullTransparency);
  if (!red || !green || !blue || !transparency) return done;
  // How light falls on it is as Creo has it for a color of its own.
  creo::ProAppearance look;
  look.red = *red;
  look.green = *green;
  look.blue = *blue;
  look.ambient = 0.5;
  look.diffuse = 0.8;
  look.highlight = 0.3;
  look.shininess = 0.3;
  look.transparency = *transparency;
  give(task, look);
  return done;
}

constexpr Attribute kFile[] = {
    {.name = L"path",
     .kind = Kind::file,
     .variables = true,
     .need = Need::oneOf,
     .folder = L"models",
     .about = "a file of looks"},
    {.name = L"name", .variables = true, .about = "the look's name in the file; absent or empty: the first one"},
};
// A share of red, green or blue.
constexpr Attribute color(std::wstring_view name, std::string_view about) {
  return {.name = name,
          .kind = Kind::number,
          .variables = true,
          .need = Need::needed,
          .range = {.least = 0, .most = kFullColor},
          .about = about};
}
constexpr Attribute kColor[] = {
    color(L"r", "red, 0 to 255"),
    color(L"g", "green, 0 to 255"),
    color(L"b", "blue, 0 to 255"),
    {.name = L"transparency",
     .kind = Kind::number,
     .variables = true,
     .range = {.least = 0, .most = kFullTransparency},
     .about = "0 to 100, in percent; absent or empty: 0"},
};
constexpr Attribute kOnWhat[] = {
    {.name = L"feat",
     .kind = Kind::word,
     .words = L"|0|1|2|3|4",
     .about = "absent, empty or 0: the model as a whole; else features: 1 those of feattype, 2 the one with featid, "
              "3 all, 4 the first that fits featname"},
};
constexpr auto kFileAttributes = joined(kFile, kOnWhat, kChosenFeatures);
constexpr auto kColorAttributes = joined(kColor, kOnWhat, kChosenFeatures);

constexpr Action kActions[] = {
    {.key = L"setAppearance",
     .place = 58,
     .title = Message::setAppearance,
     .conditions = kOnNativeSolids,
     .attributes = kFileAttributes,
     .effects = {.reads = Touched::model | Touched::files, .changes = Touched::model},
     .about = "gives a solid or features of it a look from a file",
     .function = &setAppearance},
    {.key = L"setAppearanceFromRGB",
     .place = 59,
     .title = Message::setAppearanceFromRgb,
     .version = kRgbVersion,
     .conditions = kOnNativeSolids,
     .attributes = kColorAttributes,
     .effects = {.changes = Touched::model},
     .about = "gives a solid or features of it a color",
     .function = &setAppearanceFromRgb},
};

}  // namespace

std::span<const Action> appearanceActions() { return kActions; }

}  // namespace actions
