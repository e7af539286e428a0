// What tests of features stand on: element trees, sketches and solids, made through the toolkit's calls as an
// add-in makes them. Lengths are in model units.
#pragma once

#include <ProElement.h>
#include <ProFeature.h>
#include <ProSection.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "bench/host/features/features.h"
#include "tests/support/bench_fixture.h"

namespace bench::support {

// A tree that a test owns. What is hung into it under the id that is left out isn't there.
class Tree {
 public:
  explicit Tree(int left_out = 0, int root = 386);
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;
  ~Tree();

  ProElement Root() const { return root_; }
  ProElement Compound(ProElement parent, int id);
  void Integer(ProElement parent, int id, int value);
  void Double(ProElement parent, int id, double value);
  void Text(ProElement parent, int id, std::wstring value);
  void Reference(ProElement parent, int id, ProModelitem item);

 private:
  ProElement Hang(ProElement parent, int id, const std::function<ProError(ProElement)>& set_value);
  int left_out_;
  ProElement root_ = nullptr;
  ProElement aside_ = nullptr;
};

// A row of a tree that is made without the toolkit's calls: the way to an element, and its value. A row
// without a value takes away what stands there.
struct NodeRow {
  std::vector<int> path;
  std::optional<ElementNode::Value> value;
};
using NodeRows = std::vector<NodeRow>;
NodeRows With(NodeRows rows, const NodeRow& change);

struct Creation {
  ProError status = PRO_TK_GENERAL_ERROR;
  int errors = 0;
  ProFeature feature{};
};

struct ExtrudeValues {
  int first_side = 4096;
  int second_side = 262144;
  std::optional<double> depth = 10;  // element 434
  std::optional<double> depth2{};    // element 431
  int direction = -1;
  bool cut = false;
  std::optional<double> taper_deg{};
};

class FeatureTest : public BenchTest {
 protected:
  void SetUp() override;

  ProSolid Solid() { return SolidHandle(*part_); }
  // Drawn into the part at hand: a rectangle of 40 by 20 with its corner in the section's origin, a circle on
  // FRONT.
  ProFeature Plate(std::wstring_view plane = L"FRONT");
  ProFeature Circle(double x, double y, double radius);
  // The part at hand goes out of the session and comes back from its file.
  void SaveAndRetrieve();
  // Of the part at hand, in millimetres, to 1e-6.
  void ExpectVolume(double volume);
  void ExpectOutline(const Vector3& low, const Vector3& high);

  // The program of the kernel that the environment names.
  std::wstring KernelProgram();

  using Drawing = std::function<void(ProSection)>;

  // The surface of a template's datum plane.
  ProModelitem PlaneOf(Model& model, std::wstring_view name);
  // Where a sketch lies and how it is turned.
  void FillSetup(Tree& tree, ProElement setup, ProModelitem plane, ProModelitem reference,
                 int orientation = 4);
  // The tree of a sketch on a plane, turned as a caller turns it: RIGHT to the right, on RIGHT itself TOP to
  // the top.
  void FillSketchTree(Tree& tree, Model& model, std::wstring_view name, std::wstring_view plane);

  Creation Create(Model& model, ProElement tree, int option);
  Creation CreateFromSketch(Model& model, ProElement tree, const ProFeature& sketch, int option = 1);
  Creation Redefine(ProFeature feature, ProElement tree);
  FeatureOutcome CreateOf(const NodeRows& rows, int option = 1);
  // Such a tree is refused with an error, which names the element where one is told, and nothing changes.
  void ExpectRefusal(const NodeRows& rows, int element = 0, int option = 1);
  // Each row must be there, whole numbers must be as told and lengths above 0.
  void ExpectEveryRowToMatter(const NodeRows& rows);
  // The first item of that type whose key ends so.
  ItemReference ItemOf(ProType type, const std::string& key_ending);
  // The plane face of the part at hand with that normal whose plane lies so far from the origin along it.
  ProModelitem Face(const Vector3& normal, double distance);
  // The model's only cylinder.
  ProModelitem Cylinder(Model& model);

  // Extracts the feature's tree, draws into its section and redefines the feature.
  Creation Redraw(ProFeature feature, const Drawing& draw);
  // The whole way of a sketch; it must succeed.
  ProFeature Sketch(Model& model, std::wstring_view name, std::wstring_view plane, const Drawing& draw);

  void FillExtrudeTree(Tree& tree, const ExtrudeValues& values);
  Creation Extrude(Model& model, const ProFeature& sketch, const ExtrudeValues& values);
  // A datum plane along the normal of another plane.
  Creation OffsetPlane(Model& model, ProModelitem base, double distance, std::wstring name, int left_out = 0);
  // A datum axis where two planes meet.
  Creation DatumAxis(ProModelitem plane1, ProModelitem plane2, std::wstring name = L"AXIS");

  // The model as its file would be, with what a file doesn't hold.
  std::string Snapshot(const Model& model);

  Model* part_ = nullptr;
};

// The section of a tree with one; null when there is none.
ProSection SectionIn(ProElement tree);

int AddPoint(ProSection section, double x, double y);
int AddLine(ProSection section, double x1, double y1, double x2, double y2);
int AddCenterline(ProSection section, double x1, double y1, double x2, double y2);
int AddCircle(ProSection section, double x, double y, double radius);
int AddArc(ProSection section, double x, double y, double radius, double start, double end);
void AddRectangle(ProSection section, double x1, double y1, double x2, double y2);

}  // namespace bench::support
