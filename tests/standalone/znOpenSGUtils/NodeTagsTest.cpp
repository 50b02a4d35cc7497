// Tags and materials of nodes, and what remote callers name.

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znOpenSGUberMaterial/UBRDFMaterial.h"
#include "host/znOpenSGUtils/znMaterials.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "host/znQRPCUtils/znQRPCConverter.h"
#include "scene/EditAudit.h"
#include "scene/Tags.h"
#include "standalone/znOpenSGUtils/MaterialUses.h"
#include "tests/standalone/session/SessionTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class NodeTagsTest : public SessionTest
{
protected:
    static osg::NodePtr addTagged(const osg::NodePtr& parent, const char* name, std::vector<std::string> tags)
    {
        const osg::NodePtr node = addGroup(parent, name);
        osg::setTags(node, std::move(tags));
        return node;
    }
    static osg::SimpleMaterialPtr simple(const char* name)
    {
        const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
        osg::setName(material, name);
        return material;
    }
    static osg::NodePtr addDrawn(const osg::NodePtr& parent, const osg::MaterialPtr& material)
    {
        const osg::GeometryPtr core = osg::Geometry::create();
        core->setMaterial(material);
        const osg::NodePtr node = osg::makeNodeFor(core);
        parent->addChild(node);
        return node;
    }
    osg::NodePtr root = addGroup(m_session.sceneRoot(), "Root");
};

using NodeMaterials = NodeTagsTest;
using MaterialSearch = NodeTagsTest;
using MaterialTrees = NodeTagsTest;

TEST_F(NodeTagsTest, TagsAreToldInTheirOrderAndFoundToTheLetter)
{
    const osg::NodePtr node = addTagged(root, "part", {"b", "a ä", "b"});
    EXPECT_THAT(znNodeUtils::getTags(node), ElementsAre("b", "a ä", "b"));
    EXPECT_TRUE(znNodeUtils::hasTag(node, "a ä"));
    EXPECT_FALSE(znNodeUtils::hasTag(node, "A ä"));
    EXPECT_FALSE(znNodeUtils::hasTag(node, "a"));
    EXPECT_FALSE(znNodeUtils::hasTag(osg::NodePtr(), "a"));
    EXPECT_THAT(znNodeUtils::getTags(osg::NodePtr()), IsEmpty());
}

TEST_F(NodeTagsTest, TagsAreTakenAwayWhereverTheyStand)
{
    const osg::NodePtr node = addTagged(root, "part", {"b", "a", "b", "c"});
    znNodeUtils::removeTag(node, "b");
    EXPECT_THAT(osg::tagsOf(node), ElementsAre("a", "c"));
    znNodeUtils::removeTags(node, {"c", "x", "a"});
    EXPECT_THAT(osg::tagsOf(node), IsEmpty());
}

TEST_F(NodeTagsTest, ANodeWithoutTheTagIsNotTouched)
{
    const osg::NodePtr node = addTagged(root, "part", {"b"});
    const osg::EditAudit audit;
    znNodeUtils::removeTag(node, "x");
    znNodeUtils::removeTags(node, {"x", "y"});
    znNodeUtils::removeTags(node, {});
    znNodeUtils::removeTag(osg::NodePtr(), "x");
    EXPECT_THAT(audit.brackets(), IsEmpty());
    EXPECT_THAT(osg::tagsOf(node), ElementsAre("b"));
}

TEST_F(NodeTagsTest, NodesAreFoundByATagAParentFirst)
{
    osg::setTags(root, {"x"});
    addTagged(addTagged(root, "a", {"y"}), "b", {"z", "x"});
    addTagged(root, "c", {"x"});
    std::vector<znNodePtr> found = {znNodePtr(m_session.sceneRoot())};
    znNodeUtils::getNodesWithTag(root, "x", found);
    std::vector<std::string> names;
    for (const znNodePtr& node : found)
        names.push_back(nameOf(node));
    EXPECT_THAT(names, ElementsAre("Scene", "Root", "b", "c"));
    znNodeUtils::getNodesWithTag(osg::NodePtr(), "x", found);
    EXPECT_EQ(found.size(), 4U);
}

