#include "host/znOpenSGUberMaterial/znMaterialMerger.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "scene/EditAudit.h"
#include "standalone/znUtils/CallTrace.h"
#include "tests/standalone/session/SessionTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

using Comparison = znMaterialComparison;
constexpr auto byAll = Comparison::MaterialCompareSettings(12);
constexpr auto asNodes = znMaterialMerger::MaterialMergeSettings(0);

class MaterialMergerTest : public SessionTest
{
protected:
    osg::MaterialPtr simple(const char* name, float red = 0.25f)
    {
        const osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
        osg::setName(material, name);
        material->setDiffuse({red, 0.5f, 0.75f});
        m_held.emplace_back(material);
        return material;
    }
    void TearDown() override
    {
        m_held.clear();
        SessionTest::TearDown();
    }
    osg::NodePtr addDrawn(const osg::MaterialPtr& material)
    {
        const osg::GeometryPtr core = osg::Geometry::create();
        core->setMaterial(material);
        const osg::NodePtr node = osg::makeNodeFor(core);
        root->addChild(node);
        return node;
    }
    static osg::MaterialPtr materialOf(const osg::NodePtr& node)
    {
        return osg::fcCast<osg::Geometry>(node->getCore())->getMaterial();
    }
    void reuse(const std::set<unsigned>& known, Comparison::MaterialCompareSettings settings = byAll)
    {
        znMaterialMerger::reuseMaterials({znNodePtr(root)}, known, settings, asNodes);
    }

    std::vector<osg::RefPtr<osg::MaterialPtr>> m_held;
    osg::NodePtr root = addGroup(m_session.sceneRoot(), "Root");
};

TEST_F(MaterialMergerTest, KnownMaterialsTakeThePlaceOfEqualOnes)
{
    const osg::MaterialPtr other = simple("other"), known = simple("steel"), later = simple("steel");
    const osg::NodePtr a = addDrawn(simple("steel")), b = addDrawn(simple("Steel")),
                       c = addDrawn(simple("steel", 0.5f));
    const osg::MaterialPtr ofB = materialOf(b), ofC = materialOf(c);
    reuse({other->getContainerId(), known->getContainerId(), later->getContainerId(), root->getContainerId(), 999999});
    EXPECT_TRUE(materialOf(a) == known);
    EXPECT_TRUE(materialOf(b) == ofB);
    EXPECT_TRUE(materialOf(c) == ofC);
}

TEST_F(MaterialMergerTest, AKnownMaterialInTheTreeStays)
{
    const osg::MaterialPtr first = simple("steel"), second = simple("steel");
    const osg::NodePtr node = addDrawn(second);
    const osg::EditAudit audit;
    reuse({first->getContainerId(), second->getContainerId()});
    EXPECT_TRUE(materialOf(node) == second);
    EXPECT_THAT(audit.brackets(), IsEmpty());
}

TEST_F(MaterialMergerTest, GroupsAndGeometriesChangeWithinTheirBrackets)
{
    const osg::MaterialPtr known = simple("steel"), fresh = simple("steel");
    const osg::MaterialGroupPtr group = osg::MaterialGroup::create();
    group->setMaterial(fresh);
    root->addChild(osg::makeNodeFor(group));
    const osg::NodePtr drawn = addDrawn(fresh);
    const osg::EditAudit audit;
    reuse({known->getContainerId()});
    EXPECT_TRUE(group->getMaterial() == known);
    EXPECT_TRUE(materialOf(drawn) == known);
    EXPECT_EQ(audit.brackets().size(), 2U);
    EXPECT_THAT(audit.unbracketed(), IsEmpty());
}

TEST_F(MaterialMergerTest, TheSettingsTellWhatIsCompared)
{
    const osg::MaterialPtr steel = simple("steel"), alsoSteel = simple("steel"), renamed = simple("Steel"),
                           darker = simple("steel", 0.5f);
    EXPECT_TRUE(Comparison::areEqual(steel, alsoSteel, byAll));
    EXPECT_FALSE(Comparison::areEqual(steel, renamed, byAll));
    EXPECT_FALSE(Comparison::areEqual(steel, darker, byAll));
    EXPECT_TRUE(Comparison::areEqual(steel, renamed, Comparison::CompareFields));
    EXPECT_FALSE(Comparison::areEqual(steel, darker, Comparison::CompareFields));
    EXPECT_TRUE(Comparison::areEqual(steel, darker, Comparison::CompareNames));
    EXPECT_FALSE(Comparison::areEqual(steel, renamed, Comparison::CompareNames));
    EXPECT_TRUE(Comparison::areEqual(steel, steel, byAll));
    EXPECT_FALSE(Comparison::areEqual(steel, osg::MaterialPtr(), Comparison::CompareNames));
    EXPECT_FALSE(Comparison::areEqual(osg::MaterialPtr(), osg::MaterialPtr(), byAll));
}

TEST_F(MaterialMergerTest, FieldsAloneFindMaterialsOfOtherNames)
{
    const osg::MaterialPtr known = simple("steel");
    const osg::NodePtr node = addDrawn(simple("Steel"));
    reuse({known->getContainerId()}, Comparison::CompareFields);
    EXPECT_TRUE(materialOf(node) == known);
}

TEST_F(MaterialMergerTest, TheCallIsTraced)
{
    std::vector<std::string> calls;
    const zn::CallTrace trace([&calls](const std::string& call) { calls.push_back(call); });
    reuse({3, 1});
    EXPECT_THAT(calls,
                ElementsAre("znMaterialMerger::reuseMaterials([" + zn::tracetext::of(root) + "], [1, 3], 12, 0)"));
}

} // namespace
