#include "optimization/MaterialAssets.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/ImageAttachment.h"
#include "host/znKernel/znController.h"
#include "host/znOpenSGExt/AssetAttachment.h"
#include "host/znOpenSGExt/FileInfo.h"
#include "host/znOpenSGUberMaterial/UBRDFMaterial.h"
#include "host/znOpenSGUberMaterial/znUberMaterialUtils.h"
#include "host/znOpenSGUtils/znDefaultEnvironment.h"
#include "host/znOpenSGUtils/znMaterials.h"
#include "host/znOpenSGUtils/znNodePtr.h"
#include "host/znOpenSGUtils/znOpenSGUtils.h"
#include "import/getFromMessage.h"

#include <QUrl>

#include <unordered_set>
#include <vector>

namespace optimization
{

namespace
{

/// The attachment of class `T` on `container`; null when there is none.
template <class T>
typename T::Ptr attachmentOf(const osg::AttachmentContainerPtr& container)
{
    return container ? osg::fcCast<T>(container->findAttachment(T::_type.getGroupId(), 0)) : typename T::Ptr();
}

osg::MaterialPtr askForAsset(const std::string& uuid)
{
    znMessage message;
    message.set("uuid", QString::fromStdString(uuid), true);
    znOpenSGUtils::call("loadMaterialAsset", message, 0);
    osg::MaterialPtr material;
    message.get("material", material);
    return material;
}

void markAsUsed(const osg::MaterialPtr& material)
{
    std::vector<osg::MaterialPtr> materials;
    znMaterials::getRecursiveMaterials(material, materials, false);
    for (const osg::MaterialPtr& entry : materials)
        znMaterials::addRef(entry, osg::NodePtr(), 0);
}

void replaceEnvironment(const osg::MaterialPtr& root, const osg::MaterialPtr& oldMaterial,
                        const osg::MaterialPtr& newMaterial)
{
    if (znUberMaterialUtils::getBRDFEnvironment(root) == oldMaterial)
        znUberMaterialUtils::setBRDFEnvironment(root, newMaterial);
}

void replaceEntry(const osg::MaterialPtr& root, osg::FieldMask mask, osg::MaterialPtr& entry,
                  const osg::MaterialPtr& newMaterial)
{
    osg::beginEditCP(root, mask, 1);
    entry.subRef();
    entry = newMaterial;
    entry.addRef();
    osg::endEditCP(root, mask, 1);
}

void rememberUrl(const osg::NodePtr& root, const QUrl& url)
{
    const osg::FileInfoPtr info = attachmentOf<osg::FileInfo>(root);
    if (!info)
        return;
    osg::beginEditCP(info, osg::AllFieldsMask, 1);
    info->setImportAppliedMaterialAssetsUrl(url.toString(QUrl::FormattingOptions(QUrl::PrettyDecoded)).toStdString());
    osg::endEditCP(info, osg::AllFieldsMask, 1);
}

} // namespace

osg::MaterialPtr loadAssetMaterial(const osg::MaterialPtr& material, AssetCache& assetCache)
{
    const osg::AssetAttachmentPtr asset = attachmentOf<osg::AssetAttachment>(material);
    if (!asset)
        return {};
    const std::string uuid = asset->getUuid();
    const auto known = assetCache.find(uuid);
    if (known != assetCache.end())
        return known->second;
    const osg::MaterialPtr loaded = askForAsset(uuid);
    if (!loaded)
        return {};
    assetCache[uuid] = loaded;
    markAsUsed(loaded);
    return loaded;
}

void ensureEnvironmentImage(const osg::MaterialPtr& material)
{
    const auto brdf = osg::fcCast<osg::UBRDFMaterial>(material);
    const osg::MaterialPtr environment = brdf ? brdf->getActiveEnvironment() : osg::MaterialPtr();
    if (!environment || attachmentOf<osg::ImageAttachment>(environment))
        return;
    osg::beginEditCP(brdf, osg::UBRDFMaterialBase::EnvironmentFieldMask, 1);
    brdf->setEnvironment(znDefaultEnvironment::getDefault());
    osg::endEditCP(brdf, osg::UBRDFMaterialBase::EnvironmentFieldMask, 1);
}

void replaceSubMaterial(const osg::MaterialPtr& root, const osg::MaterialPtr& oldMaterial,
                        const osg::MaterialPtr& newMaterial)
{
    if (!oldMaterial || !newMaterial)
        return;
    struct Place {
        osg::MaterialPtr material;
        osg::FieldMask mask = 0;
        osg::MaterialField* field = nullptr;
        std::size_t next = 0; ///< the entry whose turn it is
    };
    const osg::RefPtr<osg::MaterialPtr> holder(oldMaterial); // its last reference may be that of a replaced entry
    std::unordered_set<const osg::Material*> met;
    std::vector<Place> path;
    const auto enter = [&](const osg::MaterialPtr& material) {
        if (!material || material == oldMaterial || !met.insert(material.get()).second)
            return;
        replaceEnvironment(material, oldMaterial, newMaterial);
        Place place{material};
        place.field = znMaterials::getSubMaterials(material, place.mask);
        if (place.field)
            path.push_back(place);
    };
    enter(root);
    while (!path.empty()) {
        Place& place = path.back();
        if (place.next == place.field->size()) {
            path.pop_back();
            continue;
        }
        osg::MaterialPtr& entry = (*place.field)[place.next++];
        if (entry == oldMaterial)
            replaceEntry(place.material, place.mask, entry, newMaterial);
        else
            enter(entry);
    }
}

void applySelectedMaterialAssets(const osg::NodePtr& root)
{
    znMessage message;
    znController::call("getSelectedMaterialAssetDirectory", message, 0);
    QUrl url;
    getFromMessage(message, "url", url);
    if (!url.isValid())
        return;
    rememberUrl(root, url);
    message.set("nodes", std::vector<znNodePtr>{znNodePtr(root)}, true);
    znController::call("applyMaterialAssetsToNodes", message, 0);
}

} // namespace optimization
