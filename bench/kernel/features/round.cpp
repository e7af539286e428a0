#include "bench/kernel/features/round.h"

#include <BRepFilletAPI_MakeFillet.hxx>

#include "bench/kernel/features/edge_feature.h"
#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

class RoundFeature : public EdgeFeature {
 public:
  explicit RoundFeature(const Fields& fields)
      : EdgeFeature(fields, "round"), radius_(fields.Number("radius")) {}

 protected:
  void Check(const BodyKeys&) const override {
    if (!(radius_ > 0)) throw Refusal("The radius must be above 0.");
  }

  std::unique_ptr<BRepFilletAPI_LocalOperation> Start(const TopoDS_Solid& solid) const override {
    return std::make_unique<BRepFilletAPI_MakeFillet>(solid);
  }

  void Add(BRepFilletAPI_LocalOperation& maker, const KeyedEdge& edge,
           const SolidInWork& solid) const override {
    static_cast<BRepFilletAPI_MakeFillet&>(maker).Add(radius_, solid.CopyOf(edge));
  }

 private:
  double radius_ = 0;
};

}  // namespace

std::unique_ptr<const Feature> ReadRound(const Fields& fields, const std::string&) {
  return std::make_unique<RoundFeature>(fields);
}

}  // namespace bench::kernel
