#include "actions/under_work.h"

namespace actions {
namespace {

std::vector<creo::ProMdl>& models() {
  static std::vector<creo::ProMdl> stack;
  return stack;
}

}  // namespace

const std::vector<creo::ProMdl>& modelsUnderWork() { return models(); }

UnderWork::UnderWork(creo::ProMdl model) { models().push_back(model); }

UnderWork::~UnderWork() { models().pop_back(); }

}  // namespace actions
