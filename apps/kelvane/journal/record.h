// The records of a run's journal, one a line; docs/journal.md has their members.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvane {

using Record = nlohmann::ordered_json;

// What a file held.
struct Content {
  std::uint64_t size = 0;
  std::string sum;   // hexHash of its bytes
  std::string kept;  // its name among what the journal keeps; empty: not kept
  [[nodiscard]] bool isSameAs(const Content& other) const { return size == other.size && sum == other.sum; }
};
Content contentOf(std::string_view bytes);

enum class DeedKind { write, append, remove, rename, folder };

// A change of a file, as it was announced.
struct Deed {
  DeedKind kind = DeedKind::write;
  int number = 0;              // within its journal, from 1
  std::string path, to;        // as the journal writes paths (paths.h); to: of a rename
  std::optional<Content> had;  // what stood at the path, of a rename at its target; nothing: no file
  std::optional<Content> now;  // what comes there; nothing: no file, or (append) not known
  int turn = 0;                // how many boundaries lie before it
  std::string seal{};          // of one elsewhere (elsewhere.h); empty: it has none
};

// The line of a record, with its checksum and its end.
std::string sealedLine(const Record& record);
// That of a deed; and the one that tells what a file holds whose `append` is over, each with its seal if it has one.
// They are written straight, as a run has some for each model.
std::string deedLine(const Deed& deed);
std::string closedLine(const Deed& deed);
// The record of a line without its end; nothing where the line was cut or altered.
std::optional<Record> unsealed(std::string_view line);

// The deed that a record tells of; nothing for one of another kind.
std::optional<Deed> deedOf(const Record& record);

// True for the records behind which a turn begins: what stands before one stays.
bool isBoundary(std::string_view record);

// A member's text; empty where it isn't there or is no text.
std::string memberText(const Record& record, const char* member);
// A member's whole number; 0 where it isn't there or is none.
int memberNumber(const Record& record, const char* member);

}  // namespace kelvane
