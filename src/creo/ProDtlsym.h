// Symbols on drawings: definitions that come from files, placed symbols, and the groups that they show. ProNotFound:
// the symbol, definition or group has gone.
#pragma once

#include "creo/ProDtlattach.h"

namespace creo {

// A group of a definition, in another group or in none.
struct ProDtlsymgroup {
  ProDtlsymdef definition;
  int id = 0;
};
// How a symbol is attached as a whole. free: with no leader.
enum class ProDtlsymattach : int { free = 0 };

// What a placed symbol consists of; a modification leaves whatever isn't here as it is, such as its texts. A record
// that wasn't allocated has no drawing: every setter gives ProBadInputs for it.
struct ProDtlsyminstdata {
  ProMdl drawing;
  ProDtlsymdef definition;  // id 0: none, or the drawing lacks it
  ProSymbolGroups groupOption = ProSymbolGroups::interactive;
  std::vector<ProDtlsymgroup> groups;  // those that show, for the custom option
  ProDtlattach attachment;
};

// ---- definitions

// The newest version of a symbol file.
constexpr int kNewestVersion = -1;
// Brings a definition of that name from its file into the drawing. folder: the one that is looked in, which counts from
// the folder of the option pro_symbol_dir, or from the working folder where it isn't set; empty or "@pro_symbol_dir@"
// stands for the folders of the option, then the working folder. update: one of that name, case-blind, that is there
// already becomes as the file says and keeps its id and its placed symbols; else ProExists, and nothing is brought.
// ProNotFound: no such file, or a version other than the newest; ProGeneralError: unreadable, the message area says
// file, line and reason; ProBadInputs: no name of a file.
Got<ProDtlsymdef> ProDrawingDtlsymdefRetrieve(ProMdl drawing, const std::wstring& folder, const std::wstring& name,
                                              int version, bool update);

// ---- placed symbols

// The symbols of a sheet. ProBadInputs: no such sheet.
ProError ProDrawingDtlsyminstVisit(ProMdl drawing, int sheet, Visitor<ProDtlsyminst> visitor);
Got<ProDtlsyminstdata> ProDtlsyminstDataGet(const ProDtlsyminst& symbol);

// An empty record for a symbol of the drawing.
Got<ProDtlsyminstdata> ProDtlsyminstdataAlloc(ProMdl drawing);
// ProBadInputs: a definition of another drawing, or none.
ProError ProDtlsyminstdataDefSet(ProDtlsyminstdata& data, const ProDtlsymdef& definition);
// groups: for the custom option; ProBadInputs: one of another definition. Without this a new symbol asks the user for
// its groups.
ProError ProDtlsyminstdataGroupoptionsSet(ProDtlsyminstdata& data, ProSymbolGroups option,
                                          const std::vector<ProDtlsymgroup>& groups);
// ProBadInputs: any other than free, as a place of the sheet is all that the record has.
ProError ProDtlsyminstdataAttachtypeSet(ProDtlsyminstdata& data, ProDtlsymattach type);
// ProBadInputs: an attachment without a type.
ProError ProDtlsyminstdataAttachmentSet(ProDtlsyminstdata& data, const ProDtlattach& attachment);

// A symbol on the sheet of the view that it hangs on, else on the current one; it isn't seen before it is shown.
// ProBadInputs: a record without definition or attachment; ProNotFound: no such view; ProGeneralError: the drawing is
// read-only.
Got<ProDtlsyminst> ProDtlsyminstCreate(const ProDtlsyminstdata& data);
// Its sheet shows it from now on, also after a regeneration.
ProError ProDtlsyminstShow(const ProDtlsyminst& symbol);
// The same codes as for a new one. ProCantWrite, here and below: the symbol may only be read.
ProError ProDtlsyminstModify(const ProDtlsyminst& symbol, const ProDtlsyminstdata& data);
ProError ProDtlsyminstDelete(const ProDtlsyminst& symbol);

// ---- groups

// All groups of the symbol's definition, each before those inside it. ProNotFound: it has none.
Got<std::vector<ProDtlsymgroup>> ProDtlsyminstSymgroupsCollect(const ProDtlsyminst& symbol);
Got<std::wstring> ProDtlsymgroupNameGet(const ProDtlsymgroup& group);
// The group around it. ProNotFound: there is none.
Got<ProDtlsymgroup> ProDtlsymgroupParentGet(const ProDtlsymgroup& group);

}  // namespace creo
