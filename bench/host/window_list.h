// The windows: one base window without a model, and windows that each show one model.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/host/model/model.h"

namespace bench {

class WindowList {
 public:
  // The window that is there from the start; it shows no model and can't be closed.
  static constexpr int kBaseWindow = 0;

  // A window for the model; none when it has one already. It isn't active until it is activated.
  std::optional<int> Create(Model& model);
  bool Exists(int window) const;
  // Makes the window's model current.
  bool Activate(int window);
  // Closes it; the last active other window becomes active.
  bool Close(int window);
  // Closes the window of a model that leaves the session.
  void Drop(const Model& model);

  // The active window, or the base window.
  int Current() const;
  Model* CurrentModel() const;
  // What the window shows, or null.
  Model* ModelOf(int window) const;
  std::optional<int> WindowOf(const Model& model) const;

  // The embedded browser of the base window.
  double browser_percent = 0;
  std::wstring browser_url;

  void Clear();

 private:
  struct Window {
    int id;
    Model* model;
  };
  const Window* Find(int window) const;

  std::vector<Window> windows_;
  std::vector<int> activations_;  // ids of windows that were active, the present one last
  int next_id_ = 1;               // never set back while the host lives, so that ids are not reused
};

}  // namespace bench
