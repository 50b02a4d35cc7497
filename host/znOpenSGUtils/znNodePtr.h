#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"

/// A node as the host's own tools pass it about. It holds no reference.
class ZN_HOST_EXPORT znNodePtr
{
public:
    znNodePtr();
    ///@{
    /// Stands for the same node, or for none.
    explicit znNodePtr(const osg::NodePtr& node);
    znNodePtr(const znNodePtr& other);
    znNodePtr& operator=(const znNodePtr& other);
    ///@}
    virtual ~znNodePtr();

    ///@{
    /// The node, null if it stands for none. It is not kept alive.
    const osg::NodePtr& get() const { return m_node; }
    operator const osg::NodePtr&() const { return m_node; }
    ///@}

private:
    osg::NodePtr m_node;
};
