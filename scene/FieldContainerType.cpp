#include "host/OSGSystem/FieldContainerType.h"

#include <cstring>
#include <vector>

namespace osg
{

namespace
{

std::uint32_t nextTypeId()
{
    static std::uint32_t last = 0;
    return ++last;
}

/// The place of `name` among the group names seen so far, from 1 on.
std::uint16_t groupIdOf(const char* name)
{
    static std::vector<const char*> groups;
    for (std::size_t i = 0; i < groups.size(); ++i)
        if (std::strcmp(groups[i], name) == 0)
            return static_cast<std::uint16_t>(i + 1);
    groups.push_back(name);
    return static_cast<std::uint16_t>(groups.size());
}

} // namespace

FieldContainerType::FieldContainerType(const char* name, const FieldContainerType* parent, const char* groupName)
    : m_name(name), m_parent(parent), m_groupName(groupName), m_id(nextTypeId())
{
}

std::uint16_t FieldContainerType::getGroupId() const
{
    // Looked up late: the parent's record may be constructed after this one.
    if (m_groupId == 0)
        m_groupId = m_groupName ? groupIdOf(m_groupName) : m_parent->getGroupId();
    return m_groupId;
}

} // namespace osg
