// Rounds and chamfers: features that replace edges of the body by faces. What both have in common is here:
// which edges they are, that what comes of them makes sense, and the new faces' names.
#pragma once

#include <BRepFilletAPI_LocalOperation.hxx>
#include <memory>
#include <string>
#include <vector>

#include "bench/kernel/feature.h"
#include "bench/kernel/keys.h"
#include "bench/kernel/solid_in_work.h"

namespace bench::kernel {

class EdgeFeature : public Feature {
 public:
  void Build(const FeaturePlace& place, const Before& before, Stage& stage) const final;
  bool StandsOnKeysAlone() const final { return true; }

 protected:
  // `word` is what such a feature is called, in names and in reasons.
  EdgeFeature(const Fields& fields, std::string word);

  // Throws Refusal when numbers or references make no sense on that body.
  virtual void Check(const BodyKeys& keys) const = 0;
  virtual std::unique_ptr<BRepFilletAPI_LocalOperation> Start(const TopoDS_Solid& solid) const = 0;
  // `maker` is one that Start made for the solid at work.
  virtual void Add(BRepFilletAPI_LocalOperation& maker, const KeyedEdge& edge,
                   const SolidInWork& solid) const = 0;

  const std::vector<std::string>& edges() const { return edges_; }

 private:
  using NamedEdges = std::vector<const KeyedEdge*>;

  [[noreturn]] void Refuse() const;
  void AddAll(BRepFilletAPI_LocalOperation& maker, const NamedEdges& named, const SolidInWork& solid) const;
  FaceNames NamesOfMade(BRepFilletAPI_LocalOperation& maker, const SolidInWork& solid, const BodyKeys& keys,
                        const FeaturePlace& place) const;
  void Work(const NamedEdges& named, const SolidInWork& solid, const BodyKeys& keys,
            const FeaturePlace& place, NamedShape& body) const;

  std::string word_;
  std::vector<std::string> edges_;
  bool runs_on_ = false;  // what runs on tangentially from the edges is meant too
};

}  // namespace bench::kernel
