#include "tools/znimport/KeptLook.h"

#include "standalone/startup/StandaloneSession.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znVariants/SessionVariants.h"
#include "tests/support/BookmarkScene.h"
#include "tools/znimport/VariantSelection.h"

#include <gtest/gtest.h>

namespace
{

TEST(KeptLookTest, WhatASetChangesComesBack)
{
    zn::StandaloneSession session;
    zn::variants::SessionVariants& store = zn::variants::sessionVariants();
    const osg::NodePtr node = osg::makeNodeFor(osg::Group::create());
    session.sceneRoot()->addChild(node);
    const osg::RefPtr<osg::SwitchMaterialPtr> glass(bookmarkscene::roofGlass());
    znVariantSet* const night = store.addSet(QStringLiteral("Night"), nullptr);
    night->add(&store.nodeVariant(node), QStringLiteral("!Disable"));
    night->add(&store.materialVariant(glass.get()), QStringLiteral("Tinted"));
    {
        const znimport::KeptLook look(session);
        EXPECT_FALSE(znimport::chooseVariantSet(session, QStringLiteral("Night")).error);
        EXPECT_FALSE(node->isActive());
        EXPECT_EQ(glass->getChoice(), 1u);
    }
    EXPECT_TRUE(node->isActive());
    EXPECT_EQ(glass->getChoice(), 0u);
    EXPECT_FALSE(zn::cameras::sessionCameras().view());
}

} // namespace
