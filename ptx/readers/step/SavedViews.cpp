#include "ptx/readers/step/SavedViews.h"

#include "ptx/core/Log.h"
#include "ptx/occt/OcctText.h"
#include "ptx/readers/step/LengthUnit.h"
#include "ptx/readers/step/WrittenCameras.h"

#include <Interface_EntityIterator.hxx>
#include <Interface_Graph.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPConstruct_UnitContext.hxx>
#include <STEPControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <StepRepr_GlobalUnitAssignedContext.hxx>
#include <StepRepr_MappedItem.hxx>
#include <StepRepr_RepresentationMap.hxx>
#include <StepVisual_CameraModelD3.hxx>
#include <StepVisual_CameraModelD3MultiClipping.hxx>
#include <StepVisual_DraughtingModel.hxx>
#include <XSControl_WorkSession.hxx>

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace ptx::step
{

namespace
{

using Entity = Handle(Standard_Transient);

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
    ViewCollector(const STEPCAFControl_Reader& reader, const Handle(TDocStd_Document) & document, bool withAutomatic,
                  core::Log& log)
        : m_graph(reader.Reader().WS()->Graph()), m_scopes(reader, document), m_withAutomatic(withAutomatic),
          m_model(Handle(StepData_StepModel)::DownCast(reader.Reader().Model())), m_log(log)
    {
    }

    std::vector<SavedView> collect()
    {
        for (int i = 1; i <= m_model->NbEntities(); ++i)
            if (const auto camera = Handle(StepVisual_CameraModelD3)::DownCast(m_model->Value(i)); !camera.IsNull())
                look(camera);
        tell();
        return std::move(m_views);
    }

private:
    /// What uses a camera.
    struct Users {
        Entity drawing; ///< null when nothing draws it
        bool isDefault = false;
    };

    void look(const Handle(StepVisual_CameraModelD3) & camera)
    {
        const Users users = usersOf(camera);
        if (users.drawing.IsNull())
            return;
        const std::string name = occt::utf8(camera->Name());
        if (!m_withAutomatic && name.starts_with("* ")) {
            ++m_automatic;
            return;
        }
        const std::vector<Entity> parts = partsOf(users.drawing);
        std::optional<ViewScope> scope = m_scopes.scopeOf(parts);
        if (!scope) {
            ++m_ofParts;
            return;
        }
        SavedView view{withoutBrackets(name), {}, {numberOf(users.drawing)}, users.isDefault, std::move(*scope)};
        const std::optional<WrittenCamera> written = cameraOf(*camera, unitOf(parts));
        m_sections += camera->IsKind(STANDARD_TYPE(StepVisual_CameraModelD3MultiClipping)) ? 1 : 0;
        if (written)
            take(std::move(view), *written);
        else
            m_log.warning("saved view \"" + name + "\" is left out: its camera is incomplete");
    }

    std::uint32_t numberOf(const Entity& entity) const
    {
        return static_cast<std::uint32_t>(std::max(0, m_model->IdentLabel(entity)));
    }

    // OCCT has classes for some kinds of draughting models alone.
    Users usersOf(const Entity& camera) const
    {
        Users users;
        const Interface_EntityIterator above = m_graph.Sharings(camera);
        for (above.Start(); above.More(); above.Next()) {
            const std::string type = m_model->TypeName(above.Value());
            if (type == "DEFAULT_MODEL_GEOMETRIC_VIEW")
                users.isDefault = true;
            else if (users.drawing.IsNull() && type.find("DRAUGHTING_MODEL") != std::string::npos &&
                     type.find("ASSOCIATION") == std::string::npos)
                users.drawing = above.Value();
        }
        return users;
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

    void take(SavedView view, const WrittenCamera& camera)
    {
        if (view.name.empty())
            view.name = "View " + std::to_string(m_views.size() + 1);
        const auto [known, isNew] = m_known.try_emplace({view.name, numbersOf(camera)}, m_views.size());
        if (!isNew) {
            SavedView& same = m_views[known->second];
            same.drawings.push_back(view.drawings.front());
            same.isDefault = same.isDefault || view.isDefault;
            extend(same.scope, view.scope);
            return;
        }
        int& count = m_counts[view.name];
        std::string unique = view.name;
        for (++count; !m_names.insert(unique).second; ++count)
            unique = view.name + " (" + std::to_string(count) + ")";
        view.name = std::move(unique);
        view.camera = camera;
        m_views.push_back(std::move(view));
    }

    static void extend(ViewScope& scope, const ViewScope& more)
    {
        scope.isWhole = scope.isWhole || more.isWhole;
        scope.products.insert(scope.products.end(), more.products.begin(), more.products.end());
        scope.items.insert(scope.items.end(), more.items.begin(), more.items.end());
    }

    void tell() const
    {
        if (!m_views.empty())
            m_log.info(std::to_string(m_views.size()) + " saved views");
        if (m_automatic > 0)
            m_log.info(std::to_string(m_automatic) + " views that a program made by itself are left out");
        if (m_sections > 0)
            m_log.warning(std::to_string(m_sections) + " saved views have section planes, which cut nothing here");
        if (m_ofParts > 0)
            m_log.warning(std::to_string(m_ofParts) + " saved views of parts within the assembly are left out");
        if (m_scopes.isCut())
            m_log.warning("the saved views list so many shapes that not all of them show theirs alone");
    }

    const Interface_Graph& m_graph;
    ViewScopes m_scopes;
    bool m_withAutomatic;
    Handle(StepData_StepModel) m_model;
    core::Log& m_log;
    std::vector<SavedView> m_views;
    std::set<std::string> m_names;
    std::map<std::string, int> m_counts;                            ///< of views that the file names so
    std::map<std::pair<std::string, Numbers>, std::size_t> m_known; ///< numbers of views by name and camera
    std::size_t m_automatic = 0;
    std::size_t m_ofParts = 0;
    std::size_t m_sections = 0; ///< views with planes that cut
};

} // namespace

std::string withoutBrackets(std::string name)
{
    std::replace(name.begin(), name.end(), '[', '(');
    std::replace(name.begin(), name.end(), ']', ')');
    return name;
}

std::vector<SavedView> savedViews(const STEPCAFControl_Reader& reader, const Handle(TDocStd_Document) & document,
                                  bool withAutomatic, core::Log& log)
{
    return ViewCollector(reader, document, withAutomatic, log).collect();
}

} // namespace ptx::step
