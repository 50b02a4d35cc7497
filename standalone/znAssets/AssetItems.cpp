#include "standalone/znAssets/AssetItems.h"

#include "host/znUtils/znLog.h"
#include "standalone/znAssets/AssetMaterials.h"

#include <QAbstractEventDispatcher>

namespace zn::assets
{

namespace
{

void log(const QStringList& complaints)
{
    for (const QString& complaint : complaints)
        znLog::error(complaint.toUtf8().constData());
}

} // namespace

/// Without an event loop there are no passes: then it is looked at each time.
bool AssetItems::isUpToDate(const QString& folder)
{
    if (m_library.folder() != folder || (!m_nextPass.isActive() && !m_library.isUpToDate()))
        return false;
    if (!m_nextPass.isActive() && QAbstractEventDispatcher::instance())
        m_nextPass.start(0);
    return true;
}

const AssetLibrary& AssetItems::library(const QString& folder)
{
    if (isUpToDate(folder))
        return m_library;
    QStringList complaints;
    m_library = AssetLibrary(folder, complaints);
    m_materials.clear();
    log(complaints);
    return m_library;
}

osg::MaterialPtr AssetItems::materialOf(const AssetLibrary::Entry* entry)
{
    if (!entry)
        return {};
    osg::RefPtr<osg::MaterialPtr>& material = m_materials[entry->asset.uuid];
    if (!material) {
        QStringList complaints;
        material = makeAssetMaterial(*entry, complaints);
        log(complaints);
    }
    return material;
}

osg::MaterialPtr AssetItems::materialByUuid(const QString& folder, const QString& uuid)
{
    return materialOf(library(folder).findByUuid(uuid));
}

osg::MaterialPtr AssetItems::materialByName(const QString& folder, const QString& name)
{
    return materialOf(library(folder).findByName(name));
}

void AssetItems::cleanUp()
{
    std::erase_if(m_materials, [](const auto& item) { return item.second->getRefCount() == 1; });
}

} // namespace zn::assets
