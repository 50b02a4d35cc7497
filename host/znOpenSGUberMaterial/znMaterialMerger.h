#pragma once

#include "host/znOpenSGUberMaterial/znMaterialComparison.h"
#include "host/znOpenSGUtils/znNodePtr.h"

#include <set>
#include <vector>

/// Puts known materials in the place of equal new ones.
class ZN_HOST_EXPORT znMaterialMerger
{
public:
    /// Which materials are exchanged.
    enum MaterialMergeSettings : unsigned {
        MergeNodeMaterials = 0, ///< the materials of nodes; what they hold stays
    };

    /// Gives each node at and below `roots` whose material is equal to a material of `known` that one. Of several, the
    /// one with the lowest id wins; a material that is among the known ones stays.
    /// @param known container ids; what is no material any more is passed over
    static void reuseMaterials(const std::vector<znNodePtr>& roots, const std::set<unsigned>& known,
                               const znMaterialComparison::MaterialCompareSettings& compare,
                               MaterialMergeSettings merge);
};
