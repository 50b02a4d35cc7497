#include "ptx/readers/step/WrittenCameras.h"

#include <StepGeom_Axis2Placement3d.hxx>
#include <StepGeom_CartesianPoint.hxx>
#include <StepGeom_Direction.hxx>
#include <StepGeom_Plane.hxx>
#include <StepVisual_CameraModelD3.hxx>
#include <StepVisual_CameraModelD3MultiClipping.hxx>
#include <StepVisual_CameraModelD3MultiClippingInterectionSelect.hxx>
#include <StepVisual_HArray1OfCameraModelD3MultiClippingInterectionSelect.hxx>
#include <StepVisual_PlanarBox.hxx>
#include <StepVisual_ViewVolume.hxx>
#include <gp.hxx>
#include <gp_XYZ.hxx>

#include <algorithm>
#include <cmath>

namespace ptx::step
{

namespace
{

osg::Vec3f scaled(const Handle(StepGeom_CartesianPoint) & point, double factor)
{
    if (point.IsNull())
        return {};
    double values[3] = {};
    for (int i = 0; i < std::min(3, point->NbCoordinates()); ++i)
        values[i] = point->CoordinatesValue(i + 1) * factor;
    return {static_cast<float>(values[0]), static_cast<float>(values[1]), static_cast<float>(values[2])};
}

/// The unit vector that `direction` means, `otherwise` when it means none.
gp_XYZ unitVector(const Handle(StepGeom_Direction) & direction, const gp_XYZ& otherwise)
{
    if (direction.IsNull() || direction->DirectionRatios().IsNull() || direction->NbDirectionRatios() < 3)
        return otherwise;
    const gp_XYZ vector(direction->DirectionRatiosValue(1), direction->DirectionRatiosValue(2),
                        direction->DirectionRatiosValue(3));
    const double length = vector.Modulus();
    return std::isfinite(length) && length > gp::Resolution() ? vector / length : otherwise;
}

osg::Vec3f toVector(const gp_XYZ& vector)
{
    return {static_cast<float>(vector.X()), static_cast<float>(vector.Y()), static_cast<float>(vector.Z())};
}

/// The axes of `camera` from `system`. @return whether they are axes
bool takeAxes(WrittenCamera& camera, const StepGeom_Axis2Placement3d& system)
{
    const gp_XYZ z = unitVector(system.Axis(), {0, 0, 1});
    const gp_XYZ x = unitVector(system.RefDirection(), {1, 0, 0});
    gp_XYZ y = z ^ x;
    constexpr double Flattest = 1e-6;
    if (y.Modulus() < Flattest)
        return false;
    y.Normalize();
    camera.axis = toVector(z);
    camera.up = toVector(y);
    camera.right = toVector(y ^ z);
    return true;
}

using Clippings = Handle(StepVisual_HArray1OfCameraModelD3MultiClippingInterectionSelect);

Clippings clippingsOf(const StepVisual_CameraModelD3& model)
{
    const auto* cutting = dynamic_cast<const StepVisual_CameraModelD3MultiClipping*>(&model);
    return cutting ? const_cast<StepVisual_CameraModelD3MultiClipping*>(cutting)->ShapeClipping() : Clippings();
}

/// Nothing when `clipping` is no plane, or one without a direction.
std::optional<Section> sectionOf(const StepVisual_CameraModelD3MultiClippingInterectionSelect& clipping, double factor)
{
    const Handle(StepGeom_Plane) plane = clipping.Plane();
    if (plane.IsNull() || plane->Position().IsNull())
        return std::nullopt;
    const gp_XYZ normal = unitVector(plane->Position()->Axis(), {0, 0, 1});
    return Section{scaled(plane->Position()->Location(), factor), toVector(normal)};
}

bool isFinite(const osg::Vec3f& each)
{
    return std::isfinite(each.x) && std::isfinite(each.y) && std::isfinite(each.z);
}

bool isFinite(const WrittenCamera& camera)
{
    for (const Section& section : camera.sections)
        if (!isFinite(section.point))
            return false;
    for (const osg::Vec3f& each :
         {camera.origin, camera.projectionPoint, osg::Vec3f{camera.planeDistance, camera.width, camera.height}})
        if (!isFinite(each))
            return false;
    return true;
}

} // namespace

std::optional<WrittenCamera> cameraOf(const StepVisual_CameraModelD3& model, double millimetres)
{
    const Handle(StepGeom_Axis2Placement3d) system = model.ViewReferenceSystem();
    const Handle(StepVisual_ViewVolume) volume = model.PerspectiveOfVolume();
    WrittenCamera camera;
    if (system.IsNull() || volume.IsNull() || !takeAxes(camera, *system))
        return std::nullopt;
    camera.origin = scaled(system->Location(), millimetres);
    camera.projectionPoint = scaled(volume->ProjectionPoint(), millimetres);
    camera.planeDistance = static_cast<float>(volume->ViewPlaneDistance() * millimetres);
    camera.isParallel = volume->ProjectionType() == StepVisual_copParallel;
    if (!volume->ViewWindow().IsNull()) {
        camera.width = static_cast<float>(volume->ViewWindow()->SizeInX() * millimetres);
        camera.height = static_cast<float>(volume->ViewWindow()->SizeInY() * millimetres);
    }
    if (const Clippings clippings = clippingsOf(model); !clippings.IsNull())
        for (int i = clippings->Lower(); i <= clippings->Upper(); ++i)
            if (const std::optional<Section> section = sectionOf(clippings->Value(i), millimetres))
                camera.sections.push_back(*section);
    return isFinite(camera) ? std::optional(camera) : std::nullopt;
}

std::size_t untoldSections(const StepVisual_CameraModelD3& model)
{
    std::size_t count = 0;
    if (const Clippings clippings = clippingsOf(model); !clippings.IsNull())
        for (int i = clippings->Lower(); i <= clippings->Upper(); ++i)
            count += sectionOf(clippings->Value(i), 1) ? 0 : 1;
    return count;
}

} // namespace ptx::step
