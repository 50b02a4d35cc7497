#include "standalone/znOpenSGUberCamera/CameraTree.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUberCamera/znUberCameraUtils.h"
#include "scene/MatrixMath.h"

#include <algorithm>

namespace zn::cameras
{

namespace
{

auto entryOf(unsigned cameraId)
{
    return [cameraId](const CameraTree::Entry& entry) { return entry.cameraId == cameraId; };
}

osg::NodePtr nodeOf(unsigned id)
{
    return osg::fcCast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(id));
}

bool isViewpoint(const osg::UberCameraPtr& camera)
{
    return camera->getFlags() & osg::UberCamera::ViewpointFlag;
}

} // namespace

CameraTree::CameraTree() : m_root(osg::makeNodeFor(osg::Group::create()))
{
    osg::setName(m_root.get(), "Cameras");
}

void CameraTree::list(const osg::UberCameraPtr& camera, const osg::NodePtr& node)
{
    const unsigned id = camera->getContainerId();
    const unsigned nodeId = node ? node->getContainerId() : 0;
    const auto known = std::find_if(m_entries.begin(), m_entries.end(), entryOf(id));
    if (known == m_entries.end())
        m_entries.push_back({id, nodeId});
    else if (nodeId != 0)
        known->nodeId = nodeId;
}

void CameraTree::unlist(unsigned cameraId)
{
    std::erase_if(m_entries, entryOf(cameraId));
}

std::vector<CameraTree::Entry> CameraTree::entries() const
{
    std::vector<Entry> alive;
    for (const Entry& entry : m_entries)
        if (cameraOf(entry.cameraId))
            alive.push_back(entry);
    return alive;
}

osg::UberCameraPtr CameraTree::cameraOf(unsigned cameraId)
{
    return osg::fcCast<osg::UberCamera>(osg::FieldContainerFactory::the()->getContainer(cameraId));
}

CameraTree::Entry CameraTree::findViewpoint(const QString& name) const
{
    for (const Entry& entry : entries()) {
        const osg::UberCameraPtr camera = cameraOf(entry.cameraId);
        if (isViewpoint(camera) && znUberCameraUtils::getName(camera) == name)
            return entry;
    }
    return {};
}

osg::Matrix CameraTree::placementOf(const osg::UberCameraPtr& camera) const
{
    osg::Matrix placement = camera->getMatrix();
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(), entryOf(camera->getContainerId()));
    osg::NodePtr node = entry == m_entries.end() ? osg::NodePtr() : nodeOf(entry->nodeId);
    while (node && (node = node->getParent()))
        if (const auto transform = osg::fcCast<osg::Transform>(node->getCore()))
            placement = transform->getMatrix() * placement;
    return placement;
}

osg::NodePtr CameraTree::findCamera(const QString& name) const
{
    for (unsigned i = 0; i < m_root->getNChildren(); ++i) {
        const osg::NodePtr node = m_root->getChild(i);
        const auto camera = osg::fcCast<osg::UberCamera>(node->getCore());
        if (camera && znUberCameraUtils::getName(camera) == name)
            return node;
    }
    return {};
}

} // namespace zn::cameras
