// Inside this folder only: what writing and reading files of other systems share.
#pragma once

#include <BRepBuilderAPI_Copy.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRep_Builder.hxx>
#include <TDF_Label.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS_Compound.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

#include "headless/geometry/built_body.h"
#include "headless/geometry/library_failure.h"
#include "headless/geometry/shapes.h"

namespace headless::geometry {

// A document of the library, closed when it goes.
class ExchangeDocument {
 public:
  ExchangeDocument();
  ~ExchangeDocument();
  ExchangeDocument(const ExchangeDocument&) = delete;
  ExchangeDocument& operator=(const ExchangeDocument&) = delete;
  [[nodiscard]] Handle(TDocStd_Document) operator->() const { return document_; }
  // As the library's functions want it.
  operator Handle(TDocStd_Document) & () const { return document_; }

 private:
  mutable Handle(TDocStd_Document) document_;
};

// Its settings exist, its messages go nowhere, its lengths are mm.
void prepareLibrary();

void setName(const TDF_Label& label, const std::wstring& name);
// Empty for none.
std::wstring nameOf(const TDF_Label& label);

TopoDS_Shape scaled(const TopoDS_Shape& shape, double factor);
creo::ProTransform inMillimetres(creo::ProTransform place, double unit);

}  // namespace headless::geometry
