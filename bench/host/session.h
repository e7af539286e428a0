// The models in session.
#pragma once

#include <ProMdl.h>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "bench/host/model/model.h"

namespace bench {

class Session {
 public:
  // Enters a model at the end of the session's order. Its name and type must be free.
  Model& Add(std::unique_ptr<Model> model);

  // The model behind a ProMdl or ProSolid; null for a handle of no model, or of one that was erased.
  Model* Find(const void* handle) const;
  Model* FindByName(std::wstring_view name, ProMdlType type) const;

  // Those of one type, in the order in which they came into session.
  std::vector<Model*> OfType(ProMdlType type) const;
  const std::vector<Model*>& All() const { return order_; }

  // Takes the model out of session. Its handle stays known as dead, so that no later model gets the same one.
  void Erase(Model& model);

  void Clear();

 private:
  std::unordered_map<const void*, std::unique_ptr<Model>> alive_;
  std::vector<Model*> order_;
  std::vector<std::unique_ptr<Model>> erased_;
};

// The handles under which callers know a model.
inline ProMdl Handle(Model& model) {
  return &model;
}
inline ProSolid SolidHandle(Model& model) {
  return reinterpret_cast<ProSolid>(&model);
}

}  // namespace bench
