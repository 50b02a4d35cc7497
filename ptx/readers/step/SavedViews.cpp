#include "ptx/readers/step/SavedViews.h"

#include "ptx/core/Log.h"
#include "ptx/occt/OcctText.h"
#include "ptx/readers/step/LengthUnit.h"

#include <Interface_EntityIterator.hxx>
#include <Interface_Graph.hxx>
#include <Interface_UndefinedContent.hxx>
#include <STEPConstruct_UnitContext.hxx>
#include <STEPControl_Reader.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_UndefinedEntity.hxx>
#include <StepGeom_Axis2Placement3d.hxx>
#include <StepGeom_CartesianPoint.hxx>
#include <StepGeom_Direction.hxx>
#include <StepRepr_GlobalUnitAssignedContext.hxx>
#include <StepRepr_MappedItem.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <StepRepr_PropertyDefinition.hxx>
#include <StepRepr_RepresentationMap.hxx>
#include <StepShape_ShapeDefinitionRepresentation.hxx>
#include <StepVisual_CameraModelD3.hxx>
#include <StepVisual_DraughtingModel.hxx>
#include <StepVisual_PlanarBox.hxx>
#include <StepVisual_ViewVolume.hxx>
#include <XSControl_WorkSession.hxx>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace ptx::step
{

namespace
{

using Entity = Handle(Standard_Transient);

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

bool isFinite(const WrittenCamera& camera)
{
    for (const osg::Vec3f& each :
         {camera.origin, camera.projectionPoint, osg::Vec3f{camera.planeDistance, camera.width, camera.height}})
        if (!std::isfinite(each.x) || !std::isfinite(each.y) || !std::isfinite(each.z))
            return false;
    return true;
}

/// Nothing when an entity of the camera is not there or its axes are none.
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
    return isFinite(camera) ? std::optional(camera) : std::nullopt;
}

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

/// Items and context of a representation, whether or not OCCT has a class for it.
std::vector<Entity> partsOf(const Entity& representation)
{
    std::vector<Entity> parts;
    if (const auto known = Handle(StepRepr_Representation)::DownCast(representation); !known.IsNull()) {
        for (int i = 1; i <= known->NbItems(); ++i)
            parts.push_back(known->ItemsValue(i));
        parts.push_back(known->ContextOfItems());
    } else {
        addChildren(Handle(StepData_UndefinedEntity)::DownCast(representation), parts);
    }
    std::erase_if(parts, [](const Entity& part) { return part.IsNull(); });
    return parts;
}

using Numbers = std::array<float, 19>;

/// Two cameras are the same when these are.
Numbers numbersOf(const WrittenCamera& camera)
{
    const auto& [origin, right, up, axis, point, distance, width, height, isParallel] = camera;
    return {origin.x,
            origin.y,
            origin.z,
            right.x,
            right.y,
            right.z,
            up.x,
            up.y,
            up.z,
            axis.x,
            axis.y,
            axis.z,
            point.x,
            point.y,
            point.z,
            distance,
            width,
            height,
            isParallel ? 1.F : 0.F};
}

class ViewCollector
{
public:
    ViewCollector(const STEPControl_Reader& reader, core::Log& log)
        : m_graph(reader.WS()->Graph()), m_model(Handle(StepData_StepModel)::DownCast(reader.Model())), m_log(log)
    {
    }

    std::vector<SavedView> collect()
    {
        for (int i = 1; i <= m_model->NbEntities(); ++i)
            if (const auto camera = Handle(StepVisual_CameraModelD3)::DownCast(m_model->Value(i)); !camera.IsNull())
                add(camera);
        tell();
        return std::move(m_views);
    }

private:
    void add(const Handle(StepVisual_CameraModelD3) & camera)
    {
        const Entity drawing = drawingOf(camera);
        if (drawing.IsNull())
            return;
        const std::string name = occt::utf8(camera->Name());
        if (name.starts_with("* ")) {
            ++m_automatic;
            return;
        }
        const std::vector<Entity> parts = partsOf(drawing);
        if (std::any_of(parts.begin(), parts.end(), [this](const Entity& part) { return isOfInnerPart(part); })) {
            ++m_ofParts;
            return;
        }
        if (const std::optional<WrittenCamera> written = cameraOf(*camera, unitOf(parts)))
            take(withoutBrackets(name), *written);
        else
            m_log.warning("saved view \"" + name + "\" is left out: its camera is incomplete");
    }

    // OCCT has classes for some kinds of draughting models alone.
    Entity drawingOf(const Entity& camera) const
    {
        const Interface_EntityIterator above = m_graph.Sharings(camera);
        for (above.Start(); above.More(); above.Next()) {
            const std::string type = m_model->TypeName(above.Value());
            if (type.find("DRAUGHTING_MODEL") != std::string::npos && type.find("ASSOCIATION") == std::string::npos)
                return above.Value();
        }
        return {};
    }

    /// Whether `part` maps the shape of a product that another one holds: its coordinates are not those of the file.
    bool isOfInnerPart(const Entity& part) const
    {
        const auto mapped = Handle(StepRepr_MappedItem)::DownCast(part);
        if (mapped.IsNull() || mapped->MappingSource().IsNull() ||
            mapped->MappingSource()->MappedRepresentation().IsNull())
            return false;
        const Interface_EntityIterator above = m_graph.Sharings(mapped->MappingSource()->MappedRepresentation());
        for (above.Start(); above.More(); above.Next())
            if (const auto shape = Handle(StepShape_ShapeDefinitionRepresentation)::DownCast(above.Value());
                !shape.IsNull() && isHeld(*shape))
                return true;
        return false;
    }

    bool isHeld(const StepShape_ShapeDefinitionRepresentation& shape) const
    {
        const Handle(StepRepr_PropertyDefinition) property = shape.Definition().PropertyDefinition();
        const Handle(StepBasic_ProductDefinition) product =
            property.IsNull() ? Handle(StepBasic_ProductDefinition)() : property->Definition().ProductDefinition();
        if (product.IsNull())
            return false;
        const Interface_EntityIterator above = m_graph.Sharings(product);
        for (above.Start(); above.More(); above.Next())
            if (const auto usage = Handle(StepRepr_NextAssemblyUsageOccurrence)::DownCast(above.Value());
                !usage.IsNull() && usage->RelatedProductDefinition() == product)
                return true;
        return false;
    }

    /// Millimetres in the unit of the context among `parts`, else in that of what they map.
    static double unitOf(const std::vector<Entity>& parts)
    {
        for (const Entity& part : parts)
            if (const double unit = millimetresIn(part); unit > 0)
                return unit;
        for (const Entity& part : parts)
            if (const auto mapped = Handle(StepRepr_MappedItem)::DownCast(part);
                !mapped.IsNull() && !mapped->MappingSource().IsNull() &&
                !mapped->MappingSource()->MappedRepresentation().IsNull())
                if (const double unit =
                        millimetresIn(mapped->MappingSource()->MappedRepresentation()->ContextOfItems());
                    unit > 0)
                    return unit;
        return 1;
    }

    void take(std::string name, const WrittenCamera& camera)
    {
        if (name.empty())
            name = "View " + std::to_string(m_views.size() + 1);
        if (!m_known.emplace(name, numbersOf(camera)).second)
            return;
        int& count = m_counts[name];
        std::string unique = name;
        for (++count; !m_names.insert(unique).second; ++count)
            unique = name + " (" + std::to_string(count) + ")";
        m_views.push_back({unique, camera});
    }

    void tell() const
    {
        if (!m_views.empty())
            m_log.info(std::to_string(m_views.size()) + " saved views");
        if (m_automatic > 0)
            m_log.info(std::to_string(m_automatic) + " views that a program made by itself are left out");
        if (m_ofParts > 0)
            m_log.warning(std::to_string(m_ofParts) + " saved views of parts within the assembly are left out");
    }

    const Interface_Graph& m_graph;
    Handle(StepData_StepModel) m_model;
    core::Log& m_log;
    std::vector<SavedView> m_views;
    std::set<std::string> m_names;
    std::map<std::string, int> m_counts;               ///< of views that the file names so
    std::set<std::pair<std::string, Numbers>> m_known; ///< views by name and camera
    std::size_t m_automatic = 0;
    std::size_t m_ofParts = 0;
};

} // namespace

std::string withoutBrackets(std::string name)
{
    std::replace(name.begin(), name.end(), '[', '(');
    std::replace(name.begin(), name.end(), ']', ')');
    return name;
}

std::vector<SavedView> savedViews(const STEPControl_Reader& reader, core::Log& log)
{
    return ViewCollector(reader, log).collect();
}

} // namespace ptx::step
