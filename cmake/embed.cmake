# Makes a C++ source of the page: cmake -DFOLDER=... -DSCRIPTS=a.js;b.js -DOUTPUT=... -P embed.cmake. Run while building.
# Style and scripts go into index.html, so that a browser has the page with one answer: the scripts become one, in the
# order given, each behind those that it imports from.
file(READ ${FOLDER}/ui.css style)
set(script "")
foreach(name IN LISTS SCRIPTS)
  file(READ ${FOLDER}/${name} text)
  string(REGEX REPLACE "\nimport [^\n]*" "" text "\n${text}")
  string(REGEX REPLACE "\nexport " "\n" text "${text}")
  string(APPEND script "${text}")
endforeach()
file(READ ${FOLDER}/index.html page)
string(REPLACE "<link rel=\"stylesheet\" href=\"ui.css\">" "<style nonce=\"@nonce@\">\n${style}</style>" page "${page}")
string(REPLACE "<script type=\"module\" src=\"ui.js\"></script>" "<script type=\"module\" nonce=\"@nonce@\">${script}</script>" page "${page}")

file(WRITE ${OUTPUT}.text "${page}")
file(READ ${OUTPUT}.text hex HEX)
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
file(WRITE ${OUTPUT} "// Made from apps/kelvane/web while building.
#include \"kelvane/ui/page.h\"

namespace kelvane::view {

std::string page() {
  static const unsigned char kBytes[] = {${bytes}};
  return {std::begin(kBytes), std::end(kBytes)};
}

}  // namespace kelvane::view
")
