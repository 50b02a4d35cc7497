#pragma once

#include "files/gltf/GltfMaterialAssets.h"

#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <vector>

namespace zn::assets
{

/// The material assets of a folder: the glTF files in it and below it.
class AssetLibrary
{
public:
    struct Entry {
        files::gltf::MaterialAsset asset;
        QString file;
    };

    /// An empty library.
    AssetLibrary() = default;
    /// Reads all files of `folder` in the order of their paths. Gives in `complaints` a sentence for each file that
    /// could not be read and each uuid that comes twice; the first one counts.
    AssetLibrary(const QString& folder, QStringList& complaints);

    const QString& folder() const { return m_folder; }
    /// False when files came, went or changed since the library was read.
    bool isUpToDate() const { return m_stamps == stampsOf(m_folder); }

    /// Null when there is none; so are both finds. Valid as long as the library.
    const Entry* findByUuid(const QString& uuid) const { return entryAt(m_byUuid, uuid); }
    /// The first one that bears this name.
    const Entry* findByName(const QString& name) const { return entryAt(m_byName, name); }

private:
    using Index = QHash<QString, std::size_t>;
    struct Stamp {
        QString file;
        qint64 size = 0;
        QDateTime changed;
        friend bool operator==(const Stamp&, const Stamp&) = default;
    };

    static std::vector<Stamp> stampsOf(const QString& folder);
    const Entry* entryAt(const Index& index, const QString& key) const;
    void read(const QString& file, QStringList& complaints);

    QString m_folder;
    std::vector<Stamp> m_stamps;
    std::vector<Entry> m_entries;
    Index m_byUuid;
    Index m_byName;
};

} // namespace zn::assets
