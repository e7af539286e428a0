#include "bench/kernel/step_file.h"

#include <APIHeaderSection_MakeHeader.hxx>
#include <BRep_Builder.hxx>
#include <Interface_Static.hxx>
#include <STEPConstruct.hxx>
#include <STEPControl_ActorWrite.hxx>
#include <STEPControl_Controller.hxx>
#include <STEPControl_Writer.hxx>
#include <StepBasic_Product.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepBasic_ProductDefinitionFormation.hxx>
#include <StepBasic_ProductDefinitionRelationship.hxx>
#include <StepData_StepModel.hxx>
#include <StepRepr_CharacterizedDefinition.hxx>
#include <StepRepr_ProductDefinitionShape.hxx>
#include <StepRepr_PropertyDefinition.hxx>
#include <StepRepr_RepresentedDefinition.hxx>
#include <StepShape_ContextDependentShapeRepresentation.hxx>
#include <StepShape_ShapeDefinitionRepresentation.hxx>
#include <TopTools_MapOfShape.hxx>
#include <TopoDS_Compound.hxx>
#include <TransferBRep.hxx>
#include <TransferBRep_ShapeMapper.hxx>
#include <Transfer_FinderProcess.hxx>
#include <XSControl_TransferWriter.hxx>
#include <XSControl_WorkSession.hxx>
#include <vector>

#include "bench/kernel/refusal.h"
#include "bench/kernel/written_file.h"

namespace bench::kernel {

namespace {

using Definition = Handle(StepShape_ShapeDefinitionRepresentation);

// The shapes that stand for the models. An assembly's is made of those of what it places, each under a
// location of its own.
class ProductShapes {
 public:
  explicit ProductShapes(const Scene& scene) {
    for (const SceneModel& model : scene.models) Add(model);
  }

  const TopoDS_Shape& Of(ModelIndex model) const { return shapes_[model]; }
  // One shape a component, in their order.
  const std::vector<TopoDS_Shape>& ComponentsOf(ModelIndex model) const { return components_[model]; }
  bool IsAssembly(const TopoDS_Shape& shape) const { return assemblies_.Contains(shape.Located({})); }

 private:
  void Add(const SceneModel& model) {
    TopoDS_Compound compound = model.body.Compound();
    std::vector<TopoDS_Shape> components;
    for (const SceneComponent& component : model.components) {
      // A location is told from others by who made it, so that two components at one place stay two.
      components.push_back(shapes_[component.model].Located(TopLoc_Location(component.place)));
      BRep_Builder().Add(compound, components.back());
    }
    if (!components.empty()) assemblies_.Add(compound);
    shapes_.push_back(compound);
    components_.push_back(std::move(components));
  }

  std::vector<TopoDS_Shape> shapes_;
  std::vector<std::vector<TopoDS_Shape>> components_;
  TopTools_MapOfShape assemblies_;
};

// The toolkit's own way takes every compound for an assembly, or none.
class ProductActor : public STEPControl_ActorWrite {
 public:
  explicit ProductActor(const ProductShapes& shapes) : shapes_(shapes) {}
  Standard_Boolean IsAssembly(TopoDS_Shape& shape) const override { return shapes_.IsAssembly(shape); }

 private:
  const ProductShapes& shapes_;
};

class ProductController : public STEPControl_Controller {
 public:
  explicit ProductController(const ProductShapes& shapes) { myAdaptorWrite = new ProductActor(shapes); }
};

void SignHeader(const Handle(StepData_StepModel) & model, const std::string& name) {
  APIHeaderSection_MakeHeader header(model);
  header.SetName(Ascii(name));
  header.SetAuthorValue(1, Ascii(""));
  header.SetOrganizationValue(1, Ascii(""));
  header.SetPreprocessorVersion(Ascii(kWriterName));
  header.SetOriginatingSystem(Ascii(kWriterName));
  header.SetAuthorisation(Ascii(""));
  header.SetDescriptionValue(1, Ascii(name));
}

// Names products and occurrences, for which the writer has words of its own.
class ProductNames {
 public:
  ProductNames(const Scene& scene, const ProductShapes& shapes,
               const Handle(Transfer_FinderProcess) & written)
      : scene_(scene), shapes_(shapes), written_(written) {}

