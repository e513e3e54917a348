// The frame of an action-list document: its sections by position.
#pragma once

#include "core/xml.h"

namespace documents {

struct ActionList {
  const core::XmlNode* head = nullptr;
  const core::XmlNode* body = nullptr;
  const core::XmlNode* filter = nullptr;  // never run; it filters the model table
  const core::XmlNode* foot = nullptr;    // the child at index 4 if there is one, else that at index 3
};
// The sections of a document that was read; what isn't there is null.
ActionList actionList(const core::XmlDocument& document);

}  // namespace documents
