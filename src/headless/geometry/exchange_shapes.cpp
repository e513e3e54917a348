#include "headless/geometry/exchange_shapes.h"

#include <IGESControl_Controller.hxx>
#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Application.hxx>
#include <UnitsMethods_LengthUnit.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_DocumentTool.hxx>

#include "text/encoding.h"

namespace headless::geometry {

ExchangeDocument::ExchangeDocument() {
  XCAFApp_Application::GetApplication()->NewDocument("BinXCAF", document_);
  XCAFDoc_DocumentTool::SetLengthUnit(document_, 1, UnitsMethods_LengthUnit_Millimeter);
}

ExchangeDocument::~ExchangeDocument() {
  try {
    XCAFApp_Application::GetApplication()->Close(document_);
  } catch (const Standard_Failure&) {
    // It is gone already.
  }
}

void prepareLibrary() {
  STEPCAFControl_Controller::Init();
  IGESControl_Controller::Init();
  Message::DefaultMessenger()->ChangePrinters().Clear();  // the program's output is its own
  Interface_Static::SetCVal("xstep.cascade.unit", "MM");
}

void setName(const TDF_Label& label, const std::wstring& name) {
  TDataStd_Name::Set(label, TCollection_ExtendedString(text::toUtf8(name).c_str(), true));
}

std::wstring nameOf(const TDF_Label& label) {
  Handle(TDataStd_Name) name;
  if (!label.FindAttribute(TDataStd_Name::GetID(), name)) return {};
  const TCollection_ExtendedString& present = name->Get();
  std::string bytes(static_cast<std::size_t>(present.LengthOfCString()) + 1, '\0');
  Standard_PCharacter into = bytes.data();
  bytes.resize(static_cast<std::size_t>(present.ToUTF8CString(into)));
  return text::fromUtf8(bytes);
}

TopoDS_Shape scaled(const TopoDS_Shape& shape, double factor) {
  gp_Trsf larger;
  larger.SetScaleFactor(factor);
  return BRepBuilderAPI_Transform(shape, larger, true).Shape();
}

creo::ProTransform inMillimetres(creo::ProTransform place, double unit) {
  place.origin = {place.origin.x * unit, place.origin.y * unit, place.origin.z * unit};
  return place;
}

}  // namespace headless::geometry
