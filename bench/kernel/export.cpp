#include "bench/kernel/export.h"

#include <APIHeaderSection_MakeHeader.hxx>
#include <BRepBuilderAPI_Copy.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Tool.hxx>
#include <IGESBasic_SubfigureDef.hxx>
#include <IGESControl_Controller.hxx>
#include <IGESControl_Writer.hxx>
#include <IGESData_GlobalSection.hxx>
#include <IGESData_IGESModel.hxx>
#include <Interface_Static.hxx>
#include <Poly_Triangulation.hxx>
#include <STEPControl_Writer.hxx>
#include <StepBasic_Product.hxx>
#include <StepData_StepModel.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "bench/kernel/bounds.h"
#include "bench/kernel/refusal.h"

namespace bench::kernel {

namespace {

constexpr char kWriterName[] = "creokernel";

// A folder of its own for the toolkit's writers that know nothing but files.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "creokernel-XXXXXX").string();
    if (!mkdtemp(name.data())) throw Refusal("There is no room for a temporary file.");
    path_ = name;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::filesystem::path File(const char* name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

std::string BytesOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream bytes;
  bytes << stream.rdbuf();
  return bytes.str();
}

Handle(TCollection_HAsciiString) Ascii(const std::string& text) {
  return new TCollection_HAsciiString(text.c_str());
}

// Writes the header and the product's name, for which the writer has words of its own.
void Sign(const Handle(StepData_StepModel) & model, const std::string& name) {
  APIHeaderSection_MakeHeader header(model);
  header.SetName(Ascii(name));
  header.SetAuthorValue(1, Ascii(""));
  header.SetOrganizationValue(1, Ascii(""));
  header.SetPreprocessorVersion(Ascii(kWriterName));
  header.SetOriginatingSystem(Ascii(kWriterName));
  header.SetAuthorisation(Ascii(""));
  header.SetDescriptionValue(1, Ascii(name));
  for (int i = 1; i <= model->NbEntities(); ++i) {
    const auto product = Handle(StepBasic_Product)::DownCast(model->Value(i));
    if (product.IsNull()) continue;
    product->SetId(Ascii(name));
    product->SetName(Ascii(name));
  }
}

std::string StepBytes(const std::string& name, const NamedShape& body) {
  STEPControl_Writer writer;
  Interface_Static::SetCVal("write.step.unit", "MM");
  // Several solids are one product's, no assembly.
  Interface_Static::SetIVal("write.step.assembly", 0);
  if (writer.Transfer(body.Compound(), STEPControl_AsIs) != IFSelect_RetDone)
    throw Refusal("The part can't be written as STEP.");
  Sign(writer.Model(), name);
  const TemporaryFolder folder;
  const auto file = folder.File("part.stp");
  if (writer.Write(file.c_str()) != IFSelect_RetDone) throw Refusal("The STEP file can't be written.");
  return BytesOf(file);
}

// A product without geometry: a definition of nothing under its name.
Handle(IGESData_IGESEntity) EmptyDefinition(const std::string& name) {
  const Handle(IGESBasic_SubfigureDef) definition = new IGESBasic_SubfigureDef;
  definition->Init(0, Ascii(name), nullptr);
  return definition;
}

std::string IgesBytes(const std::string& name, const NamedShape& body) {
  IGESControl_Controller::Init();
  constexpr int kWholeSolids = 1;
  IGESControl_Writer writer("MM", kWholeSolids);
  const bool added =
      body.IsEmpty() ? writer.AddEntity(EmptyDefinition(name)) : writer.AddShape(body.Compound());
  if (!added) throw Refusal("The part can't be written as IGES.");
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

void AddFacets(const TopoDS_Face& face, StlFile& file) {
  TopLoc_Location location;
  const Handle(Poly_Triangulation) mesh = BRep_Tool::Triangulation(face, location);
  if (mesh.IsNull()) throw Refusal("A face of the part can't be divided into facets.");
  for (int i = 1; i <= mesh->NbTriangles(); ++i) {
    int a = 0, b = 0, c = 0;
    mesh->Triangle(i).Get(a, b, c);
    if (face.Orientation() == TopAbs_REVERSED) std::swap(b, c);
    const auto node = [&](int index) { return mesh->Node(index).Transformed(location.Transformation()); };
    file.Add(node(a), node(b), node(c));
  }
}

std::string StlBytes(const std::string& name, const NamedShape& body) {
  if (body.IsEmpty()) throw Refusal("There is no solid to write as STL.");
  // A facet stays this part of the body's size away from the surface, and turns by no more than this angle.
  constexpr double kDeflection = 2e-4, kAngle = 0.2;
  const Bounds bounds = BoundsOf(body.Compound());
  const double size = (bounds.high - bounds.low).Modulus();
  // The mesh would stay on the body that the cache keeps.
  const TopoDS_Shape copy = BRepBuilderAPI_Copy(body.Compound()).Shape();
  constexpr bool kRelativeToEdges = false;
  BRepMesh_IncrementalMesh(copy, kDeflection * size, kRelativeToEdges, kAngle);
  // A title that began with "solid" would be taken for the text form.
  StlFile file("STL " + name);
  for (TopExp_Explorer faces(copy, TopAbs_FACE); faces.More(); faces.Next())
    AddFacets(TopoDS::Face(faces.Current()), file);
  return file.Bytes();
}

}  // namespace

std::string ExportBytes(ExportFormat format, const std::string& name, const NamedShape& body) {
  switch (format) {
    case ExportFormat::kStep:
      return StepBytes(name, body);
    case ExportFormat::kIges:
      return IgesBytes(name, body);
    case ExportFormat::kStl:
      return StlBytes(name, body);
  }
  throw Refusal("The format is unknown.");
}

}  // namespace bench::kernel
