#include "optimization/MaterialUpdate.h"

#include "host/znOpenSGUtils/znDefaultEnvironment.h"
#include "standalone/znOpenSGUtils/HelperCalls.h"
#include "tests/optimization/MaterialTest.h"

using namespace optimization;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

/// The host has the assets "1" and "2", BRDF materials named "asset 1" and "asset 2".
class MaterialUpdateTest : public MaterialTest
{
protected:
    MaterialUpdateTest()
    {
        m_session.state<zn::nodes::HelperCalls>().table.offer("loadMaterialAsset", [this](znMessage& message, int) {
            QString uuid;
            message.get("uuid", uuid);
            m_asked.push_back(uuid.toStdString());
            const auto found = m_assets.find(uuid.toStdString());
            if (found == m_assets.end())
                return false;
            message.set("material", found->second.get(), true);
            return true;
        });
        m_assets["1"] = osg::MaterialPtr(brdf("asset 1"));
        m_assets["2"] = osg::MaterialPtr(brdf("asset 2"));
    }
    void TearDown() override
    {
        m_assets.clear();
        MaterialTest::TearDown();
    }
    osg::MaterialPtr asset(const char* uuid) { return m_assets[uuid]; }
    static osg::MaterialPtr copyOf(const char* uuid) { return copyOfAsset(brdf("copy"), uuid); }
    std::vector<std::string> cleanUps(const std::vector<std::string>& calls) const
    {
        return callsTo({"znAssetItemFactory::cleanupMaterialItems"}, calls);
    }

    std::map<std::string, osg::RefPtr<osg::MaterialPtr>> m_assets;
    std::vector<std::string> m_asked;
};

TEST_F(MaterialUpdateTest, NodesWithACopyOfAnAssetGetTheAssetsMaterial)
{
    const osg::MaterialPtr copy = copyOf("1");
    const osg::NodePtr nodes[] = {addGeometry(root, copy), addMaterialGroup(root, copy),
                                  addGeometry(root, copyOf("2"))};
    const std::vector<std::string> calls = callsOf([this] { updateMaterials(root); });
    EXPECT_TRUE(materialOf(nodes[0]) == asset("1"));
    EXPECT_TRUE(materialOf(nodes[1]) == asset("1"));
    EXPECT_TRUE(materialOf(nodes[2]) == asset("2"));
    EXPECT_THAT(m_asked, testing::UnorderedElementsAre("1", "2"));
    EXPECT_EQ(cleanUps(calls).size(), 1U);
    EXPECT_EQ(calls.back(), "znAssetItemFactory::cleanupMaterialItems()");
}

TEST_F(MaterialUpdateTest, TwoCopiesOfOneAssetLoadItOnce)
{
    const osg::NodePtr a = addGeometry(root, copyOf("1")), b = addGeometry(root, copyOf("1"));
    updateMaterials(root);
    EXPECT_TRUE(materialOf(a) == asset("1"));
    EXPECT_TRUE(materialOf(b) == asset("1"));
    EXPECT_THAT(m_asked, ElementsAre("1"));
}

TEST_F(MaterialUpdateTest, NodesAreGivenTheirMaterialOneByOne)
{
    const osg::MaterialPtr copy = copyOf("1");
    const osg::NodePtr a = addGeometry(root, copy), b = addGeometry(root, copy);
    const std::string assetText = zn::tracetext::of(asset("1"));
    EXPECT_THAT(callsTo({"znNodeUtils::setMaterial"}, callsOf([this] { updateMaterials(root); })),
                ElementsAre("znNodeUtils::setMaterial(" + zn::tracetext::of(a) + ", " + assetText + ", false, false)",
                            "znNodeUtils::setMaterial(" + zn::tracetext::of(b) + ", " + assetText + ", false, false)"));
}

TEST_F(MaterialUpdateTest, AnAssetThatIsNotThereLeavesTheMaterialAndCleansNothingUp)
{
    const osg::MaterialPtr copy = copyOf("lost");
    const osg::NodePtr a = addGeometry(root, copy);
    const std::vector<std::string> calls = callsOf([this] { updateMaterials(root); });
    EXPECT_TRUE(materialOf(a) == copy);
    EXPECT_THAT(cleanUps(calls), IsEmpty());
}

TEST_F(MaterialUpdateTest, AFailedAssetIsAskedForByEachMaterial)
{
    addGeometry(root, copyOf("lost"));
    addGeometry(root, copyOf("lost"));
    updateMaterials(root);
    EXPECT_THAT(m_asked, ElementsAre("lost", "lost"));
}

TEST_F(MaterialUpdateTest, MaterialsThatMirrorNothingAreLeftAloneEvenAsCopies)
{
    const osg::MaterialPtr plain = copyOfAsset(simple("plain"), "1");
    const osg::UberMaterialPtr uber = copyOfAsset(osg::UberMaterial::create(), "1");
    const osg::NodePtr a = addGeometry(root, plain), b = addGeometry(root, uber);
    updateMaterials(root);
    EXPECT_TRUE(materialOf(a) == plain);
    EXPECT_TRUE(materialOf(b) == uber);
    EXPECT_THAT(m_asked, IsEmpty());
}

