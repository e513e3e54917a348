// The texts of a drawing's cells as a sheet shows them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "headless/model/model.h"
#include "headless/model/parameters.h"

namespace headless {

class Models;  // models.h

// Replaces the "&" forms of a line on a sheet (the first word that fits, case-blind):
//   &dwg_name &scale &current_sheet &total_sheets &todays_date   the drawing and the sheet
//   &model_name &type, also with ":2"                            the current model, or the drawing's second; the
//                                                                current one as the last regeneration found it
//   &NAME                                                        a parameter of the current model, else a dimension of
//                                                                that symbol ("&d12"), else the same of the drawing
//   &NAME:2                                                      one of the drawing's second model, where it has it
//   &NAME:d                                                      a parameter of the drawing
// What can't be resolved stays as it stands.
std::wstring displayedText(Models& models, const Parameters& parameters, const Model& drawing, int sheet,
                           std::wstring_view line);

// A parameter's value as a sheet shows it; nothing: the model has none of that name, or it has no value.
std::optional<std::wstring> shownParameter(const Parameters& parameters, creo::ProMdl owner, std::wstring_view name);

// A letter of a name behind "&".
bool isNamePart(wchar_t c);

// The line with its forms that could be about any model bound to the one with that number: "&model_name:2". Those that
// say already what they are about, and those of the drawing and its sheets, stay.
std::wstring boundToModel(std::wstring_view line, int number);

}  // namespace headless
