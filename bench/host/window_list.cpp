#include "bench/host/window_list.h"

#include <algorithm>

namespace bench {

std::optional<int> WindowList::Create(Model& model) {
  if (WindowOf(model)) return std::nullopt;
  windows_.push_back({next_id_, &model});
  return next_id_++;
}

const WindowList::Window* WindowList::Find(int window) const {
  const auto found = std::ranges::find(windows_, window, &Window::id);
  return found == windows_.end() ? nullptr : &*found;
}

bool WindowList::Exists(int window) const {
  return window == kBaseWindow || Find(window);
}

bool WindowList::Activate(int window) {
  if (!Exists(window)) return false;
  std::erase(activations_, window);
  activations_.push_back(window);
  return true;
}

bool WindowList::Close(int window) {
  if (!Find(window)) return false;
  std::erase(activations_, window);
  std::erase_if(windows_, [window](const Window& each) { return each.id == window; });
  return true;
}

void WindowList::Drop(const Model& model) {
  if (const auto window = WindowOf(model)) Close(*window);
}

int WindowList::Current() const {
  return activations_.empty() ? kBaseWindow : activations_.back();
}

Model* WindowList::CurrentModel() const {
  return ModelOf(Current());
}

Model* WindowList::ModelOf(int window) const {
  const Window* found = Find(window);
  return found ? found->model : nullptr;
}

std::optional<int> WindowList::WindowOf(const Model& model) const {
  const auto found = std::ranges::find(windows_, &model, &Window::model);
  if (found == windows_.end()) return std::nullopt;
  return found->id;
}

void WindowList::Clear() {
  windows_.clear();
  activations_.clear();
  browser_percent = 0;
  browser_url.clear();
}

}  // namespace bench