TEST_F(MaterialUpdateTest, ABrdfMaterialThatIsNoCopyGetsAnEnvironmentWithAnImage)
{
    const osg::UBRDFMaterialPtr chrome = brdf("chrome");
    chrome->setEnvironment(simple("hall"));
    const osg::NodePtr a = addGeometry(root, chrome);
    updateMaterials(root);
    EXPECT_TRUE(materialOf(a) == chrome);
    EXPECT_TRUE(chrome->getEnvironment() == znDefaultEnvironment::getDefault());
}

TEST_F(MaterialUpdateTest, ALoadedMaterialGetsAnEnvironmentWithAnImageAndItsCopyDoesNot)
{
    const osg::UBRDFMaterialPtr chrome = osg::fcCast<osg::UBRDFMaterial>(asset("1"));
    chrome->setEnvironment(simple("hall"));
    const osg::UBRDFMaterialPtr copy = copyOfAsset(brdf("copy"), "1");
    const osg::RefPtr<osg::MaterialPtr> holder(copy);
    copy->setEnvironment(simple("garden"));
    addGeometry(root, copy);
    updateMaterials(root);
    EXPECT_TRUE(chrome->getEnvironment() == znDefaultEnvironment::getDefault());
    EXPECT_STREQ(osg::getName(copy->getEnvironment()), "garden");
}

TEST_F(MaterialUpdateTest, NodesOfASwitchMaterialKeepItAndItsContentChanges)
{
    const osg::MaterialPtr red = simple("red");
    const osg::SwitchMaterialPtr paint = switching("paint", {copyOf("1"), red, copyOfAsset(simple("any"), "2")});
    const osg::NodePtr node = addGeometry(root, paint);
    updateMaterials(root);
    EXPECT_TRUE(materialOf(node) == paint);
    EXPECT_EQ(paint->getMaterials(), (osg::MaterialField{asset("1"), red, asset("2")}));
}

TEST_F(MaterialUpdateTest, SwitchMaterialsInsideSwitchMaterialsAreWalked)
{
    const osg::SwitchMaterialPtr inner = switching("inner", {copyOf("1")});
    const osg::SwitchMaterialPtr outer = switching("outer", {inner});
    const osg::NodePtr node = addGeometry(root, outer);
    const osg::EditAudit audit;
    updateMaterials(root);
    EXPECT_TRUE(inner->getMaterial(0) == asset("1"));
    EXPECT_TRUE(outer->getMaterial(0) == inner);
    EXPECT_TRUE(materialOf(node) == outer);
    EXPECT_THAT(audit.brackets(), ElementsAre(osg::EditAudit::Record{inner->getContainerId(), "SwitchMaterial",
                                                                     osg::SwitchMaterialBase::MaterialsFieldMask}));
}

TEST_F(MaterialUpdateTest, ASubMaterialWithoutAnAssetGetsItsEnvironmentLookedAt)
{
    const osg::UBRDFMaterialPtr chrome = brdf("chrome");
    chrome->setEnvironment(simple("hall"));
    addGeometry(root, switching("paint", {chrome}));
    updateMaterials(root);
    EXPECT_TRUE(chrome->getEnvironment() == znDefaultEnvironment::getDefault());
}

TEST_F(MaterialUpdateTest, AMirroringSubMaterialWithAFailedAssetAsksTwice)
{
    addGeometry(root, switching("paint", {copyOf("lost")}));
    updateMaterials(root);
    EXPECT_THAT(m_asked, ElementsAre("lost", "lost"));
}

TEST_F(MaterialUpdateTest, ASwitchMaterialWithoutSubMaterialsStays)
{
    const osg::SwitchMaterialPtr empty = switching("empty", {});
    const osg::NodePtr node = addGeometry(root, empty);
    const osg::EditAudit audit;
    updateMaterials(root);
    EXPECT_TRUE(materialOf(node) == empty);
    EXPECT_THAT(audit.brackets(), IsEmpty());
}

TEST_F(MaterialUpdateTest, NullNodesArePassedOver)
{
    const osg::MaterialPtr copy = copyOf("1");
    const osg::NodePtr node = addGeometry(root, copy);
    AssetCache cache;
    updateMaterialFromAsset(copy, {osg::NodePtr(), node}, cache);
    EXPECT_TRUE(materialOf(node) == asset("1"));
    updateMaterials(osg::NodePtr());
    updateMaterialFromAsset(osg::MaterialPtr(), {node}, cache);
    EXPECT_TRUE(materialOf(node) == asset("1"));
}

TEST_F(MaterialUpdateTest, ManyLevelsAndSharedOnesAreWalkedInLittleTime)
{
    osg::MaterialPtr level = switching("last", {copyOf("1")});
    const osg::SwitchMaterialPtr last = osg::fcCast<osg::SwitchMaterial>(level);
    for (int i = 0; i < 2000; ++i)
        level = switching("level", {level, level});
    addGeometry(root, level);
    updateMaterials(root);
    EXPECT_TRUE(last->getMaterial(0) == asset("1"));
}

} // namespace
