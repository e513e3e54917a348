#include "headless/model/program.h"

#include <algorithm>
#include <map>

#include "headless/model/features.h"
#include "headless/model/models.h"
#include "headless/model/relations.h"
#include "headless/model/remove_feature.h"
#include "text/encoding.h"
#include "text/format.h"
#include "text/numbers.h"

namespace headless {
namespace {

constexpr std::string_view kFeatureId = "INTERNAL FEATURE ID";
constexpr std::string_view kBlanks = " \t\r";

std::string_view trimmed(std::string_view line) {
  const auto first = line.find_first_not_of(kBlanks);
  if (first == line.npos) return {};
  return line.substr(first, line.find_last_not_of(kBlanks) - first + 1);
}
bool isLine(std::string_view line, std::string_view words) { return sameName(trimmed(line), words); }
bool begins(std::string_view line, std::string_view word) {
  line = trimmed(line);
  return line.size() >= word.size() && sameName(line.substr(0, word.size()), word) &&
         (line.size() == word.size() || kBlanks.find(line[word.size()]) != kBlanks.npos);
}

// A program taken apart.
struct Program {
  ProgramText head, inputs, relations, body, tail;  // body: blocks of features and conditions
};

enum class Part { head, inputs, relations, body, massProperties, tail };

struct Reading {
  Program program;
  std::map<int, std::size_t> features;  // by id, with the line that names it
  std::size_t relationsAt = 0;          // the line of RELATIONS
  ProgramFault fault;
};

// Reads line by line; a section that is never closed is a fault of the line that opened it.
class ProgramReader {
 public:
  // whole: the text must have its end, so that one which was cut isn't taken for one whose features have gone.
  Reading read(const ProgramText& text, bool whole) {
    whole_ = whole;
    for (number_ = 1; number_ <= text.size() && !out_.fault; ++number_) take(text[number_ - 1]);
    if (out_.fault) return std::move(out_);
    if (whole && part_ == Part::head) fail(1, L"it has no INPUT and no RELATIONS");
    if (part_ == Part::inputs) fail(opened_, L"INPUT without END INPUT");
    if (part_ == Part::relations) fail(opened_, L"RELATIONS without END RELATIONS");
    if (part_ == Part::massProperties) fail(opened_, L"MASSPROP without END MASSPROP");
    if (whole && part_ == Part::body) fail(number_ - 1, L"MASSPROP is missing: the text is cut");
    endOfBody();
    return std::move(out_);
  }

 private:
  void fail(std::size_t line, std::wstring reason) {
    if (!out_.fault) out_.fault = {line, std::move(reason)};
  }
  void endOfBody() {
    if (block_ != 0) fail(block_, L"ADD without END ADD");
    if (!conditions_.empty()) fail(conditions_.back(), L"IF without END IF");
  }
  void enter(Part part) {
    part_ = part;
    opened_ = number_;
  }

  void take(const std::string& line) {
    Program& p = out_.program;
    switch (part_) {
      case Part::inputs:
        return isLine(line, "END INPUT") ? enter(Part::body) : p.inputs.push_back(line);
      case Part::relations:
        return isLine(line, "END RELATIONS") ? enter(Part::body) : p.relations.push_back(line);
      case Part::massProperties:
        p.tail.push_back(line);
        return isLine(line, "END MASSPROP") ? enter(Part::tail) : void();
      case Part::tail:
        return p.tail.push_back(line);
      case Part::head:
      case Part::body:
        break;
    }
    if (isLine(line, "INPUT") && block_ == 0) return enter(Part::inputs);
    if (isLine(line, "RELATIONS") && block_ == 0) {
      out_.relationsAt = number_;
      return enter(Part::relations);
    }
    // What a document keeps may begin with its features.
    if (part_ == Part::head && !whole_ && (begins(line, "ADD") || begins(line, "IF") || isLine(line, "MASSPROP")))
      enter(Part::body);
    if (part_ == Part::head) return p.head.push_back(line);
    if (isLine(line, "MASSPROP") && block_ == 0) {
      endOfBody();
      p.tail.push_back(line);
      return enter(Part::massProperties);
    }
    takeBody(line);
  }

