#pragma once

#include "host/OSGSystem/Node.h"
#include "host/znInterfaces/znInterfaceObject.h"

/// Tells the host that a tree with references has come into the scene.
class ZN_HOST_EXPORT znReferenceInterface : public znInterfaceObject
{
public:
    znReferenceInterface();
    ~znReferenceInterface() override;

    /// @param root the tree
    /// @param code who tells: 18 stands for a finished import of a tree
    /// @param argument 0
    virtual void notifyReferences(const osg::NodePtr& root, int code, int argument) = 0;
};
