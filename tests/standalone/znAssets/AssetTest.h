#pragma once

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/ImageAttachment.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/znAssets/znAssetItemFactory.h"
#include "host/znKernel/znController.h"
#include "host/znOpenSGExt/AssetAttachment.h"
#include "host/znOpenSGUberMaterial/UBRDFMaterial.h"
#include "host/znOpenSGUtils/znNodePtr.h"
#include "host/znOpenSGUtils/znOpenSGUtils.h"
#include "standalone/znAssets/SessionAssets.h"
#include "tests/standalone/session/SessionTest.h"

#include <QUrl>

/// A session whose asset folder is that of the test.
class AssetTest : public SessionTest
{
protected:
    AssetTest() { m_session.settings().set(QStringLiteral("assets.folder"), m_folder.path()); }

    /// A glTF file with these materials.
    QString writeAssets(const QString& name, const QByteArray& materials) const
    {
        return write(name, R"({"asset":{"version":"2.0"},"materials":[)" + materials + "]}");
    }
    /// The text of a material with these extras and a red surface.
    static QByteArray material(const QByteArray& extras)
    {
        return R"({"name":"own","pbrMetallicRoughness":{"baseColorFactor":[1,0,0,1],"metallicFactor":0},"extras":{)" +
               extras + "}}";
    }

    static osg::MaterialPtr load(const char* uuid)
    {
        znMessage message;
        message.set("uuid", QString::fromUtf8(uuid), true);
        const bool isLoaded = znOpenSGUtils::call("loadMaterialAsset", message, 0);
        osg::MaterialPtr loaded;
        message.get("material", loaded);
        EXPECT_EQ(isLoaded, static_cast<bool>(loaded));
        return loaded;
    }
    static bool apply(const osg::NodePtr& node, const QUrl& url)
    {
        znMessage message;
        message.set("url", url, true);
        message.set("nodes", std::vector<znNodePtr>{znNodePtr(node)}, true);
        return znController::call("applyMaterialAssetsToNodes", message, 0);
    }

    static osg::NodePtr addDrawn(const osg::NodePtr& parent, const osg::MaterialPtr& material)
    {
        const osg::GeometryPtr geometry = osg::Geometry::create();
        geometry->setMaterial(material);
        const osg::NodePtr node = osg::makeNodeFor(geometry);
        parent->addChild(node);
        return node;
    }
    static osg::MaterialPtr materialOf(const osg::NodePtr& node)
    {
        return osg::fcCast<osg::Geometry>(node->getCore())->getMaterial();
    }
    static osg::SimpleMaterialPtr simple(const char* name)
    {
        const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
        osg::setName(material, name);
        return material;
    }
};
