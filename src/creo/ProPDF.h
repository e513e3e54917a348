// Models as PDF files: the sheets of a drawing as pages, a solid as a body that the reader can turn.
#pragma once

#include <map>

#include "creo/ProTypes.h"

namespace creo {

// Creo's numbers of the properties. What a session does with each is in docs/exports.md.
enum class ProPDFproperty : int {
  fonts = 0,           // integer, ProPDFfonts
  color = 1,           // integer, ProPDFcolor
  searchableText = 3,  // yes or no
  dotsPerInch = 4,     // integer, of shaded views
  launchViewer = 5,    // yes or no
  layers = 6,          // integer, ProPDFlayers
  parameters = 7,      // integer; 1: the drawing's parameters go along
  hyperlinks = 8,      // yes or no
  bookmarkViews = 10,  // yes or no, as the next two
  bookmarkSheets = 11,
  bookmarkNotes = 12,
  title = 13,  // text, as the next two
  author = 14,
  subject = 15,
  printing = 21,  // integer; 1: the reader may print
  penTable = 25,  // yes or no
  lineCap = 26,   // integer: 0 butt, 1 round, 2 square
  lineJoin = 27,  // integer: 0 mitre, 1 round, 2 bevel
  sheets = 29,    // integer: 0 and 1 the current sheet, 2 all
  mode = 30,      // integer, ProPDFmode
  archive = 45,   // integer; set: the file is for archives
};
// byName: a face that every reader has, of the Latin letters alone; embedded: the file holds the face; outlined: the
// same, drawn as outlines.
enum class ProPDFfonts : int { byName = 0, embedded = 1, outlined = 2 };
enum class ProPDFcolor : int { color = 0, grey = 1, black = 2 };
enum class ProPDFlayers : int { all = 0, visible = 1, none = 2 };
enum class ProPDFmode : int { drawing = 0, solid = 2 };

struct ProPDFoptions {
  std::map<ProPDFproperty, int> integers;
  std::map<ProPDFproperty, bool> booleans;
  std::map<ProPDFproperty, std::wstring> texts;
};
// Without any property, each of which has Creo's own value then; to be freed. ProInvalidType: the property is of
// another kind than the setter's; ProBadInputs: there is none of that number.
Got<ProPDFoptions> ProPDFoptionsAlloc();
ProError ProPDFoptionsIntpropertySet(ProPDFoptions& options, ProPDFproperty property, int value);
ProError ProPDFoptionsBoolpropertySet(ProPDFoptions& options, ProPDFproperty property, bool value);
ProError ProPDFoptionsStringpropertySet(ProPDFoptions& options, ProPDFproperty property, const std::wstring& value);
ProError ProPDFoptionsFree(ProPDFoptions& options);

// Writes the file. The model is displayed in a window; path: whole, with its extension. An old file is replaced once
// the new one is whole. ProNotFound: no window shows the model; ProBadInputs: the path isn't whole; ProNoLicense: a
// body that the reader can turn is asked for; ProInvalidType: pages of a model that has no sheets; ProCantWrite: the
// file, the message area says why.
ProError ProPDFExport(ProMdl model, const std::wstring& path, const ProPDFoptions& options);
// The same of a drawing alone, by a profile's file in place of options. ProInvalidType: no drawing; ProNotFound, too:
// no such profile; ProGeneralError: it can't be read, the message area says why.
ProError ProPDFWithProfileExport(ProMdl model, const std::wstring& path, const std::wstring& profile);

}  // namespace creo
