// Values of models in command lines, and credentials that go to servers which aren't proved.
#pragma once

#include <vector>

#include "kelvane/check/attribute_check.h"

namespace kelvane {

// A value in a program's command line that isn't in single quotes can bring a command along. User name and password go
// in the open, or to a server whose certificate isn't checked without kvd_url_verify=1.
std::vector<AttributeFault> commandFaults(const core::XmlNode& task, const actions::Action& action);

}  // namespace kelvane
