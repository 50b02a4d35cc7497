#include "host/znTessellation/znRetessellation.h"

#include "files/scenefile/ConvertedTree.h"
#include "geometry/Remeshing.h"
#include "host/OSGSystem/Names.h"
#include "host/znUtils/znLog.h"
#include "scene/GeometryWalk.h"
#include "scene/IdSet.h"
#include "scene/NodeWalk.h"
#include "scene/SceneEdits.h"
#include "scene/Tags.h"
#include "standalone/session/Session.h"
#include "standalone/znKernel/ConverterCommand.h"
#include "standalone/znTessellation/TessellationRun.h"
#include "standalone/znUtils/CallTrace.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>

namespace
{

zn::tessellation::TessellationProgram programOf(const zn::Settings& settings)
{
    return {settings.tessellation.program, settings.tessellation.timeLimit,
            zn::kernel::sandboxWords(settings.convert.sandbox)};
}

/// What the last `copySettings` of a session took; the defaults before the first one.
struct CopiedSettings {
    zn::tessellation::TessellationProgram program = programOf(zn::Settings());
};

class Texts
{
    Q_DECLARE_TR_FUNCTIONS(znRetessellation)

public:
    static QString withoutSurface(std::size_t count)
    {
        return tr("%1 geometries have no exact surface and keep their meshes").arg(static_cast<qulonglong>(count));
    }
    static QString failed(const osg::GeometryPtr& geometry, const QString& reason)
    {
        const char* name = osg::getName(geometry);
        return tr("Geometry %1 keeps its mesh: %2").arg(name ? QString::fromUtf8(name) : tr("without a name"), reason);
    }
};

/// Notes the geometries at and below `node` that draw annotations, which never had a surface.
void noteAnnotations(const osg::NodePtr& node, osg::IdSet& ids)
{
    for (const osg::NodePtr& each : osg::parentsFirst(node)) {
        const std::vector<std::string>& tags = osg::tagsOf(each);
        if (std::find(tags.begin(), tags.end(), osg::scenefile::converted::PmiTag) == tags.end())
            continue;
        for (const osg::GeometryPtr& geometry : osg::geometriesBelow(each))
            ids.insert(geometry->getContainerId());
    }
}

void tell(const QString& text)
{
    znLog::error(text.toUtf8().constData());
}

} // namespace

struct znRetessellation::State {
    zn::tessellation::TessellationWish wish;
    osg::IdSet known;                                      ///< the ids of the geometries that were met
    std::vector<osg::RefPtr<osg::GeometryPtr>> geometries; ///< with an exact surface, as the tasks
    std::vector<zn::tessellation::TessellationTask> tasks;
    std::size_t withoutSurface = 0;
    bool isApplied = false;
};

znRetessellation::znRetessellation() : m_state(std::make_unique<State>()) {}
znRetessellation::~znRetessellation() = default;

void znRetessellation::copySettings()
{
    const zn::TracedCall call("znRetessellation::copySettings");
    zn::Session& session = zn::Session::require();
    session.state<CopiedSettings>().program = programOf(session.settings());
}

void znRetessellation::addNodes(const std::vector<osg::NodePtr>& nodes)
{
    const zn::TracedCall call("znRetessellation::addNodes", nodes);
    for (const osg::NodePtr& node : nodes) {
        noteAnnotations(node, m_state->known);
        for (const osg::GeometryPtr& geometry : osg::geometriesBelow(node)) {
            const osg::Mesh& mesh = osg::GeometryAccess::mesh(*geometry);
            if (!m_state->known.insert(geometry->getContainerId()))
                continue;
            if (mesh.brep.empty()) {
                m_state->withoutSurface += !mesh.triangles.empty();
                continue;
            }
            m_state->geometries.emplace_back(geometry);
            m_state->tasks.push_back({mesh.brep, {}, {}});
        }
    }
}

void znRetessellation::setupTessellation(double chordDeviation, double normalTolerance, double maxChordLength,
                                         bool useStitching, double stitchingTolerance)
{
    const zn::TracedCall call("znRetessellation::setupTessellation", chordDeviation, normalTolerance, maxChordLength,
                              useStitching, stitchingTolerance);
    m_state->wish = {chordDeviation, normalTolerance, maxChordLength, useStitching ? stitchingTolerance : 0};
}

void znRetessellation::applyTessellation()
{
    const zn::TracedCall call("znRetessellation::applyTessellation");
    if (m_state->tasks.empty() || m_state->isApplied)
        return;
    zn::Session& session = zn::Session::require();
    zn::tessellation::runTessellation(m_state->tasks, m_state->wish, session.state<CopiedSettings>().program,
                                      session.temporaryFolder());
    m_state->isApplied = true;
}

void znRetessellation::rebuildSurfaces()
{
    const zn::TracedCall call("znRetessellation::rebuildSurfaces");
    for (std::size_t i = 0; i < m_state->tasks.size(); ++i) {
        const std::shared_ptr<const osg::Mesh> made = std::move(m_state->tasks[i].mesh);
        if (!made)
            continue;
        const osg::GeometryPtr geometry = m_state->geometries[i];
        const osg::Mesh& old = osg::GeometryAccess::mesh(*geometry);
        osg::exchangeMesh(geometry, std::make_shared<const osg::Mesh>(geometry::remeshed(old, *made)));
    }
}

void znRetessellation::finalize()
{
    const zn::TracedCall call("znRetessellation::finalize");
    if (m_state->withoutSurface > 0)
        tell(Texts::withoutSurface(m_state->withoutSurface));
    for (std::size_t i = 0; i < m_state->tasks.size(); ++i)
        if (!m_state->tasks[i].reason.isEmpty())
            tell(Texts::failed(m_state->geometries[i], m_state->tasks[i].reason));
    *m_state = {};
}
