// Changes inputs that are JSON as trees, so that a fuzzer gets behind the brackets: a value in the place of
// another, one more or less in a list, a number at the edge of its range. Every other input is changed as
// bytes.
#include <cstdint>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <vector>

using nlohmann::json;

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

namespace {

class TreeMutation {
 public:
  TreeMutation(json& tree, unsigned seed) : random_(seed) { Collect(tree); }

  void Apply() {
    json& at = AnyPlace();
    switch (random_() % 5) {
      case 0:
        at = json(AnyPlace());
        break;
      case 1:
        at = EdgeValue();
        break;
      case 2:
        RemoveFrom(at);
        break;
      case 3:
        AddTo(at);
        break;
      default:
        ChangeText(at);
    }
  }

 private:
  void Collect(json& value) {
    places_.push_back(&value);
    if (value.is_object())
      for (const auto& [key, member] : value.items()) keys_.push_back(key);
    if (value.is_structured())
      for (json& member : value) Collect(member);
  }

  json& AnyPlace() { return *places_[random_() % places_.size()]; }

  json EdgeValue() {
    static const json values = json::parse(
        R"([null, true, false, 0, 1, -1, 0.5, 1e-300, 1.7e308, 2147483647, 2147483648, 4294967337, -1.7e308,
            "", "\u00e9\n", "1e400", [], {}, 18446744073709551615])");
    return values[random_() % values.size()];
  }

  void RemoveFrom(json& value) {
    if (!value.is_structured() || value.empty()) return;
    auto victim = value.begin();
    std::advance(victim, random_() % value.size());
    value.erase(victim);
  }

  void AddTo(json& value) {
    json added(AnyPlace());
    if (value.is_array()) {
      value.insert(value.begin() + static_cast<std::ptrdiff_t>(random_() % (value.size() + 1)),
                   std::move(added));
    } else if (value.is_object() && !keys_.empty()) {
      value[keys_[random_() % keys_.size()]] = std::move(added);
    }
  }

  // A number or a string with other characters; what is no value any more becomes a string.
  void ChangeText(json& value) {
    constexpr std::size_t kRoom = 64;
    std::string text = value.is_string() ? value.get<std::string>() : value.is_number() ? value.dump() : "";
    const std::size_t size = text.size();
    text.resize(size + kRoom);
    text.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(text.data()), size, text.size()));
    json changed = value.is_number() ? json::parse(text, nullptr, false) : json(text);
    value = changed.is_discarded() ? json(text) : std::move(changed);
  }

  std::mt19937 random_;
  std::vector<json*> places_;
  std::vector<std::string> keys_;
};

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned seed) {
  json tree = seed % 3 == 0 ? json(json::value_t::discarded) : json::parse(data, data + size, nullptr, false);
  if (tree.is_discarded()) return LLVMFuzzerMutate(data, size, max_size);
  TreeMutation(tree, seed).Apply();
  constexpr int kOneLine = -1;
  const std::string changed = tree.dump(kOneLine, ' ', false, json::error_handler_t::replace);
  if (changed.size() > max_size) return LLVMFuzzerMutate(data, size, max_size);
  std::copy(changed.begin(), changed.end(), data);
  return changed.size();
}
