#include "ptx/readers/step/damage/ShapeItems.h"

#include <StepShape_BrepWithVoids.hxx>
#include <StepShape_FaceBasedSurfaceModel.hxx>
#include <StepShape_GeometricSet.hxx>
#include <StepShape_HArray1OfConnectedFaceSet.hxx>
#include <StepShape_ManifoldSolidBrep.hxx>
#include <StepShape_OrientedClosedShell.hxx>
#include <StepShape_ShellBasedSurfaceModel.hxx>
#include <StepShape_SolidModel.hxx>

namespace ptx::step::damage
{

bool isItem(const Handle(Standard_Transient) & entity)
{
    return entity->IsKind(STANDARD_TYPE(StepShape_SolidModel)) ||
           entity->IsKind(STANDARD_TYPE(StepShape_ShellBasedSurfaceModel)) ||
           entity->IsKind(STANDARD_TYPE(StepShape_FaceBasedSurfaceModel)) ||
           entity->IsKind(STANDARD_TYPE(StepShape_GeometricSet));
}

std::vector<Handle(StepShape_ConnectedFaceSet)> shellsOf(const Handle(Standard_Transient) & item)
{
    std::vector<Handle(StepShape_ConnectedFaceSet)> shells;
    if (const auto solid = Handle(StepShape_ManifoldSolidBrep)::DownCast(item); !solid.IsNull())
        shells.push_back(solid->Outer());
    if (const auto hollow = Handle(StepShape_BrepWithVoids)::DownCast(item); !hollow.IsNull())
        for (int i = 1; i <= hollow->NbVoids(); ++i)
            if (!hollow->VoidsValue(i).IsNull())
                shells.push_back(hollow->VoidsValue(i)->ClosedShellElement());
    if (const auto model = Handle(StepShape_ShellBasedSurfaceModel)::DownCast(item); !model.IsNull())
        for (int i = 1; i <= model->NbSbsmBoundary(); ++i)
            shells.push_back(Handle(StepShape_ConnectedFaceSet)::DownCast(model->SbsmBoundaryValue(i).Value()));
    if (const auto model = Handle(StepShape_FaceBasedSurfaceModel)::DownCast(item);
        !model.IsNull() && !model->FbsmFaces().IsNull())
        for (const Handle(StepShape_ConnectedFaceSet) & set : model->FbsmFaces()->Array1())
            shells.push_back(set);
    std::erase_if(shells, [](const auto& shell) { return shell.IsNull() || shell->CfsFaces().IsNull(); });
    return shells;
}

} // namespace ptx::step::damage
