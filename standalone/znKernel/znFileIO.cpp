#include "host/znKernel/znFileIO.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "scene/SceneEdits.h"
#include "standalone/loading/TreeReading.h"
#include "standalone/session/Session.h"
#include "standalone/znKernel/GeometryImportTransformations.h"
#include "standalone/znKernel/LoadedGeometries.h"
#include "standalone/znKernel/UberMaterialConversion.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

void hang(const osg::NodePtr& node, const osg::NodePtr& parent)
{
    if (node && parent)
        osg::addChild(parent, node);
}

std::vector<znFileIO::loadedS>& loadedIn(zn::Session& session)
{
    return session.state<zn::kernel::LoadedGeometries>().entries;
}

/// False when nothing was loaded.
bool loadFile(zn::Session& session, const QString& file, const osg::NodePtr& parent)
{
    const std::optional<osg::NodePtr> root = zn::loading::readTree(session, file);
    if (!root)
        return false;
    hang(*root, parent);
    loadedIn(session).emplace_back(*root);
    return true;
}

} // namespace

znFileIO::loadedS::loadedS(const osg::NodePtr& node) : m_nodeId(node ? node->getContainerId() : 0) {}

osg::NodePtr znFileIO::loadedS::getNode() const
{
    return osg::fcCast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(m_nodeId));
}

int znFileIO::load(const std::vector<QString>& files, osg::NodePtr parent, bool sceneWasEmpty, bool merge, bool select)
{
    const zn::TracedCall call("znFileIO::load", files, parent, sceneWasEmpty, merge, select);
    zn::Session& session = zn::Session::require();
    if (const auto& observe = session.state<zn::kernel::LoadObserver>().observe)
        observe({files, parent, sceneWasEmpty, merge, select});
    std::size_t loaded = 0;
    for (const QString& file : files)
        loaded += loadFile(session, file, parent) ? 1 : 0;
    if (loaded == 0)
        return 0;
    if (select)
        session.select(loadedIn(session).back().getNode());
    return loaded == files.size() ? LoadedFully : LoadedInPart;
}

const std::vector<znFileIO::loadedS>& znFileIO::getLoadedGeometriesList()
{
    const zn::TracedCall call("znFileIO::getLoadedGeometriesList");
    return loadedIn(zn::Session::require());
}

bool znFileIO::getConvertToUberMaterials()
{
    const zn::TracedCall call("znFileIO::getConvertToUberMaterials");
    return zn::Session::require().settings().imports.uberMaterials;
}

void znFileIO::convertToUberMaterials(const osg::NodePtr& root)
{
    const zn::TracedCall call("znFileIO::convertToUberMaterials", root);
    zn::kernel::convertToUberMaterials(root);
}

bool znFileIO::getUseGSK()
{
    const zn::TracedCall call("znFileIO::getUseGSK");
    return zn::Session::require().settings().optimize.solidKernel;
}

void znFileIO::applyGeometryImportTransformations(const osg::NodePtr& root, const QString& path, bool reserved,
                                                  bool centerInOrigin, bool putOnGround)
{
    const zn::TracedCall call("znFileIO::applyGeometryImportTransformations", root, path, reserved, centerInOrigin,
                              putOnGround);
    zn::kernel::applyGeometryImportTransformations(root, centerInOrigin, putOnGround);
}
