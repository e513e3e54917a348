// Solids as files of other systems.
#include <set>

#include "creo/ProIntf.h"
#include "headless/creo/operation.h"
#include "headless/exports/exchange_tree.h"
#include "headless/exports/export_file.h"
#include "headless/store/faults.h"
#include "os/paths.h"
#include "os/surroundings.h"
#include "text/letters.h"
#include "text/pieces.h"

namespace creo {

using headless::Model;
using headless::onModel;
using headless::operation;
using headless::geometry::ExchangeForm;
using headless::geometry::ExchangeFormat;
using headless::geometry::ExchangeNode;
using State = headless::Session::State;

namespace {

// The option that names the profile of STEP files.
constexpr std::wstring_view kStepProfile = L"export_profiles_step";

bool isSolid(const Model& m) { return m.type() == ProMdlType::part || m.type() == ProMdlType::assembly; }

ProError writeTree(State& state, const ExchangeNode& tree, const ExchangeForm& form, const std::wstring& path) {
  const auto written = headless::geometry::writeExchange(tree, form);
  if (written.fault.empty()) return headless::writeExport(state.models, path, written.bytes);
  state.showMessage(headless::exportPath(state.models, path) + L": " + written.fault);
  return ProGeneralError;
}

// A file for each part of a tree, beside the whole: "pin_prt.igs".
ProError writeParts(State& state, const ExchangeNode& tree, const ExchangeForm& form, const std::wstring& whole,
                    std::set<const ExchangeNode*>& seen) {
  for (const auto& member : tree.members) {
    const ExchangeNode& node = *member.node;
    if (!seen.insert(&node).second) continue;
    const std::wstring file = text::lower(node.name) + L"_prt" + std::wstring(kIgesExtension);
    if (const ProError error = node.body ? writeTree(state, node, form, os::joined(os::folderOf(whole), file))
                                         : writeParts(state, node, form, whole, seen))
      return error;
  }
  return ProNoError;
}

// The format's own ending is appended, whatever the path ends in.
ProError writeSolid(State& state, const Model& m, const ExchangeForm& form, const std::wstring& path, bool parts) {
  if (!isSolid(m)) return ProInvalidType;
  if (path.empty() || path.ends_with(L'\\') || path.ends_with(L'/')) return ProBadInputs;
  const auto tree = headless::exchangeTree(state.models, state.bodies, m);
  if (!tree) return ProGeneralError;
  std::set<const ExchangeNode*> seen;
  if (parts)
    if (const ProError error = writeParts(state, *tree.value, form, headless::exportPath(state.models, path), seen))
      return error;
  const auto extension = form.format == ExchangeFormat::iges ? kIgesExtension : kStepExtension;
  return writeTree(state, *tree.value, form, path + std::wstring(extension));
}

// What the profile of STEP files says, where the option names one: AP242 is written where it asks for that.
Got<bool> asksForAp242(State& state) {
  const auto values = state.configuration.values(kStepProfile);
  if (values.empty() || values.front().empty()) return false;
  const std::wstring path = headless::exportPath(state.models, values.front());
  const auto profile = os::files().read(path);
  if (profile) return text::upper(text::fromUtf8(profile.value)).find(L"AP242") != std::wstring::npos;
  state.showMessage(headless::cantRead(path, profile.error));
  return ProGeneralError;
}

}  // namespace

Got<bool> ProOutputAssemblyConfigurationIsSupported(ProIntfFormat format,
                                                    ProOutputAssemblyConfiguration configuration) {
  return operation("ProOutputAssemblyConfigurationIsSupported", [&](State&) -> Got<bool> {
    return format != ProIntfFormat::step || configuration == ProOutputAssemblyConfiguration::singleFile;
  });
}

Got<ProOutputBrepRepresentation> ProOutputBrepRepresentationAlloc() {
  return operation("ProOutputBrepRepresentationAlloc",
                   [](State&) -> Got<ProOutputBrepRepresentation> { return ProOutputBrepRepresentation{}; });
}

ProError ProOutputBrepRepresentationFlagsSet(ProOutputBrepRepresentation& representation, bool wireframe, bool surfaces,
                                             bool solids, bool quilts) {
  return operation("ProOutputBrepRepresentationFlagsSet", [&](State&) -> ProError {
    representation = {wireframe, surfaces, solids, quilts};
    return ProNoError;
  });
}

Got<bool> ProOutputBrepRepresentationIsSupported(ProIntfFormat format,
                                                 const ProOutputBrepRepresentation& representation) {
  return operation("ProOutputBrepRepresentationIsSupported", [&](State&) -> Got<bool> {
    const auto& [wireframe, surfaces, solids, quilts] = representation;
    if (format != ProIntfFormat::iges) return (solids || quilts) && !wireframe && !surfaces;
    return wireframe || surfaces || solids || quilts;
  });
}

ProError ProOutputBrepRepresentationFree(ProOutputBrepRepresentation& representation) {
  return operation("ProOutputBrepRepresentationFree", [&](State&) -> ProError {
    representation = {};
    return ProNoError;
  });
}

Got<ProOutputLayerOptions> ProOutputLayerOptionsAlloc() {
  return operation("ProOutputLayerOptionsAlloc",
                   [](State&) -> Got<ProOutputLayerOptions> { return ProOutputLayerOptions{}; });
}

ProError ProOutputLayerOptionsFree(ProOutputLayerOptions&) {
  return operation("ProOutputLayerOptionsFree", [](State&) -> ProError { return ProNoError; });
}

ProError ProIntf3DFileWrite(ProMdl solid, ProIntfFormat format, const std::wstring& path,
                            ProOutputAssemblyConfiguration configuration,
                            const ProOutputBrepRepresentation& representation, const ProOutputLayerOptions&) {
  return onModel("ProIntf3DFileWrite", solid, [&](State& state, Model& m) -> ProError {
    if (!isSolid(m)) return ProInvalidType;
    if (format == ProIntfFormat::sat) return ProNoLicense;  // no open library writes it
    ExchangeForm form;
    form.format = format == ProIntfFormat::iges ? ExchangeFormat::iges : ExchangeFormat::step;
    form.flat = configuration == ProOutputAssemblyConfiguration::flatFile;
    form.solids = representation.solids;
    form.quilts = representation.quilts;
    form.surfaces = representation.surfaces;
    form.wireframe = representation.wireframe;
    return writeSolid(state, m, form, path, configuration == ProOutputAssemblyConfiguration::multiFiles);
  });
}

ProError ProIntf3DFileWriteWithDefaultProfile(ProMdl solid, ProIntfFormat format, const std::wstring& path) {
  return onModel("ProIntf3DFileWriteWithDefaultProfile", solid, [&](State& state, Model& m) -> ProError {
    if (!isSolid(m)) return ProInvalidType;
    if (format != ProIntfFormat::step) return ProNoLicense;
    const auto ap242 = asksForAp242(state);
    if (!ap242) return ap242.error;
    ExchangeForm form;
    form.ap242 = ap242.value;
    return writeSolid(state, m, form, path, false);
  });
}

}  // namespace creo
