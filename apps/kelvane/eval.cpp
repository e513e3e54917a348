// kelvane eval: what a text, or a filter, gives on a model.
#include <algorithm>
#include <filesystem>
#include <fstream>

#include "creo/ProParameter.h"
#include "documents/filter.h"
#include "kelvane/base/fault.h"
#include "kelvane/base/native_path.h"
#include "kelvane/base/nearest.h"
#include "kelvane/base/places.h"
#include "kelvane/base/verb.h"
#include "kelvane/check/text_check.h"
#include "kelvane/log/captured_log.h"
#include "kelvane/package/source.h"
#include "kelvane/run/config.h"
#include "kelvane/run/driver.h"
#include "kelvane/run/filter_explanation.h"
#include "kelvane/run/option_rows.h"
#include "kelvane/show/model_folder.h"
#include "language/user_variables.h"
#include "language/variables.h"
#include "os/surroundings.h"
#include "text/encoding.h"
#include "text/letters.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

std::string fileBytes(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  if (!file) throw Fault(machinePath(path) + " can't be read");
  return bytes;
}

// A file, or "PACKAGE/NAME": a filter of a package, with or without "filters/" and ".xml".
std::string filterBytes(const std::string& written) {
  std::error_code error;
  const fs::path path = nativePath(written);
  if (fs::is_regular_file(path, error)) return fileBytes(path);
  std::string name = machinePath(path.filename());
  fs::path package = path.parent_path();
  if (package.filename() == "filters") package = package.parent_path();
  if (package.empty() || !fs::exists(package, error)) throw Fault("there is no filter " + written);
  const std::unique_ptr<PackageSource> source = openPackage(machinePath(package));
  return source->read("filters/" + chosenName(name, filters(*source), "filter"));
}

// User variables for the text; they go with the object.
class GivenVariables {
 public:
  explicit GivenVariables(const std::vector<std::string>& written) {
    for (const std::string& entry : written) {
      const std::size_t sign = entry.find('=');
      if (sign == entry.npos || sign == 0) throw Fault("--user: '" + entry + "' is no NAME=VALUE");
      language::userVariables().set(text::fromUtf8(entry.substr(0, sign)), text::fromUtf8(entry.substr(sign + 1)));
    }
  }
  ~GivenVariables() { language::userVariables().clear(); }
  GivenVariables(const GivenVariables&) = delete;
  GivenVariables& operator=(const GivenVariables&) = delete;
};

class Eval : public Verb {
 public:
  std::vector<OptionRow> options() override {
    std::vector<OptionRow> rows = {
        {"folder", "DIR", "folder of models", &folder_},
        {"model", "NAME.EXT", "the model", &model_},
        {"text", "TEXT", "a text with variables", &text_},
        {"--filter", "FILE", "a filter file, or PACKAGE/NAME: how it decides, item by item", &filter_},
        {"--user", "NAME=VALUE", "a user variable", &variables_}};
    for (const OptionRow& row : surroundingRows(options_)) rows.push_back(row);
    return rows;
  }

  int run(Console& console) override {
    if (text_.has_value() != filter_.empty()) {
      throw Fault(filter_.empty() ? "eval: one text is needed, or --filter"
                                  : "eval: a text and --filter don't go together");
    }
    const std::string filter = filter_.empty() ? std::string() : filterBytes(filter_);
    CapturedLog log;  // the plug-in ends before it does
    headless::SessionOptions sessionOptions = lookingAt(mountModels(folder_));
    os::mounts().set(L'i', installationFolder());
    sessionOptions.textFolder = L"i:\\text\\";
    headless::Session session(sessionOptions);
    start(session, log, console);
    const std::size_t before = session.messages().size();
    const GivenVariables variables(variables_);
    const creo::ProMdl model = retrieved(session, model_);
    // Creo has the model open when a list works on it.
    creo::ProMdlDisplay(model);
    const int code = filter_.empty() ? evaluateText(model, log, console) : evaluateFilter(filter, model, log, console);
    for (std::size_t i = before; i < session.messages().size(); ++i) console.trouble(readable(session.messages()[i]));
    return code;
  }

