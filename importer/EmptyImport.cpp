#include "importer/EmptyImport.h"

#include "host/OSGSystem/Cast.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "scene/GeometryWalk.h"
#include "scene/SceneEdits.h"

#include <QCoreApplication>

#include <algorithm>

namespace importer
{

namespace
{

/// Where the texts of this file stand.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(importer::EmptyImport)
};

bool isDrawn(const osg::GeometryPtr& geometry)
{
    const osg::Mesh& mesh = osg::GeometryAccess::mesh(*geometry);
    return !mesh.triangles.empty() || !mesh.lines.empty() || !mesh.points.empty();
}

/// A reference that is read says nothing by itself.
bool leadsSomewhere(const osg::NodePtr& node)
{
    constexpr unsigned read = 2;
    if (const osg::GeometryPtr geometry = osg::geometryOf(node))
        return isDrawn(geometry);
    const auto reference = osg::fcCast<osg::ExtReference>(node->getCore());
    return (reference && reference->getState() != read) || osg::fcCast<osg::UberCamera>(node->getCore());
}

/// A document's tree has a node for each graph that is no place.
std::size_t placesOf(const zn::ImportResult& result, Source source, std::size_t nodes)
{
    return nodes - 1 - (source == Source::Document ? result.node->getNChildren() : 0);
}

void fail(zn::ImportResult& result)
{
    if (const osg::NodePtr parent = result.node->getParent())
        osg::subChild(parent, result.node.get());
    result.node = osg::NodePtr();
    result.state = znCADFileTypes::JobFailed;
    result.error = Texts::tr("%1: nothing came in: there is no shape in it, and no place for one").arg(result.file);
}

} // namespace

void judgeEmptiness(zn::ImportResult& result, Source source)
{
    // What is missing is told already, and makes it an import in part.
    if (!result.node || result.cancelled || !result.missing.empty())
        return;
    const std::vector<osg::NodePtr> nodes = osg::parentsFirst(result.node);
    if (std::any_of(nodes.begin(), nodes.end(), leadsSomewhere))
        return;
    const std::size_t places = placesOf(result, source, nodes.size());
    if (source == Source::SceneFile || source == Source::MeshFile)
        result.messages << Texts::tr("%1: the file is empty: it holds no shape, mesh or curve").arg(result.file);
    else if (places > 0 && result.document)
        return; // told with the structure
    else if (places > 0)
        result.messages
            << Texts::tr("%1: nothing of it can be drawn; nodes of its structure: %2").arg(result.file).arg(places);
    else
        fail(result);
}

} // namespace importer
