#include "standalone/OSGSystem/ContainerRegistry.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Node.h"
#include "standalone/OSGSystem/EditAudit.h"

namespace osg
{

namespace
{

/// Ids are places in `byId`; place 0 stays empty.
struct Registry {
    std::vector<FieldContainer*> byId = {nullptr};
    std::size_t living = 0;
    std::vector<FieldContainer*> doomed;
    bool draining = false;
    bool sweeping = false;
};

Registry& registry()
{
    static Registry instance;
    return instance;
}

std::string nameOf(const FieldContainerPtr& container)
{
    const char* name = getName(fcCast<AttachmentContainer>(container));
    return name ? name : "";
}

} // namespace

FieldContainerType FieldContainer::_type("FieldContainer", nullptr, "FieldContainer");

FieldContainer::FieldContainer()
{
    Registry& all = registry();
    m_id = static_cast<std::uint32_t>(all.byId.size());
    all.byId.push_back(this);
    ++all.living;
}

FieldContainer::~FieldContainer()
{
    Registry& all = registry();
    all.byId[m_id] = nullptr;
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
    Registry& all = registry();
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
    const std::vector<FieldContainer*>& byId = registry().byId;
    return id < byId.size() ? FieldContainerPtr(byId[id]) : FieldContainerPtr();
}

std::vector<LivingContainer> livingContainers()
{
    std::vector<LivingContainer> result;
    for (FieldContainer* container : registry().byId)
        if (container)
            result.push_back({container->getContainerId(), container->getRefCount(), container->getType().getName(),
                              nameOf(FieldContainerPtr(container))});
    return result;
}

std::size_t livingContainerCount()
{
    return registry().living;
}

void sweepContainers()
{
    Registry& all = registry();
    all.sweeping = true;
    for (std::size_t id = 1; id < all.byId.size(); ++id)
        if (all.byId[id])
            ContainerAccess::destroy(all.byId[id]);
    all.byId.resize(1);
    all.sweeping = false;
}

bool isSweeping()
{
    return registry().sweeping;
}

} // namespace osg
