#include "bench/host/storage/step_file.h"

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

#include "bench/host/features/component.h"
#include "bench/host/features/imported.h"
#include "bench/host/host.h"
#include "bench/host/kernel_link/base64.h"
#include "bench/host/kernel_link/kernel_answer.h"
#include "bench/host/model/start_template.h"
#include "bench/host/storage/file_names.h"
#include "bench/host/storage/model_file.h"
#include "bench/host/storage/model_store.h"
#include "bench/host/text.h"

namespace bench {
namespace {

using nlohmann::json;

constexpr wchar_t kFiller = L'_';

StepModel::Component ReadComponent(const json& from, std::size_t models_before) {
  StepModel::Component component{static_cast<std::size_t>(IntegerAt(from, "model")), kNoMove};
  if (component.model >= models_before) throw std::runtime_error("a component stands before its model");
  const json& numbers = from.at("place");
  for (std::size_t i = 0; i < 12; ++i) numbers.at(i).get_to(component.place[i / 4][i % 4]);
  return component;
}

StepModel ReadModel(const json& from, std::size_t models_before) {
  StepModel model;
  from.at("name").get_to(model.name);
  model.is_assembly = from.contains("components");
  if (!model.is_assembly) from.at("shapes").get_to(model.shapes);
  if (model.is_assembly)
    for (const json& component : from.at("components"))
      model.components.push_back(ReadComponent(component, models_before));
  return model;
}

void ReadAnswer(const json& answer, StepFile& file) {
  for (const json& model : answer.at("models")) file.models.push_back(ReadModel(model, file.models.size()));
  file.root = static_cast<std::size_t>(IntegerAt(answer, "root"));
  if (file.root >= file.models.size()) throw std::runtime_error("it has no root");
}

// A product's name as a model can bear it; none is left of a blank one.
std::wstring Bearable(const std::string& product) {
  std::wstring name = Upper(FromUtf8(product));
  for (wchar_t& c : name)
    if (CheckModelName({&c, 1}) != PRO_TK_NO_ERROR) c = kFiller;
  while (!name.empty() && CheckModelName(name) != PRO_TK_NO_ERROR) name.pop_back();
  while (name.ends_with(L' ')) name.pop_back();
  return name;
}

// The models of a file on their way into session.
class Arrival {
 public:
  explicit Arrival(const StepFile& file) : file_(file) {}

  ProError Build(const std::wstring& root_name) {
    names_.push_back(root_name);
    for (std::size_t i = 0; i < file_.models.size(); ++i) {
      const StepModel& from = file_.models[i];
      const ProMdlType type = from.is_assembly ? PRO_MDL_ASSEMBLY : PRO_MDL_PART;
      models_.push_back(NewSolidFromTemplate(i == file_.root ? root_name : FreeName(from.name, type), type));
      if (const ProError status = Fill(*models_.back(), from)) return status;
    }
    return PRO_TK_NO_ERROR;
  }

  Model& End() {
    Model* const root = models_[file_.root].get();
    for (auto& model : models_) TheHost().session.Add(std::move(model));
    return *root;
  }

 private:
  ProError Fill(Model& model, const StepModel& from) {
    for (const auto& [index, place] : from.components)
      if (const ProError status = AssembleComponent(model, *models_[index], place).status) return status;
    return from.shapes.empty() ? PRO_TK_NO_ERROR : AddImports(model, from.shapes).status;
  }

  std::wstring FreeName(const std::string& product, ProMdlType type) {
    const std::wstring wanted = Bearable(product);
    const std::wstring base = wanted.empty() ? L"IMPORT" : wanted;
    std::wstring name = base;
    for (int i = 1; IsTaken(name, type); ++i) {
      const std::wstring number = L"_" + std::to_wstring(i);
      name = base + number;
      for (std::size_t kept = base.size(); CheckModelName(name) == PRO_TK_LINE_TOO_LONG; --kept)
        name = base.substr(0, kept) + number;
    }
    names_.push_back(name);
    return name;
  }

  bool IsTaken(const std::wstring& name, ProMdlType type) const {
    return std::ranges::find(names_, name) != names_.end() || IsNameTaken(name, type);
  }

  const StepFile& file_;
  std::vector<std::unique_ptr<Model>> models_;
  std::vector<std::wstring> names_;  // that they take
};

}  // namespace

ProError ReadStepFile(const std::wstring& path, StepFile& file) {
  if (!FileExists(path)) return PRO_TK_E_NOT_FOUND;
  const auto bytes = ReadWholeFile(path);
  if (!bytes) return PRO_TK_CANT_OPEN;
  const auto answer = TheHost().kernel.Ask("import", R"("bytes":")" + EncodeBase64(*bytes) + '"');
  if (!answer) return PRO_TK_COMM_ERROR;
  if (answer->contains("refused")) {
    TheHost().announcements.Say("refused: no import of " + ToUtf8(path) + ": " +
                                answer->value("refused", ""));
    return PRO_TK_INVALID_FILE;
  }
  try {
    ReadAnswer(*answer, file);
    return PRO_TK_NO_ERROR;
  } catch (const std::exception& exception) {
    Complain(std::string("the geometry kernel's answer can't be read: ") + exception.what());
    return PRO_TK_COMM_ERROR;
  }
}

ProError BringIntoSession(const StepFile& file, const std::wstring& name, Model*& root) {
  Arrival arrival(file);
  if (const ProError status = arrival.Build(name)) return status;
  root = &arrival.End();
  return PRO_TK_NO_ERROR;
}

}  // namespace bench
