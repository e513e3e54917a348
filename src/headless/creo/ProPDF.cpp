// Models as PDF files.
#include "creo/ProPDF.h"

#include "headless/creo/operation.h"
#include "headless/exports/export_file.h"
#include "headless/exports/sheet_pdf.h"
#include "headless/model/drawing.h"
#include "headless/pictures/drawn_views.h"
#include "headless/pictures/face.h"
#include "headless/store/faults.h"
#include "os/surroundings.h"
#include "text/format.h"

namespace creo {

using headless::Model;
using headless::onModel;
using headless::operation;
using State = headless::Session::State;

namespace {

int integer(const ProPDFoptions& options, ProPDFproperty property, int otherwise, int most) {
  const auto found = options.integers.find(property);
  return found == options.integers.end() || found->second < 0 || found->second > most ? otherwise : found->second;
}

std::wstring textOf(const ProPDFoptions& options, ProPDFproperty property) {
  const auto found = options.texts.find(property);
  return found == options.texts.end() ? std::wstring() : found->second;
}

headless::PdfForm formOf(const State& state, const ProPDFoptions& options) {
  using enum ProPDFproperty;
  headless::PdfForm form;
  form.fonts = static_cast<ProPDFfonts>(integer(options, fonts, 1, 2));
  // An archive takes no file that needs a face from elsewhere.
  if (options.integers.contains(archive) && form.fonts == ProPDFfonts::byName) form.fonts = ProPDFfonts::embedded;
  form.color = static_cast<ProPDFcolor>(integer(options, color, 0, 2));
  form.layers = static_cast<ProPDFlayers>(integer(options, layers, 1, 2));
  form.lineCap = integer(options, lineCap, 1, 2);
  form.lineJoin = integer(options, lineJoin, 1, 2);
  const auto marks = options.booleans.find(bookmarkSheets);
  form.bookmarks = marks != options.booleans.end() && marks->second;
  form.title = textOf(options, title);
  form.author = textOf(options, author);
  form.subject = textOf(options, subject);
  form.fontFile = headless::faceFile(state.options.textFolder);
  return form;
}

ProError writePages(State& state, Model& drawing, const std::wstring& path, const ProPDFoptions& options) {
  if (!headless::hasSheets(drawing.type())) return ProInvalidType;
  const int current = headless::currentSheetOf(*drawing.document);
  const bool isAll = integer(options, ProPDFproperty::sheets, 0, 2) == 2;
  const int first = isAll ? 1 : current, last = isAll ? headless::sheetCount(*drawing.document) : current;
  std::vector<headless::PdfPage> pages;
  headless::ShownModels models(state.pictureSources());
  for (int sheet = first; sheet <= last; ++sheet) {
    const headless::SheetRecord& record = *headless::sheetOf(*drawing.document, sheet);
    pages.push_back(
        {headless::sheetName(record, sheet), headless::sheetPicture(state.pictureSources(), models, drawing, sheet)});
  }
  const headless::PdfMade made = headless::sheetPdf(pages, formOf(state, options));
  if (made.fault.empty()) return headless::writeExport(state.models, path, made.bytes);
  state.showMessage(text::format(L"%s: can't be written: %s", headless::exportPath(state.models, path), made.fault));
  return ProGeneralError;
}

ProPDFmode modeOf(const ProPDFoptions& options) {
  return static_cast<ProPDFmode>(integer(options, ProPDFproperty::mode, 0, 2));
}

enum class PropertyKind { integer, yesOrNo, text };

// Nothing for a number that is no property's.
std::optional<PropertyKind> kindOf(ProPDFproperty property) {
  using enum ProPDFproperty;
  switch (property) {
    case fonts:
    case color:
    case dotsPerInch:
    case layers:
    case parameters:
    case printing:
    case lineCap:
    case lineJoin:
    case sheets:
    case mode:
    case archive:
      return PropertyKind::integer;
    case searchableText:
    case launchViewer:
    case hyperlinks:
    case bookmarkViews:
    case bookmarkSheets:
    case bookmarkNotes:
    case penTable:
      return PropertyKind::yesOrNo;
    case title:
    case author:
    case subject:
      return PropertyKind::text;
  }
  return std::nullopt;
}

template <class Value>
ProError setProperty(std::string_view name, std::map<ProPDFproperty, Value>& properties, PropertyKind kind,
                     ProPDFproperty property, const Value& value) {
  return operation(name, [&](State&) -> ProError {
    const auto known = kindOf(property);
    if (!known) return ProBadInputs;
    if (*known != kind) return ProInvalidType;
    properties[property] = value;
    return ProNoError;
  });
}

}  // namespace

Got<ProPDFoptions> ProPDFoptionsAlloc() {
  return operation("ProPDFoptionsAlloc", [](State&) -> Got<ProPDFoptions> { return ProPDFoptions{}; });
}

ProError ProPDFoptionsIntpropertySet(ProPDFoptions& options, ProPDFproperty property, int value) {
  return setProperty("ProPDFoptionsIntpropertySet", options.integers, PropertyKind::integer, property, value);
}

ProError ProPDFoptionsBoolpropertySet(ProPDFoptions& options, ProPDFproperty property, bool value) {
  return setProperty("ProPDFoptionsBoolpropertySet", options.booleans, PropertyKind::yesOrNo, property, value);
}

ProError ProPDFoptionsStringpropertySet(ProPDFoptions& options, ProPDFproperty property, const std::wstring& value) {
  return setProperty("ProPDFoptionsStringpropertySet", options.texts, PropertyKind::text, property, value);
}

ProError ProPDFoptionsFree(ProPDFoptions& options) {
  return operation("ProPDFoptionsFree", [&](State&) -> ProError {
    options = {};
    return ProNoError;
  });
}

// No open library writes a body that a reader can turn.
ProError ProPDFExport(ProMdl model, const std::wstring& path, const ProPDFoptions& options) {
  return onModel("ProPDFExport", model, [&](State& state, Model& m) -> ProError {
    if (!headless::isWholePath(path)) return ProBadInputs;
    if (!state.windows.shows(model)) return ProNotFound;
    if (modeOf(options) == ProPDFmode::solid) return ProNoLicense;
    return writePages(state, m, path, options);
  });
}

// A profile's contents are Creo's own: one that can be read stands for a drawing's pages with the usual options.
ProError ProPDFWithProfileExport(ProMdl model, const std::wstring& path, const std::wstring& profile) {
  return onModel("ProPDFWithProfileExport", model, [&](State& state, Model& m) -> ProError {
    if (!headless::isWholePath(path)) return ProBadInputs;
    if (!headless::hasSheets(m.type())) return ProInvalidType;
    if (!state.windows.shows(model)) return ProNotFound;
    const std::wstring file = headless::exportPath(state.models, profile);
    if (!os::files().exists(file) || os::files().isFolder(file)) return ProNotFound;
    if (const auto read = os::files().read(file); !read) {
      state.showMessage(headless::cantRead(file, read.error));
      return ProGeneralError;
    }
    ProPDFoptions options;
    options.integers[ProPDFproperty::sheets] = 2;
    return writePages(state, m, path, options);
  });
}

}  // namespace creo
