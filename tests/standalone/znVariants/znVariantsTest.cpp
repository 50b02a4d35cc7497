#include "host/znVariants/znVariants.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znVariants/SessionVariants.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

namespace
{

class VariantsTest : public SessionTest
{
protected:
    static osg::RefPtr<osg::MaterialPtr> paint(const char* name)
    {
        const osg::MaterialPtr material = osg::SimpleMaterialBase::create();
        osg::setName(material, name);
        return osg::RefPtr<osg::MaterialPtr>(material);
    }

    /// "Roof Glass" with the choices "Clear" and "Tinted".
    static osg::RefPtr<osg::SwitchMaterialPtr> roofGlass()
    {
        const osg::RefPtr<osg::SwitchMaterialPtr> choices(osg::SwitchMaterialBase::create());
        osg::setName(choices.get(), "Roof Glass");
        for (const char* name : {"Clear", "Tinted"})
            choices->addMaterial(paint(name));
        return choices;
    }

    zn::variants::SessionVariants& store() { return zn::variants::sessionVariants(); }
    QStringList apply(const znVariantSet& set)
    {
        return zn::variants::SessionVariants::apply(set, zn::cameras::sessionCameras());
    }
};

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

TEST_F(VariantsTest, GroupsAreFoundByTheirExactNames)
{
    EXPECT_TRUE(znVariants::findVariantGroup(text("Außen")) == nullptr);
    znVariantGroup* group = znVariants::createVariantGroup(text("Außen"), true, true);
    ASSERT_TRUE(group);
    EXPECT_EQ(group->getName(), text("Außen"));
    EXPECT_EQ(znVariants::findVariantGroup(text("Außen")), group);
    EXPECT_TRUE(znVariants::findVariantGroup(text("außen")) == nullptr);
    EXPECT_EQ(store().groups().size(), 1u);
}

TEST_F(VariantsTest, NoGroupAndNoSetIsMadeForAnEmptyOrATakenName)
{
    EXPECT_TRUE(znVariants::createVariantGroup({}, true, true) == nullptr);
    EXPECT_TRUE(znVariants::createVariantSet({}, true, nullptr) == nullptr);
    znVariants::createVariantGroup(text("a"), true, true);
    znVariants::createVariantSet(text("a"), true, nullptr);
    EXPECT_TRUE(znVariants::createVariantGroup(text("a"), true, true) == nullptr);
    EXPECT_TRUE(znVariants::createVariantSet(text("a"), true, nullptr) == nullptr);
}

TEST_F(VariantsTest, SetsStandInTheOrderMadeBelowTheirGroup)
{
    znVariantGroup* group = znVariants::createVariantGroup(text("g"), true, true);
    znVariantSet* first = znVariants::createVariantSet(text("z"), true, group);
    znVariantSet* second = znVariants::createVariantSet(text("b"), true, nullptr);
    ASSERT_EQ(store().sets().size(), 2u);
    EXPECT_EQ(store().sets()[0].get(), first);
    EXPECT_EQ(store().sets()[1].get(), second);
    EXPECT_EQ(first->getGroup(), group);
    EXPECT_TRUE(second->getGroup() == nullptr);
    EXPECT_EQ(znVariants::findVariantSet(text("b")), second);
}

TEST_F(VariantsTest, AMaterialHasOneVariantFoundByTheNameOfItsMaking)
{
    const auto glass = roofGlass();
    znMaterialVariant* variant = znVariants::createMaterialVariant(glass.get(), true);
    ASSERT_TRUE(variant);
    osg::setName(glass.get(), "renamed");
    EXPECT_EQ(znVariants::createMaterialVariant(glass.get(), true), variant);
    EXPECT_EQ(znVariants::findMaterialVariant(text("Roof Glass")), variant);
    EXPECT_TRUE(znVariants::findMaterialVariant(text("renamed")) == nullptr);
    EXPECT_TRUE(znVariants::createMaterialVariant({}, true) == nullptr);
    EXPECT_TRUE(znVariants::createNodeVariant({}, true) == nullptr);
}

TEST_F(VariantsTest, OfMaterialsOfOneNameTheFirstIsFound)
{
    const auto first = paint("Paint");
    const auto second = paint("Paint");
    znMaterialVariant* variant = znVariants::createMaterialVariant(first, true);
    EXPECT_NE(znVariants::createMaterialVariant(second, true), variant);
    EXPECT_EQ(znVariants::findMaterialVariant(text("Paint")), variant);
}

TEST_F(VariantsTest, AnEntryOfASetTakesAStateByHand)
{
    const auto glass = roofGlass();
    znVariantSet* set = znVariants::createVariantSet(text("Dark"), true, nullptr);
    set->add(znVariants::createMaterialVariant(glass.get(), true), {});
    EXPECT_TRUE(set->findMaterialVariant(text("Other")) == nullptr);
    znVariantState* state = set->findMaterialVariant(text("Roof Glass"));
    ASSERT_TRUE(state);
    EXPECT_EQ(state->m_stateName, QString());
    state->m_stateName = text("Tinted");
    set->add(znVariants::createMaterialVariant(glass.get(), true), text("Clear"));
    EXPECT_EQ(set->getMaterialStates().size(), 1u);
    EXPECT_EQ(state->m_stateName, text("Clear"));
    set->add(static_cast<znMaterialVariant*>(nullptr), text("x"));
    EXPECT_EQ(set->getMaterialStates().size(), 1u);
}

TEST_F(VariantsTest, ViewpointsAreListedOnce)
{
    znVariantSet* set = znVariants::createVariantSet(text("Dark"), true, nullptr);
    for (const char* name : {"b", "a", "b"})
        set->addViewpoint(text(name));
    EXPECT_EQ(set->getViewpoints(), QStringList({text("b"), text("a")}));
    EXPECT_EQ(set->m_viewpointName, QString());
}

TEST_F(VariantsTest, ApplyingASetSwitchesMaterialsAndVisibility)
{
    const auto glass = roofGlass();
    const osg::NodePtr shown = addGroup(m_session.sceneRoot(), "shown");
    const osg::NodePtr hidden = addGroup(m_session.sceneRoot(), "hidden");
    shown->setActive(false);
    znVariantSet* set = znVariants::createVariantSet(text("Dark"), true, nullptr);
    set->add(znVariants::createMaterialVariant(glass.get(), true), text("Tinted"));
    set->add(znVariants::createNodeVariant(shown, true), text("!Enable"));
    set->add(znVariants::createNodeVariant(hidden, true), text("!Disable"));
    EXPECT_EQ(apply(*set), QStringList());
    EXPECT_EQ(glass->getChoice(), 1u);
    EXPECT_TRUE(shown->isActive());
    EXPECT_FALSE(hidden->isActive());
    EXPECT_EQ(apply(*set), QStringList());
}

TEST_F(VariantsTest, WhatCannotBeAppliedIsToldAndTheRestIsDone)
{
    const auto glass = roofGlass();
    const auto plain = paint("Paint");
    const osg::NodePtr node = addGroup(m_session.sceneRoot(), "part");
    znVariantSet* set = znVariants::createVariantSet(text("Dark"), true, nullptr);
    set->add(znVariants::createMaterialVariant(glass.get(), true), text("tinted"));
    set->add(znVariants::createMaterialVariant(plain, true), text("Paint"));
    set->add(znVariants::createNodeVariant(node, true), text("visible"));
    set->m_viewpointName = text("Dark_vp");
    EXPECT_EQ(apply(*set),
              QStringList({text("'Roof Glass' has no state 'tinted'"), text("'part' has no state 'visible'"),
                           text("there is no viewpoint 'Dark_vp'")}));
    EXPECT_EQ(glass->getChoice(), 0u);
    EXPECT_TRUE(node->isActive());
}

TEST_F(VariantsTest, AnEmptyStateChangesNothing)
{
    const auto glass = roofGlass();
    glass->setChoice(1);
    znVariantSet* set = znVariants::createVariantSet(text("Dark"), true, nullptr);
    set->add(znVariants::createMaterialVariant(glass.get(), true), {});
    EXPECT_EQ(apply(*set), QStringList());
    EXPECT_EQ(glass->getChoice(), 1u);
}

TEST_F(VariantsTest, AVariantKeepsNothingAlive)
{
    znVariantSet* set = znVariants::createVariantSet(text("Dark"), true, nullptr);
    {
        const auto glass = roofGlass();
        set->add(znVariants::createMaterialVariant(glass.get(), true), text("Tinted"));
    }
    const osg::NodePtr node = addGroup(m_session.sceneRoot(), "part");
    znNodeVariant* variant = znVariants::createNodeVariant(node, true);
    set->add(variant, text("!Disable"));
    m_session.sceneRoot()->subChild(node);
    EXPECT_FALSE(variant->getNode());
    EXPECT_EQ(apply(*set),
              QStringList({text("'Roof Glass' has no state 'Tinted'"), text("'part' has no state '!Disable'")}));
}

} // namespace
