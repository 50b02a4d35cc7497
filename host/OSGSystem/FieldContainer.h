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
///
/// What holds for every class below it: `create` gives a new container with the count 0, which belongs to whoever takes
/// the first reference. The constants whose names end in FieldMask are the bits of the class's own fields. A setter
/// changes the field at once and opens no bracket: that is up to its caller. A getter that gives a pointer takes no
/// reference; null stands for nothing there.
class ZN_HOST_EXPORT FieldContainer
{
public:
    ///@{
    /// In each class: the pointer to it, which `fcCast` gives, and its run-time record, by which objects tell their
    /// class.
    using Ptr = FieldContainerPtr;
    static FieldContainerType _type;
    ///@}

    FieldContainer(const FieldContainer&) = delete;
    FieldContainer& operator=(const FieldContainer&) = delete;

    /// The record of the object's own class, not of the class it is looked at through. Valid as long as the program
    /// runs.
    virtual const FieldContainerType& getType() const = 0;
    /// The id by which FieldContainerFactory finds the object; never 0.
    std::uint32_t getContainerId() const { return m_id; }
    /// How many references are held; 0 for a new object that nobody has taken yet.
    std::uint32_t getRefCount() const { return m_references; }

    /// True when both are of one class and all their fields are equal: values by value, pointers to other containers by
    /// identity, attachments and what a material holds by their fields. Names count inside only. Two null are equal.
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
