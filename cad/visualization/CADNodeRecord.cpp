#include "cad/visualization/CADNodeRecord.h"

#include "cad/visualization/CADRecordPlacement.h"
#include "cad/visualization/CADUserDataText.h"
#include "cad/xml/CADBase.h"
#include "host/OSGSystem/Edit.h"

#include <array>
#include <stdexcept>

namespace HB::Visualization
{

namespace
{

using States = std::array<CADLoadState, 8>;

// What each state becomes when a change is asked for. A request cancels its opposite.
constexpr States onLoad = {CADLoadState::IdleLoadRequested,
                           CADLoadState::IdleLoadRequested,
                           CADLoadState::Realized,
                           CADLoadState::Realized,
                           CADLoadState::FilePendingLoadRequested,
                           CADLoadState::FilePendingLoadRequested,
                           CADLoadState::FileLoaded,
                           CADLoadState::FileLoaded};
constexpr States onUnload = {CADLoadState::Idle,
                             CADLoadState::Idle,
                             CADLoadState::RealizedUnloadRequested,
                             CADLoadState::RealizedUnloadRequested,
                             CADLoadState::FilePending,
                             CADLoadState::FilePending,
                             CADLoadState::FileLoadedUnloadRequested,
                             CADLoadState::FileLoadedUnloadRequested};

CADLoadState next(const States& table, CADLoadState state)
{
    const auto index = static_cast<std::size_t>(state);
    return index < table.size() ? table[index] : state;
}

} // namespace

void CADNodeRecord::setNode(const osg::NodePtr& node)
{
    m_node = node;
    m_parentNode = node ? node->getParent() : osg::NodePtr();
}

std::uint32_t CADNodeRecord::getChild(std::uint32_t childNum) const
{
    if (childNum >= m_children.size())
        throw std::runtime_error("childNum is out of range");
    return m_children[childNum];
}

void CADNodeRecord::requestLoad()
{
    m_state = next(onLoad, m_state);
}

void CADNodeRecord::requestUnload()
{
    m_state = next(onUnload, m_state);
}

void CADNodeRecord::setActive(bool active)
{
    m_active = active;
    switchContent(active);
}

void CADNodeRecord::markLoaded()
{
    m_active = true;
    switchContent(true);
    m_marked = false;
}

void CADNodeRecord::switchContent(bool active)
{
    if (!m_node || m_state != CADLoadState::FileLoaded)
        return;
    const osg::NodePtr content = m_node->getChild(0);
    if (!content)
        return;
    osg::beginEditCP(content, osg::AllFieldsMask, 1);
    content->setActive(active);
    osg::endEditCP(content, osg::AllFieldsMask, 1);
}

void CADNodeRecord::setTranslation(float x, float y, float z)
{
    CADRecordPlacement::setTranslation(m_node, x, y, z);
}

std::vector<float> CADNodeRecord::getTranslation() const
{
    return CADRecordPlacement::getTranslation(m_node);
}

void CADNodeRecord::setRotation(float x, float y, float z, float angle)
{
    CADRecordPlacement::setRotation(m_node, x, y, z, angle);
}

std::vector<float> CADNodeRecord::getRotation() const
{
    return CADRecordPlacement::getRotation(m_node);
}

void CADNodeRecord::setScale(float x, float y, float z)
{
    CADRecordPlacement::setScale(m_node, x, y, z);
}

std::vector<float> CADNodeRecord::getScale() const
{
    return CADRecordPlacement::getScale(m_node);
}

std::string CADNodeRecord::getUserDataText() const
{
    const auto* userData = m_element && m_kind == 1 ? m_element->getUserData() : nullptr;
    return userData ? userDataText(*userData) : std::string();
}

} // namespace HB::Visualization
