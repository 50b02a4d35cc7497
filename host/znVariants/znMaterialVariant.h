#pragma once

#include "host/OSGSystem/Material.h"
#include "host/znVariants/znVariant.h"

/// The states of a switch material are the names of its sub-materials. Any other material has its own name as its only
/// state.
class ZN_HOST_EXPORT znMaterialVariant final : public znVariant
{
public:
    /// Made by znVariants; `material` is not null.
    explicit znMaterialVariant(const osg::MaterialPtr& material);

    /// Null when it is gone.
    osg::MaterialPtr getMaterial() const;
    bool apply(const QString& stateName) override;
};
