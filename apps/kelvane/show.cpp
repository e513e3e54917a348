// kelvane show: one model, readable.
#include "headless/model/drawing.h"
#include "headless/model/family.h"
#include "headless/model/features.h"
#include "headless/model/items.h"
#include "headless/model/models.h"
#include "headless/model/parents.h"
#include "headless/pictures/png.h"
#include "kelvane/base/columns.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "kelvane/base/verb.h"
#include "kelvane/base/words.h"
#include "kelvane/show/drawing.h"
#include "kelvane/show/model_folder.h"
#include "kelvane/show/pictures.h"
#include "kelvane/show/relations.h"
#include "kelvane/show/sheet_svg.h"
#include "kelvane/show/solid.h"
#include "kelvane/show/values.h"
#include "run/history.h"
#include "text/encoding.h"

namespace kelvane {
namespace {

using Rows = std::vector<std::vector<std::string>>;

Rows parametersOf(const creo::ProModelitem& owner) {
  Rows rows;
  creo::ProParameterVisit(owner, [&](const creo::ProParameter& parameter) {
    const auto value = creo::ProParameterScaledvalueGet(parameter);
    const auto units = creo::ProParameterUnitsGet(parameter);
    const auto description = creo::ProParameterDescriptionGet(parameter);
    const auto designated = creo::ProParameterDesignationVerify(parameter);
    rows.push_back({text::toUtf8(parameter.id), typeWord(value.value.type), valueText(value.value),
                    units ? text::toUtf8(units.value) : "", designated.value ? "designated" : "",
                    description ? text::toUtf8(description.value) : ""});
    return creo::ProNoError;
  });
  return rows;
}

// "parents 3 4"; empty for none.
std::string listed(const char* word, const std::vector<int>& ids) {
  if (ids.empty()) return {};
  std::string all = word;
  for (const int id : ids) all += " " + std::to_string(id);
  return all;
}

// An instance's are as its row and its generic's program make them.
Rows featureRows(const headless::Model& model) {
  Rows rows;
  for (const headless::ModelFeature& entry : headless::featuresOf(model)) {
    const headless::FeatureRecord* feature = entry.record();
    if (!feature) continue;
    const creo::ProFeatureStatus status = headless::featureStatus(entry);
    const bool active = status == creo::ProFeatureStatus::active;
    std::string more = active ? std::string() : std::string(headless::textOf(status));
    addPiece(more, listed("parents", feature->parents));
    addPiece(more, listed("children", headless::childrenOf(model, feature->id)));
    if (feature->pattern && !feature->pattern->members.empty())
      addPiece(more, counted(feature->pattern->members.size(), "member"));
    rows.push_back({std::to_string(feature->id), feature->name, "type " + std::to_string(feature->type), more});
  }
  return rows;
}

Rows dimensionRows(const headless::Model& model) {
  Rows rows;
  for (const headless::DimensionRecord& dimension : model.document->record.dimensions) {
    const std::string symbol = headless::symbolOf(dimension);
    const headless::Scalar& value =
        headless::heldValue(model, creo::ProFamitemType::dimension, symbol, dimension.value);
    rows.push_back({symbol, scalarText(value), dimension.reference ? "reference" : ""});
  }
  return rows;
}

Rows usesOf(creo::ProMdl model) {
  Rows rows;
  for (const creo::ProDependency& used : creo::ProMdlDependenciesList(model).value) {
    rows.push_back({label(used.name, used.type)});
  }
  return rows;
}

Rows historyOf(creo::ProMdl model, Console& console) {
  const std::vector<run::HistoryRecord> records = run::readHistory(model);
  const auto count = static_cast<std::size_t>(run::historyCount(model));
  if (count > records.size())
    console.trouble("warning: the history is damaged: it counts " + std::to_string(count) + " runs and holds " +
                    std::to_string(records.size()));
  Rows rows;
  for (const run::HistoryRecord& record : records) {
    rows.push_back({text::toUtf8(record.date), text::toUtf8(record.package), text::toUtf8(record.list),
                    text::toUtf8(record.user)});
  }
  return rows;
}

class Show : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"folder", "DIR", "folder of models", &folder_},
            {"model", "NAME.EXT", "the model", &model_},
            {"--svg", "FILE", "draw the sheets of a drawing, or a solid's edges, into that file instead; -: put it out",
             &svg_},
            {"--png", "FILE", "the same as a picture of dots, a solid shaded", &png_},
            {"--sheet", "N", "of a drawing's picture: that sheet alone", &sheet_},
            {"--size", "WxH", "of a picture of dots, which is fitted to it: 1600x1200 without it", &size_}};
  }
  int run(Console& console) override {
    headless::Session session(lookingAt(mountModels(folder_)));
    const creo::ProMdl handle = retrieved(session, model_);
    if (!svg_.empty() || !png_.empty()) return draw(console, session, handle);
    if (sheet_ != 0 || !size_.empty()) throw Fault("--sheet and --size go with --svg or --png");
    const headless::Model& model = *session.models().find(handle);
    const headless::ModelRecord& record = model.document->record;
    showHead(console, model);
    const auto owner = creo::ProMdlToModelitem(handle);
    section(console, "parameters", parametersOf(owner.value));
    section(console, "features", featureRows(model));
    section(console, "dimensions", dimensionRows(model));
    for (const Section& own : relationSections(record)) section(console, own.title, own.rows);
    const Section family = familySection(model);
    section(console, family.title, family.rows);
    for (const Section& own : solidSections(handle)) section(console, own.title, own.rows);
    for (const Section& own : drawingSections(handle)) section(console, own.title, own.rows);
    section(console, "uses", usesOf(handle));
    section(console, "history", historyOf(handle, console));
    tellMessages(console, session);
    return kFine;
  }

 private:
  // The session's lines say why there is nothing to show, so they come first.
  int draw(Console& console, headless::Session& session, creo::ProMdl handle) const {
    const PictureSize size = size_.empty() ? PictureSize() : pictureSize(size_);
    const bool hasSheets = headless::hasSheets(session.models().find(handle)->type());
    try {
      if (!png_.empty())
        writePicture(headless::pngOf(imageOf(shownModel(session, handle, sheet_), size)), png_, console);
      if (!svg_.empty()) {
        const Shown shown =
            hasSheets || sheet_ != 0 ? shownModel(session, handle, sheet_) : shownLines(session, handle, size);
        writePicture(sheetSvg(shown.sheets), svg_, console);
      }
    } catch (...) {
      tellMessages(console, session);
      throw;
    }
    tellMessages(console, session);
    return kFine;
  }
  static void tellMessages(Console& console, const headless::Session& session) {
    for (const std::wstring& message : session.messages()) console.trouble(readable(message));
  }
  static void showHead(Console& console, const headless::Model& model) {
    const headless::ModelRecord& record = model.document->record;
    std::string line = console.inked(Ink::bold, label(model.name, model.type()));
    line += "  version " + std::to_string(model.document->version);
    if (model.row) line += "  instance of " + text::toUtf8(headless::genericName(model));
    if (!record.units.empty()) line += "  units " + record.units;
    const std::wstring material = headless::currentMaterial(model);
    if (!material.empty()) line += "  material " + text::toUtf8(material);
    if (record.skeleton) line += "  skeleton";
    if (record.readOnly) line += "  read-only";
    console.result(line);
  }
  static void section(Console& console, std::string_view title, const Rows& rows) {
    if (rows.empty()) return;
    console.result("");
    console.result(console.inked(Ink::cyan, title));
    for (const std::string& line : aligned(rows)) console.result("  " + line);
  }

  std::string folder_, model_, svg_, png_, size_;
  int sheet_ = 0;  // 0: all
};

}  // namespace

std::unique_ptr<Verb> makeShow() { return std::make_unique<Show>(); }

}  // namespace kelvane
