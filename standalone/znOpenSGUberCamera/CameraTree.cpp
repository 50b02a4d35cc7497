#include "standalone/znOpenSGUberCamera/CameraTree.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/MatrixMath.h"
#include "scene/NameRevisions.h"

#include <algorithm>

namespace zn::cameras
{

namespace
{

osg::NodePtr nodeOf(unsigned id)
{
    return osg::fcCast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(id));
}

QString nameOf(const osg::UberCameraPtr& camera)
{
    return QString::fromUtf8(osg::getName(camera));
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
    if (const Known* known = knownOf(id); known && known->isListed) {
        if (nodeId != 0)
            m_known[m_numbers[id]].entry.nodeId = nodeId;
        return;
    }
    updateNames();
    if (const auto former = m_numbers.find(id); former != m_numbers.end()) {
        m_names.numbers[nameOf(camera)].erase(former->second);
        m_known.erase(former->second);
    }
    m_numbers[id] = m_nextNumber;
    m_names.numbers[nameOf(camera)].insert(m_nextNumber);
    m_known[m_nextNumber++] = {{id, nodeId}};
}

/// It stays known: a camera that is not offered may still stand below the root.
void CameraTree::unlist(unsigned cameraId)
{
    if (const auto number = m_numbers.find(cameraId); number != m_numbers.end())
        m_known[number->second].isListed = false;
}

std::vector<CameraTree::Entry> CameraTree::entries() const
{
    std::vector<Entry> alive;
    for (const auto& [number, known] : m_known)
        if (known.isListed && cameraOf(known.entry.cameraId))
            alive.push_back(known.entry);
    return alive;
}

osg::UberCameraPtr CameraTree::cameraOf(unsigned cameraId)
{
    return osg::fcCast<osg::UberCamera>(osg::FieldContainerFactory::the()->getContainer(cameraId));
}

const CameraTree::Known* CameraTree::knownOf(unsigned cameraId) const
{
    const auto number = m_numbers.find(cameraId);
    return number == m_numbers.end() ? nullptr : &m_known.at(number->second);
}

CameraTree::Entry CameraTree::find(unsigned cameraId) const
{
    const Known* known = knownOf(cameraId);
    return known && known->isListed && cameraOf(cameraId) ? known->entry : Entry();
}

CameraTree::Entry CameraTree::findViewpoint(const QString& name) const
{
    for (const std::uint64_t number : numbersOf(name)) {
        const Known& known = m_known.at(number);
        const osg::UberCameraPtr camera = cameraOf(known.entry.cameraId);
        if (known.isListed && camera && isViewpoint(camera))
            return known.entry;
    }
    return {};
}

osg::NodePtr CameraTree::findCamera(const QString& name) const
{
    for (const std::uint64_t number : numbersOf(name)) {
        const Entry& entry = m_known.at(number).entry;
        const osg::NodePtr node = nodeOf(entry.nodeId);
        if (node && node->getParent() == m_root.get() && node->getCore() == cameraOf(entry.cameraId))
            return node;
    }
    return {};
}

bool CameraTree::isTaken(const QString& name, unsigned exceptId) const
{
    const std::set<std::uint64_t>& numbers = numbersOf(name);
    return std::any_of(numbers.begin(), numbers.end(), [&](std::uint64_t number) {
        const Known& known = m_known.at(number);
        return known.isListed && known.entry.cameraId != exceptId && cameraOf(known.entry.cameraId);
    });
}

void CameraTree::rename(const osg::UberCameraPtr& camera, const QString& name)
{
    updateNames();
    const auto number = m_numbers.find(camera->getContainerId());
    if (number != m_numbers.end())
        m_names.numbers[nameOf(camera)].erase(number->second);
    osg::setName(camera, name.toStdString());
    m_names.revision = osg::cameraNamesRevision();
    if (number == m_numbers.end())
        return;
    m_names.numbers[nameOf(camera)].insert(number->second);
    if (m_known[number->second].isListed)
        osg::setName(nodeOf(m_known[number->second].entry.nodeId), name.toStdString());
}

const std::set<std::uint64_t>& CameraTree::numbersOf(const QString& name) const
{
    static const std::set<std::uint64_t> none;
    updateNames();
    const auto found = m_names.numbers.constFind(name);
    return found == m_names.numbers.constEnd() ? none : *found;
}

void CameraTree::updateNames() const
{
    if (m_names.revision == osg::cameraNamesRevision())
        return;
    m_names.revision = osg::cameraNamesRevision();
    m_names.numbers.clear();
    for (const auto& [number, known] : m_known)
        if (const osg::UberCameraPtr camera = cameraOf(known.entry.cameraId))
            m_names.numbers[nameOf(camera)].insert(number);
}

osg::Matrix CameraTree::placementOf(const osg::UberCameraPtr& camera) const
{
    osg::Matrix placement = camera->getMatrix();
    osg::NodePtr node = nodeOf(find(camera->getContainerId()).nodeId);
    while (node && (node = node->getParent()))
        if (const auto transform = osg::fcCast<osg::Transform>(node->getCore()))
            placement = transform->getMatrix() * placement;
    return placement;
}

} // namespace zn::cameras
