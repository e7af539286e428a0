#include "bench/host/storage/model_json.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace bench {
namespace {

// A sketch with a section of its own, and a protrusion with a copy of it, as they stand in a part.
std::unique_ptr<Model> PartWithFeatures() {
  auto model = std::make_unique<Model>();
  model->name = L"GEHÄUSE";
  model->length_unit = LengthUnit::kInch;
  model->next_id = 40;
  model->parameters = {{L"Length", 2.5, L"in", true}, {L"Label", std::wstring(L"x"), {}}, {L"Count", 3, {}}};
  model->ids_of_keys = {{"12:side:3", 21}, {"12:end", 22}};

  auto sketch = std::make_unique<Feature>();
  sketch->id = 12;
  sketch->type = 949;
  sketch->name = L"Sketch 1";
  sketch->plane = {{0.1, -2.5e-7, 1e300}, {0, 1, 0}, {0, 0, 1}};
  sketch->parents = {1, 5};
  sketch->section = std::make_shared<SectionData>();
  sketch->section->name = L"S1";
  sketch->section->next_id = 7;
  sketch->section->entities[2] = {.type = PRO_2D_SPLINE, .points = {{1, 2}, {3, 4.5}}, .construction = true};
  sketch->section->entities[3] = {.type = PRO_2D_TEXT, .points = {}, .text = L"Ä1", .font = L"DejaVu Serif"};
  sketch->section->next_constraint = 5;
  sketch->section->next_dimension = 6;
  sketch->section->constraints[4] = {.type = 7, .targets = {{2, 1}, {6, 1}}};
  sketch->section->dimensions[5] = {.type = 12, .targets = {{2, 1}, {6, 1}}, .value = 1.25, .place = {3, 4}};
  sketch->section->entities[6] = {
      .type = PRO_2D_ARC, .first = {1, 2}, .radius = 3, .start_angle = 0.5, .end_angle = 2, .points = {}};
  sketch->tree = std::make_unique<ElementNode>();
  sketch->tree->id = 386;
  const auto add = [&](int id, ElementNode::Value value) {
    sketch->tree->children.push_back(std::make_unique<ElementNode>());
    sketch->tree->children.back()->id = id;
    sketch->tree->children.back()->value = std::move(value);
  };
  add(402, -std::numeric_limits<double>::infinity());
  add(1964, std::wstring(L"Name \"quoted\" \\ ü\n"));
  add(451, std::vector<ItemReference>{{PRO_DATUM_PLANE, 6, model.get()}, {}});
  add(458, sketch->section);
  sketch->items.push_back({PRO_CURVE, 14, "12:curve:2", false, L"EDGE"});
  model->features.push_back(std::move(sketch));

  auto boss = std::make_unique<Feature>();
  boss->id = 20;
  boss->type = 917;
  boss->status = PRO_FEAT_SUPPRESSED;
  boss->incomplete = true;
  boss->section = std::make_shared<SectionData>(*model->features[0]->section);
  model->features.push_back(std::move(boss));
  return model;
}

class ModelJsonTest : public testing::Test {
 protected:
  std::unique_ptr<Model> before = PartWithFeatures();
  std::unique_ptr<Model> after = ModelFromText(ModelToText(*before));
};

TEST_F(ModelJsonTest, ModelAndFeaturesSurvive) {
  EXPECT_EQ(after->name, L"GEHÄUSE");
  EXPECT_EQ(after->length_unit, LengthUnit::kInch);
  EXPECT_EQ(after->ids_of_keys, before->ids_of_keys);
  EXPECT_FALSE(after->modified);
  ASSERT_EQ(after->parameters.size(), 3u);
  EXPECT_EQ(after->parameters[0].value, before->parameters[0].value);
  EXPECT_EQ(after->parameters[0].unit, L"in");
  EXPECT_TRUE(after->parameters[0].locked);
  ASSERT_EQ(after->features.size(), 2u);
  const Feature& sketch = *after->features[0];
  EXPECT_EQ(sketch.parents, (std::vector{1, 5}));
  EXPECT_EQ(sketch.plane.origin, (Vector3{0.1, -2.5e-7, 1e300}));
  EXPECT_FALSE(sketch.items.at(0).alive);
  EXPECT_EQ(sketch.items[0].name, L"EDGE");
  const Feature& boss = *after->features[1];
  EXPECT_EQ(boss.status, PRO_FEAT_SUPPRESSED);
  EXPECT_TRUE(boss.incomplete);
  EXPECT_EQ(boss.tree, nullptr);
  EXPECT_EQ(ModelToText(*after), ModelToText(*before));
}

TEST_F(ModelJsonTest, SectionsAndTreesSurvive) {
  const SectionData& section = *after->features[0]->section;
  ASSERT_EQ(section.entities.size(), 3u);
  EXPECT_EQ(section.entities.at(3).text, L"Ä1");
  EXPECT_EQ(section.entities.at(3).font, L"DejaVu Serif");
  EXPECT_EQ(section.constraints.at(4).targets.size(), 2u);
  EXPECT_EQ(section.dimensions.at(5).value, 1.25);
  EXPECT_EQ(section.dimensions.at(5).place, (Point2{3, 4}));
  EXPECT_EQ(section.entities.at(2).points, (std::vector<Point2>{{1, 2}, {3, 4.5}}));
  EXPECT_TRUE(section.entities.at(2).construction);
  const SectionEntity& arc = section.entities.at(6);
  EXPECT_EQ(arc.first, (Point2{1, 2}));
  EXPECT_EQ((std::vector{arc.radius, arc.start_angle, arc.end_angle}), (std::vector{3.0, 0.5, 2.0}));
  EXPECT_NE(after->features[1]->section, after->features[0]->section) << "a copy stays a copy";

  const ElementNode& tree = *after->features[0]->tree;
  EXPECT_EQ(std::get<double>(tree.Child(402)->value), -std::numeric_limits<double>::infinity());
  EXPECT_EQ(std::get<std::wstring>(tree.Child(1964)->value), L"Name \"quoted\" \\ ü\n");
  const auto& references = std::get<std::vector<ItemReference>>(tree.Child(451)->value);
  ASSERT_EQ(references.size(), 2u);
  EXPECT_EQ(references[0].id, 6);
  EXPECT_EQ(references[0].owner, after.get());
  EXPECT_EQ(references[1].owner, nullptr);
  EXPECT_EQ(std::get<std::shared_ptr<SectionData>>(tree.Child(458)->value), after->features[0]->section);
}

TEST_F(ModelJsonTest, ImpossibleIdsAndReferencesToModelsThatAreGoneAreRefused) {
  before->features[1]->id = 12;
  EXPECT_THROW(ModelFromText(ModelToText(*before)), std::runtime_error);
  before->features[1]->id = 40;
  EXPECT_THROW(ModelFromText(ModelToText(*before)), std::runtime_error);
  before->features[1]->id = 20;
  before->features[0]->section->next_id = 6;
  EXPECT_THROW(ModelFromText(ModelToText(*before)), std::runtime_error);

  Model other;
  before->features[0]->tree->Child(451)->value = std::vector<ItemReference>{{PRO_SURFACE, 3, &other}};
  EXPECT_THROW(ModelToText(*before), std::runtime_error);
}

}  // namespace
}  // namespace bench
