#include "headless/store/table_file.h"

#include <algorithm>
#include <cmath>

#include "headless/store/bare_record.h"
#include "headless/store/tables_drawing.h"

namespace headless {
namespace {

bool areMeasures(const std::vector<double>& measures) {
  return std::all_of(measures.begin(), measures.end(),
                     [](double measure) { return std::isfinite(measure) && measure > 0; });
}

}  // namespace

JsonFault readTable(std::string_view source, std::string name, TableRecord& into) {
  Json tree;
  if (JsonFault fault = parseJson(source, tree)) return fault;
  if (!tree.is(JsonKind::object)) return {1, L"a table is an object"};
  nameRecord(tree, std::move(name), {"segments", "fromFormat", "erased"});
  Reader in(source);
  readValue(into, tree, in);
  if (!in.failed() && !(areMeasures(into.columns) && areMeasures(into.rows)))
    in.fail(tree, L"widths of columns and heights of rows are above 0");
  return in.fault();
}

}  // namespace headless
