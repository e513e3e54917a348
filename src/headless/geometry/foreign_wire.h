// Inside this folder only: what the program and kelvane-import tell one another: a line of JSON, and behind it the
// bytes of files and bodies as they are.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "headless/geometry/exchange.h"
#include "headless/geometry/sight.h"

namespace headless::geometry {

struct ForeignBody;

enum class ForeignJob { file, body, view };
// Of any request.
ForeignJob jobOf(std::string_view wire);

struct ForeignRequest {
  ForeignJob job = ForeignJob::body;
  ExchangeFormat format = ExchangeFormat::step;
  ImportAs as = ImportAs::part;
  std::string path;             // of an IGES file
  std::uint64_t memory = 0;     // bytes
  std::int64_t processor = 60;  // seconds
  std::string_view bytes;       // of a STEP file; they outlive the request
};
std::string written(const ForeignRequest& request);
ForeignRequest readRequest(std::string_view wire);

// Bodies of the tree stand as texts.
std::string written(const ExchangeRead& read);
std::string written(const ForeignBody& body);
// These throw std::exception for what no kelvane-import writes.
ExchangeRead readTree(std::string_view wire);
ForeignBody readBody(std::string_view wire);

// ---- views

struct ViewRequest {
  SeenBy by = SeenBy::exactEdges;
  std::uint64_t memory = 0;     // bytes
  std::int64_t processor = 60;  // seconds
  Sight sight;
};
// Bodies as they go over, so that those of several requests are written once.
using WrittenBodies = std::unordered_map<const Body*, std::string>;
// A body that stands in several places goes over once.
std::string written(const ViewRequest& request, WrittenBodies& known);
ViewRequest readView(std::string_view wire);
std::string written(const Seen& seen);
// std::exception for what no kelvane-import writes. All of its curves can be drawn.
Seen readSeen(std::string_view wire);

}  // namespace headless::geometry
