#include "importer/AssetTableRun.h"

#include "importer/materials/TableEdits.h"
#include "standalone/startup/StandaloneSession.h"
#include "standalone/znAssets/SessionAssets.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <new>

namespace importer
{

namespace
{

/// Where the texts of this file stand.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(importer::AssetTableRun)
};

using Materials = std::vector<osg::RefPtr<osg::MaterialPtr>>;

/// The assets of the rows, each by its uuid or else by its name. An error names the first row whose asset is not there.
files::Expected<Materials> assetsOf(const materials::AssetTable& table, const QString& folder)
{
    zn::assets::AssetItems& assets = zn::assets::sessionAssets();
    Materials result;
    for (const materials::TableRow& row : table.rows) {
        const QString asset = QString::fromStdString(row.asset);
        osg::MaterialPtr material = assets.materialByUuid(folder, asset);
        if (!material)
            material = assets.materialByName(folder, asset);
        if (!material)
            return files::Error{{Texts::tr("the folder has no asset \"%1\"").arg(asset), table.file,
                                 materials::placeOf(result.size()) + QStringLiteral("/asset")},
                                files::ErrorCode::NotFound};
        result.emplace_back(material);
    }
    return result;
}

std::vector<zn::MaterialRow> applied(const materials::AssetTable& table, const Materials& assets,
                                     const osg::NodePtr& root)
{
    std::vector<osg::MaterialPtr> plain;
    for (const auto& material : assets)
        plain.push_back(material.get());
    materials::TableChoices choices(table);
    const std::vector<std::size_t> counts = materials::putMaterials(choices.of(root), plain, choices);
    std::vector<zn::MaterialRow> rows;
    for (std::size_t i = 0; i < table.rows.size(); ++i)
        rows.push_back({materials::describe(table.rows[i]), QString::fromStdString(table.rows[i].asset), counts[i],
                        choices.hasMatched(i)});
    return rows;
}

void tell(zn::ImportResult& result)
{
    QStringList put, idle;
    for (const zn::MaterialRow& row : result.materialRows) {
        if (row.places > 0)
            put << Texts::tr("\"%1\" at %2 places by %3")
                       .arg(row.asset)
                       .arg(static_cast<qulonglong>(row.places))
                       .arg(row.row);
        if (!row.hasMatched)
            idle << row.row;
    }
    if (!put.isEmpty())
        result.messages << Texts::tr("%1: material assets: %2").arg(result.file, put.join(QStringLiteral(", ")));
    if (!idle.isEmpty())
        result.messages << Texts::tr("%1: rows of materials.json that match nothing: %2")
                               .arg(result.file, idle.join(QStringLiteral(", ")));
}

void fail(zn::ImportResult& result, const QString& message)
{
    result.messages << message;
    if (result.state != znCADFileTypes::JobSucceeded)
        return;
    result.state = znCADFileTypes::JobPartial;
    result.error = message;
}

} // namespace

void applyAssetTable(zn::StandaloneSession& session, zn::ImportResult& result)
{
    const QString folder = session.settings().assets.folder;
    const QString file = QDir(folder).filePath(QStringLiteral("materials.json"));
    if (!result.node || !session.settings().scene.applyMaterialAssets || folder.isEmpty() || !QFileInfo::exists(file))
        return;
    try {
        const auto table = materials::readAssetTable(file);
        if (!table)
            return fail(result, table.error().toString());
        const auto assets = assetsOf(table.value(), folder);
        if (!assets)
            return fail(result, assets.error().toString());
        result.materialRows = applied(table.value(), assets.value(), result.node.get());
        tell(result);
    } catch (const std::bad_alloc&) {
        fail(result, Texts::tr("%1: there is not enough memory to put material assets on it").arg(result.file));
    }
}

} // namespace importer
