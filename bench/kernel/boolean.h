// Boolean operations on named solids.
#pragma once

#include <BRepAlgoAPI_BooleanOperation.hxx>
#include <memory>
#include <vector>

#include "bench/kernel/named_shape.h"

namespace bench::kernel {

enum class BooleanKind { kFuse, kCut, kCommon };

class Boolean {
 public:
  // Throws Refusal when the toolkit cannot do it or gives a solid that is not valid. Neighbouring faces on
  // one surface stay apart in the result; see Unified.
  Boolean(BooleanKind kind, const NamedShape& objects, const NamedShape& tools);

  const NamedShape& Result() const { return result_; }
  // What a face of the objects or tools became in the result.
  std::vector<TopoDS_Face> Descendants(const TopoDS_Face& face);

 private:
  std::unique_ptr<BRepAlgoAPI_BooleanOperation> operation_;
  NamedShape result_;
};

}  // namespace bench::kernel
