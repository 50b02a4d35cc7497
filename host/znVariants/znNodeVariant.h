#pragma once

#include "host/OSGSystem/Node.h"
#include "host/znVariants/znVariant.h"

/// The states of a node are "!Enable" and "!Disable": shown and not shown.
class ZN_HOST_EXPORT znNodeVariant final : public znVariant
{
public:
    /// Made by znVariants; `node` is not null.
    explicit znNodeVariant(const osg::NodePtr& node);

    /// Null when it is gone.
    osg::NodePtr getNode() const;
    bool apply(const QString& stateName) override;
};
