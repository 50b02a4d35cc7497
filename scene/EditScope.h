#pragma once

#include "host/OSGSystem/Edit.h"

#include <utility>

namespace osg
{

/// A change of the fields in `mask` for the length of its life, made by the application. It takes no reference on the
/// container, which lives as long; a null one is ignored.
class EditScope
{
public:
    EditScope(const FieldContainerPtr& container, FieldMask mask) : m_container(container), m_mask(mask)
    {
        beginEditCP(m_container, m_mask, Application);
    }
    ~EditScope() { endEditCP(m_container, m_mask, Application); }
    EditScope(const EditScope&) = delete;
    EditScope& operator=(const EditScope&) = delete;

private:
    static constexpr unsigned Application = 1;

    FieldContainerPtr m_container;
    FieldMask m_mask;
};

/// Runs `change` within a bracket of its own around the fields in `mask`.
template <class Change>
void edit(const FieldContainerPtr& container, FieldMask mask, Change&& change)
{
    const EditScope scope(container, mask);
    std::forward<Change>(change)();
}

} // namespace osg
