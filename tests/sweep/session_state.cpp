#include "sweep/session_state.h"

#include "actions/under_work.h"
#include "creo/ProMdl.h"
#include "headless/creo/state.h"
#include "text/encoding.h"

namespace sweep {
namespace {

// Options that actions change for a while, or that lists set.
constexpr const wchar_t* kOptions[] = {L"remember_replaced_components", L"let_proe_rename_pdm_objects",
                                       L"export_profiles_step",         L"pro_format_dir",
                                       L"mass_property_calculate",      L"regenerate_read_only_objects"};

std::string nameOf(const headless::Models& models, creo::ProMdl handle) {
  const headless::Model* model = models.find(handle);
  if (!model) return "none";
  return text::toUtf8(model->name) + "." + text::toUtf8(creo::typeExtension(model->type()));
}

// What is displayed of a model.
void addDisplayed(std::set<std::string>& lines, const std::string& name, const headless::ModelDocument& document) {
  const headless::ModelRecord& record = document.record;
  const std::pair<const char*, const std::string&> shown[] = {
      {"representation", document.activeRep},       {"view", record.activeView},
      {"layer state", record.activeLayerState},     {"exploded state", record.activeExplodedState},
      {"style state", record.activeStyleState},     {"combined state", record.activeCombinedState},
      {"cross section", record.activeCrossSection}, {"model of the drawing", record.currentModel}};
  for (const auto& [kind, value] : shown)
    if (!value.empty()) lines.insert(name + " shows the " + kind + " " + value);
  if (document.type == creo::ProMdlType::drawing)
    lines.insert(name + " shows sheet " + std::to_string(record.currentSheet));
  if (record.insertAfter != 0) lines.insert(name + " inserts behind feature " + std::to_string(record.insertAfter));
}

}  // namespace

std::set<std::string> stateOf(headless::Session& session) {
  std::set<std::string> lines;
  headless::Session::State& state = session.state();
  const headless::Models& models = session.models();
  lines.insert("current model " + nameOf(models, session.windows().model(session.windows().current())));
  for (const int window : session.windows().all())
    lines.insert("window of " + nameOf(models, session.windows().model(window)));
  lines.insert("working folder " + text::toUtf8(session.models().folders().working()));
  for (const wchar_t* option : kOptions) {
    std::string values;
    for (const std::wstring& value : session.configuration().values(option)) values += " '" + text::toUtf8(value) + "'";
    lines.insert("option " + text::toUtf8(option) + values);
  }
  for (const headless::Model* model : models.all()) {
    const std::string name = nameOf(models, model->handle);
    lines.insert("in memory " + name);
    if (!model->row) addDisplayed(lines, name, *model->document);
  }
  for (const std::string& dialog : session.ui().dialogs()) lines.insert("dialog " + dialog);
  lines.insert(std::to_string(state.selections.size()) + " selected");
  lines.insert(std::to_string(actions::modelsUnderWork().size()) + " under work");
  return lines;
}

}  // namespace sweep
