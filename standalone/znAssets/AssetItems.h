#pragma once

#include "host/OSGSystem/Material.h"
#include "standalone/znAssets/AssetLibrary.h"

#include <QTimer>

#include <map>

namespace zn::assets
{

/// The material assets that were asked for, each made once and kept. What went wrong goes to the log of the host.
///
/// Whether files of the folder came, went or changed is looked at once in a pass of the event loop: an import asks for
/// thousands of assets within one.
class AssetItems
{
public:
    AssetItems() { m_nextPass.setSingleShot(true); }

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

    bool isUpToDate(const QString& folder);

    AssetLibrary m_library;
    QTimer m_nextPass; ///< runs while the library was found up to date in this pass
    std::map<std::string, osg::RefPtr<osg::MaterialPtr>> m_materials; ///< by uuid
};

} // namespace zn::assets
