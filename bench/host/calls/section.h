// Handles on sections: private ones, which stay with their owner for good, and those inside element trees.
#pragma once

#include <ProSection.h>

#include <memory>

#include "bench/host/model/section_data.h"

namespace bench {

// A handle on the section of an element tree. It belongs to the tree, which forgets it in the end.
ProSection EnterSectionOfTree(std::shared_ptr<SectionData> section);
void ForgetSectionOfTree(ProSection section);

// The section behind a handle on one of a tree; null when it is none, and a violation when it is no live
// section at all.
std::shared_ptr<SectionData> SectionOfTree(ProSection section);

// The section behind a handle; null, and a violation, when it is no live section.
SectionData* UseSection(ProSection handle);

// Puts other data into the place of a live section's. Records of its entities that were handed out are not
// good any more.
void ReplaceSection(ProSection handle, SectionData data);

}  // namespace bench
