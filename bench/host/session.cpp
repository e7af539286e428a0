#include "bench/host/session.h"

#include <algorithm>
#include <utility>

#include "bench/host/text.h"

namespace bench {

Model& Session::Add(std::unique_ptr<Model> model) {
  Model& added = *model;
  order_.push_back(&added);
  alive_.emplace(&added, std::move(model));
  return added;
}

Model* Session::Find(const void* handle) const {
  const auto found = alive_.find(handle);
  return found == alive_.end() ? nullptr : found->second.get();
}

Model* Session::FindByName(std::wstring_view name, ProMdlType type) const {
  const auto found = std::ranges::find_if(order_, [&](const Model* model) {
    return model->type == type && EqualsIgnoringCase(model->name, name);
  });
  return found == order_.end() ? nullptr : *found;
}

std::vector<Model*> Session::OfType(ProMdlType type) const {
  std::vector<Model*> models;
  std::ranges::copy_if(order_, std::back_inserter(models),
                       [type](const Model* model) { return model->type == type; });
  return models;
}

void Session::Erase(Model& model) {
  std::erase(order_, &model);
  auto node = alive_.extract(&model);
  // The object stays behind to hold its address; what it held goes.
  *node.mapped() = Model{};
  erased_.push_back(std::move(node.mapped()));
}

void Session::Clear() {
  order_.clear();
  alive_.clear();
  erased_.clear();
}

}  // namespace bench
