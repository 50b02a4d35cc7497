#include "standalone/znAssets/AssetLibrary.h"

#include <QCoreApplication>
#include <QDirIterator>

#include <algorithm>

namespace zn::assets
{

AssetLibrary::AssetLibrary(const QString& folder, QStringList& complaints)
    : m_folder(folder), m_stamps(stampsOf(folder))
{
    for (const Stamp& stamp : m_stamps)
        read(stamp.file, complaints);
}

std::vector<AssetLibrary::Stamp> AssetLibrary::stampsOf(const QString& folder)
{
    std::vector<Stamp> stamps;
    if (folder.isEmpty())
        return stamps;
    QDirIterator files(folder, {QStringLiteral("*.gltf"), QStringLiteral("*.glb")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        stamps.push_back({file, files.fileInfo().size(), files.fileInfo().lastModified()});
    }
    std::sort(stamps.begin(), stamps.end(), [](const Stamp& a, const Stamp& b) { return a.file < b.file; });
    return stamps;
}

const AssetLibrary::Entry* AssetLibrary::entryAt(const Index& index, const QString& key) const
{
    const auto found = index.find(key);
    return found == index.end() ? nullptr : &m_entries[found.value()];
}

void AssetLibrary::read(const QString& file, QStringList& complaints)
{
    const files::Expected<std::vector<files::gltf::MaterialAsset>> found = files::gltf::readMaterialAssets(file);
    if (!found) {
        complaints.append(found.error().toString());
        return;
    }
    for (const files::gltf::MaterialAsset& asset : found.value()) {
        const QString uuid = QString::fromStdString(asset.uuid);
        if (m_byUuid.contains(uuid)) {
            complaints.append(QCoreApplication::translate("znAssets", "%1: the asset %2 is there already, in %3.")
                                  .arg(file, uuid, findByUuid(uuid)->file));
            continue;
        }
        m_byUuid.insert(uuid, m_entries.size());
        const QString name = QString::fromStdString(asset.name);
        if (!m_byName.contains(name))
            m_byName.insert(name, m_entries.size());
        m_entries.push_back({asset, file});
    }
}

} // namespace zn::assets
