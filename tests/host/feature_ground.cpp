#include "tests/host/feature_ground.h"

#include <ProArray.h>
#include <ProReference.h>
#include <ProSelection.h>

#include <cmath>
#include <cstdlib>

#include "bench/host/storage/model_json.h"
#include "bench/host/storage/model_store.h"
#include "bench/host/text.h"

namespace bench::support {
namespace {

ProFeatureCreateOptions* OneOption(int option) {
  ProArray array = nullptr;
  EXPECT_EQ(ProArrayAlloc(1, sizeof(int), 1, &array), PRO_TK_NO_ERROR);
  *static_cast<int*>(array) = option;
  return static_cast<ProFeatureCreateOptions*>(array);
}

void Free(void* array) {
  EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
}

ProSelection Select(ProModelitem item) {
  ProSelection selection = nullptr;
  EXPECT_EQ(ProSelectionAlloc(nullptr, &item, &selection), PRO_TK_NO_ERROR);
  return selection;
}

template <typename Make>
Creation MakeIn(Model& model, int option, Make make) {
  Creation creation;
  ProErrorlist errors{};
  ProModelitem item{};
  EXPECT_EQ(ProMdlToModelitem(&model, &item), PRO_TK_NO_ERROR);
  ProSelection selection = Select(item);
  auto* options = OneOption(option);
  creation.status = make(selection, options, &creation.feature, &errors);
  creation.errors = errors.error_number;
  Free(options);
  EXPECT_EQ(ProSelectionFree(&selection), PRO_TK_NO_ERROR);
  return creation;
}

template <typename Record>
int Add(ProSection section, Record record) {
  int id = -1;
  EXPECT_EQ(ProSectionEntityAdd(section, reinterpret_cast<Pro2dEntdef*>(&record), &id), PRO_TK_NO_ERROR);
  return id;
}

}  // namespace

Tree::Tree(int left_out, int root) : left_out_(left_out) {
  EXPECT_EQ(ProElementAlloc(root, &root_), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElementAlloc(386, &aside_), PRO_TK_NO_ERROR);
}

Tree::~Tree() {
  EXPECT_EQ(ProElementFree(&root_), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElementFree(&aside_), PRO_TK_NO_ERROR);
}

ProElement Tree::Hang(ProElement parent, int id, const std::function<ProError(ProElement)>& set_value) {
  ProElement element = nullptr;
  EXPECT_EQ(ProElementAlloc(id, &element), PRO_TK_NO_ERROR);
  if (set_value) {
    EXPECT_EQ(set_value(element), PRO_TK_NO_ERROR) << "element " << id;
  }
  if (id == left_out_) parent = aside_;
  EXPECT_EQ(ProElemtreeElementAdd(parent, nullptr, element), PRO_TK_NO_ERROR) << "element " << id;
  return element;
}

ProElement Tree::Compound(ProElement parent, int id) {
  return Hang(parent, id, nullptr);
}

void Tree::Integer(ProElement parent, int id, int value) {
  Hang(parent, id, [value](ProElement element) { return ProElementIntegerSet(element, value); });
}

void Tree::Double(ProElement parent, int id, double value) {
  Hang(parent, id, [value](ProElement element) { return ProElementDoubleSet(element, value); });
}

void Tree::Text(ProElement parent, int id, std::wstring value) {
  Hang(parent, id, [&value](ProElement element) { return ProElementWstringSet(element, value.data()); });
}

void Tree::Reference(ProElement parent, int id, ProModelitem item) {
  ProSelection selection = Select(item);
  ProReference reference = nullptr;
  EXPECT_EQ(ProSelectionToReference(selection, &reference), PRO_TK_NO_ERROR);
  Hang(parent, id, [reference](ProElement element) { return ProElementReferenceSet(element, reference); });
  EXPECT_EQ(ProReferenceFree(reference), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProSelectionFree(&selection), PRO_TK_NO_ERROR);
}

NodeRows With(NodeRows rows, const NodeRow& change) {
  rows.push_back(change);
  return rows;
}

void FeatureTest::SetUp() {
  BenchTest::SetUp();
  RequireKernel();
  if (HasFatalFailure()) return;
  // A test that failed may have left another one.
  host().kernel.SetProgram(KernelProgram());
  part_ = &NewPart(L"PART");
}

ProFeature FeatureTest::Plate(std::wstring_view plane) {
  return Sketch(*part_, L"PLATE", plane, [](ProSection section) { AddRectangle(section, 0, 0, 40, 20); });
}

ProFeature FeatureTest::Circle(double x, double y, double radius) {
  return Sketch(*part_, L"CIRCLE", L"FRONT", [=](ProSection section) { AddCircle(section, x, y, radius); });
}

void FeatureTest::SaveAndRetrieve() {
  const std::wstring name = part_->name;
  ASSERT_EQ(ProMdlSave(Handle(*part_)), PRO_TK_NO_ERROR);
  ASSERT_EQ(ProMdlErase(Handle(*part_)), PRO_TK_NO_ERROR);
  ASSERT_EQ(RetrieveModel(name, PRO_MDL_PART, part_), PRO_TK_NO_ERROR);
}

void FeatureTest::ExpectVolume(double volume) {
  ASSERT_TRUE(part_->topology.mass);
  EXPECT_NEAR(part_->topology.mass->volume / volume, 1, 1e-6);
}

void FeatureTest::ExpectOutline(const Vector3& low, const Vector3& high) {
  ASSERT_TRUE(part_->topology.outline);
  for (int i = 0; i < 3; ++i) {
    EXPECT_NEAR(part_->topology.outline->low[i], low[i], 1e-6) << "low " << i;
    EXPECT_NEAR(part_->topology.outline->high[i], high[i], 1e-6) << "high " << i;
  }
}

std::wstring FeatureTest::KernelProgram() {
  return FromUtf8(std::getenv("VEK_BENCH_KERNEL"));
}

ProModelitem FeatureTest::PlaneOf(Model& model, std::wstring_view name) {
  for (const auto& feature : model.features)
    if (feature->name == name) return {PRO_SURFACE, feature->items.front().id, &model};
  ADD_FAILURE() << "no such plane";
  return {};
}

void FeatureTest::FillSetup(Tree& tree, ProElement setup, ProModelitem plane, ProModelitem reference,
                            int orientation) {
  tree.Reference(setup, 451, plane);
  tree.Integer(setup, 452, 1);
  tree.Integer(setup, 454, orientation);
  tree.Reference(setup, 455, reference);
}

void FeatureTest::FillSketchTree(Tree& tree, Model& model, std::wstring_view name, std::wstring_view plane) {
  const bool on_right = plane == L"RIGHT";
  tree.Integer(tree.Root(), 387, 949);
  tree.Integer(tree.Root(), 511, 0);
  tree.Text(tree.Root(), 1964, std::wstring(name));
  const ProElement section = tree.Compound(tree.Root(), 447);
  FillSetup(tree, tree.Compound(section, 450), PlaneOf(model, plane),
            PlaneOf(model, on_right ? L"TOP" : L"RIGHT"), on_right ? 1 : 4);
}

Creation FeatureTest::Create(Model& model, ProElement tree, int option) {
  return MakeIn(model, option, [tree](auto in, auto* options, auto* feature, auto* errors) {
    return ProFeatureWithoptionsCreate(in, tree, options, 0, feature, errors);
  });
}

Creation FeatureTest::CreateFromSketch(Model& model, ProElement tree, const ProFeature& sketch, int option) {
  ProSelection of_sketch = Select(sketch);
  ProArray sketches = nullptr;
  EXPECT_EQ(ProArrayAlloc(1, sizeof(ProSelection), 1, &sketches), PRO_TK_NO_ERROR);
  auto* copy = static_cast<ProSelection*>(sketches);
  EXPECT_EQ(ProSelectionCopy(of_sketch, copy), PRO_TK_NO_ERROR);
  const Creation creation = MakeIn(model, option, [&](auto in, auto* options, auto* feature, auto* errors) {
    return ProFeatureSketchedWithOptionsCreate(in, tree, options, copy, 0, feature, errors);
  });
  EXPECT_EQ(ProSelectionFree(copy), PRO_TK_NO_ERROR);
  Free(sketches);
  EXPECT_EQ(ProSelectionFree(&of_sketch), PRO_TK_NO_ERROR);
  return creation;
}

Creation FeatureTest::Redefine(ProFeature feature, ProElement tree) {
  Creation creation;
  creation.feature = feature;
  ProErrorlist errors{};
  auto* options = OneOption(0);
  creation.status = ProFeatureWithoptionsRedefine(nullptr, &feature, tree, options, 0, &errors);
  creation.errors = errors.error_number;
  Free(options);
  return creation;
}

FeatureOutcome FeatureTest::CreateOf(const NodeRows& rows, int option) {
  ElementNode tree;
  tree.id = 386;
  for (const NodeRow& row : rows) {
    ElementNode* node = &tree;
    ElementNode* parent = nullptr;
    for (const int id : row.path) {
      parent = node;
      if (!parent->Child(id)) parent->children.emplace_back(std::make_unique<ElementNode>())->id = id;
      node = parent->Child(id);
    }
    if (row.value)
      node->value = *row.value;
    else
      std::erase_if(parent->children, [&](const auto& child) { return child.get() == node; });
  }
  return CreateFeature(*part_, tree, {option}, nullptr);
}

void FeatureTest::ExpectRefusal(const NodeRows& rows, int element, int option) {
  const auto& path = rows.back().path;
  SCOPED_TRACE(testing::PrintToString(path) + " " + std::to_string(element));
  const std::string before = Snapshot(*part_);
  const FeatureOutcome outcome = CreateOf(rows, option);
  EXPECT_NE(outcome.status, PRO_TK_NO_ERROR);
  EXPECT_EQ(Snapshot(*part_), before);
  ASSERT_FALSE(outcome.errors.empty());
  if (element != 0) {
    EXPECT_EQ(outcome.errors.front().err_item_id, element);
  }
}

void FeatureTest::ExpectEveryRowToMatter(const NodeRows& rows) {
  for (const NodeRow& row : rows) {
    ExpectRefusal(With(rows, {row.path, {}}));
    if (std::holds_alternative<int>(*row.value)) ExpectRefusal(With(rows, {row.path, -9}));
    if (std::holds_alternative<double>(*row.value)) ExpectRefusal(With(rows, {row.path, 0.0}));
  }
}

ItemReference FeatureTest::ItemOf(ProType type, const std::string& key_ending) {
  for (const auto& feature : part_->features)
    for (const GeometryItem& item : feature->items)
      if (item.type == type && item.alive && item.key.ends_with(key_ending))
        return {type, item.id, SolidHandle(*part_)};
  ADD_FAILURE() << "no item " << key_ending;
  return {};
}

ProModelitem FeatureTest::Face(const Vector3& normal, double distance) {
  for (const FaceInfo& face : part_->topology.faces)
    if (face.type == "plane" && Length(face.normal - normal) < 1e-6 &&
        std::abs(Dot(face.point, normal) - distance) < 1e-6)
      return {PRO_SURFACE, part_->ids_of_keys.at(face.key), part_};
  ADD_FAILURE() << "no such face";
  return {};
}

ProModelitem FeatureTest::Cylinder(Model& model) {
  for (const FaceInfo& face : model.topology.faces)
    if (face.type == "cylinder") return {PRO_SURFACE, model.ids_of_keys.at(face.key), &model};
  ADD_FAILURE() << "no cylinder";
  return {};
}

Creation FeatureTest::Redraw(ProFeature feature, const Drawing& draw) {
  ProElement tree = nullptr;
  EXPECT_EQ(ProFeatureElemtreeExtract(&feature, nullptr, PRO_FEAT_EXTRACT_NO_OPTS, &tree), PRO_TK_NO_ERROR);
  const ProSection section = SectionIn(tree);
  if (section) draw(section);
  const Creation creation = Redefine(feature, tree);
  EXPECT_EQ(ProFeatureElemtreeFree(&feature, tree), PRO_TK_NO_ERROR);
  return creation;
}

ProFeature FeatureTest::Sketch(Model& model, std::wstring_view name, std::wstring_view plane,
                               const Drawing& draw) {
  Tree tree;
  FillSketchTree(tree, model, name, plane);
  const Creation incomplete = Create(model, tree.Root(), 2);
  EXPECT_EQ(incomplete.status, PRO_TK_NO_ERROR);
  EXPECT_EQ(Redraw(incomplete.feature, draw).status, PRO_TK_NO_ERROR);
  return incomplete.feature;
}

void FeatureTest::FillExtrudeTree(Tree& tree, const ExtrudeValues& values) {
  const ProElement root = tree.Root();
  tree.Integer(root, 387, 917);
  tree.Integer(root, 388, 1);
  tree.Integer(root, 1956, 917);
  tree.Integer(root, 2023, values.cut ? 916 : -1);
  tree.Integer(root, 3176, 0);
  tree.Compound(root, 447);
  tree.Integer(root, 436, values.direction);
  const ProElement depth = tree.Compound(root, 515);
  const ProElement first = tree.Compound(depth, 428);
  const ProElement second = tree.Compound(depth, 429);
  tree.Integer(first, 430, values.first_side);
  if (values.depth2) tree.Double(first, 431, *values.depth2);
  tree.Integer(second, 433, values.second_side);
  if (values.depth) tree.Double(second, 434, *values.depth);
  const ProElement draft = tree.Compound(root, 5096);
  tree.Integer(draft, 5097, values.taper_deg ? 80 : -1);
  if (values.taper_deg) tree.Double(draft, 5098, *values.taper_deg);
}

Creation FeatureTest::Extrude(Model& model, const ProFeature& sketch, const ExtrudeValues& values) {
  Tree tree;
  FillExtrudeTree(tree, values);
  return CreateFromSketch(model, tree.Root(), sketch);
}

Creation FeatureTest::OffsetPlane(Model& model, ProModelitem base, double distance, std::wstring name,
                                  int left_out) {
  Tree tree(left_out);
  tree.Integer(tree.Root(), 387, 923);
  tree.Text(tree.Root(), 1964, std::move(name));
  const ProElement constraint = tree.Compound(tree.Compound(tree.Root(), 410), 411);
  tree.Integer(constraint, 412, 3);
  tree.Reference(constraint, 413, base);
  tree.Double(constraint, 414, distance);
  return Create(model, tree.Root(), 1);
}

Creation FeatureTest::DatumAxis(ProModelitem plane1, ProModelitem plane2, std::wstring name) {
  Tree tree;
  tree.Integer(tree.Root(), 387, 926);
  tree.Text(tree.Root(), 1964, std::move(name));
  const ProElement constraints = tree.Compound(tree.Root(), 2015);
  for (const ProModelitem& plane : {plane1, plane2}) {
    const ProElement constraint = tree.Compound(constraints, 2016);
    tree.Integer(constraint, 2017, 1);
    tree.Reference(constraint, 2018, plane);
  }
  return Create(*part_, tree.Root(), 1);
}

std::string FeatureTest::Snapshot(const Model& model) {
  const auto& mass = model.topology.mass;
  return ModelToText(model) + (model.modified ? "modified " : "unmodified ") +
         std::to_string(model.topology.faces.size()) + " faces " + std::to_string(mass ? mass->volume : 0);
}

ProSection SectionIn(ProElement tree) {
  ProElempathItem items[2] = {{PRO_ELEM_PATH_ITEM_ID, {447}}, {PRO_ELEM_PATH_ITEM_ID, {458}}};
  ProElempath path = nullptr;
  EXPECT_EQ(ProElempathAlloc(&path), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElempathDataSet(path, items, 2), PRO_TK_NO_ERROR);
  ProElement element = nullptr;
  EXPECT_EQ(ProElemtreeElementGet(tree, path, &element), PRO_TK_NO_ERROR);
  EXPECT_EQ(ProElempathFree(&path), PRO_TK_NO_ERROR);
  ProAppData section = nullptr;
  EXPECT_EQ(ProElementSpecialvalueGet(element, nullptr, &section), PRO_TK_NO_ERROR);
  return static_cast<ProSection>(section);
}

int AddPoint(ProSection section, double x, double y) {
  return Add(section, Pro2dPntdef{PRO_2D_POINT, {x, y}});
}

int AddLine(ProSection section, double x1, double y1, double x2, double y2) {
  return Add(section, Pro2dLinedef{PRO_2D_LINE, {x1, y1}, {x2, y2}});
}

int AddCenterline(ProSection section, double x1, double y1, double x2, double y2) {
  return Add(section, Pro2dClinedef{PRO_2D_CENTER_LINE, {x1, y1}, {x2, y2}});
}

int AddCircle(ProSection section, double x, double y, double radius) {
  return Add(section, Pro2dCircledef{PRO_2D_CIRCLE, {x, y}, radius});
}

int AddArc(ProSection section, double x, double y, double radius, double start, double end) {
  return Add(section, Pro2dArcdef{PRO_2D_ARC, {x, y}, start, end, radius});
}

void AddRectangle(ProSection section, double x1, double y1, double x2, double y2) {
  AddLine(section, x1, y1, x2, y1);
  AddLine(section, x2, y1, x2, y2);
  AddLine(section, x2, y2, x1, y2);
  AddLine(section, x1, y2, x1, y1);
}

}  // namespace bench::support
