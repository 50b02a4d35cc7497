#pragma once

#include "host/OSGSystem/FieldContainer.h"

#include <cstdint>
#include <string>
#include <vector>

namespace osg
{

/// What the implementation does to containers behind their protected face.
struct ContainerAccess {
    ///@{
    /// Calls the protected function: a copy with the count 0, equality with an object of the same class, the word that
    /// the fields in `mask` have changed.
    static FieldContainerPtr copy(const FieldContainer& container) { return container.copy(); }
    static bool equal(const FieldContainer& a, const FieldContainer& b) { return a.equalFields(b); }
    static void changed(FieldContainer& container, FieldMask mask) { container.fieldChanged(mask); }
    ///@}
    /// Destroys `container` and, without recursion, whatever loses its last reference by that. Needs no memory.
    static void destroy(FieldContainer* container);
};

/// A container that is still alive.
struct LivingContainer {
    std::uint32_t id = 0;         ///< as FieldContainer::getContainerId() tells it
    std::uint32_t references = 0; ///< how many are held
    std::string type;             ///< the name of its class
    std::string name;             ///< empty when it has none
};

/// Every living container, by ascending id.
std::vector<LivingContainer> livingContainers();

/// How many containers are alive.
std::size_t livingContainerCount();

/// Destroys every living container, whatever its references, and starts the ids at 1 again. Pointers that are still
/// held must not be used any more.
void sweepContainers();

/// True while `sweepContainers` runs: destructors must not touch other containers then.
bool isSweeping();

} // namespace osg