 private:
  // As a run does, with its configuration and options, so that what the plug-in reads at its start is known.
  void start(headless::Session& session, CapturedLog& log, Console& console) const {
    tellConfigFaults(options_, console);
    log.configure(configText(options_));
    for (const auto& [name, value] : creoOptions(options_)) session.setOption(name, value);
    startPlugin(session);
    (void)log.takeTrouble();
  }

  int evaluateText(creo::ProMdl model, CapturedLog& log, Console& console) const {
    (void)language::takeRefused();
    const language::Replaced result = language::replaceVariables(text::fromUtf8(*text_), model);
    const std::vector<TroubleLine> trouble = log.takeTrouble();
    for (const TroubleLine& line : trouble) {
      console.trouble((line.level == 2 ? "error: " : "warning: ") + line.text);
    }
    for (const language::RefusedExpression& expression : language::takeRefused())
      console.trouble("warning: " + refusal(expression));
    for (const std::string& fault : unknownTokens(text::fromUtf8(*text_))) console.trouble("warning: " + fault);
    if (!trouble.empty())
      for (const std::string& slip : slips(model)) console.trouble("warning: " + slip);
    if (result.hasText()) console.resultLines(text::toUtf8(result.text));
    return result ? kFine : kErrors;
  }

  // What the text names that isn't there, but nearly.
  [[nodiscard]] std::vector<std::string> slips(creo::ProMdl model) const {
    const std::wstring text = text::fromUtf8(*text_);
    std::vector<std::string> slips, parameters, users;
    const auto owner = creo::ProMdlToModelitem(model);
    creo::ProParameterVisit(owner.value, [&parameters](const creo::ProParameter& parameter) {
      parameters.push_back(text::toUtf8(parameter.id));
      return creo::ProNoError;
    });
    for (const std::wstring& name : language::userVariables().names()) users.push_back(text::toUtf8(name));
    for (const std::string& name : namedParameters(text)) addSlip(slips, "parameter", name, parameters);
    for (const std::string& name : namedUserVariables(text)) addSlip(slips, "user variable", name, users);
    return slips;
  }
  // sign: the name between its two signs; one with a prefix stands elsewhere.
  static void addSlip(std::vector<std::string>& slips, const std::string& what, const std::string& sign,
                      const std::vector<std::string>& known) {
    const std::string name = sign.substr(1, sign.size() - 2);
    const auto isIt = [&name](const std::string& item) { return text::equalNoCase(item, name); };
    if (name.find(':') != name.npos || std::any_of(known.begin(), known.end(), isIt)) return;
    if (const std::string meant = didYouMean(name, known); !meant.empty())
      slips.push_back("there is no " + what + " '" + name + "'" + meant);
  }

  int evaluateFilter(const std::string& bytes, creo::ProMdl model, CapturedLog& log, Console& console) const {
    const auto loaded = core::xmlParse(bytes);
    if (!loaded) throw Fault(filter_ + ": " + text::toUtf8(loaded.fault.sentence()));
    const core::XmlNode* block = documents::filterFileBlock(*loaded.value);
    if (!block) throw Fault(filter_ + ": it holds no element");
    const FilterExplanation explanation = explainFilter(*block, model, [&log] { return log.takeTrouble(); });
    for (const std::string& line : explanation.lines) console.result(line);
    console.result(console.inked(explanation.holds ? Ink::green : Ink::red, explanation.holds ? "holds" : "refuses") +
                   ": " + explanation.reason);
    return explanation.holds ? kFine : kErrors;
  }

  std::string folder_, model_, filter_;
  std::optional<std::string> text_;
  std::vector<std::string> variables_;
  RunOptions options_;
};

}  // namespace

std::unique_ptr<Verb> makeEval() { return std::make_unique<Eval>(); }

}  // namespace kelvane
