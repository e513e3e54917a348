// Solids in the files of other systems: STEP and IGES, written from and read into a tree of parts and assemblies.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "creo/ProTransform.h"
#include "headless/geometry/body.h"

namespace headless::geometry {

enum class ExchangeFormat { step, iges };

using Rgb = std::array<double, 3>;  // red, green, blue, each 0 to 1

struct ExchangeNode;
using ExchangeNodePtr = std::shared_ptr<const ExchangeNode>;

// Where a part or an assembly stands in the assembly that holds it.
struct ExchangeMember {
  ExchangeNodePtr node;
  creo::ProTransform place;  // in the holding assembly's coordinates and unit
};
// A part has a body, an assembly has members. One that several members share is one product of the file.
struct ExchangeNode {
  std::wstring name;
  double unit = 1;  // the length of its unit in mm
  BodyPtr body;
  std::string step;  // in place of the body, of a part that was read: the same as the text of a STEP file, in mm
  std::vector<ExchangeMember> members;
  std::optional<Rgb> color;
  std::vector<std::pair<int, Rgb>> faceColors;  // of a part's faces, in the order in which faces() gives them, from 1
};

// How a tree becomes a file.
struct ExchangeForm {
  ExchangeFormat format = ExchangeFormat::step;
  bool flat = false;                                        // every part stands where it is, without assemblies
  bool ap242 = false;                                       // STEP: AP242 in place of AP214
  bool quilts = false;                                      // beside solids; a STEP file has them always
  bool solids = true, surfaces = false, wireframe = false;  // IGES: solids hold their surfaces; edges come beside
};
// fault: why there are no bytes; empty for none.
struct ExchangeBytes {
  std::string bytes;
  std::wstring fault;
};
// The file's unit is the root's, where the format has it, else mm. Nodes without a body and without members are left
// out.
ExchangeBytes writeExchange(const ExchangeNode& root, const ExchangeForm& form);

// What becomes of a file: one part with all its bodies, or its structure with a part for each product.
enum class ImportAs { part, assembly };
// What a file holds. Bodies and places are in mm.
struct ExchangeRead {
  ExchangeNodePtr root;  // null with a fault
  double unit = 1;       // the length of the file's own unit in mm
  std::wstring fault;
  std::vector<std::wstring> warnings;  // what of it is doubtful: "2 faces fail the shape check"
};
// path: of the system's form. Several products that nothing holds together stand in a root without name. Faces that
// close around a room become a solid, others a quilt. The file is read apart from this process, and what doesn't hold a
// room is refused.
ExchangeRead readExchange(const std::wstring& path, ExchangeFormat format, ImportAs as);

// A body, one number of which is `unit` mm, as the text of a STEP file. fault as above.
ExchangeBytes stepText(const Body& body, double unit);

}  // namespace headless::geometry