TEST_F(NodeTagsTest, ANodeWithoutANameHasAnEmptyOne)
{
    EXPECT_STREQ(znNodeUtils::getName(root), "Root");
    EXPECT_STREQ(znNodeUtils::getName(addGroup(root, "")), "");
    EXPECT_STREQ(znNodeUtils::getName(osg::NodePtr()), "");
}

TEST_F(NodeTagsTest, RemoteCallersNameNodesByTheirIds)
{
    EXPECT_TRUE(znQRPCConverter::idToNode(root->getContainerId()) == root);
    EXPECT_FALSE(znQRPCConverter::idToNode(root->getCore()->getContainerId()));
    EXPECT_FALSE(znQRPCConverter::idToNode(0));
    EXPECT_FALSE(znQRPCConverter::idToNode(4'000'000'000U));
}

TEST_F(NodeMaterials, ANodeHasTheMaterialOfItsCoreOnly)
{
    const osg::MaterialPtr steel = simple("steel"), paint = simple("paint");
    const osg::MaterialGroupPtr group = osg::MaterialGroup::create();
    group->setMaterial(paint);
    const osg::NodePtr painted = osg::makeNodeFor(group);
    root->addChild(painted);
    EXPECT_TRUE(znNodeUtils::getMaterial(painted) == paint);
    EXPECT_TRUE(znNodeUtils::getMaterial(addDrawn(painted, steel)) == steel);
    EXPECT_FALSE(znNodeUtils::getMaterial(addDrawn(painted, osg::MaterialPtr())));
    EXPECT_FALSE(znNodeUtils::getMaterial(addGroup(painted, "below")));
    EXPECT_FALSE(znNodeUtils::getMaterial(osg::NodePtr()));
}

TEST_F(NodeMaterials, AMaterialIsGivenWithinTheBracketOfItsField)
{
    const osg::NodePtr drawn = addDrawn(root, simple("steel"));
    const osg::MaterialPtr paint = simple("paint");
    const osg::EditAudit audit;
    EXPECT_TRUE(znNodeUtils::setMaterial(drawn, paint, false, false));
    EXPECT_TRUE(znNodeUtils::getMaterial(drawn) == paint);
    EXPECT_THAT(audit.brackets(), ElementsAre(osg::EditAudit::Record{drawn->getCore()->getContainerId(), "Geometry",
                                                                     osg::MaterialDrawableBase::MaterialFieldMask}));
    EXPECT_THAT(audit.unbracketed(), IsEmpty());
}

TEST_F(NodeMaterials, WhatHangsBelowGetsItOnRequestOrACopyEach)
{
    const osg::NodePtr a = addDrawn(root, simple("a")), b = addDrawn(a, osg::MaterialPtr());
    const osg::RefPtr<osg::MaterialPtr> paint(simple("paint"));
    EXPECT_FALSE(znNodeUtils::setMaterial(root, paint, false, false));
    EXPECT_STREQ(osg::getName(znNodeUtils::getMaterial(a)), "a");
    EXPECT_TRUE(znNodeUtils::setMaterial(root, paint, true, false));
    EXPECT_TRUE(znNodeUtils::getMaterial(a) == paint.get());
    EXPECT_TRUE(znNodeUtils::getMaterial(b) == paint.get());
    EXPECT_TRUE(znNodeUtils::setMaterial(root, paint, true, true));
    EXPECT_FALSE(znNodeUtils::getMaterial(a) == znNodeUtils::getMaterial(b));
    EXPECT_STREQ(osg::getName(znNodeUtils::getMaterial(b)), "paint");
    EXPECT_TRUE(osg::FieldContainer::isEqual(znNodeUtils::getMaterial(b), paint.get()));
    EXPECT_FALSE(znNodeUtils::setMaterial(osg::NodePtr(), paint, true, true));
}

TEST_F(MaterialSearch, MaterialsOfThePoolAreFoundByName)
{
    const osg::MaterialPtr steel = simple("Stahl ä"), second = simple("Stahl ä"), glass = simple("glass");
    EXPECT_TRUE(znMaterials::findMaterial(QStringLiteral("glass")) == osg::NullFC);
    for (const osg::MaterialPtr& material : {steel, second, glass})
        znScenegraph::getMaterialPool()->add(material);
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(znMaterials::findMaterial(QString::fromUtf8("Stahl ä")).get() == steel) << round;
        EXPECT_TRUE(znMaterials::findMaterial(QStringLiteral("Glass")) == osg::NullFC) << round;
        znMaterials::initFindCache();
    }
    EXPECT_THAT(znMaterials::getMaterialPoolMaterialIds(),
                ElementsAre(steel->getContainerId(), second->getContainerId(), glass->getContainerId()));
}

TEST_F(MaterialSearch, WhatChangedSinceThePreparationIsSeen)
{
    const osg::RefPtr<osg::MaterialPtr> steel(simple("steel"));
    znScenegraph::getMaterialPool()->add(steel.get());
    znMaterials::initFindCache();
    osg::setName(steel.get(), "iron");
    EXPECT_TRUE(znMaterials::findMaterial(QStringLiteral("steel")) == osg::NullFC);
    EXPECT_TRUE(znMaterials::findMaterial(QStringLiteral("iron")).get() == steel.get());
    osg::setName(steel.get(), "steel");
    znScenegraph::getMaterialPool()->sub(steel.get());
    EXPECT_TRUE(znMaterials::findMaterial(QStringLiteral("steel")) == osg::NullFC);
}

TEST_F(MaterialTrees, ASwitchMaterialShowsTheFieldOfItsSubMaterials)
{
    const osg::MaterialPtr red = simple("red");
    const osg::RefPtr<osg::SwitchMaterialPtr> paint(osg::SwitchMaterial::create());
    paint->addMaterial(red);
    osg::FieldMask mask = 0;
    const osg::EditAudit audit;
    EXPECT_EQ(znMaterials::getSubMaterials(paint.get(), mask), &paint->getMaterials());
    EXPECT_EQ(mask, osg::SwitchMaterialBase::MaterialsFieldMask);
    EXPECT_THAT(audit.unbracketed(), IsEmpty());
    mask = 77;
    EXPECT_EQ(znMaterials::getSubMaterials(red, mask), nullptr);
    EXPECT_EQ(znMaterials::getSubMaterials(osg::MaterialPtr(), mask), nullptr);
    EXPECT_EQ(mask, 77U);
}

TEST_F(MaterialTrees, WhatAMaterialHoldsIsToldFromTheOutsideInEachOnce)
{
    const osg::MaterialPtr red = simple("red"), blue = simple("blue"), hall = simple("hall");
    const osg::UBRDFMaterialPtr chrome = osg::UBRDFMaterial::create();
    chrome->setEnvironment(hall);
    const osg::SwitchMaterialPtr inner = osg::SwitchMaterial::create();
    inner->addMaterial(blue);
    inner->addMaterial(chrome);
    const osg::RefPtr<osg::MaterialPtr> outer(osg::SwitchMaterial::create());
    const auto choices = osg::fcCast<osg::SwitchMaterial>(outer.get());
    for (const osg::MaterialPtr& entry : std::vector<osg::MaterialPtr>{red, inner, red, chrome})
        choices->addMaterial(entry);
    choices->setChoice(1);
    std::vector<osg::MaterialPtr> found;
    znMaterials::getRecursiveMaterials(outer.get(), found, false);
    EXPECT_THAT(found, ElementsAre(outer.get(), red, inner, blue, chrome, hall));
    found.clear();
    znMaterials::getRecursiveMaterials(outer.get(), found, true);
    EXPECT_THAT(found, ElementsAre(outer.get(), inner, blue));
    found.clear();
    znMaterials::getRecursiveMaterials(osg::MaterialPtr(), found, false);
    EXPECT_THAT(found, IsEmpty());
}

TEST_F(MaterialTrees, MarksOfUseAddUpAndKeepTheMaterial)
{
    const osg::MaterialPtr steel = simple("steel");
    znMaterials::addRef(steel, osg::NodePtr(), 0);
    znMaterials::addRef(steel, root, 0);
    znMaterials::addRef(osg::MaterialPtr(), root, 0);
    const auto& uses = zn::nodes::materialUses();
    ASSERT_EQ(uses.size(), 1U);
    EXPECT_EQ(uses.at(steel->getContainerId()).count, 2U);
    EXPECT_EQ(steel->getRefCount(), 1U);
}

} // namespace
