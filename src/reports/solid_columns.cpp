// Values of the model report that parts and assemblies have: accuracy, units, sections, representations, regeneration.
#include "core/log.h"
#include "creo/ProModelitem.h"
#include "creo/ProNotify.h"
#include "creo/ProSimprep.h"
#include "creo/ProSolid.h"
#include "creo/ProState.h"
#include "creo/ProUnitsystem.h"
#include "reports/file_name.h"
#include "reports/model_facts.h"
#include "text/format.h"

namespace reports {

std::wstring accuracy(const ModelFacts& facts) {
  const auto accuracy = creo::ProSolidAccuracyGet(facts.model);
  if (!accuracy) return {};
  const bool isAbsolute = accuracy.value.kind == creo::ProAccuracyKind::absolute;
  return text::format(isAbsolute ? L"abs: %f" : L"rel: %f", accuracy.value.value);
}

// A model without a class of the ISO tables follows ANSI.
std::wstring tolerance(const ModelFacts& facts) {
  const auto modelclass = creo::ProSolidModelclassGet(facts.model);
  if (!modelclass && modelclass.error != creo::ProNotFound) return {};
  switch (modelclass ? modelclass.value : creo::ProToleranceClass::none) {
    case creo::ProToleranceClass::fine:
      return L"DIN/ISO - FINE";
    case creo::ProToleranceClass::medium:
      return L"DIN/ISO - MEDIUM";
    case creo::ProToleranceClass::coarse:
      return L"DIN/ISO - COARSE";
    case creo::ProToleranceClass::veryCoarse:
      return L"DIN/ISO - VERY_COARSE";
    case creo::ProToleranceClass::none:
      break;
  }
  return L"ANSI";
}

// A site's own system has its units behind the name.
std::wstring unitSystem(const ModelFacts& facts) {
  using enum creo::ProUnitType;
  const auto name = creo::ProMdlPrincipalunitsystemGet(facts.model);
  if (!name) return {};
  const creo::ProUnitsystem system{facts.model, name.value};
  const auto isStandard = creo::ProUnitsystemIsStandard(system);
  if (!isStandard || isStandard.value) return name.value;
  std::wstring units;
  for (const creo::ProUnitType type : {length, mass, time, temperature})
    units += (type == length ? L"" : L"-") + creo::ProUnitsystemUnitGet(system, type).value;
  return name.value + L" (" + units + L")";
}

std::wstring crossSections(const ModelFacts& facts) {
  std::wstring lines;
  creo::ProSolidXsecVisit(facts.model, [&lines](const creo::ProModelitem& section) {
    const auto data = creo::ProXsecDataGet(section);
    if (!data) return creo::ProNoError;
    std::wstring line = creo::ProModelitemNameGet(section).value + L" - ";
    line += data.value.type == creo::ProXsecType::offset ? L"offset" : L"planar";
    switch (data.value.objects) {
      case creo::ProXsecObjects::model:
        line += L"model";
        break;
      case creo::ProXsecObjects::quilts:
        line += L"quilts";
        break;
      case creo::ProXsecObjects::modelAndQuilts:
        line += L"model and quilts";
        break;
    }
    appendLine(lines, line);
    return creo::ProNoError;
  });
  return lines;
}

std::wstring generic(const ModelFacts& facts) {
  const std::wstring name = genericName(facts.model);
  return name.empty() || !facts.data ? std::wstring() : name + L"." + facts.data.value.type;
}

std::wstring simplifiedReps(const ModelFacts& facts) {
  std::wstring lines;
  creo::ProSolidSimprepVisit(facts.model, [&lines](const creo::ProModelitem& rep) {
    const auto data = creo::ProSimprepdataGet(rep);
    appendLine(lines, data ? data.value.name : creo::ProModelitemNameGet(rep).value);
    return creo::ProNoError;
  });
  return lines;
}

namespace {

// Writes a line for each feature that regenerates, for as long as it lives.
class FeatureLog {
 public:
  FeatureLog() {
    creo::ProNotificationSet(creo::ProNotifyType::featureRegenerated, [](const creo::ProNotification& event) {
      core::logWrite(text::format(L"%d - %s", event.feature, event.name), core::kNormal);
      return creo::ProNoError;
    });
  }
  ~FeatureLog() { creo::ProNotificationUnset(creo::ProNotifyType::featureRegenerated); }
  FeatureLog(const FeatureLog&) = delete;
  FeatureLog& operator=(const FeatureLog&) = delete;
};

}  // namespace

std::wstring regenerationFeedback(const ModelFacts& facts) {
  const FeatureLog log;
  switch (creo::ProSolidRegenerate(facts.model, creo::kRegenerateForce | creo::kRegenerateUpdateInstances)) {
    case creo::ProNoError:
      return L"OK";
    case creo::ProUnattachedFeats:
      return L"Unnatached feats";
    case creo::ProRegenAgain:
      return L"regenerate again - loop ?";
    case creo::ProGeneralError:
      return L"failure while regenerate";
    default:
      return L"failure in function";
  }
}

}  // namespace reports
