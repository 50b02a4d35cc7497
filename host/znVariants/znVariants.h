#pragma once

#include "host/znVariants/znVariantSet.h"

/// Makes and finds the variants of the scene. All of them belong to the session; a name is exact.
///
/// The flags are for hosts with windows that show variants: whether to tell these of the change, and whether to open a
/// group. The open host has no such windows.
class ZN_HOST_EXPORT znVariants
{
public:
    /// Null when the name is empty or taken.
    static znVariantGroup* createVariantGroup(const QString& name, bool tell, bool open);
    /// Null when there is none of this name; so are all finds.
    static znVariantGroup* findVariantGroup(const QString& name);

    /// A new set below `group`, or below none when it is null. Null when the name is empty or taken.
    static znVariantSet* createVariantSet(const QString& name, bool tell, znVariantGroup* group);
    /// The set of this name; null when there is none.
    static znVariantSet* findVariantSet(const QString& name);

    /// The variant of `material`: a new one, or the one that it has. Null for a null material.
    static znMaterialVariant* createMaterialVariant(const osg::MaterialPtr& material, bool tell);
    /// By the name that the material had when its variant was made.
    static znMaterialVariant* findMaterialVariant(const QString& name);

    /// The variant of `node`: a new one, or the one that it has. Null for a null node.
    static znNodeVariant* createNodeVariant(const osg::NodePtr& node, bool tell);
};
