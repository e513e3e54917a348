#include "actions/whole_model.h"

#include <algorithm>

#include "core/log.h"
#include "core/messages.h"
#include "creo/ProMdl.h"
#include "documents/predicates.h"
#include "text/format.h"

namespace actions {

using engine::Outcome;
using engine::Task;

namespace {

constexpr int kInstanceRefused = 5;

bool fitsKind(creo::ProMdlType type, const Fits& fits) {
  switch (type) {
    case creo::ProMdlType::part:
      return fits.parts;
    case creo::ProMdlType::assembly:
    case creo::ProMdlType::manufacturing:
      return fits.assemblies;
    case creo::ProMdlType::drawing:
      return fits.drawings;
    case creo::ProMdlType::format:
    case creo::ProMdlType::unused:
      break;
  }
  return false;
}

bool isThere(const Task& task, std::wstring_view attribute) {
  return attribute.ends_with(L"_0") ? !task.numbers(attribute.substr(0, attribute.size() - 1), kListSize).empty()
                                    : task.has(attribute);
}

}  // namespace

std::optional<Outcome> beginOn(const Task& task, const engine::Frame& frame, const Fits& fits) {
  if (const auto ended = engine::begin(task, frame)) return ended;
  const auto type = creo::ProMdlTypeGet(task.model());
  if (!type || !fitsKind(type.value, fits)) return engine::refused;
  if (fits.instances || documents::isInstance(task.model()) != documents::kTrue) return std::nullopt;
  core::logMsgPlain(kInstanceRefused, core::kWarning);
  return engine::refused;
}

std::optional<Outcome> beginOn(const Task& task, const engine::Frame& frame, const Fits& fits,
                               std::initializer_list<std::wstring_view> attributes) {
  if (const auto ended = beginOn(task, frame, fits)) return ended;
  if (std::any_of(attributes.begin(), attributes.end(), [&](std::wstring_view one) { return isThere(task, one); }))
    return std::nullopt;
  core::logWrite(text::format(L"The attribute '%s' is missing", *attributes.begin()), core::kError);
  return engine::done;
}

void unknownWord(std::wstring_view attribute, std::wstring_view value, std::wstring_view known) {
  core::logWrite(text::format(L"'%s' can't be '%s', but %s", attribute, value, known), core::kError);
}

}  // namespace actions
