#include "bench/kernel/features/body.h"

#include <cmath>

#include "bench/kernel/boolean.h"
#include "bench/kernel/measures.h"
#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

// Integration over curved faces is no better than this part when a face's boundary changes.
constexpr double kClearShare = 1e-6;

// A cut that doesn't clearly take something is held against the common of tool and body.
bool RemovesSomething(const NamedShape& body, const NamedShape& tool, const NamedShape& result) {
  const VolumeChange change = ChangeOfVolume(body, result);
  if (-change.gained > kClearShare * change.at_stake) return true;
  return !Boolean(BooleanKind::kCommon, body, tool).Result().IsEmpty();
}

}  // namespace

NamedShape Join(const NamedShape& body, const NamedShape& tool) {
  if (body.IsEmpty()) return tool;
  return Unified(Boolean(BooleanKind::kFuse, body, tool).Result());
}

NamedShape Cut(const NamedShape& body, const NamedShape& tool) {
  if (body.IsEmpty()) throw Refusal("There is no body to cut.");
  const Boolean cut(BooleanKind::kCut, body, tool);
  if (cut.Result().IsEmpty()) throw Refusal("The cut removes the whole body.");
  if (!RemovesSomething(body, tool, cut.Result())) throw Refusal("The cut removes nothing from the body.");
  return Unified(cut.Result());
}

NamedShape Apply(Operation operation, const NamedShape& body, const NamedShape& tool) {
  return operation == Operation::kJoin ? Join(body, tool) : Cut(body, tool);
}

bool HasChanged(const NamedShape& before, const NamedShape& after, const FeaturePlace& place) {
  for (const TopoDS_Face& face : after.Faces()) {
    const FeaturePlace& maker = after.names.Find(face).place;
    if (maker.feature == place.feature && maker.copy == place.copy) return true;
  }
  // Its faces may all have become parts of older ones, as those of a plug do that fills a hole flush.
  const VolumeChange change = ChangeOfVolume(before, after);
  return std::abs(change.gained) > kClearShare * change.at_stake;
}

}  // namespace bench::kernel
