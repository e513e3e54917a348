#include "headless/geometry/foreign_load.h"

#include <IGESCAFControl_Reader.hxx>
#include <IGESData_IGESModel.hxx>
#include <Interface_Check.hxx>
#include <Interface_CheckIterator.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPConstruct_ExternRefs.hxx>
#include <StepAP214_AppliedExternalIdentificationAssignment.hxx>
#include <StepBasic_DocumentFile.hxx>
#include <StepBasic_ExternalSource.hxx>
#include <StepBasic_SourceItem.hxx>
#include <StepData_SelectMember.hxx>
#include <StepGeom_CartesianPoint.hxx>
#include <TColStd_SequenceOfAsciiString.hxx>
#include <TCollection_HAsciiString.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>
#include <algorithm>
#include <cmath>
#include <sstream>

#include "headless/geometry/foreign_body.h"
#include "text/format.h"

namespace headless::geometry {
namespace {

// The length in mm of a unit as STEP files call it; 1 for one that isn't known.
double stepUnit(STEPControl_Reader& reader) {
  TColStd_SequenceOfAsciiString lengths, angles, solidAngles;
  reader.FileUnits(lengths, angles, solidAngles);
  if (lengths.IsEmpty()) return 1;
  TCollection_AsciiString name = lengths.First();
  name.LowerCase();
  constexpr std::pair<std::string_view, double> kUnits[] = {
      {"millimetre", 1}, {"inch", 25.4},        {"centimetre", 10}, {"metre", 1000},   {"meter", 1000},
      {"foot", 304.8},   {"micrometre", 0.001}, {"kilometre", 1e6}, {"millimeter", 1}, {"centimeter", 10}};
  for (const auto& [known, length] : kUnits)
    if (name == known.data()) return length;
  return 1;
}

double igesUnit(const Handle(Interface_InterfaceModel) & model) {
  const auto iges = Handle(IGESData_IGESModel)::DownCast(model);
  if (iges.IsNull()) return 1;
  constexpr std::pair<int, double> kUnits[] = {{1, 25.4}, {4, 304.8}, {6, 1000}, {7, 1e6}, {9, 0.001}, {10, 10}};
  for (const auto& [flag, length] : kUnits)
    if (iges->GlobalSection().UnitFlag() == flag) return length;
  return 1;
}

// Entities that fail a check of the library. Its own list of them is empty where the check knows no model.
int failures(const Interface_CheckIterator& checks) {
  int count = 0;
  for (checks.Start(); checks.More(); checks.Next()) count += checks.Value()->HasFailed() ? 1 : 0;
  return count;
}
void warn(Loaded& loaded, int count, const wchar_t* check) {
  if (count > 0)
    loaded.warnings.push_back(text::format(
        L"%d %s the %s", count, std::wstring(count == 1 ? L"entity fails" : L"entities fail"), std::wstring(check)));
}
void check(const Handle(XSControl_WorkSession) & session, Loaded& loaded) {
  warn(loaded, failures(session->ModelCheckList()), L"load check");
}
void checkTransfer(const Handle(XSControl_WorkSession) & session, Loaded& loaded) {
  warn(loaded, failures(session->TransferReader()->LastCheckList()), L"check of their conversion");
}

// The library doesn't end on coordinates that are no numbers, or larger than can be squared.
void refuseFarPoints(const Handle(Interface_InterfaceModel) & model, double unit) {
  for (int i = 1; i <= model->NbEntities(); ++i) {
    const auto point = Handle(StepGeom_CartesianPoint)::DownCast(model->Value(i));
    if (point.IsNull()) continue;
    // Points on surfaces have two; the library's array of all of them has room for no third one then.
    for (int axis = 1; axis <= std::min(point->NbCoordinates(), 3); ++axis) {
      if (!(std::abs(point->CoordinatesValue(axis)) * unit < kFarthest))
        throw ShapeFault{L"a point of it lies farther than any part reaches, or nowhere"};
    }
  }
}

// Takes the names of other files from an entity.
void forgetFiles(const Handle(Standard_Transient) & entity) {
  using Identified = StepAP214_AppliedExternalIdentificationAssignment;
  const Handle(TCollection_HAsciiString) none = new TCollection_HAsciiString("");
  if (const auto file = Handle(StepBasic_DocumentFile)::DownCast(entity); !file.IsNull()) file->SetId(none);
  const auto identified = Handle(Identified)::DownCast(entity);
  if (identified.IsNull()) return;
  identified->SetAssignedId(none);
  if (identified->Source().IsNull()) return;
  const auto source = Handle(StepData_SelectMember)::DownCast(identified->Source()->SourceId().Value());
  if (!source.IsNull()) source->SetString("");
}

// The library would read the files that a file names, wherever on the machine they lie. Without their names it takes
// what the file itself holds.
void leaveOtherFilesOut(const Handle(XSControl_WorkSession) & session, Loaded& loaded) {
  STEPConstruct_ExternRefs others(session);
  others.LoadExternRefs();
  const int count = others.NbExternRefs();
  if (count == 0) return;
  const Handle(Interface_InterfaceModel)& model = session->Model();
  for (int i = 1; i <= model->NbEntities(); ++i) forgetFiles(model->Value(i));
  for (int i = 1; i <= count; ++i)
    if (const char* const left = others.FileName(i); left && *left != '\0')
      throw ShapeFault{L"it names other files, and only what a file itself holds is read"};
  const std::wstring what = count == 1 ? L"other file that it names isn't" : L"other files that it names aren't";
  loaded.warnings.push_back(text::format(L"%d %s read", count, what));
}

Loaded openStep(STEPControl_Reader& reader, std::string_view bytes) {
  std::istringstream stream{std::string(bytes)};
  if (reader.ReadStream("model", stream) != IFSelect_RetDone) throw ShapeFault{L"the file is no STEP file"};
  Loaded loaded;
  loaded.unit = stepUnit(reader);
  refuseFarPoints(reader.Model(), loaded.unit);
  check(reader.WS(), loaded);
  leaveOtherFilesOut(reader.WS(), loaded);
  return loaded;
}

}  // namespace

Loaded loadStep(std::string_view bytes, const ExchangeDocument& document) {
  STEPCAFControl_Reader reader;
  Loaded loaded = openStep(reader.ChangeReader(), bytes);
  if (!reader.Transfer(document)) throw ShapeFault{L"the file holds no model"};
  checkTransfer(reader.Reader().WS(), loaded);
  return loaded;
}

Loaded loadIges(const std::string& path, const ExchangeDocument& document) {
  IGESCAFControl_Reader reader;
  if (reader.ReadFile(path.c_str()) != IFSelect_RetDone) throw ShapeFault{L"the file is no IGES file"};
  Loaded loaded;
  loaded.unit = igesUnit(reader.Model());
  if (const auto model = Handle(IGESData_IGESModel)::DownCast(reader.Model()); !model.IsNull())
    loaded.resolution = model->GlobalSection().Resolution() * loaded.unit;
  check(reader.WS(), loaded);
  if (!reader.Transfer(document)) throw ShapeFault{L"the file holds no model"};
  checkTransfer(reader.WS(), loaded);
  return loaded;
}

TopoDS_Shape loadShape(std::string_view bytes, Loaded& loaded) {
  STEPControl_Reader reader;
  loaded = openStep(reader, bytes);
  reader.TransferRoots();
  checkTransfer(reader.WS(), loaded);
  return reader.OneShape();
}

}  // namespace headless::geometry
