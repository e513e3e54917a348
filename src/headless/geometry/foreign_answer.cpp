#include "headless/geometry/foreign_answer.h"

#include <new>

#include "headless/geometry/foreign_body.h"
#include "headless/geometry/foreign_shape.h"
#include "headless/geometry/foreign_tree.h"
#include "headless/geometry/foreign_wire.h"
#include "headless/geometry/library_failure.h"
#include "headless/geometry/seen_lines.h"
#include "os/helper.h"
#include "text/encoding.h"

namespace headless::geometry {
namespace {

ExchangeRead fileOf(const ForeignRequest& request) {
  const ExchangeDocument document;
  const Loaded loaded =
      request.format == ExchangeFormat::step ? loadStep(request.bytes, document) : loadIges(request.path, document);
  return foreignTree(document, loaded, request.format, request.as);
}

ForeignBody bodyOf(const ForeignRequest& request) {
  Loaded loaded;
  const TopoDS_Shape shape = loadShape(request.bytes, loaded);
  ForeignBodies bodies(loaded.resolution);
  ForeignBody body;
  if (!shape.IsNull()) body.shape = bodies.take(shape);
  if (body.shape.IsNull()) throw ShapeFault{L"the file holds no body"};
  body.warnings = std::move(loaded.warnings);
  for (std::wstring& warning : bodies.warnings()) body.warnings.push_back(std::move(warning));
  return body;
}

// What keeps it from being done is the answer's fault.
template <class Said, class Work>
std::string said(Work work) {
  Said answer;
  try {
    guarded([&] { answer = work(); });
    return written(answer);
  } catch (const ShapeFault& fault) {
    answer.fault = fault.reason;
  } catch (const std::bad_alloc&) {
    answer.fault = L"reading it takes more memory than a file of its size should";
  } catch (const std::exception& failure) {
    answer.fault = L"it can't be read: " + text::fromUtf8(failure.what());
  }
  Said faulty;
  faulty.fault = std::move(answer.fault);
  return written(faulty);
}

std::string viewOf(std::string_view wire) {
  Seen seen;
  try {
    guarded([&] {
      const ViewRequest request = readView(wire);
      os::limitThisProcess(request.memory, std::chrono::seconds(request.processor));
      seen = seenLines(request.sight, request.by);
    });
  } catch (const std::bad_alloc&) {
    seen.reason = L"it takes too much memory";
  } catch (const std::exception& failure) {
    seen.reason = text::fromUtf8(failure.what());
    if (seen.reason.empty()) seen.reason = L"the library fails";
  }
  return written(seen);
}

}  // namespace

std::string answerForeign(std::string_view wire) {
  if (jobOf(wire) == ForeignJob::view) return viewOf(wire);
  const ForeignRequest request = readRequest(wire);
  os::limitThisProcess(request.memory, std::chrono::seconds(request.processor));
  prepareLibrary();
  if (request.job == ForeignJob::file) return said<ExchangeRead>([&] { return fileOf(request); });
  return said<ForeignBody>([&] { return bodyOf(request); });
}

}  // namespace headless::geometry
