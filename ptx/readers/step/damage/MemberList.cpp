#include "ptx/readers/step/damage/MemberList.h"

#include <StepRepr_HArray1OfRepresentationItem.hxx>
#include <StepRepr_Representation.hxx>
#include <StepShape_ConnectedFaceSet.hxx>
#include <StepShape_FaceBasedSurfaceModel.hxx>
#include <StepShape_GeometricSet.hxx>
#include <StepShape_HArray1OfConnectedFaceSet.hxx>
#include <StepShape_HArray1OfFace.hxx>
#include <StepShape_HArray1OfGeometricSetSelect.hxx>
#include <StepShape_HArray1OfShell.hxx>
#include <StepShape_ShellBasedSurfaceModel.hxx>
#include <StepVisual_HArray1OfPresentationStyleSelect.hxx>
#include <StepVisual_PresentationStyleAssignment.hxx>
#include <TCollection_HAsciiString.hxx>

#include <type_traits>
#include <vector>

namespace ptx::step::damage::memberlist
{

namespace
{

Handle(Standard_Transient) entityOf(const Handle(Standard_Transient) & member)
{
    return member;
}

Handle(Standard_Transient) entityOf(const StepData_SelectType& member)
{
    return member.Value();
}

/// Calls `use(list, set)` with the list of `entity` and with what gives it another one. @return whether there is a list
template <class Use>
bool withList(const Handle(Standard_Transient) & entity, Use use)
{
    if (const auto shell = Handle(StepShape_ConnectedFaceSet)::DownCast(entity); !shell.IsNull())
        use(shell->CfsFaces(), [&](const auto& list) { shell->SetCfsFaces(list); });
    else if (const auto set = Handle(StepShape_GeometricSet)::DownCast(entity); !set.IsNull())
        use(set->Elements(), [&](const auto& list) { set->SetElements(list); });
    else if (const auto shells = Handle(StepShape_ShellBasedSurfaceModel)::DownCast(entity); !shells.IsNull())
        use(shells->SbsmBoundary(), [&](const auto& list) { shells->SetSbsmBoundary(list); });
    else if (const auto sets = Handle(StepShape_FaceBasedSurfaceModel)::DownCast(entity); !sets.IsNull())
        use(sets->FbsmFaces(), [&](const auto& list) { sets->SetFbsmFaces(list); });
    else if (const auto shape = Handle(StepRepr_Representation)::DownCast(entity); !shape.IsNull())
        use(shape->Items(), [&](const auto& list) { shape->SetItems(list); });
    else if (const auto look = Handle(StepVisual_PresentationStyleAssignment)::DownCast(entity); !look.IsNull())
        use(look->Styles(), [&](const auto& list) { look->SetStyles(list); });
    else
        return false;
    return true;
}

std::size_t countIf(const Handle(Standard_Transient) & entity, bool isNull)
{
    std::size_t result = 0;
    withList(entity, [&](const auto& list, const auto&) {
        if (list.IsNull())
            return;
        for (const auto& member : list->Array1())
            result += entityOf(member).IsNull() == isNull ? 1 : 0;
    });
    return result;
}

template <class Array>
Handle(Array) arrayOf(const std::vector<typename Array::value_type>& members)
{
    Handle(Array) array = new Array(1, static_cast<int>(members.size()));
    int at = 0;
    for (const auto& member : members)
        array->SetValue(++at, member);
    return array;
}

} // namespace

Handle(StepRepr_RepresentationItem) makeStandIn()
{
    Handle(StepRepr_RepresentationItem) item = new StepRepr_RepresentationItem;
    item->Init(new TCollection_HAsciiString(""));
    return item;
}

bool isIn(const Handle(Standard_Transient) & entity)
{
    return withList(entity, [](const auto&, const auto&) {});
}

bool isEmpty(const Handle(Standard_Transient) & entity)
{
    bool result = false;
    withList(entity, [&](const auto& list, const auto&) { result = list.IsNull(); });
    return result;
}

std::size_t count(const Handle(Standard_Transient) & entity)
{
    return countIf(entity, false);
}

std::size_t countHoles(const Handle(Standard_Transient) & entity)
{
    return countIf(entity, true);
}

void clean(const Handle(Standard_Transient) & entity,
           const std::function<bool(const Handle(Standard_Transient) &)>& isBroken)
{
    withList(entity, [&](const auto& list, const auto& set) {
        if (list.IsNull())
            return;
        using Array = typename std::remove_cvref_t<decltype(list)>::element_type;
        std::vector<typename Array::value_type> kept;
        for (const auto& member : list->Array1())
            if (const Handle(Standard_Transient) value = entityOf(member); !value.IsNull() && !isBroken(value))
                kept.push_back(member);
        if constexpr (std::is_same_v<Array, StepRepr_HArray1OfRepresentationItem>)
            if (kept.empty())
                kept.push_back(makeStandIn());
        if (!kept.empty())
            set(arrayOf<Array>(kept));
    });
}

} // namespace ptx::step::damage::memberlist
