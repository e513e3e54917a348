// kelvane new: makes a model's first document.
#include "headless/geometry/body.h"
#include "headless/model/accuracy.h"
#include "headless/store/document.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/places.h"
#include "kelvane/base/verb.h"
#include "kelvane/show/model_folder.h"
#include "kelvane/show/values.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"
#include "text/numbers.h"
#include "text/pieces.h"

namespace kelvane {
namespace {

headless::Scalar scalar(const creo::ProParamvalue& value) {
  switch (value.type) {
    case creo::ProParamvalueType::real:
      return value.real;
    case creo::ProParamvalueType::integer:
      return value.integer;
    case creo::ProParamvalueType::boolean:
      return value.boolean;
    default:
      return text::toUtf8(value.string);
  }
}

class New : public Verb {
 public:
  std::vector<OptionRow> options() override {
    return {{"folder", "DIR", "folder of models; made when it isn't there", &folder_},
            {"model", "NAME.EXT", "the model's name, with .PRT, .ASM, .DRW or .FRM", &model_},
            {"--param", "NAME[:Type]=VALUE", "a parameter: String (also without a type), Integer, Double or Boolean",
             &parameters_},
            {"--box", "X,Y,Z", "a part's body: a box of these sides in millimetres", &box_},
            {"--step", "FILE", "a part's body: the solids of a STEP file, which is copied beside the model", &step_}};
  }
  int run(Console& console) override {
    const ModelFileName model = modelFileName(model_);
    const headless::ModelRecord record = newRecord(model);
    const std::wstring folder = os::asFolder(systemPath(folder_));
    if (const auto error = os::files().createFolders(folder)) {
      throw Fault(folder_ + " can't be made: " + error.message());
    }
    if (headless::Folder(folder).find(model.name, model.type)) {
      throw Fault(label(model.name, model.type) + " is there already");
    }
    if (!step_.empty()) copyStep(console, folder + text::fromUtf8(stepFile(model)));
    const std::wstring file = text::lower(text::fromUtf8(label(model.name, model.type))) + L".1";
    if (const auto error = os::files().write(folder + file, headless::writeDocument(record))) {
      throw Fault(shown(folder + file) + " can't be written: " + error.message());
    }
    console.note(shown(folder + file));
    return kFine;
  }

 private:
  [[nodiscard]] headless::ModelRecord newRecord(const ModelFileName& model) const {
    headless::ModelRecord record;
    if (model.type == creo::ProMdlType::part || model.type == creo::ProMdlType::assembly)
      headless::stateAccuracyOfTemplates(record);
    for (const std::string& written : parameters_) {
      const GivenParameter given = givenParameter(written);
      headless::ParameterRecord parameter;
      parameter.name = text::toUtf8(text::upper(text::fromUtf8(given.name)));
      parameter.type = given.value.type;
      parameter.value = scalar(given.value);
      for (const auto& other : record.parameters.list) {
        if (headless::sameName(other.name, parameter.name))
          throw Fault("parameter '" + other.name + "' is given twice");
      }
      record.parameters.list.push_back(std::move(parameter));
    }
    if (!box_.empty() && !step_.empty()) throw Fault("a part's body is --box or --step, not both");
    if (box_.empty() && step_.empty()) return record;
    if (model.type != creo::ProMdlType::part)
      throw Fault((box_.empty() ? std::string("--step") : "--box") + ": only a part has a body of its own");
    record.solid.text = box_.empty() ? stepSolid(model) : boxSolid();
    return record;
  }

  static std::string stepFile(const ModelFileName& model) { return text::toUtf8(text::lower(model.name)) + ".stp"; }
  static std::string stepSolid(const ModelFileName& model) {
    std::string file;
    headless::appendQuoted(file, stepFile(model));
    return "{\"primitives\": [{\"type\": \"import\", \"file\": " + file + "}]}";
  }
  // A file without a body is refused before anything is written.
  void copyStep(Console& console, const std::wstring& to) const {
    const std::wstring from = systemPath(step_);
    const auto bytes = os::files().read(from);
    if (!bytes) throw Fault(step_ + " can't be read: " + bytes.error.message());
    headless::geometry::Primitive body;
    body.kind = headless::geometry::PrimitiveKind::import;
    body.file = from;
    const auto built = headless::geometry::build({body});
    if (!built.body) throw Fault("--step " + step_ + ": " + text::toUtf8(built.fault));
    for (const std::wstring& warning : built.warnings)
      console.trouble("warning: --step " + step_ + ": " + text::toUtf8(warning));
    if (os::files().exists(to)) throw Fault(shown(to) + " is there already");
    if (const auto error = os::files().write(to, bytes.value))
      throw Fault(shown(to) + " can't be written: " + error.message());
  }

  [[nodiscard]] std::string boxSolid() const {
    std::string sides;
    const std::vector<std::wstring> numbers = text::split(text::fromUtf8(box_), L',');
    for (const std::wstring& number : numbers) {
      const auto side = text::wholeDouble(number);
      if (!side || *side <= 0 || numbers.size() != 3)
        throw Fault("--box takes three sides over 0, as 80,40,5; not '" + box_ + "'");
      sides += (sides.empty() ? "" : ", ") + headless::realText(*side);
    }
    return "{\"primitives\": [{\"type\": \"box\", \"size\": [" + sides + "]}]}";
  }

  std::string folder_, model_, box_, step_;
  std::vector<std::string> parameters_;
};

}  // namespace

std::unique_ptr<Verb> makeNew() { return std::make_unique<New>(); }

}  // namespace kelvane
