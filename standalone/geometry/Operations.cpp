#include "host/OSGSystem/Names.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "host/znOpenSGUtils/znOptimize.h"
#include "host/znUtils/znLog.h"
#include "standalone/OSGSystem/SceneEdits.h"
#include "standalone/geometry/AmbientOcclusion.h"
#include "standalone/geometry/GeometryMerging.h"
#include "standalone/geometry/GeometryWalk.h"
#include "standalone/geometry/IndexRepair.h"
#include "standalone/geometry/MeshTriangulation.h"
#include "standalone/znUtils/CallTrace.h"

#include <QCoreApplication>

namespace
{

class Texts
{
    Q_DECLARE_TR_FUNCTIONS(GeometryOperations)

public:
    /// Tells the user `text` about `geometry`.
    static void tell(const osg::GeometryPtr& geometry, const QString& text)
    {
        const char* name = osg::getName(geometry);
        const QString sentence = tr("Geometry %1: %2").arg(name ? QString::fromUtf8(name) : tr("without a name"), text);
        znLog::error(sentence.toUtf8().constData());
    }

    static QString leftOut(std::size_t count)
    {
        return tr("%1 polygons or strips name vertices that are not there and were left out")
            .arg(static_cast<qulonglong>(count));
    }
};

void triangulateMesh(const osg::GeometryPtr& geometry, bool dropFlat)
{
    const osg::Mesh& mesh = osg::GeometryAccess::mesh(*geometry);
    if (mesh.primitives.empty() && !dropFlat)
        return;
    geometry::Triangulated result{mesh};
    if (!mesh.primitives.empty())
        result = geometry::triangulated(mesh);
    if (dropFlat)
        result.mesh = geometry::withoutFlatTriangles(result.mesh);
    if (result.leftOut > 0)
        Texts::tell(geometry, Texts::leftOut(result.leftOut));
    if (!mesh.primitives.empty() || result.mesh.triangles.size() != mesh.triangles.size())
        osg::exchangeMesh(geometry, std::make_shared<const osg::Mesh>(std::move(result.mesh)));
}

} // namespace

void znOptimize::triangulate(const osg::NodePtr& root, bool dropFlat)
{
    const zn::TracedCall call("znOptimize::triangulate", root, dropFlat);
    for (const osg::GeometryPtr& geometry : geometry::geometriesBelow(root))
        triangulateMesh(geometry, dropFlat);
}

void znOptimize::mergeGeometry(const osg::NodePtr& root)
{
    const zn::TracedCall call("znOptimize::mergeGeometry", root);
    geometry::mergeGeometry(root);
}

void znOptimize::removeNURBS(const osg::NodePtr& root)
{
    const zn::TracedCall call("znOptimize::removeNURBS", root);
    for (const osg::GeometryPtr& geometry : geometry::geometriesBelow(root)) {
        if (osg::GeometryAccess::mesh(*geometry).brep.empty())
            continue;
        osg::Mesh mesh = osg::GeometryAccess::mesh(*geometry);
        mesh.brep = {};
        osg::exchangeMesh(geometry, std::make_shared<const osg::Mesh>(std::move(mesh)));
    }
}

void znNodeUtils::verifyIndexMap(const osg::NodePtr& root)
{
    const zn::TracedCall call("znNodeUtils::verifyIndexMap", root);
    for (const osg::GeometryPtr& geometry : geometry::geometriesBelow(root)) {
        const osg::Mesh& mesh = osg::GeometryAccess::mesh(*geometry);
        if (geometry::isSound(mesh))
            continue;
        geometry::Repaired result = geometry::repaired(mesh);
        Texts::tell(geometry, result.changes.join(QStringLiteral("; ")));
        osg::exchangeMesh(geometry, std::make_shared<const osg::Mesh>(std::move(result.mesh)));
    }
}

void znNodeUtils::addAmbientOcclusionData(const osg::NodePtr& root)
{
    const zn::TracedCall call("znNodeUtils::addAmbientOcclusionData", root);
    const geometry::OcclusionResult result = geometry::addAmbientOcclusion(root);
    if (!result.error.isEmpty())
        znLog::error(result.error.toUtf8().constData());
}
