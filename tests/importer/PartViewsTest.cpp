#include "importer/PartViews.h"

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/Tags.h"

#include <gtest/gtest.h>

namespace
{

osg::NodePtr bookmark(const char* name)
{
    const osg::NodePtr node = osg::makeNodeFor(osg::Group::create());
    osg::setName(node, name);
    osg::setTags(node, {"stylar::bookmark"});
    return node;
}

} // namespace

TEST(PartViews, ComeOutOfReferencesAndNowhereElse)
{
    const osg::RefPtr<osg::NodePtr> root(osg::makeNodeFor(osg::ExtReferenceBase::create()));
    root->addChild(bookmark("of the whole"));
    const osg::NodePtr part = osg::makeNodeFor(osg::ExtReferenceBase::create());
    root->addChild(part);
    part->addChild(bookmark("of the part"));
    part->addChild(osg::makeNodeFor(osg::Group::create()));
    part->addChild(bookmark("another"));
    part->getChild(1)->addChild(bookmark("deep down"));
    EXPECT_EQ(importer::dropPartViews(root.get()), 2u);
    ASSERT_EQ(root->getNChildren(), 2u);
    EXPECT_STREQ(osg::getName(root->getChild(0)), "of the whole");
    ASSERT_EQ(part->getNChildren(), 1u);
    EXPECT_EQ(part->getChild(0)->getNChildren(), 1u);
    EXPECT_EQ(importer::dropPartViews(root.get()), 0u);
}

TEST(PartViews, WhatTheyShowAndHideGoesWithThem)
{
    const char marker[] = "stylar::bookmark_visibilities";
    const osg::RefPtr<osg::NodePtr> root(osg::makeNodeFor(osg::ExtReferenceBase::create()));
    const osg::NodePtr own = osg::makeNodeFor(osg::Group::create());
    osg::setTags(own, {marker, "bookmark[of the whole]:visible"});
    root->addChild(own);
    const osg::NodePtr part = osg::makeNodeFor(osg::ExtReferenceBase::create());
    root->addChild(part);
    part->addChild(bookmark("of the part"));
    const osg::NodePtr pmi = osg::makeNodeFor(osg::Group::create());
    osg::setTags(pmi, {"ptx::pmi", marker, "bookmark[of the part]:visible"});
    part->addChild(pmi);
    const osg::NodePtr callout = osg::makeNodeFor(osg::Group::create());
    osg::setTags(callout, {"kept", marker, "bookmark[of the part]:hidden"});
    callout->setActive(false);
    pmi->addChild(callout);
    const osg::NodePtr shape = osg::makeNodeFor(osg::Group::create());
    osg::setTags(shape, {marker, "bookmark[of the part]:hidden"});
    shape->setActive(false);
    part->addChild(shape);
    EXPECT_EQ(importer::dropPartViews(root.get()), 1u);
    EXPECT_EQ(osg::tagsOf(own).size(), 2u);
    EXPECT_EQ(osg::tagsOf(pmi), std::vector<std::string>{"ptx::pmi"});
    EXPECT_EQ(osg::tagsOf(callout), std::vector<std::string>{"kept"});
    EXPECT_FALSE(pmi->isActive());
    EXPECT_TRUE(callout->isActive());
    EXPECT_TRUE(shape->isActive());
}