  // The root and what it places at any depth.
  void Write() const {
    std::vector<bool> is_reached(scene_.models.size());
    is_reached[scene_.root] = true;
    for (ModelIndex model = scene_.root + 1; model-- > 0;) {
      if (!is_reached[model]) continue;
      WriteModel(model);
      for (const SceneComponent& component : scene_.models[model].components)
        is_reached[component.model] = true;
    }
  }

 private:
  void WriteModel(ModelIndex model) const {
    const Definition definition = DefinitionOf(model);
    const Handle(StepBasic_Product) product = definition->Definition()
                                                  .PropertyDefinition()
                                                  ->Definition()
                                                  .ProductDefinition()
                                                  ->Formation()
                                                  ->OfProduct();
    product->SetId(Ascii(scene_.models[model].name));
    product->SetName(Ascii(scene_.models[model].name));
    for (std::size_t i = 0; i < scene_.models[model].components.size(); ++i)
      WriteOccurrence(definition, scene_.models[model].components[i], shapes_.ComponentsOf(model)[i]);
  }

  // An occurrence is called by its component's id and what it places.
  void WriteOccurrence(const Definition& assembly, const SceneComponent& component,
                       const TopoDS_Shape& shape) const {
    const auto binder = written_->Find(TransferBRep::ShapeMapper(written_, shape));
    Handle(StepShape_ContextDependentShapeRepresentation) placed;
    if (!STEPConstruct::FindCDSR(binder, assembly, placed))
      throw Refusal("A component can't be written as STEP.");
    const Handle(StepBasic_ProductDefinitionRelationship) occurrence =
        placed->RepresentedProductRelation()->Definition().ProductDefinitionRelationship();
    occurrence->SetId(Ascii(std::to_string(component.id)));
    occurrence->SetName(Ascii(scene_.models[component.model].name));
  }

  Definition DefinitionOf(ModelIndex model) const {
    Definition definition;
    const auto mapper = TransferBRep::ShapeMapper(written_, shapes_.Of(model));
    if (!written_->FindTypedTransient(mapper, STANDARD_TYPE(StepShape_ShapeDefinitionRepresentation),
                                      definition))
      throw Refusal(scene_.models[model].name + " can't be written as STEP.");
    return definition;
  }

  const Scene& scene_;
  const ProductShapes& shapes_;
  const Handle(Transfer_FinderProcess) & written_;
};

}  // namespace

std::string StepBytes(const Scene& scene) {
  const ProductShapes shapes(scene);
  STEPControl_Writer writer;
  writer.WS()->SetController(new ProductController(shapes));
  Interface_Static::SetCVal("write.step.unit", "MM");
  // Else components are written into their assembly's product.
  Interface_Static::SetIVal("write.step.assembly", 1);
  constexpr bool kNewModel = true;
  const Handle(StepData_StepModel) model = writer.Model(kNewModel);
  if (writer.Transfer(shapes.Of(scene.root), STEPControl_AsIs) != IFSelect_RetDone)
    throw Refusal("The model can't be written as STEP.");
  SignHeader(model, scene.Root().name);
  const Handle(Transfer_FinderProcess) written = writer.WS()->TransferWriter()->FinderProcess();
  ProductNames(scene, shapes, written).Write();
  const TemporaryFolder folder;
  const auto file = folder.File("model.stp");
  if (writer.Write(file.c_str()) != IFSelect_RetDone) throw Refusal("The STEP file can't be written.");
  return BytesOf(file);
}

}  // namespace bench::kernel
