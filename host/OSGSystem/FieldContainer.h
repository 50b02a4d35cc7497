#pragma once

#include "host/OSGSystem/FieldContainerPtr.h"
#include "host/OSGSystem/FieldContainerType.h"

namespace osg
{

/// One bit for each field of a class, counted on from its base class.
using FieldMask = std::uint32_t;

/// Root of all classes of the scene graph.
///
/// Containers are counted by hand: a new one has the count 0, each parent, core holder, attachment holder and pointer
/// field counts one, and a drop to 0 destroys. A container has an id, dense from 1 in the order of creation and not
/// given twice within a session. A field is changed between `osg::beginEditCP` and `osg::endEditCP` with its mask.
/// Containers belong to one thread.
class ZN_HOST_EXPORT FieldContainer
{
public:
    using Ptr = FieldContainerPtr;
    static FieldContainerType _type;

    FieldContainer(const FieldContainer&) = delete;
    FieldContainer& operator=(const FieldContainer&) = delete;

    virtual const FieldContainerType& getType() const = 0;
    std::uint32_t getContainerId() const { return m_id; }
    std::uint32_t getRefCount() const { return m_references; }

    /// True when both are of one class and all their fields are equal: values by value, pointers to other containers by
    /// identity, attachments by their own fields. Names do not count. Two null values are equal.
    static bool isEqual(const FieldContainerPtr& a, const FieldContainerPtr& b);

protected:
    FieldContainer();
    virtual ~FieldContainer();

    /// Compares all fields; `other` is of the very class of this object.
    virtual bool equalFields(const FieldContainer& other) const = 0;
    /// Makes a container of the same class with the same field values; containers that fields point to are shared.
    virtual FieldContainerPtr copy() const = 0;

    /// To be called by whatever changes a field, with the mask of that field.
    void fieldChanged(FieldMask mask);

private:
    friend class FieldContainerPtrBase;
    friend class FieldContainerFactory;
    friend struct ContainerAccess;

    std::uint32_t m_id = 0;
    std::uint32_t m_references = 0;
};

inline FieldContainerPtr::FieldContainerPtr(FieldContainer* container)
    : FieldContainerPtrBase(container,
                            container ? static_cast<std::uint16_t>(sizeof(FieldContainer)) : std::uint16_t(0),
                            InvalidParentEPos)
{
}

} // namespace osg
