#pragma once

#include "host/OSGSystem/MaterialPool.h"
#include "host/OSGSystem/Node.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znOpenSGUberCamera/znUberCameraPool.h"
#include "host/znVariants/znVariants.h"
#include "scene/Tags.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znVariants/SessionVariants.h"
#include "tests/optimization/MaterialTest.h"

/// A session with ways to build trees with bookmarks.
class BookmarkTest : public MaterialTest
{
protected:
    using Tags = std::vector<std::string>;

    static osg::NodePtr addTagged(const osg::NodePtr& parent, const char* name, const Tags& tags)
    {
        const osg::NodePtr node = addGroup(parent, name);
        osg::setTags(node, tags);
        return node;
    }
    osg::NodePtr addBookmark(const char* name, Tags tags = {})
    {
        tags.insert(tags.begin(), "stylar::bookmark");
        return addTagged(root, name, tags);
    }
    /// A camera, in the pool as the load of a file puts it there.
    static osg::UberCameraPtr addCamera(const osg::NodePtr& parent, const Tags& tags)
    {
        const osg::UberCameraPtr camera = osg::UberCamera::create();
        const osg::NodePtr node = add(parent, camera);
        osg::setTags(node, tags);
        zn::cameras::sessionCameras().list(camera, node);
        return camera;
    }
    /// Puts a material of this name into the pool of the scene.
    static osg::MaterialPtr pooled(const char* name)
    {
        const osg::SimpleMaterialPtr material = simple(name);
        znScenegraph::getMaterialPool()->add(osg::MaterialPtr(material));
        return material;
    }

    zn::variants::SessionVariants& variants() { return zn::variants::sessionVariants(); }
    static std::string stateOf(const char* set, const char* material)
    {
        const znVariantState* state =
            znVariants::findVariantSet(QString::fromUtf8(set))->findMaterialVariant(QString::fromUtf8(material));
        return state ? state->m_stateName.toStdString() : "none";
    }
    /// The states of nodes in the set, as "name state".
    static std::vector<std::string> nodeStates(const char* set)
    {
        std::vector<std::string> result;
        for (const auto& state : znVariants::findVariantSet(QString::fromUtf8(set))->getNodeStates())
            result.push_back((state->getVariant()->getName() + QLatin1Char(' ') + state->m_stateName).toStdString());
        return result;
    }
    static std::vector<std::string> texts(const QStringList& list)
    {
        std::vector<std::string> result;
        for (const QString& text : list)
            result.push_back(text.toStdString());
        return result;
    }
};
