#pragma once

#include "host/znOpenSGUberMaterial/znMaterialComparison.h"

#include <cstddef>
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace zn::materials
{

/// Materials that may take the places of others, and what was found among them. Each is compared with those only that
/// have its class, its name and its look, as far as these are to be compared.
class KnownMaterials
{
public:
    /// `ids` are container ids; what is no material any more is passed over.
    KnownMaterials(const std::set<unsigned>& ids, znMaterialComparison::MaterialCompareSettings settings);

    /// What to use for `material`: an equal known one, of several that which was there first, or itself.
    osg::MaterialPtr of(const osg::MaterialPtr& material);

    /// As `of`; one that is equal to none is known from now on.
    osg::MaterialPtr take(const osg::MaterialPtr& material);

private:
    /// Class, name and look; equal materials have equal keys.
    using Key = std::tuple<unsigned, std::string, std::size_t>;

    Key keyOf(const osg::MaterialPtr& material) const;
    void add(const osg::MaterialPtr& material);
    osg::MaterialPtr lookUp(const osg::MaterialPtr& material) const;

    struct KeyHash {
        std::size_t operator()(const Key& key) const;
    };

    znMaterialComparison::MaterialCompareSettings m_settings;
    std::unordered_map<Key, std::vector<osg::MaterialPtr>, KeyHash> m_alike; ///< each in the order in which they came
    std::unordered_map<const osg::Material*, osg::MaterialPtr> m_found;
};

} // namespace zn::materials
