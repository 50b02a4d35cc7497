#pragma once

#include "host/HostExport.h"

#include <cstdint>

namespace osg
{

/// The run-time record of a container class: its name, its place in the chain of types, and its group.
///
/// Each class has one, its static `_type`, which lives as long as the program. Ids are given in the order of
/// construction and are valid within one run of the program only.
class ZN_HOST_EXPORT FieldContainerType
{
public:
    /// `parent` is null for the root of the chain. Classes with the same `groupName` are of one group; a null
    /// `groupName` stands for the group of the parent. Both texts must outlive the record.
    FieldContainerType(const char* name, const FieldContainerType* parent, const char* groupName = nullptr);
    FieldContainerType(const FieldContainerType&) = delete;
    FieldContainerType& operator=(const FieldContainerType&) = delete;

    /// The number of the class in this run of the program.
    std::uint32_t getId() const { return m_id; }
    /// The key under which attachments of this class are found.
    std::uint16_t getGroupId() const;
    /// The name of the class, such as "Transform"; never null.
    const char* getName() const { return m_name; }
    /// The type of the base class, null at the root of the chain.
    const FieldContainerType* getParent() const { return m_parent; }

private:
    const char* m_name;
    const FieldContainerType* m_parent;
    const char* m_groupName;
    std::uint32_t m_id;
    mutable std::uint16_t m_groupId = 0;
};

} // namespace osg
