#include "language/known_tokens.h"

namespace language {

std::span<const std::wstring_view> knownTokens() {
  static constexpr std::wstring_view kTokens[] = {
      // of the run and the session
      L"@number@", L"@date@", L"@datede@", L"@dateen@", L"@dateus@", L"@dateusshort@", L"@time@", L"@timede@",
      L"@timeen@", L"@curworkdir@", L"@clipboard@", L"@pro_material_dir@", L"@pro_format_dir@",
      // of the model
      L"@mdln@", L"@filename@", L"@mdltype@", L"@regen_status@", L"@oid@", L"@genname@", L"@common@", L"@mdlpath@",
      L"@filepath@", L"@mdlpathr@", L"@workerdir:", L"@selmdlpath@", L"@selmdln@", L"@selfilename@", L"@fileversion@",
      L"@mdlno@",
      // of a drawing
      L"@sheetno@", L"@pageno@", L"@maxpage@", L"@curdrwmdln@", L"@curdrwmdltype@", L"@cursheetname@",
      L"@cursheetsize@", L"@cursheetcurmdlscale@", L"@cursheetcurmdlscaleISO@", L"@cursheetformat@",
      // of paths and of lines
      L"@project_dir@", L"@para@", L"@line@"};
  return kTokens;
}

std::span<const std::wstring_view> knownFunctions() {
  static constexpr std::wstring_view kFunctions[] = {L"sub", L"pre", L"pree", L"poste", L"posts", L"repl"};
  return kFunctions;
}

}  // namespace language
