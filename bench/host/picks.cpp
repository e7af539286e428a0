#include "bench/host/picks.h"

#include <charconv>
#include <sstream>
#include <utility>

#include "bench/host/host.h"
#include "bench/host/model/component.h"
#include "bench/host/model/item_lookup.h"

namespace bench {
namespace {

// The numbers of a text with slashes between; none for a text that is something else.
std::vector<int> NumbersOf(const std::string& text) {
  std::vector<int> numbers;
  std::istringstream parts(text);
  for (std::string part; std::getline(parts, part, '/');) {
    int number = 0;
    const auto [stop, failure] = std::from_chars(part.data(), part.data() + part.size(), number);
    if (failure != std::errc{} || stop != part.data() + part.size()) return {};
    numbers.push_back(number);
  }
  return numbers;
}

ProAsmcomppath PathOf(Model& root, const std::vector<int>& ids) {
  ProAsmcomppath path{Handle(root), {}, static_cast<int>(ids.size())};
  std::copy(ids.begin(), ids.end(), path.comp_id_table);
  return path;
}

}  // namespace

std::vector<Picked> Picks::Selected() const {
  std::vector<Picked> there;
  for (const Picked& picked : selected_)
    if (ItemExists(picked.item)) there.push_back(picked);
  return there;
}

std::optional<Picked> Picks::TakePick() {
  if (next_.empty()) return std::nullopt;
  const std::optional<Picked> picked = std::move(next_.front());
  next_.pop_front();
  return picked && ItemExists(picked->item) ? picked : std::nullopt;
}

std::optional<Picked> ReadPick(const std::string& text) {
  Model* current = TheHost().CurrentModel();
  std::vector<int> ids = NumbersOf(text);
  if (!current || ids.empty() || ids.size() > PRO_MAX_ASSEM_LEVEL) return std::nullopt;
  // The whole of it as a way to a component, or all but the last as the way to the model of a face.
  if (const auto end = Follow(*current, ids); end && end->model)
    return Picked{{static_cast<ProType>(end->model->type), -1, Handle(*end->model)}, PathOf(*current, ids)};
  const int face = ids.back();
  ids.pop_back();
  const auto end = Follow(*current, ids);
  if (!end || !end->model) return std::nullopt;
  const Picked picked{{PRO_SURFACE, face, Handle(*end->model)}, PathOf(*current, ids)};
  if (!ItemExists(picked.item)) return std::nullopt;
  return picked;
}

}  // namespace bench
