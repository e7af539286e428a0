// Saving models to disk and retrieving them into session.
#pragma once

#include <ProMdl.h>

#include <string_view>

#include "bench/host/model/model.h"

namespace bench {

// Writes the model's next version into its directory, or into the working directory when it has none or was
// renamed since it was saved; before an assembly or drawing, what it places or shows and was modified is
// saved in the same way. Refused with PRO_TK_CANT_WRITE when the disk refuses; the model is then as it was.
ProError SaveModel(Model& model);

// The same into a directory, which is the model's from then on; what an assembly places or a drawing shows
// goes along. Refused with PRO_TK_INVALID_DIR when there is no such directory, with PRO_TK_CANT_WRITE when
// the disk refuses; all of them are then as they were.
ProError BackUpModel(Model& model, std::wstring_view directory);

// The model of that name in session, or else from its highest version in the working directory. What an
// assembly places is taken from the session, or else from the assembly's directory; what isn't there, or
// would put the assembly into itself, leaves a component without a model, and a complaint. The same goes for
// what a drawing shows.
ProError RetrieveModel(std::wstring_view name, ProMdlType type, Model*& model);

// Whether a new model can't take the name: one in session or a file in the working directory has it.
bool IsNameTaken(std::wstring_view name, ProMdlType type);

}  // namespace bench