  void takeBody(const std::string& line) {
    if (begins(line, "ADD")) {
      if (block_ != 0) return fail(number_, L"ADD inside ADD");
      block_ = number_;
      hasId_ = false;
    } else if (isLine(line, "END ADD")) {
      if (block_ == 0) return fail(number_, L"END ADD without ADD");
      if (!hasId_) return fail(block_, L"ADD without the id of its feature");
      block_ = 0;
    } else if (block_ != 0 && begins(line, kFeatureId)) {
      const int id = text::parseInt(trimmed(line).substr(kFeatureId.size()));
      if (!out_.features.emplace(id, number_).second && whole_)
        return fail(number_, text::format(L"the feature %d is there twice", id));
      hasId_ = true;
    } else if (block_ == 0 && begins(line, "IF")) {
      conditions_.push_back(number_);
    } else if (block_ == 0 && (isLine(line, "END IF") || isLine(line, "ENDIF"))) {
      if (conditions_.empty()) return fail(number_, L"END IF without IF");
      conditions_.pop_back();
    }
    out_.program.body.push_back(line);
  }

  bool whole_ = true;
  Reading out_;
  Part part_ = Part::head;
  std::size_t number_ = 0, opened_ = 0;
  std::size_t block_ = 0;  // the line of the ADD that is open; 0: none
  bool hasId_ = false;     // it has named its feature
  std::vector<std::size_t> conditions_;
};

ProgramText blockOf(const ModelFeature& feature) {
  ProgramText block = {feature.isComponent() ? "ADD COMPONENT" : "ADD FEATURE",
                       std::string(kFeatureId) + " " + std::to_string(feature.place.id)};
  if (const std::wstring name = featureName(feature); !name.empty()) block.push_back("NAME = " + text::toUtf8(name));
  if (const FeatureRecord* record = feature.record(); record && !record->typeName.empty())
    block.push_back("TYPE = " + record->typeName);
  block.emplace_back("END ADD");
  return block;
}

// The body with the blocks of the model's features alone: those that it lacks come last.
ProgramText presentBody(const Model& model, const ProgramText& body) {
  std::map<int, ModelFeature> missing;
  for (const ModelFeature& feature : featuresOf(model)) missing.emplace(feature.place.id, feature);
  const auto all = missing;
  ProgramText present;
  for (std::size_t i = 0; i < body.size(); ++i) {
    if (!begins(body[i], "ADD")) {
      present.push_back(body[i]);
      continue;
    }
    const auto end = std::find_if(body.begin() + static_cast<std::ptrdiff_t>(i), body.end(),
                                  [](const std::string& line) { return isLine(line, "END ADD"); });
    const auto last = std::min(static_cast<std::size_t>(end - body.begin()), body.size() - 1);
    bool isThere = true;
    for (std::size_t inside = i; inside <= last; ++inside) {
      if (!begins(body[inside], kFeatureId)) continue;
      const int id = text::parseInt(trimmed(body[inside]).substr(kFeatureId.size()));
      isThere = all.contains(id);
      missing.erase(id);
    }
    if (isThere)
      present.insert(present.end(), body.begin() + static_cast<std::ptrdiff_t>(i),
                     body.begin() + static_cast<std::ptrdiff_t>(last) + 1);
    i = last;
  }
  for (const ModelFeature& feature : featuresOf(model)) {
    if (!missing.contains(feature.place.id)) continue;
    for (std::string& line : blockOf(feature)) present.push_back(std::move(line));
  }
  return present;
}

Program emptyProgram(const Model& model) {
  Program program;
  const char* kind = model.type() == creo::ProMdlType::part ? "PART " : "ASSEMBLY ";
  program.head = {"VERSION 1", std::string("LISTING FOR ") + kind + text::toUtf8(model.name), ""};
  program.tail = {"MASSPROP", "END MASSPROP"};
  return program;
}

ProgramText written(const Model& model, const Program& program) {
  ProgramText text = program.head;
  const auto section = [&text](const char* name, const ProgramText& lines) {
    text.emplace_back(name);
    text.insert(text.end(), lines.begin(), lines.end());
    text.push_back(std::string("END ") + name);
  };
  section("INPUT", program.inputs);
  section("RELATIONS", model.document->record.relations);
  for (std::string& line : presentBody(model, program.body)) text.push_back(std::move(line));
  text.insert(text.end(), program.tail.begin(), program.tail.end());
  return text;
}

// Features that the model lacks, and relations that no regeneration could read, whatever the names stand for.
ProgramFault unfitting(const Model& model, const Reading& reading) {
  std::unordered_set<int> present;
  for (const ModelFeature& feature : featuresOf(model)) present.insert(feature.place.id);
  for (const auto& [id, line] : reading.features)
    if (!present.contains(id)) return {line, text::format(L"the model has no feature %d", id)};
  Relations relations([](std::string_view) { return std::optional<RelationValue>(std::in_place); });
  if (RelationFault fault = relations.run(reading.program.relations))
    return {reading.relationsAt + fault.line, std::move(fault.reason)};
  return {};
}

}  // namespace

HeldProgram programText(const Model& model) {
  const Reading reading = ProgramReader().read(model.document->record.program, false);
  if (reading.fault) return {{}, reading.fault};
  Program program = emptyProgram(model);
  if (!reading.program.head.empty()) program.head = reading.program.head;
  if (!reading.program.tail.empty()) program.tail = reading.program.tail;
  program.inputs = reading.program.inputs;
  program.body = reading.program.body;
  return {written(model, program), {}};
}

std::unordered_map<int, bool> programConditions(const Model& model, const RelationLookup& names) {
  std::unordered_map<int, bool> conditions;
  const ProgramText& text = model.document->record.program;
  if (text.empty()) return conditions;
  std::vector<std::optional<bool>> open;  // nothing: it isn't worked out
  for (const std::string& line : ProgramReader().read(text, false).program.body) {
    if (begins(line, "IF")) {
      const std::string_view condition = trimmed(line).substr(2);
      const Evaluated evaluated = evaluate(condition.substr(0, condition.find("/*")), names);
      open.push_back(evaluated.fault.empty() ? truth(evaluated.value) : std::nullopt);
    } else if (isLine(line, "ELSE") && !open.empty()) {
      if (open.back()) open.back() = !*open.back();
    } else if ((isLine(line, "END IF") || isLine(line, "ENDIF")) && !open.empty()) {
      open.pop_back();
    } else if (begins(line, kFeatureId) && !open.empty()) {
      const int id = text::parseInt(trimmed(line).substr(kFeatureId.size()));
      const bool isKnown = std::all_of(open.begin(), open.end(), [](const auto& entry) { return entry.has_value(); });
      if (isKnown) conditions[id] = std::all_of(open.begin(), open.end(), [](const auto& item) { return *item; });
    }
  }
  return conditions;
}

ProgramFault takeProgram(const Models& models, const Model& model, const ProgramText& text) {
  Reading reading = ProgramReader().read(text, true);
  if (reading.fault) return reading.fault;
  if (ProgramFault fault = unfitting(model, reading)) return fault;
  std::unordered_set<int> gone;
  for (const ModelFeature& feature : featuresOf(model))
    if (!reading.features.contains(feature.place.id)) gone.insert(feature.place.id);
  ModelDocument& document = *model.document;
  ModelRecord& record = document.record;
  for (const int id : gone) models.message(text::format(L"%s: its program leaves out the feature %d", model.name, id));
  const bool otherRelations = record.relations != reading.program.relations;
  if (otherRelations) {
    record.relations = reading.program.relations;
    document.relationsChanged();
  }
  if (!gone.empty()) removeFeatures(model, gone);
  // A text that says no more than the model itself isn't kept.
  ProgramText kept = text == written(model, emptyProgram(model)) ? ProgramText() : text;
  const bool otherProgram = kept != record.program;
  record.program = std::move(kept);
  if (otherRelations || otherProgram || !gone.empty()) document.touch(nullptr);
  return {};
}

}  // namespace headless
