// Importing a neutral file as a new model, under a name that nothing in session has.
#pragma once

#include <ProMdl.h>

#include <functional>
#include <string>

#include "addin/ops/common/import_names.h"

namespace vek {

// Imports the file under `name`, or, as long as that is taken, under further candidates, up to a hundred in
// all; `on_clash`, when given, is told of each that was taken. 0 with the model, or the last status: -5 when
// all names were taken.
ProError ImportUnderFreeName(const std::wstring& path, const std::wstring& name, ProMdl& model,
                             const std::function<void()>& on_clash = {});

}  // namespace vek
