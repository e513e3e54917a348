#include "actions/exports/brep_export.h"

#include "actions/output_file.h"
#include "core/log.h"

namespace actions {

using creo::ProOutputAssemblyConfiguration;

namespace {

ProOutputAssemblyConfiguration configurationOf(const Task& task) {
  const std::wstring_view asked = task.attribute(L"assemblyConfig");
  if (asked == L"flat file") return ProOutputAssemblyConfiguration::flatFile;
  if (asked == L"multi files") return ProOutputAssemblyConfiguration::multiFiles;
  return ProOutputAssemblyConfiguration::singleFile;
}

// Freed on every path.
class Representation {
 public:
  Representation() : made_(creo::ProOutputBrepRepresentationAlloc()) {}
  ~Representation() {
    if (made_) creo::ProOutputBrepRepresentationFree(made_.value);
  }
  Representation(const Representation&) = delete;
  Representation& operator=(const Representation&) = delete;
  // False: the format can't hold what the task asks for.
  bool fill(const Task& task, const BrepForm& form) {
    const bool wireframe = form.choosesFaces && task.isTrue(L"wireframe");
    const bool surfaces = form.choosesFaces && task.isTrue(L"surfaces");
    if (!made_ || creo::ProOutputBrepRepresentationFlagsSet(made_.value, wireframe, surfaces, task.isTrue(L"solids"),
                                                            task.isTrue(L"quilts")) != creo::ProNoError)
      return false;
    const auto supported = creo::ProOutputBrepRepresentationIsSupported(form.format, made_.value);
    return supported && supported.value;
  }
  [[nodiscard]] const creo::ProOutputBrepRepresentation& value() const { return made_.value; }

 private:
  creo::Got<creo::ProOutputBrepRepresentation> made_;
};

creo::ProError write(const Task& task, const BrepForm& form, const std::wstring& path, const Representation& what) {
  auto layers = creo::ProOutputLayerOptionsAlloc();
  if (!layers) return layers.error;
  const creo::ProError result =
      creo::ProIntf3DFileWrite(task.model(), form.format, path, configurationOf(task), what.value(), layers.value);
  creo::ProOutputLayerOptionsFree(layers.value);
  return result;
}

// Creo appends the format's own extension. A target always ends in one that the format takes for its own.
std::wstring withoutExtension(const std::wstring& target) { return target.substr(0, target.rfind(L'.')); }

Outcome refuse(Message message) {
  core::logMsgPlain(message, core::kError);
  return done;
}

}  // namespace

Outcome exportBrep(const Task& task, const BrepForm& form) {
  const auto target = namedTarget(task, form.file);
  if (!target) return done;
  const std::wstring stem = withoutExtension(*target);
  const std::wstring file = stem + std::wstring(form.file.extension);
  if (!mayBeWritten(file, form.file.extension) || !mayWrite(task, file)) return done;
  const auto supported = creo::ProOutputAssemblyConfigurationIsSupported(form.format, configurationOf(task));
  if (!supported || !supported.value) return refuse(Message::assemblyTypeUnsupported);
  Representation what;
  if (!what.fill(task, form)) return refuse(Message::brepUnsupported);
  return endExport(write(task, form, stem, what), form.failure);
}

}  // namespace actions
