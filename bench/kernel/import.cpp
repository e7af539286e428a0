#include "bench/kernel/import.h"

#include <BRepBuilderAPI_MakeSolid.hxx>
#include <BRepBuilderAPI_Sewing.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Interface_Static.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <ShapeFix_Shape.hxx>
#include <StepData_StepModel.hxx>
#include <StepShape_ManifoldSolidBrep.hxx>
#include <TCollection_AsciiString.hxx>
#include <TDF_LabelMapHasher.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopoDS.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <cmath>
#include <optional>
#include <sstream>
#include <string_view>

#include "bench/kernel/base64.h"
#include "bench/kernel/isolated.h"
#include "bench/kernel/measures.h"
#include "bench/kernel/named_shape.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/shape_text.h"

namespace bench::kernel {

using nlohmann::json;

namespace {

constexpr char kBroken[] = "The file is no whole STEP file.";

// The toolkit takes many a file that breaks off for a whole one.
bool HasBothEnds(std::string_view bytes) {
  constexpr std::string_view kStart = "ISO-10303-21", kEnd = "END-ISO-10303-21", kBlank = " \t\r\n";
  constexpr std::size_t kPrelude = 4096;  // blanks and comments
  if (bytes.substr(0, kPrelude).find(kStart) == std::string_view::npos) return false;
  const std::size_t end = bytes.rfind(kEnd);
  if (end == std::string_view::npos) return false;
  const std::size_t close = bytes.find_first_not_of(kBlank, end + kEnd.size());
  return close != std::string_view::npos && bytes[close] == ';';
}

std::string NameOf(const TDF_Label& label) {
  Handle(TDataStd_Name) name;
  if (!label.FindAttribute(TDataStd_Name::GetID(), name)) return {};
  constexpr char kUtf8 = '\0';
  return TCollection_AsciiString(name->Get(), kUtf8).ToCString();
}

// A valid solid that has its material inside, whatever the file says.
TopoDS_Solid Sound(TopoDS_Solid solid, const std::string& product) {
  if (!BRepCheck_Analyzer(solid).IsValid()) {
    ShapeFix_Shape fix(solid);
    fix.Perform();
    const std::vector<TopoDS_Solid> fixed = SolidsIn(fix.Shape());
    if (fixed.size() != 1 || !BRepCheck_Analyzer(fixed.front()).IsValid())
      throw Refusal("A solid of '" + product + "' is not valid.");
    solid = fixed.front();
  }
  NamedShape alone;
  alone.solids = {solid};
  const double volume = VolumeOf(alone);
  if (volume < 0) solid.Reverse();
  if (!(std::abs(volume) > 0)) throw Refusal("A solid of '" + product + "' bounds nothing.");
  return solid;
}

// How many solids the file tells of.
int SolidsTold(const Handle(StepData_StepModel) & model) {
  int count = 0;
  for (int i = 1; i <= model->NbEntities(); ++i)
    if (model->Value(i)->IsKind(STANDARD_TYPE(StepShape_ManifoldSolidBrep))) ++count;
  return count;
}

// The solids that the shells of a shape bound once their faces are sewn: some systems write every face with
// edges of its own, and the toolkit gives such a solid as loose faces.
std::vector<TopoDS_Solid> SewnSolids(const TopoDS_Shape& shape) {
  constexpr double kGap = 1e-5;  // mm
  BRepBuilderAPI_Sewing sewing(kGap);
  sewing.Add(shape);
  sewing.Perform();
  std::vector<TopoDS_Solid> solids;
  for (const TopoDS_Shape& shell : Distinct(sewing.SewedShape(), TopAbs_SHELL))
    if (BRep_Tool::IsClosed(shell)) solids.push_back(BRepBuilderAPI_MakeSolid(TopoDS::Shell(shell)).Solid());
  return solids;
}

json QuiltOf(const TopoDS_Shape& shape, const std::string& product) {
  json shapes = json::array();
  const std::vector<TopoDS_Shape> faces = Distinct(shape, TopAbs_FACE);
  if (faces.empty()) return shapes;
  TopoDS_Compound quilt;
  BRep_Builder().MakeCompound(quilt);
  for (const TopoDS_Shape& face : faces) BRep_Builder().Add(quilt, face);
  if (!BRepCheck_Analyzer(quilt).IsValid()) throw Refusal("A face of '" + product + "' is not valid.");
  shapes.push_back(TextOf(quilt));
  return shapes;
}

json PlaceOf(const TopLoc_Location& location) {
  const gp_Trsf& motion = location.Transformation();
  constexpr double kTolerance = 1e-9;
  if (motion.IsNegative() || !(std::abs(motion.ScaleFactor() - 1) <= kTolerance))
    throw Refusal("The file places a product with a scale.");
  json place = json::array();
  for (int row = 1; row <= 3; ++row)
    for (int column = 1; column <= 4; ++column) place.push_back(motion.Value(row, column));
  return place;
}

class Products {
 public:
  // Whether loose faces may stand for solids.
  explicit Products(bool may_sew) : may_sew_(may_sew) {}

