#pragma once

#include "host/OSGSystem/FieldContainer.h"

namespace osg
{

/// True when `type` is `wanted` or derives from it.
inline bool isKindOf(const FieldContainerType& type, const FieldContainerType& wanted)
{
    for (const FieldContainerType* step = &type; step; step = step->getParent())
        if (step->getId() == wanted.getId())
            return true;
    return false;
}

/// Down-cast by the chain of types: `pointer` as a pointer to `T`, null when it is null or not of class `T` or a class
/// derived from it.
template <class T>
typename T::Ptr fcCast(const FieldContainerPtr& pointer)
{
    if (!pointer || !isKindOf(pointer->getType(), T::_type))
        return typename T::Ptr();
    return typename T::Ptr(static_cast<T*>(pointer.get()));
}

} // namespace osg
