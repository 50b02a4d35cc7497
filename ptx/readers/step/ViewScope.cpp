#include "ptx/readers/step/ViewScope.h"

#include <Interface_EntityIterator.hxx>
#include <Interface_Graph.hxx>
#include <Interface_UndefinedContent.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepData_UndefinedEntity.hxx>
#include <StepRepr_MappedItem.hxx>
#include <StepRepr_PropertyDefinition.hxx>
#include <StepRepr_Representation.hxx>
#include <StepRepr_RepresentationContext.hxx>
#include <StepRepr_RepresentationMap.hxx>
#include <StepRepr_ShapeRepresentationRelationship.hxx>
#include <StepShape_ShapeDefinitionRepresentation.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDocStd_Document.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS_Shape.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

#include <algorithm>
#include <set>
#include <utility>

namespace ptx::step
{

namespace
{

using Entity = Handle(Standard_Transient);

/// What the parameters of an entity without a class of its own name, lists opened.
void addChildren(const Handle(StepData_UndefinedEntity) & entity, std::vector<Entity>& children)
{
    for (Handle(StepData_UndefinedEntity) part = entity; !part.IsNull(); part = part->Next()) {
        Interface_EntityIterator below;
        part->UndefinedContent()->EntityList().FillIterator(below);
        for (below.Start(); below.More(); below.Next()) {
            const auto list = Handle(StepData_UndefinedEntity)::DownCast(below.Value());
            if (!list.IsNull() && list->IsSub())
                addChildren(list, children);
            else
                children.push_back(below.Value());
        }
    }
}

} // namespace

struct ViewScopes::Shown {
    ViewScope scope;
    std::vector<TDF_Label> owners; ///< whose representations, or some of whose items, are mapped
    std::set<const Standard_Transient*> known;
};

std::vector<Entity> partsOf(const Entity& entity)
{
    std::vector<Entity> parts;
    if (const auto known = Handle(StepRepr_Representation)::DownCast(entity); !known.IsNull()) {
        for (int i = 1; i <= known->NbItems(); ++i)
            parts.push_back(known->ItemsValue(i));
        parts.push_back(known->ContextOfItems());
    } else {
        addChildren(Handle(StepData_UndefinedEntity)::DownCast(entity), parts);
    }
    std::erase_if(parts, [](const Entity& part) { return part.IsNull(); });
    return parts;
}

ViewScopes::ViewScopes(const STEPCAFControl_Reader& reader, const Handle(TDocStd_Document) & document)
    : m_graph(reader.Reader().WS()->Graph()), m_process(reader.Reader().WS()->TransferReader()->TransientProcess()),
      m_labels(reader)
{
    TDF_LabelSequence roots;
    XCAFDoc_DocumentTool::ShapeTool(document->Main())->GetFreeShapes(roots);
    if (roots.Length() == 1)
        m_onlyRoot = roots.First();
}

std::vector<ViewScope> ViewScopes::scopesOf(const std::vector<Entity>& parts)
{
    Shown shown;
    for (const Entity& part : parts)
        if (const auto item = Handle(StepRepr_MappedItem)::DownCast(part);
            !item.IsNull() && !item->MappingSource().IsNull())
            add(item->MappingSource()->MappedRepresentation(), shown);
    ViewScope& scope = shown.scope;
    scope.isWhole = scope.isWhole || (scope.products.empty() && scope.items.empty());
    const auto isInner = [this](const TDF_Label& label) { return m_places.of(label).isInner; };
    const auto sameLabel = [&shown](const TDF_Label& label) { return label == shown.owners.front(); };
    if (scope.isWhole || std::none_of(shown.owners.begin(), shown.owners.end(), isInner))
        return {std::move(scope)};
    if (!std::all_of(shown.owners.begin(), shown.owners.end(), sameLabel))
        return {};
    scope.part = shown.owners.front();
    return atEachPlace(std::move(scope), m_places.of(scope.part));
}

std::vector<ViewScope> ViewScopes::atEachPlace(ViewScope scope, const PartPlaces& places)
{
    countItems(scope.items.size() * (places.places.size() - 1), scope);
    std::vector<ViewScope> scopes;
    for (const PartPlace& place : places.places) {
        scope.place = place.place;
        scope.path = places.places.size() > 1 ? place.path : std::string();
        scopes.push_back(scope);
    }
    scopes.front().isCut = places.isCut;
    return scopes;
}

/// What would list too much shows everything.
void ViewScopes::countItems(std::size_t count, ViewScope& scope)
{
    constexpr std::size_t MostItems = 2'000'000;
    m_items += count;
    m_isCut = m_isCut || m_items > MostItems;
    if (m_isCut) {
        scope.isWhole = true;
        scope.items.clear();
    }
}

// OCCT leaves out representations that it has no class for; what they hold is shown always.
void ViewScopes::add(const Handle(StepRepr_Representation) & mapped, Shown& shown)
{
    if (mapped.IsNull()) {
        shown.scope.isWhole = true;
        return;
    }
    if (shown.scope.isWhole || !shown.known.insert(mapped.get()).second)
        return;
    const Home& home = homeOf(mapped);
    if (home.isAll && (home.product.IsNull() || home.product == m_onlyRoot)) {
        shown.scope.isWhole = true;
        return;
    }
    if (!home.product.IsNull())
        shown.owners.push_back(home.product);
    if (home.isAll)
        shown.scope.products.push_back(home.product);
    else
        addItems(*mapped, shown);
}

void ViewScopes::addItems(const StepRepr_Representation& mapped, Shown& shown)
{
    countItems(static_cast<std::size_t>(mapped.NbItems()), shown.scope);
    for (int i = 1; i <= mapped.NbItems() && !shown.scope.isWhole; ++i) {
        const Entity item = mapped.ItemsValue(i);
        const auto further = Handle(StepRepr_MappedItem)::DownCast(item);
        if (!further.IsNull() && !further->MappingSource().IsNull())
            add(further->MappingSource()->MappedRepresentation(), shown);
        else if (isShape(item))
            shown.scope.items.push_back(item);
    }
}

const ViewScopes::Home& ViewScopes::homeOf(const Handle(StepRepr_Representation) & representation)
{
    const auto [entry, isNew] = m_homes.try_emplace(representation.get());
    if (isNew)
        entry->second = findHome(representation);
    return entry->second;
}

ViewScopes::Home ViewScopes::findHome(const Handle(StepRepr_Representation) & representation) const
{
    if (const std::optional<TDF_Label> product = productOf(representation))
        return {*product, true};
    const Interface_EntityIterator above = m_graph.Sharings(representation);
    for (above.Start(); above.More(); above.Next()) {
        const auto relation = Handle(StepRepr_ShapeRepresentationRelationship)::DownCast(above.Value());
        if (relation.IsNull() || relation->Rep1().IsNull() || relation->Rep2().IsNull())
            continue;
        const bool isFirst = relation->Rep1() == representation;
        if (const std::optional<TDF_Label> product = productOf(isFirst ? relation->Rep2() : relation->Rep1()))
            return {*product, false};
    }
    return {};
}

/// A null label for a product without shape, nothing for what is of no product.
std::optional<TDF_Label> ViewScopes::productOf(const Handle(StepRepr_Representation) & representation) const
{
    const Interface_EntityIterator above = m_graph.Sharings(representation);
    for (above.Start(); above.More(); above.Next()) {
        const auto shape = Handle(StepShape_ShapeDefinitionRepresentation)::DownCast(above.Value());
        if (shape.IsNull())
            continue;
        const Handle(StepRepr_PropertyDefinition) property = shape->Definition().PropertyDefinition();
        if (property.IsNull())
            continue;
        if (const auto product = property->Definition().ProductDefinition(); !product.IsNull())
            return m_labels.of(product);
    }
    return std::nullopt;
}

bool ViewScopes::isShape(const Entity& item) const
{
    return !item.IsNull() && !TransferBRep::ShapeResult(m_process, item).IsNull();
}

} // namespace ptx::step
