// The list of parameters that the adding actions read from their attributes.
#pragma once

#include "actions/task.h"
#include "creo/ProParameter.h"

namespace actions {

struct ParameterTarget {
  creo::ProMdl model;        // whose dimensions hold names back; none: nothing does
  creo::ProModelitem owner;  // gets the parameters
  bool addToFamilyTable = false;
  int logDepth = 1;
};
// Creates each parameter of the list. One that is there keeps its value; the switches `descr` and `desig` change its
// description and designation. A name that a dimension has ends the list.
void addParametersFromAction(const Task& task, const ParameterTarget& target);

// Designates a parameter, or takes its designation away. One that is so already is no failure.
creo::ProError setDesignation(const creo::ProParameter& parameter, bool designated);

}  // namespace actions
