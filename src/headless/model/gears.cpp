#include "headless/model/gears.h"

#include "headless/model/measures.h"
#include "headless/model/placed.h"
#include "text/encoding.h"

namespace headless {
namespace {

double positive(Measurer& measurer, const Measure& measure, std::string_view what) {
  const double value = measurer.number(measure, what);
  if (value > 0) return value;
  throw MeasureFault{L"its " + text::fromUtf8(what) + L" must be over 0"};
}

}  // namespace

std::vector<PartGear> gearsOf(const Model& part) {
  std::vector<PartGear> gears;
  Measurer measurer(part);
  int number = 0;
  for (const GearRecord& record : part.document->solid().gears) {
    ++number;
    if (!hasGeometry(part, record.feature)) continue;
    try {
      const geometry::Gear teeth{.place = measurer.placement(record.placement.get()),
                                 .tip = positive(measurer, record.tipDiameter, "tipDiameter"),
                                 .pitch = positive(measurer, record.pitchDiameter, "pitchDiameter"),
                                 .root = positive(measurer, record.rootDiameter, "rootDiameter"),
                                 .length = positive(measurer, record.length, "length")};
      if (teeth.tip == teeth.root) throw MeasureFault{L"its tip is as wide as its root"};
      gears.push_back({record.feature, teeth});
    } catch (const MeasureFault& fault) {
      throw MeasureFault{L"gear " + std::to_wstring(number) + L": " + fault.reason, record.feature};
    }
  }
  return gears;
}

}  // namespace headless
