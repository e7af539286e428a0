// Deleting, suppressing and resuming features.
#include <ProFeature.h>

#include <optional>
#include <set>
#include <vector>

#include "bench/host/calls/array.h"
#include "bench/host/features/feature_removal.h"
#include "bench/host/instruments/call_frame.h"
#include "bench/host/model/item_lookup.h"

namespace bench {
namespace {

// Deletion: dependants go along. Resumption: parents come along.
constexpr int kTakesOthersAlong = 1;

// The ids as a set; nothing when there are none, or one is there twice.
std::optional<std::set<int>> AsSet(const std::vector<int>& ids) {
  std::set<int> set(ids.begin(), ids.end());
  if (set.empty() || set.size() != ids.size()) return std::nullopt;
  return set;
}

std::optional<std::set<int>> ReadIds(const int* array) {
  const auto ids = ArrayObjects(array);
  return ids ? AsSet(*ids) : std::nullopt;
}

// Whether the options say that others go along; nothing when there are none, or unknown ones.
template <typename Option>
std::optional<bool> TakesOthersAlong(const std::vector<Option>& options) {
  bool along = false;
  for (const int option : options) {
    if (option != 0 && option != kTakesOthersAlong) return std::nullopt;
    along |= option == kTakesOthersAlong;
  }
  return options.empty() ? std::nullopt : std::optional(along);
}

template <typename Option>
std::optional<bool> ReadOptions(const Option* array) {
  const auto options = ArrayObjects(array);
  return options ? TakesOthersAlong(*options) : std::nullopt;
}

}  // namespace
}  // namespace bench

using namespace bench;

ProError ProFeatureDelete(ProSolid solid, int* ids, int count, ProFeatureDeleteOptions* options,
                          int option_count) {
  HOST_CALL(solid, count > 0 && ids ? *ids : -1, count, option_count) {
    Model* model = LiveSolid(solid);
    if (!model || !ids || count <= 0 || option_count < 0 || (option_count > 0 && !options))
      return PRO_TK_BAD_INPUTS;
    const auto read = AsSet({ids, ids + count});
    const auto along = option_count == 0
                           ? std::optional(false)
                           : TakesOthersAlong<ProFeatureDeleteOptions>({options, options + option_count});
    if (!read || !along) return PRO_TK_BAD_INPUTS;
    return DeleteFeatures(*model, *read, *along);
  };
}

ProError ProFeatureWithoptionsDelete(ProSolid solid, int* ids, ProFeatureDeleteOptions* options, int flags) {
  HOST_CALL(solid, ids, options, flags) {
    Model* model = LiveSolid(solid);
    const auto read = ReadIds(ids);
    const auto along = ReadOptions(options);
    if (!model || !read || !along) return PRO_TK_BAD_INPUTS;
    return DeleteFeatures(*model, *read, *along);
  };
}

ProError ProFeatureWithoptionsSuppress(ProSolid solid, int* ids, ProFeatureSuppressOptions* options,
                                       int flags) {
  HOST_CALL(solid, ids, options, flags) {
    Model* model = LiveSolid(solid);
    const auto read = ReadIds(ids);
    const auto along = ReadOptions(options);
    if (!model || !read || !along || *along) return PRO_TK_BAD_INPUTS;
    return SuppressFeatures(*model, *read);
  };
}

ProError ProFeatureWithoptionsResume(ProSolid solid, int* ids, ProFeatureResumeOptions* options, int flags) {
  HOST_CALL(solid, ids, options, flags) {
    Model* model = LiveSolid(solid);
    const auto read = ReadIds(ids);
    const auto along = ReadOptions(options);
    if (!model || !read || !along) return PRO_TK_BAD_INPUTS;
    return ResumeFeatures(*model, *read, *along);
  };
}
