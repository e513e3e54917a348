// Taking models out of memory.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <unordered_map>
#include <vector>

#include "creo/ProMdl.h"

namespace headless {

struct Model;  // model.h
class Models;  // models.h

// At once. ProBadInputs: the handle has gone; ProGeneralError, with a line of the message area: another model in memory
// uses it.
creo::ProError eraseModel(Models& models, creo::ProMdl model);
// Erases all models but those that `stays` names and what they use. A line of the message area names each whose changes
// go with it.
void eraseUnless(Models& models, creo::FunctionRef<bool(creo::ProMdl)> stays);

// Erasures that were asked for and wait until control is back: until then the models are in memory as they were, their
// names aren't free, and what is done with them is done. No document that is away (away.h) comes back for it.
class Erasures {
 public:
  // isShown: does a window show the model?
  Erasures(Models& models, std::function<bool(creo::ProMdl)> isShown);
  // withUsed: with all that it uses, but for what another model in memory uses or a window shows, and what that uses.
  // Models that are to go themselves count as gone. ProBadInputs, ProGeneralError: as eraseModel.
  creo::ProError ask(creo::ProMdl model, bool withUsed);
  // Control is back. What came into use or into a window since it was asked for stays, by a line of the message area;
  // a model that has gone otherwise is passed over.
  void carryOut(creo::ProMdl model);

 private:
  struct Asked {
    creo::ProMdl by;  // the model that was asked for, and that this one goes with
    bool withUsed = false;
    bool wasShown = false;
    std::vector<std::uint64_t> with = {};  // that go with this one
  };
  using Uses = std::unordered_map<const Model*, int>;
  [[nodiscard]] int usesByGoing(const Model& used, const Uses& counted) const;
  [[nodiscard]] bool isUsed(const Model& model, const Uses& counted) const;
  // The model and what goes with it; empty: it is used.
  [[nodiscard]] std::vector<const Model*> goingWith(const Model& root, bool withUsed) const;

  Models& models_;
  std::function<bool(creo::ProMdl)> isShown_;
  std::map<std::uint64_t, Asked> asked_;  // by handle's value
};

}  // namespace headless
