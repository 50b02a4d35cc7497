#pragma once

#include "host/OSGSystem/Edit.h"

namespace ptx
{

/// A change of the fields in `mask` for the length of its life, made by the application.
class EditScope
{
public:
    EditScope(const osg::FieldContainerPtr& container, osg::FieldMask mask) : m_container(container), m_mask(mask)
    {
        osg::beginEditCP(m_container, m_mask, Application);
    }
    ~EditScope() { osg::endEditCP(m_container, m_mask, Application); }
    EditScope(const EditScope&) = delete;
    EditScope& operator=(const EditScope&) = delete;

private:
    static constexpr unsigned Application = 1;

    osg::FieldContainerPtr m_container;
    osg::FieldMask m_mask;
};

} // namespace ptx
