#include "sweep/findings.h"

#include <fstream>
#include <iomanip>
#include <map>
#include <ostream>
#include <set>
#include <sstream>
#include <stdexcept>

#include "sweep/silences.h"

namespace sweep {
namespace {

std::string oneField(std::string text) {
  for (char& c : text)
    if (c == '\t' || c == '\n' || c == '\r') c = ' ';
  return text;
}

std::vector<std::string> fieldsOf(const std::string& line) {
  std::vector<std::string> fields(1);
  for (const char c : line) {
    if (c == '\t')
      fields.emplace_back();
    else
      fields.back() += c;
  }
  return fields;
}

bool isFault(Verdict verdict) {
  return verdict != Verdict::same && verdict != Verdict::told && verdict != Verdict::warned;
}

constexpr int kTold = kVerdicts;  // what has its reason
using Counts = std::array<int, kVerdicts + 1>;

void tellCounts(std::ostream& out, const std::string& name, const Counts& counts) {
  int all = 0;
  for (const int count : counts) all += count;
  out << std::left << std::setw(16) << name << std::right << std::setw(7) << all << " tried";
  for (int i = 0; i < kVerdicts; ++i)
    if (counts[static_cast<std::size_t>(i)] > 0)
      out << ", " << counts[static_cast<std::size_t>(i)] << ' ' << wordOf(static_cast<Verdict>(i));
  if (counts[kTold] > 0) out << ", " << counts[kTold] << " with a reason";
  out << '\n';
}

// What stands before the codes and what came of them; failures that have it in common are one line.
std::string headOf(const Finding& finding, const std::string& caller, const Silence* reason) {
  const std::string& action = finding.place.action;
  return std::string(wordOf(finding.judgement.verdict)) + (reason ? " with a reason" : "") + ": " +
         (action.empty() ? "no action" : action) + ": " + finding.place.operation + " in " +
         (caller.empty() ? "?" : caller);
}
struct Group {
  std::set<std::string> lists;
  std::set<int> codes;
  std::string detail;  // of the first
  int failures = 0;

  void add(const Finding& finding) {
    if (failures++ == 0) detail = finding.judgement.detail;
    lists.insert(finding.list);
    codes.insert(finding.code);
  }
  void tell(std::ostream& out, const std::string& head) const {
    out << head << " gives";
    for (const int code : codes) out << ' ' << code;
    out << " (" << failures << " in";
    for (const std::string& list : lists) out << ' ' << list;
    out << "): " << detail << '\n';
  }
};

}  // namespace

void write(std::ostream& file, const Finding& finding) {
  file << finding.list << '\t' << oneField(finding.place.action) << '\t' << finding.place.operation;
  for (const std::uintptr_t frame : finding.place.frames) file << '\t' << frame;
  file << '\t' << finding.code << '\t' << static_cast<int>(finding.judgement.verdict) << '\t'
       << oneField(finding.judgement.detail) << std::endl;
}

std::vector<Finding> findingsOf(const std::string& file) {
  std::vector<Finding> all;
  std::ifstream lines(file);
  for (std::string line; std::getline(lines, line);) {
    const std::vector<std::string> fields = fieldsOf(line);
    if (fields.size() != kFrames + 6) throw std::runtime_error(file + ": a line isn't whole");
    Finding finding{fields[0], {fields[1], fields[2]}, std::stoi(fields[kFrames + 3]), {}};
    for (std::size_t i = 0; i < kFrames; ++i) finding.place.frames[i] = std::stoull(fields[i + 3]);
    finding.judgement = {static_cast<Verdict>(std::stoi(fields[kFrames + 4])), fields[kFrames + 5]};
    all.push_back(std::move(finding));
  }
  return all;
}

int tell(std::ostream& out, const std::vector<Finding>& findings, const Report& report) {
  std::map<std::string, Counts> counts;
  std::vector<const Finding*> shown;
  std::vector<Place> places;
  for (const Finding& finding : findings) {
    ++counts[finding.list][static_cast<std::size_t>(finding.judgement.verdict)];
    if (!report.all && !isFault(finding.judgement.verdict)) continue;
    shown.push_back(&finding);
    places.push_back(finding.place);
  }
  const std::vector<std::string> callers = callersOf(places);
  std::vector<Silence> rows = silences();
  std::map<std::string, Group> groups;
  int faults = 0;
  for (std::size_t i = 0; i < shown.size(); ++i) {
    const Finding& finding = *shown[i];
    const Verdict verdict = finding.judgement.verdict;
    Silence* const reason = silenceOf(rows, finding, callers[i]);
    if (reason) {
      ++reason->uses;
      --counts[finding.list][static_cast<std::size_t>(verdict)];
      ++counts[finding.list][kTold];
    }
    if (isFault(verdict) && !reason) ++faults;
    if (report.all || !reason) groups[headOf(finding, callers[i], reason)].add(finding);
  }
  for (const auto& [head, group] : groups) group.tell(out, head);
  for (const Silence& row : rows) {
    if (!report.complete || row.uses > 0) continue;
    ++faults;
    out << "silences.txt: nothing meets the row " << row.action << " | " << row.operation << " | " << row.code << " | "
        << row.caller << '\n';
  }
  Counts whole{};
  for (const auto& [list, numbers] : counts) {
    tellCounts(out, list, numbers);
    for (std::size_t i = 0; i < numbers.size(); ++i) whole[i] += numbers[i];
  }
  tellCounts(out, "all", whole);
  out << report.places << " places, " << report.failures << " failures, " << faults << " faults\n";
  return faults;
}

}  // namespace sweep
