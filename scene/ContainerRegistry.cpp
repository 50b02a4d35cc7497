#include "scene/ContainerRegistry.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Node.h"
#include "scene/EditAudit.h"

#include <algorithm>

namespace osg
{

namespace
{

/// The container with the id n has the place n - 1 in `byId`.
struct Registry {
    std::vector<FieldContainer*> byId;
    std::size_t living = 0;
    std::vector<FieldContainer*> doomed; ///< has room for all that live: trees are freed when memory is out, too
    bool draining = false;
    bool sweeping = false;
};

constinit Registry all;

std::string nameOf(const FieldContainerPtr& container)
{
    const char* name = getName(fcCast<AttachmentContainer>(container));
    return name ? name : "";
}

void makeRoomForEnd()
{
    constexpr std::size_t Least = 64;
    if (all.doomed.capacity() <= all.living)
        all.doomed.reserve(std::max(Least, 2 * all.living));
}

} // namespace

FieldContainerType FieldContainer::_type("FieldContainer", nullptr, "FieldContainer");

FieldContainer::FieldContainer()
{
    makeRoomForEnd();
    all.byId.push_back(this);
    m_id = static_cast<std::uint32_t>(all.byId.size());
    ++all.living;
}

FieldContainer::~FieldContainer()
{
    all.byId[m_id - 1] = nullptr;
    --all.living;
}

void FieldContainer::fieldChanged(FieldMask mask)
{
    if (EditAudit* audit = EditAudit::active())
        audit->fieldChanged(*this, mask);
}

bool FieldContainer::isEqual(const FieldContainerPtr& a, const FieldContainerPtr& b)
{
    if (a == b)
        return true;
    return a && b && &a->getType() == &b->getType() && a->equalFields(*b);
}

void FieldContainerPtrBase::addRef() const
{
    if (m_container)
        ++m_container->m_references;
}

void FieldContainerPtrBase::subRef() const
{
    if (!m_container || isSweeping())
        return;
    if (m_container->m_references > 1)
        --m_container->m_references;
    else
        ContainerAccess::destroy(m_container);
}

void ContainerAccess::destroy(FieldContainer* container)
{
    container->m_references = 0;
    all.doomed.push_back(container);
    if (all.draining)
        return;
    all.draining = true;
    while (!all.doomed.empty()) {
        FieldContainer* next = all.doomed.back();
        all.doomed.pop_back();
        delete next;
    }
    all.draining = false;
}

FieldContainerFactory* FieldContainerFactory::the()
{
    static FieldContainerFactory factory;
    return &factory;
}

FieldContainerPtr FieldContainerFactory::getContainer(unsigned id) const
{
    // Id 0 wraps to a place that is never there.
    const std::size_t place = std::size_t(id) - 1;
    return place < all.byId.size() ? FieldContainerPtr(all.byId[place]) : FieldContainerPtr();
}

std::vector<LivingContainer> livingContainers()
{
    std::vector<LivingContainer> result;
    for (FieldContainer* container : all.byId)
        if (container)
            result.push_back({container->getContainerId(), container->getRefCount(), container->getType().getName(),
                              nameOf(FieldContainerPtr(container))});
    return result;
}

std::size_t livingContainerCount()
{
    return all.living;
}

void sweepContainers()
{
    all.sweeping = true;
    for (std::size_t place = 0; place < all.byId.size(); ++place)
        if (all.byId[place])
            ContainerAccess::destroy(all.byId[place]);
    all.byId.clear();
    all.sweeping = false;
}

bool isSweeping()
{
    return all.sweeping;
}

} // namespace osg
