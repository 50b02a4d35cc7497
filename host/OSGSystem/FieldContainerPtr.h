#pragma once

#include "host/HostExport.h"

#include <cstdint>

namespace osg
{

class FieldContainer;

/// The type of `osg::NullFC`, the one null value that every container pointer takes and compares with.
struct NullFieldContainer {
};
/// What stands for no container, of whatever class.
inline constexpr NullFieldContainer NullFC{};

/// What all container pointers hold: a size, a parent position and the pointer.
///
/// A container pointer is a small value. Copying it does not touch the reference count of the container, which is moved
/// by hand with `addRef` and `subRef`; whoever keeps a container beyond a call keeps a reference on it. Validity is a
/// matter of the pointer alone, and so is equality.
class ZN_HOST_EXPORT FieldContainerPtrBase
{
public:
    /// The parent position of a pointer that is not bound to a field of its container.
    static constexpr std::uint16_t InvalidParentEPos = 0xFFFF;

    FieldContainerPtrBase() = default;

    /// Takes one more reference. A null pointer is ignored.
    void addRef() const;
    /// Gives up one reference; the container is destroyed when none is left. A null pointer is ignored.
    void subRef() const;

    /// The size in bytes of the class that the pointer was made for; 0 for a null value.
    std::uint16_t getContainerSize() const { return m_containerSize; }
    /// Which field of its container the pointer is bound to; InvalidParentEPos for none. Nothing in the open host binds
    /// pointers.
    std::uint16_t getParentFieldPos() const { return m_parentEPos; }

    /// Whether it points to anything. A pointer to a container that is destroyed says yes still.
    explicit operator bool() const { return m_container != nullptr; }
    /// Whether both point to the same object, or both to none.
    friend bool operator==(const FieldContainerPtrBase& a, const FieldContainerPtrBase& b)
    {
        return a.m_container == b.m_container;
    }
    /// Whether it points to nothing.
    friend bool operator==(const FieldContainerPtrBase& a, NullFieldContainer) { return a.m_container == nullptr; }
    /// Order by address, so that pointers can be keys of ordered maps.
    friend bool operator<(const FieldContainerPtrBase& a, const FieldContainerPtrBase& b)
    {
        return a.m_container < b.m_container;
    }

protected:
    /// Takes the three values as they are, and no reference.
    FieldContainerPtrBase(FieldContainer* container, std::uint16_t size, std::uint16_t parentEPos)
        : m_containerSize(size), m_parentEPos(parentEPos), m_container(container)
    {
    }

    ///@{
    /// What the getters give; all three are zero or invalid for a null value.
    std::uint16_t m_containerSize = 0;
    std::uint16_t m_parentEPos = InvalidParentEPos;
    FieldContainer* m_container = nullptr;
    ///@}
};

/// Pointer to a container of any class.
class FieldContainerPtr : public FieldContainerPtrBase
{
public:
    FieldContainerPtr() = default;
    /// The null value, so that `osg::NullFC` can be handed to whoever takes a pointer.
    FieldContainerPtr(NullFieldContainer) {}
    /// From a raw object; a null `container` gives a null value.
    explicit FieldContainerPtr(FieldContainer* container);
    /// From a raw object with the size and the parent position that the pointer shall tell. Takes no reference.
    FieldContainerPtr(FieldContainer* container, std::uint16_t size, std::uint16_t parentEPos)
        : FieldContainerPtrBase(container, size, parentEPos)
    {
    }

    ///@{
    /// The object itself; null for a null value, which must not be dereferenced.
    FieldContainer* get() const { return m_container; }
    FieldContainer* operator->() const { return m_container; }
    FieldContainer& operator*() const { return *m_container; }
    ///@}
};

/// Pointer to a container of class `T` or of a class derived from it. `BasePtr` is the pointer to the base class of
/// `T`, so that a pointer converts to that of its base by itself. For the way down see `fcCast`.
template <class BasePtr, class T>
class FCPtr : public BasePtr
{
public:
    /// The class that it points to.
    using Container = T;

    FCPtr() = default;
    /// The null value, so that `osg::NullFC` can be handed to whoever takes a pointer.
    FCPtr(NullFieldContainer) {}
    /// From a raw object; a null `container` gives a null value.
    explicit FCPtr(T* container)
        : BasePtr(container, container ? static_cast<std::uint16_t>(sizeof(T)) : std::uint16_t(0),
                  FieldContainerPtrBase::InvalidParentEPos)
    {
    }
    /// From a raw object with the size and the parent position that the pointer shall tell. Takes no reference.
    FCPtr(T* container, std::uint16_t size, std::uint16_t parentEPos) : BasePtr(container, size, parentEPos) {}

    ///@{
    /// The object itself; null for a null value, which must not be dereferenced.
    T* get() const { return static_cast<T*>(this->m_container); }
    T* operator->() const { return get(); }
    T& operator*() const { return *get(); }
    ///@}
};

/// Holds one reference on a container for the length of its own life.
template <class Ptr>
class RefPtr
{
public:
    RefPtr() = default;
    ///@{
    /// Takes a reference of its own; null is held as null.
    RefPtr(const Ptr& pointer) : m_pointer(pointer) { m_pointer.addRef(); }
    RefPtr(const RefPtr& other) : RefPtr(other.m_pointer) {}
    ///@}
    virtual ~RefPtr() { m_pointer.subRef(); }

    ///@{
    /// Takes a reference on the new container before it gives up the one on the old, so that a container may be
    /// assigned to its own holder.
    RefPtr& operator=(const RefPtr& other) { return *this = other.m_pointer; }
    RefPtr& operator=(const Ptr& pointer)
    {
        const Ptr old = m_pointer;
        pointer.addRef();
        m_pointer = pointer;
        old.subRef();
        return *this;
    }
    ///@}

    ///@{
    /// What is held, null if nothing is. It stays valid as long as this holds it.
    const Ptr& get() const { return m_pointer; }
    operator const Ptr&() const { return m_pointer; }
    typename Ptr::Container* operator->() const { return m_pointer.get(); }
    ///@}
    /// Whether anything is held.
    explicit operator bool() const { return static_cast<bool>(m_pointer); }

private:
    Ptr m_pointer;
};

} // namespace osg
