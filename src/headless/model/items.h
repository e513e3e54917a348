// Things in models by type, id and name.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "headless/model/model.h"

namespace headless {

class Models;  // models.h

// The named things of one type in a model: its layers, views, states, cross sections, features, dimensions, materials.
struct NamedItem {
  int id = 0;
  std::wstring name;  // empty: it has none
};
std::vector<NamedItem> namedItems(const Model& model, creo::ProItemType type);

// ProNotFound: it has no name, or has gone.
creo::Got<std::wstring> itemName(const Model& model, const creo::ProModelitem& item);
// Case-blind; the first of that name. ProNotFound: none.
creo::Got<creo::ProModelitem> itemNamed(const Model& model, creo::ProItemType type, const std::wstring& name);

// As ProModelitemNameSet.
creo::ProError renameItem(Models& models, const Model& model, const creo::ProModelitem& item, const std::wstring& name);

// The current material as the part's materials spell it; empty where none is set. An instance may have its own.
std::wstring currentMaterial(const Model& model);

// The lines that a set of relations holds. section: of a feature, its sketch, from 0; -1: its own. Null for an item
// that owns none.
std::vector<std::string>* relationLines(const Model& model, const creo::ProModelitem& owner, int section = -1);
// Whether these lines heed units, as the document says; null as above.
std::optional<bool>* relationUnits(const Model& model, const creo::ProModelitem& owner, int section = -1);

}  // namespace headless
