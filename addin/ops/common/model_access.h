// The way to the active document: which model is current, what it is called, how one is found and brought to
// the front. Main thread only; nothing here keeps state between calls.
#pragma once

#include <ProMdl.h>

#include <string>
#include <string_view>
#include <vector>

#include "addin/server/operation_result.h"

namespace vek {

// The model types that the system knows, as the host numbers them.
inline constexpr int kAssemblyType = 1;
inline constexpr int kPartType = 2;
inline constexpr int kDrawingType = 4;

// "assembly", "part", "drawing", or "unknown".
std::wstring ModelTypeWord(int type);
// "asm", "prt", "drw", or empty.
std::wstring ModelTypeExtension(int type);
// The type for an extension in any case, or -1.
int ExtensionToModelType(std::wstring_view extension);

// What a family says when the active model is not what it needs.
struct ActiveModelWords {
  const wchar_t* no_model;
  const wchar_t* type_unreadable;
  const wchar_t* wrong_type;
};

// The current model, when it is of `wanted_type`. Each family wraps this with its own words, which stay
// apart.
CreoMcpOperationResult RequireActiveModelOfType(int wanted_type, const ActiveModelWords& words,
                                                ProMdl& model);

// The name of the model; empty when the host doesn't tell.
std::wstring ModelName(ProMdl model);

// Directory, name and extension joined: where the model lies, or would go. Empty when it has no name.
std::wstring ModelFullPath(ProMdl model, int type);

// The models in session: parts, assemblies, drawings, each kind in the host's order.
std::vector<ProMdl> SessionModels();

// Those of one type, in the host's order.
std::vector<ProMdl> SessionModelsOfType(int type);

// Asks the host for the model of that name and type, from the working directory unless it is in session. Null
// on failure.
ProError RetrieveModel(const std::wstring& name, int type, ProMdl& model);

// The model in session that a name, a file name or a path means; null when there is none.
ProMdl FindOpenModel(std::wstring_view name_or_path);

// Brings a model into a window of its own and to the front. Its data is name, full path and type word.
CreoMcpOperationResult ActivateModel(ProMdl model);

}  // namespace vek
