# Makes a C++ source of files: cmake -DOUTPUT=... -DINPUTS=a;b -P embed.cmake. Run while building.
set(types_html "text/html; charset=utf-8")
set(types_js "text/javascript; charset=utf-8")
set(types_css "text/css; charset=utf-8")
set(arrays "")
set(rows "")
foreach(input IN LISTS INPUTS)
  get_filename_component(name ${input} NAME)
  get_filename_component(extension ${input} LAST_EXT)
  string(SUBSTRING ${extension} 1 -1 extension)
  string(MAKE_C_IDENTIFIER ${name} identifier)
  file(READ ${input} hex HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
  string(APPEND arrays "const unsigned char k_${identifier}[] = {${bytes}};\n")
  string(APPEND rows "      {\"${name}\", \"${types_${extension}}\", bytes(k_${identifier})},\n")
endforeach()
file(WRITE ${OUTPUT} "// Made from apps/kelvane/web while building.
#include \"kelvane/ui/web_files.h\"

namespace kelvane::view {
namespace {

${arrays}
template <class Array>
std::string bytes(const Array& array) {
  return {std::begin(array), std::end(array)};
}

}  // namespace

std::vector<Served> webFiles() {
  return {
${rows}  };
}

}  // namespace kelvane::view
")
