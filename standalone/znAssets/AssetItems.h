#pragma once

#include "host/OSGSystem/Material.h"
#include "standalone/znAssets/AssetLibrary.h"

#include <map>

namespace zn::assets
{

/// The material assets that were asked for, each made once and kept. What went wrong goes to the log of the host.
class AssetItems
{
public:
    /// The material of the asset with this uuid or name in `folder`; null when there is none. The materials are kept
    /// here; a caller that keeps one beyond the next clean-up takes a reference.
    osg::MaterialPtr materialByUuid(const QString& folder, const QString& uuid);
    osg::MaterialPtr materialByName(const QString& folder, const QString& name);

    /// Gives up the materials that nobody else holds.
    void cleanUp();
    std::size_t count() const { return m_materials.size(); }

private:
    const AssetLibrary& library(const QString& folder);
    osg::MaterialPtr materialOf(const AssetLibrary::Entry* entry);

    AssetLibrary m_library;
    std::map<std::string, osg::RefPtr<osg::MaterialPtr>> m_materials; ///< by uuid
};

} // namespace zn::assets
