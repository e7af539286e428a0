#include "bench/kernel/export.h"

#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <IGESBasic_SubfigureDef.hxx>
#include <IGESControl_Controller.hxx>
#include <IGESControl_Writer.hxx>
#include <IGESData_GlobalSection.hxx>
#include <IGESData_IGESModel.hxx>
#include <Poly_Triangulation.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <map>
#include <sstream>
#include <vector>

#include "bench/kernel/bounds.h"
#include "bench/kernel/mesh.h"
#include "bench/kernel/refusal.h"
#include "bench/kernel/step_file.h"
#include "bench/kernel/written_file.h"

namespace bench::kernel {

namespace {

// A product without geometry: a definition of nothing under its name.
Handle(IGESData_IGESEntity) EmptyDefinition(const std::string& name) {
  const Handle(IGESBasic_SubfigureDef) definition = new IGESBasic_SubfigureDef;
  definition->Init(0, Ascii(name), nullptr);
  return definition;
}

// All bodies where they are.
TopoDS_Compound InPlace(const Scene& scene, const std::vector<PlacedPart>& bodies) {
  TopoDS_Compound all;
  BRep_Builder().MakeCompound(all);
  for (const PlacedPart& body : bodies)
    BRep_Builder().Add(all, scene.models[body.model].body.Compound().Moved(TopLoc_Location(body.place)));
  return all;
}

std::string IgesBytes(const Scene& scene) {
  const std::string& name = scene.Root().name;
  const std::vector<PlacedPart> bodies = scene.Bodies();
  IGESControl_Controller::Init();
  constexpr int kWholeSolids = 1;
  IGESControl_Writer writer("MM", kWholeSolids);
  const bool added =
      bodies.empty() ? writer.AddEntity(EmptyDefinition(name)) : writer.AddShape(InPlace(scene, bodies));
  if (!added) throw Refusal("The model can't be written as IGES.");
  writer.ComputeModel();
  IGESData_GlobalSection section = writer.Model()->GlobalSection();
  section.SetSendName(Ascii(name));
  section.SetReceiveName(Ascii(name));
  section.SetFileName(Ascii(name + ".igs"));
  section.SetSystemId(Ascii(kWriterName));
  section.SetInterfaceVersion(Ascii("1.0"));
  section.SetAuthorName(Ascii(kWriterName));
  section.SetCompanyName(Ascii(""));
  writer.Model()->SetGlobalSection(section);
  std::ostringstream stream;
  if (!writer.Write(stream)) throw Refusal("The IGES file can't be written.");
  return stream.str();
}

// The binary form: 80 bytes of title, the count, then 50 bytes for each facet, little-endian.
class StlFile {
 public:
  explicit StlFile(std::string title) {
    title.resize(80, ' ');
    bytes_ = title;
    Append(count_);
  }

  void Add(const gp_Pnt& a, const gp_Pnt& b, const gp_Pnt& c) {
    gp_Vec normal = gp_Vec(a, b).Crossed(gp_Vec(a, c));
    if (normal.Magnitude() > 0) normal.Normalize();
    for (const gp_XYZ& triple : {normal.XYZ(), a.XYZ(), b.XYZ(), c.XYZ()}) {
      for (const int axis : {1, 2, 3}) Append(static_cast<float>(triple.Coord(axis)));
    }
    Append(std::uint16_t{0});
    ++count_;
  }

  std::string Bytes() const {
    std::string bytes = bytes_;
    std::memcpy(bytes.data() + 80, &count_, sizeof count_);
    return bytes;
  }

 private:
  template <typename T>
  void Append(const T& value) {
    bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
  }

  std::string bytes_;
  std::uint32_t count_ = 0;
};

void AddFacets(const TopoDS_Face& face, const gp_Trsf& place, StlFile& file) {
  TopLoc_Location location;
  const Handle(Poly_Triangulation) mesh = BRep_Tool::Triangulation(face, location);
  if (mesh.IsNull()) throw Refusal("A face of the model can't be divided into facets.");
  const gp_Trsf motion = place * location.Transformation();
  for (int i = 1; i <= mesh->NbTriangles(); ++i) {
    int a = 0, b = 0, c = 0;
    mesh->Triangle(i).Get(a, b, c);
    if (face.Orientation() == TopAbs_REVERSED) std::swap(b, c);
    const auto node = [&](int index) { return mesh->Node(index).Transformed(motion); };
    file.Add(node(a), node(b), node(c));
  }
}

std::string StlBytes(const Scene& scene) {
  const std::vector<PlacedPart> bodies = scene.Bodies();
  if (bodies.empty()) throw Refusal("There is no solid to write as STL.");
  // A facet stays this part of the whole's size away from the surface.
  constexpr double kDeflection = 2e-4;
  const Bounds bounds = BoundsOf(InPlace(scene, bodies));
  const double size = (bounds.high - bounds.low).Modulus();
  // A title that began with "solid" would be taken for the text form.
  StlFile file("STL " + scene.Root().name);
  std::map<ModelIndex, TopoDS_Shape> meshes;
  for (const PlacedPart& body : bodies) {
    TopoDS_Shape& mesh = meshes[body.model];
    if (mesh.IsNull()) mesh = Meshed(scene.models[body.model].body.Compound(), kDeflection * size);
    for (TopExp_Explorer faces(mesh, TopAbs_FACE); faces.More(); faces.Next())
      AddFacets(TopoDS::Face(faces.Current()), body.place, file);
  }
  return file.Bytes();
}

}  // namespace

std::string ExportBytes(ExportFormat format, const Scene& scene) {
  switch (format) {
    case ExportFormat::kStep:
      return StepBytes(scene);
    case ExportFormat::kIges:
      return IgesBytes(scene);
    case ExportFormat::kStl:
      return StlBytes(scene);
  }
  throw Refusal("The format is unknown.");
}

}  // namespace bench::kernel
