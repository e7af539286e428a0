#include "bench/host/storage/model_store.h"

#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "bench/host/features/regeneration.h"
#include "bench/host/host.h"
#include "bench/host/storage/file_names.h"
#include "bench/host/storage/model_file.h"
#include "bench/host/storage/model_json.h"
#include "bench/host/text.h"

namespace bench {
namespace {

// Null, with a complaint, for a file that can't be read or makes no sense.
std::unique_ptr<Model> ReadModelFile(const std::wstring& path, ProMdlType type) {
  try {
    const auto text = ReadWholeFile(path);
    if (!text) throw std::runtime_error("it can't be read");
    auto model = ModelFromText(*text);
    if (model->type != type) throw std::runtime_error(std::string("it holds no ") + Word(type));
    return model;
  } catch (const std::exception& failure) {
    Complain("the model file " + ToUtf8(path) + " is refused: " + failure.what());
    return nullptr;
  }
}

// Geometry is not kept in files. A model whose geometry can't be had just now comes into session all the
// same: its recipes are intact, and the next regeneration may succeed.
void RestoreGeometry(Model& model) {
  if (model.type != PRO_MDL_PART) return;
  std::string failure;
  try {
    if (const ProError status = Regenerate(model)) failure = "status " + std::to_string(status);
  } catch (const std::exception& exception) {
    failure = exception.what();
  }
  if (!failure.empty())
    Complain("the geometry of " + ToUtf8(model.name) + " could not be made again: " + failure);
}

}  // namespace

ProError SaveModel(Model& model) {
  const bool has_place = !model.directory.empty() && !model.renamed_since_save;
  const std::wstring directory = has_place ? model.directory : WorkingDirectory();
  if (!WriteNextVersion(directory, model.name, model.type, ModelToText(model))) return PRO_TK_CANT_WRITE;
  model.directory = directory;
  model.renamed_since_save = false;
  model.modified = false;
  return PRO_TK_NO_ERROR;
}

ProError RetrieveModel(std::wstring_view name, ProMdlType type, Model*& model) {
  Session& session = TheHost().session;
  const std::wstring bare = Upper(WithoutExtension(name, type));
  if (Model* in_session = session.FindByName(bare, type)) {
    model = in_session;
    return PRO_TK_NO_ERROR;
  }
  const std::wstring directory = WorkingDirectory();
  const auto versions = VersionsOf(directory, bare, type);
  if (versions.empty()) return PRO_TK_E_NOT_FOUND;
  auto read = ReadModelFile(versions.back().path, type);
  if (!read) return PRO_TK_INVALID_FILE;

  // A file that was renamed or moved on the disk takes its model along.
  read->name = bare;
  read->directory = directory;
  model = &session.Add(std::move(read));
  RestoreGeometry(*model);
  model->modified = false;
  return PRO_TK_NO_ERROR;
}

bool IsNameTaken(std::wstring_view name, ProMdlType type) {
  return TheHost().session.FindByName(name, type) || !VersionsOf(WorkingDirectory(), name, type).empty();
}

}  // namespace bench