  // The model's index. Products that several others place are read once.
  std::size_t Read(const TDF_Label& label) {
    if (const std::size_t* known = known_.Seek(label)) return *known;
    json model = {{"name", NameOf(label)}};
    if (XCAFDoc_ShapeTool::IsAssembly(label)) {
      model["components"] = ComponentsOf(label);
    } else {
      model["shapes"] = ShapesOf(XCAFDoc_ShapeTool::GetShape(label), model["name"].get<std::string>());
    }
    known_.Bind(label, models_.size());
    models_.push_back(std::move(model));
    return models_.size() - 1;
  }

  // With several products that nothing places, an assembly without a name places them where they are.
  json Whole(const TDF_LabelSequence& roots) {
    json components = json::array();
    for (const TDF_Label& label : roots) AddComponent(label, TopLoc_Location(), "", components);
    if (!has_shapes_) throw Refusal("The file holds no geometry.");
    std::size_t root = components[0]["model"].get<std::size_t>();
    if (components.size() > 1) {
      root = models_.size();
      models_.push_back({{"name", ""}, {"components", std::move(components)}});
    }
    return {{"models", std::move(models_)}, {"root", root}};
  }

  int solids() const { return solids_; }

 private:
  json ShapesOf(const TopoDS_Shape& shape, const std::string& product) {
    json shapes = json::array();
    std::vector<TopoDS_Solid> solids = SolidsIn(shape);
    if (solids.empty() && may_sew_) solids = SewnSolids(shape);
    for (const TopoDS_Solid& solid : solids) shapes.push_back(TextOf(Sound(solid, product)));
    solids_ += static_cast<int>(shapes.size());
    if (shapes.empty()) shapes = QuiltOf(shape, product);
    has_shapes_ = has_shapes_ || !shapes.empty();
    return shapes;
  }

  json ComponentsOf(const TDF_Label& assembly) {
    TDF_LabelSequence labels;
    XCAFDoc_ShapeTool::GetComponents(assembly, labels);
    json components = json::array();
    for (const TDF_Label& label : labels) {
      TDF_Label product;
      if (!XCAFDoc_ShapeTool::GetReferredShape(label, product)) continue;
      AddComponent(product, XCAFDoc_ShapeTool::GetLocation(label), NameOf(label), components);
    }
    return components;
  }

  void AddComponent(const TDF_Label& product, const TopLoc_Location& location, const std::string& name,
                    json& components) {
    const std::size_t model = Read(product);
    components.push_back({{"model", model},
                          {"place", PlaceOf(location)},
                          {"name", name.empty() ? models_[model]["name"] : json(name)}});
  }

  const bool may_sew_;
  json models_ = json::array();
  NCollection_DataMap<TDF_Label, std::size_t, TDF_LabelMapHasher> known_;
  bool has_shapes_ = false;
  int solids_ = 0;
};

json ModelsOf(const std::string& bytes) {
  Interface_Static::SetCVal("xstep.cascade.unit", "MM");
  // The toolkit's own words for what has no name would be taken for names.
  XCAFDoc_ShapeTool::SetAutoNaming(false);
  STEPCAFControl_Reader reader;
  reader.SetNameMode(true);
  std::istringstream stream(bytes);
  if (reader.ChangeReader().ReadStream("import.stp", stream) != IFSelect_RetDone) throw Refusal(kBroken);
  Handle(TDocStd_Document) document = new TDocStd_Document("BinXCAF");
  if (!reader.Transfer(document)) throw Refusal("The file holds no geometry.");
  TDF_LabelSequence roots;
  XCAFDoc_DocumentTool::ShapeTool(document->Main())->GetFreeShapes(roots);
  if (roots.IsEmpty()) throw Refusal("The file holds no geometry.");
  const int told = SolidsTold(reader.Reader().StepModel());
  Products products(told > 0);
  json whole = products.Whole(roots);
  // Faces that can't be sewn are no solid.
  if (products.solids() < told) throw Refusal("A solid of the file is broken.");
  return whole;
}

}  // namespace

json AnswerImport(const Fields& request) {
  const std::string text = request.Text("bytes");
  const std::optional<std::string> bytes = FromBase64(text);
  if (!bytes) request.Complain("'bytes' must be base64");
  if (!HasBothEnds(*bytes)) throw Refusal(kBroken);
  return InIsolation([&] { return ModelsOf(*bytes); }, "The file can't be read.");
}

}  // namespace bench::kernel
