#pragma once

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/znOpenSGExt/AssetAttachment.h"
#include "host/znOpenSGUberMaterial/UBRDFMaterial.h"
#include "scene/EditAudit.h"
#include "standalone/znUtils/CallTrace.h"
#include "tests/standalone/session/SessionTest.h"

/// A session with ways to build trees with materials.
class MaterialTest : public SessionTest
{
protected:
    using Materials = std::vector<osg::MaterialPtr>;

    static osg::SimpleMaterialPtr simple(const char* name, const osg::Color3f& diffuse = {0.25f, 0.5f, 0.75f})
    {
        const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
        osg::setName(material, name);
        material->setDiffuse(diffuse);
        return material;
    }
    static osg::UBRDFMaterialPtr brdf(const char* name)
    {
        const osg::UBRDFMaterialPtr material = osg::UBRDFMaterial::create();
        osg::setName(material, name);
        return material;
    }
    static osg::SwitchMaterialPtr switching(const char* name, const Materials& materials)
    {
        const osg::SwitchMaterialPtr material = osg::SwitchMaterial::create();
        osg::setName(material, name);
        for (const osg::MaterialPtr& entry : materials)
            material->addMaterial(entry);
        return material;
    }
    /// `material` with the mark that it is a copy of an asset.
    template <class Ptr>
    static Ptr copyOfAsset(const Ptr& material, const char* uuid)
    {
        const osg::AssetAttachmentPtr attachment = osg::AssetAttachment::create();
        attachment->setUuid(uuid);
        material->addAttachment(attachment);
        return material;
    }

    static osg::NodePtr add(const osg::NodePtr& parent, const osg::NodeCorePtr& core)
    {
        const osg::NodePtr node = osg::makeNodeFor(core);
        parent->addChild(node);
        return node;
    }
    static osg::NodePtr addGeometry(const osg::NodePtr& parent, const osg::MaterialPtr& material)
    {
        const osg::GeometryPtr core = osg::Geometry::create();
        core->setMaterial(material);
        return add(parent, core);
    }
    static osg::NodePtr addMaterialGroup(const osg::NodePtr& parent, const osg::MaterialPtr& material)
    {
        const osg::MaterialGroupPtr core = osg::MaterialGroup::create();
        core->setMaterial(material);
        return add(parent, core);
    }
    static osg::MaterialPtr materialOf(const osg::NodePtr& node)
    {
        const auto group = osg::fcCast<osg::MaterialGroup>(node->getCore());
        return group ? group->getMaterial() : osg::fcCast<osg::Geometry>(node->getCore())->getMaterial();
    }

    /// The calls into the host while `work` runs, as text.
    template <class Work>
    static std::vector<std::string> callsOf(const Work& work)
    {
        std::vector<std::string> calls;
        const zn::CallTrace trace([&calls](const std::string& call) { calls.push_back(call); });
        work();
        return calls;
    }
    /// Those of them that begin with one of `names`.
    static std::vector<std::string> callsTo(const std::vector<std::string>& names,
                                            const std::vector<std::string>& calls)
    {
        std::vector<std::string> result;
        for (const std::string& call : calls)
            for (const std::string& name : names)
                if (call.rfind(name + "(", 0) == 0)
                    result.push_back(call);
        return result;
    }

    osg::NodePtr root = addGroup(m_session.sceneRoot(), "Root");
};
