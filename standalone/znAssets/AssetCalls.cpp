#include "standalone/znAssets/AssetCalls.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUtils/znNodePtr.h"
#include "scene/CoreMaterial.h"
#include "standalone/session/Session.h"
#include "standalone/znAssets/SessionAssets.h"

#include <QFileInfo>
#include <QUrl>

#include <unordered_map>
#include <utility>

namespace zn::assets
{

namespace
{

QString chosenFolder()
{
    return Session::require().settings().assets.folder;
}

/// Puts the assets of a folder on materials that bear their names.
class AssetsByName
{
public:
    explicit AssetsByName(const QString& folder) : m_folder(folder) {}

    void applyTo(const osg::NodePtr& root)
    {
        osg::traverse(root, [this](const osg::NodePtr& node) {
            if (node)
                applyToCore(node->getCore());
            return osg::Action::Continue;
        });
    }

private:
    void applyToCore(const osg::NodeCorePtr& core)
    {
        const osg::MaterialPtr material = osg::materialOf(core);
        const osg::MaterialPtr asset = assetFor(material);
        if (asset != material)
            osg::setMaterial(core, asset);
        else if (const auto choices = osg::fcCast<osg::SwitchMaterial>(material))
            applyToChoices(choices);
    }

    void applyToChoices(const osg::SwitchMaterialPtr& choices)
    {
        for (unsigned i = 0; i < choices->getMaterials().size(); ++i) {
            const osg::MaterialPtr asset = assetFor(choices->getMaterial(i));
            if (asset != choices->getMaterial(i))
                replace(choices, i, asset);
        }
    }

    static void replace(const osg::SwitchMaterialPtr& choices, unsigned index, const osg::MaterialPtr& material)
    {
        osg::beginEditCP(choices, osg::SwitchMaterialBase::MaterialsFieldMask, 1);
        osg::MaterialPtr& entry = choices->editMaterials()[index];
        const osg::MaterialPtr former = std::exchange(entry, material);
        material.addRef();
        former.subRef();
        osg::endEditCP(choices, osg::SwitchMaterialBase::MaterialsFieldMask, 1);
    }

    /// The asset with the name of `material`; `material` itself when there is none.
    osg::MaterialPtr assetFor(const osg::MaterialPtr& material)
    {
        const char* name = osg::getName(material);
        if (!name)
            return material;
        const auto [asset, isNew] = m_assets.try_emplace(name);
        if (isNew)
            asset->second = sessionAssets().materialByName(m_folder, QString::fromUtf8(name));
        return asset->second ? asset->second : material;
    }

    QString m_folder;
    std::unordered_map<std::string, osg::MaterialPtr> m_assets; ///< by name, null for none
};

} // namespace

bool loadMaterialAsset(znMessage& message, int)
{
    QString uuid;
    if (!message.get("uuid", uuid))
        return false;
    const osg::MaterialPtr material = sessionAssets().materialByUuid(chosenFolder(), uuid);
    if (material)
        message.set("material", material, true);
    return static_cast<bool>(material);
}

bool getSelectedMaterialAssetDirectory(znMessage& message, int)
{
    if (chosenFolder().isEmpty())
        return false;
    message.set("url", QUrl::fromLocalFile(QFileInfo(chosenFolder()).absoluteFilePath()), true);
    return true;
}

bool applyMaterialAssetsToNodes(znMessage& message, int)
{
    QUrl url;
    std::vector<znNodePtr> nodes;
    if (!message.get("url", url) || !url.isLocalFile() || !message.get("nodes", nodes))
        return false;
    AssetsByName assets(url.toLocalFile());
    for (const znNodePtr& node : nodes)
        assets.applyTo(node);
    return true;
}

} // namespace zn::assets
