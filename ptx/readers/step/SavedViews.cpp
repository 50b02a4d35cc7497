#include "ptx/readers/step/SavedViews.h"

#include "ptx/core/Log.h"
#include "ptx/occt/OcctText.h"
#include "ptx/readers/step/LengthUnit.h"
#include "ptx/readers/step/WrittenCameras.h"
#include "ptx/readers/step/p21/StepString.h"

#include <Interface_EntityIterator.hxx>
#include <Interface_Graph.hxx>
#include <Interface_UndefinedContent.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPConstruct_UnitContext.hxx>
#include <STEPControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_UndefinedEntity.hxx>
#include <StepGeom_Axis2Placement3d.hxx>
#include <StepRepr_GlobalUnitAssignedContext.hxx>
#include <StepRepr_MappedItem.hxx>
#include <StepRepr_RepresentationMap.hxx>
#include <StepVisual_CameraModelD3.hxx>
#include <StepVisual_DraughtingModel.hxx>
#include <StepVisual_ViewVolume.hxx>
#include <TCollection_HAsciiString.hxx>
#include <XSControl_WorkSession.hxx>

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace ptx::step
{

namespace
{

using Entity = Handle(Standard_Transient);

using Numbers = std::vector<float>;

/// Two cameras at their places are the same when these are.
Numbers numbersOf(const WrittenCamera& camera, const gp_Trsf& at)
{
    const auto& [origin, right, up, axis, point, distance, width, height, isParallel, sections] = camera;
    Numbers numbers = {origin.x,
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
    for (int row = 1; row <= 3; ++row)
        for (int column = 1; column <= 4; ++column)
            numbers.push_back(static_cast<float>(at.Value(row, column)));
    for (const auto& [place, normal] : sections)
        numbers.insert(numbers.end(), {place.x, place.y, place.z, normal.x, normal.y, normal.z});
    return numbers;
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

    SavedViews collect()
    {
        for (int i = 1; i <= m_model->NbEntities(); ++i)
            if (const auto camera = Handle(StepVisual_CameraModelD3)::DownCast(m_model->Value(i)); !camera.IsNull())
                look(camera, camera);
            else if (const auto other = Handle(StepData_UndefinedEntity)::DownCast(m_model->Value(i)); !other.IsNull())
                lookWithHiddenLines(other);
        tell();
        return {std::move(m_views), m_ofParts};
    }

private:
    /// What uses a camera.
    struct Users {
        Entity drawing; ///< null when nothing draws it
        bool isDefault = false;
    };

    // OCCT has no class for a camera that also says whether hidden lines are left out.
    void lookWithHiddenLines(const Handle(StepData_UndefinedEntity) & entity)
    {
        if (std::strcmp(entity->StepType(), "CAMERA_MODEL_D3_WITH_HLHSR") != 0)
            return;
        Handle(StepVisual_CameraModelD3) camera = new StepVisual_CameraModelD3;
        std::string flag;
        const Handle(Interface_UndefinedContent) content = entity->UndefinedContent();
        for (int i = 1; i <= content->NbParams(); ++i)
            if (content->IsParamEntity(i))
                take(content->ParamEntity(i), *camera);
            else if (i == 1)
                camera->SetName(
                    new TCollection_HAsciiString(p21::decodedString(content->ParamValue(i)->ToCString()).c_str()));
            else
                flag = content->ParamValue(i)->ToCString();
        if (camera->Name().IsNull())
            camera->SetName(new TCollection_HAsciiString());
        look(entity, camera, flag == ".F.");
    }

    static void take(const Entity& parameter, StepVisual_CameraModelD3& camera)
    {
        if (const auto system = Handle(StepGeom_Axis2Placement3d)::DownCast(parameter); !system.IsNull())
            camera.SetViewReferenceSystem(system);
        if (const auto volume = Handle(StepVisual_ViewVolume)::DownCast(parameter); !volume.IsNull())
            camera.SetPerspectiveOfVolume(volume);
    }

    /// Takes the view of `camera`, which the file has as `entity`, if it is that of one.
    void look(const Entity& entity, const Handle(StepVisual_CameraModelD3) & camera, bool showsHidden = false)
    {
        const Users users = usersOf(entity);
        if (users.drawing.IsNull())
            return;
        const std::string name = occt::utf8(camera->Name());
        if (!m_withAutomatic && name.starts_with("* ")) {
            ++m_automatic;
            return;
        }
        const std::vector<Entity> parts = partsOf(users.drawing);
        std::vector<ViewScope> scopes = m_scopes.scopesOf(parts);
        if (scopes.empty()) {
            ++m_ofParts;
            return;
        }
        const std::optional<WrittenCamera> written = cameraOf(*camera, unitOf(parts));
        m_untold += untoldSections(*camera);
        m_sections += written && !written->sections.empty() ? 1 : 0;
        if (!written) {
            m_log.warning("saved view \"" + name + "\" is left out: its camera is incomplete");
            return;
        }
        m_withHiddenLines += showsHidden ? 1 : 0;
        SavedView view;
        view.name = name;
        view.drawings = {numberOf(users.drawing)};
        view.isDefault = users.isDefault;
        view.showsHidden = showsHidden;
        takeEach(std::move(view), std::move(scopes), *written);
    }

    /// A view of a part that stands in several places is one for each.
    void takeEach(SavedView view, std::vector<ViewScope> scopes, const WrittenCamera& camera)
    {
        m_repeated += scopes.size() > 1 ? 1 : 0;
        m_cutPlaces += scopes.front().isCut ? 1 : 0;
        const std::string name = std::exchange(view.name, {});
        for (ViewScope& scope : scopes) {
            view.name = withoutBrackets(scope.path.empty() ? name : name + " (" + scope.path + ")");
            view.scope = std::move(scope);
            take(view, camera);
        }
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
        const auto [known, isNew] =
            m_known.try_emplace({view.name, numbersOf(camera, view.scope.place)}, m_views.size());
        if (!isNew) {
            SavedView& same = m_views[known->second];
            same.drawings.push_back(view.drawings.front());
            same.isDefault = same.isDefault || view.isDefault;
            same.showsHidden = same.showsHidden || view.showsHidden;
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
            m_log.info(std::to_string(m_sections) + " saved views have section planes");
        if (m_withHiddenLines > 0)
            m_log.info(std::to_string(m_withHiddenLines) +
                       " saved views show what is hidden: annotations alone are drawn so, edges are not");
        if (m_untold > 0)
            m_log.warning(std::to_string(m_untold) + " sections of saved views cut nothing: they are no single planes");
        if (m_ofParts > 0)
            m_log.warning(std::to_string(m_ofParts) + " saved views of several parts within the assembly are left out");
        if (m_repeated > 0)
            m_log.info(std::to_string(m_repeated) + " saved views of parts are given for each place of their part");
        if (m_cutPlaces > 0)
            m_log.warning(std::to_string(m_cutPlaces) + " saved views of parts are given for " +
                          std::to_string(PartPlaces::Most) + " places of their part alone, which has more");
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
    std::size_t m_ofParts = 0;   ///< views of several
    std::size_t m_repeated = 0;  ///< views that are given for several places
    std::size_t m_cutPlaces = 0; ///< views of parts with more places than that
    std::size_t m_sections = 0;  ///< views with planes that cut
    std::size_t m_withHiddenLines = 0;
    std::size_t m_untold = 0; ///< sections
};

} // namespace

std::string withoutBrackets(std::string name)
{
    std::replace(name.begin(), name.end(), '[', '(');
    std::replace(name.begin(), name.end(), ']', ')');
    return name;
}

SavedViews savedViews(const STEPCAFControl_Reader& reader, const Handle(TDocStd_Document) & document,
                      bool withAutomatic, core::Log& log)
{
    return ViewCollector(reader, document, withAutomatic, log).collect();
}

} // namespace ptx::step
