// Handles on sections: private ones, which stay with their owner for good, and those inside element trees.
#pragma once

#include <ProSection.h>

#include <memory>

#include "bench/host/model/section_data.h"

namespace bench {

// A handle on the section of an element tree. It belongs to the tree, which forgets it in the end.
ProSection EnterSectionOfTree(std::shared_ptr<SectionData> section);
void ForgetSectionOfTree(ProSection section);

}  // namespace bench
