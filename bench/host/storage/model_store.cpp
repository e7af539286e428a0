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
  // What an assembly places has its geometry by now, and lies where the file says.
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

bool WriteInto(const Model& model, const std::wstring& directory) {
  return WriteNextVersion(directory, model.name, model.type, ModelToText(model));
}

void MarkSaved(Model& model, const std::wstring& directory) {
  model.directory = directory;
  model.renamed_since_save = false;
  model.modified = false;
}

ProError SaveInto(Model& model, const std::wstring& directory) {
  if (!WriteInto(model, directory)) return PRO_TK_CANT_WRITE;
  MarkSaved(model, directory);
  return PRO_TK_NO_ERROR;
}

ProError SaveAlone(Model& model) {
  const bool has_place = !model.directory.empty() && !model.renamed_since_save;
  return SaveInto(model, has_place ? model.directory : WorkingDirectory());
}

ProError RetrieveFrom(const std::wstring& directory, std::wstring_view name, ProMdlType type, Model*& model);

// What must be there before the model can be told in full.
std::vector<Model*> ModelsNeededBy(const Model& model) {
  return model.drawing ? ModelsDrawnIn(model) : ModelsPlacedIn(model);
}

void RetrieveDrawnModels(Model& drawing) {
  if (!drawing.drawing) return;
  for (DrawnModel& drawn : drawing.drawing->solids) {
    RetrieveFrom(drawing.directory, drawn.name, drawn.type, drawn.model);
    if (!drawn.model) Complain(ToUtf8(drawn.name) + ", which " + ToUtf8(drawing.name) + " shows, is missing");
  }
}

void RetrieveComponents(Model& assembly) {
  for (const auto& feature : assembly.features) {
    if (!feature->component) continue;
    Component& component = *feature->component;
    Model* placed = nullptr;
    RetrieveFrom(assembly.directory, component.name, component.type, placed);
    if (placed && !Contains(*placed, assembly)) {
      component.model = placed;
      continue;
    }
    Complain("component " + std::to_string(feature->id) + " of " + ToUtf8(assembly.name) +
             (placed ? " would put it into itself: " : " is missing: ") + ToUtf8(component.name));
  }
}

ProError RetrieveFrom(const std::wstring& directory, std::wstring_view name, ProMdlType type, Model*& model) {
  Session& session = TheHost().session;
  const std::wstring bare = Upper(WithoutExtension(name, type));
  if (Model* in_session = session.FindByName(bare, type)) {
    model = in_session;
    return PRO_TK_NO_ERROR;
  }
  const auto versions = VersionsOf(directory, bare, type);
  if (versions.empty()) return PRO_TK_E_NOT_FOUND;
  auto read = ReadModelFile(versions.back().path, type);
  if (!read) return PRO_TK_INVALID_FILE;

  // A file that was renamed or moved on the disk takes its model along.
  read->name = bare;
  read->directory = directory;
  model = &session.Add(std::move(read));
  RetrieveComponents(*model);
  RetrieveDrawnModels(*model);
  RestoreGeometry(*model);
  model->modified = false;
  return PRO_TK_NO_ERROR;
}

}  // namespace

ProError SaveModel(Model& model) {
  for (Model* needed : ModelsNeededBy(model))
    if (needed->modified)
      if (const ProError status = SaveAlone(*needed)) return status;
  return SaveAlone(model);
}

ProError BackUpModel(Model& model, std::wstring_view directory) {
  const std::wstring target(directory);
  if (!DirectoryExists(target)) return PRO_TK_INVALID_DIR;
  std::vector<Model*> models = ModelsNeededBy(model);
  models.push_back(&model);
  // They move together, or none does.
  for (const Model* each : models)
    if (!WriteInto(*each, target)) return PRO_TK_CANT_WRITE;
  for (Model* each : models) MarkSaved(*each, target);
  return PRO_TK_NO_ERROR;
}

ProError RetrieveModel(std::wstring_view name, ProMdlType type, Model*& model) {
  return RetrieveFrom(WorkingDirectory(), name, type, model);
}

bool IsNameTaken(std::wstring_view name, ProMdlType type) {
  return TheHost().session.FindByName(name, type) || !VersionsOf(WorkingDirectory(), name, type).empty();
}

}  // namespace bench
