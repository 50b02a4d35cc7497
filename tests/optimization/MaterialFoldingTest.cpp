#include "optimization/MaterialFolding.h"

#include "scene/MaterialLook.h"
#include "scene/Tags.h"
#include "tests/optimization/MaterialTest.h"
#include "tests/scene/SurfaceDifferences.h"

#include <limits>
#include <map>

using namespace optimization;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace optimization
{
struct MaterialFoldingTestAccess {
    MaterialFolding& folding;

    /// The first walk and what follows it.
    void count(const osg::NodePtr& root) const
    {
        folding.m_collectingMaterials = true;
        folding.doOptimizeMaterials(root);
        folding.findRepresentatives();
        folding.m_collectingMaterials = false;
    }
    void fold(const osg::NodePtr& node) const { folding.visit(node); }
    const auto& useCounts() const { return folding.m_materialUseCounts; }
    const auto& replacements() const { return folding.m_materialReplacements; }
    std::uint32_t visitCount() const { return folding.m_materialVisitCount; }
    std::uint32_t visitTotal() const { return folding.m_materialVisitTotal; }
};
} // namespace optimization

namespace
{

class MaterialFoldingTest : public MaterialTest
{
protected:
    static osg::SimpleMaterialPtr textured(const osg::PhysicalSurface& surface)
    {
        const osg::SimpleMaterialPtr material = simple("oak");
        osg::setSurface(material, surface);
        return material;
    }
    static unsigned idOf(const osg::MaterialPtr& material) { return material->getContainerId(); }

    MaterialFolding folding;
    MaterialFoldingTestAccess access{folding};
};

TEST_F(MaterialFoldingTest, TheLowestIdStaysWhateverTheOrderOfTheNodes)
{
    const osg::SimpleMaterialPtr first = simple("steel"), second = simple("steel"), third = simple("steel");
    const unsigned staying = idOf(first);
    ASSERT_LT(staying, idOf(second));
    const osg::NodePtr nodes[] = {addGeometry(root, third), addGeometry(root, second), addGeometry(root, first),
                                  addGeometry(root, third)};
    folding.optimizeMaterials(root);
    for (const osg::NodePtr& node : nodes)
        EXPECT_EQ(idOf(materialOf(node)), staying);
}

TEST_F(MaterialFoldingTest, MaterialsOfEqualSurfacesFold)
{
    for (const surfacedifferences::Difference& difference : surfacedifferences::all()) {
        osg::PhysicalSurface surface = surfacedifferences::surface();
        difference.make(surface);
        const osg::NodePtr first = addGeometry(root, textured(surface)), second = addGeometry(root, textured(surface));
        folding.optimizeMaterials(root);
        EXPECT_EQ(idOf(materialOf(first)), idOf(materialOf(second))) << difference.what;
        root->subChild(first);
        root->subChild(second);
    }
}

TEST_F(MaterialFoldingTest, EachSingleDifferenceOfSurfacesKeepsMaterialsApart)
{
    const osg::NodePtr plain = addGeometry(root, textured(surfacedifferences::surface()));
    for (const surfacedifferences::Difference& difference : surfacedifferences::all()) {
        osg::PhysicalSurface surface = surfacedifferences::surface();
        difference.make(surface);
        const osg::NodePtr other = addGeometry(root, textured(surface));
        folding.optimizeMaterials(root);
        EXPECT_NE(idOf(materialOf(plain)), idOf(materialOf(other))) << difference.what;
        root->subChild(other);
    }
}

TEST_F(MaterialFoldingTest, TheEntriesOfAFoldedMaterialGoWithItsLastUse)
{
    const osg::SimpleMaterialPtr a = simple("steel"), b = simple("steel"), c = simple("steel");
    const unsigned low = idOf(a), middle = idOf(b), high = idOf(c);
    const osg::NodePtr nodes[] = {addGeometry(root, c), addGeometry(root, b), addGeometry(root, a),
                                  addGeometry(root, c)};
    access.count(root);
    EXPECT_THAT(access.useCounts(), ElementsAre(Pair(low, 1U), Pair(middle, 1U), Pair(high, 2U)));
    EXPECT_THAT(access.replacements(), IsEmpty());
    access.fold(nodes[0]);
    EXPECT_THAT(access.useCounts(), ElementsAre(Pair(low, 1U), Pair(middle, 1U), Pair(high, 1U)));
    EXPECT_THAT(access.replacements(), ElementsAre(Pair(high, low)));
    access.fold(nodes[1]);
    EXPECT_THAT(access.useCounts(), ElementsAre(Pair(low, 1U), Pair(high, 1U)));
    EXPECT_THAT(access.replacements(), ElementsAre(Pair(high, low)));
    access.fold(nodes[2]);
    EXPECT_THAT(access.replacements(), ElementsAre(Pair(low, low), Pair(high, low)));
    access.fold(nodes[3]);
    EXPECT_THAT(access.useCounts(), ElementsAre(Pair(low, 1U)));
    EXPECT_THAT(access.replacements(), ElementsAre(Pair(low, low)));
}

TEST_F(MaterialFoldingTest, NothingLingersButTheNumberOfUses)
{
    addGeometry(root, simple("steel"));
    addMaterialGroup(root, simple("glass"));
    add(root, osg::Group::create());
    folding.optimizeMaterials(root);
    EXPECT_THAT(access.useCounts(), IsEmpty());
    EXPECT_THAT(access.replacements(), IsEmpty());
    EXPECT_EQ(access.visitTotal(), 2U);
    EXPECT_EQ(access.visitCount(), 2U);
    folding.optimizeMaterials(addGeometry(root, simple("paint")));
    EXPECT_EQ(access.visitTotal(), 1U);
}

TEST_F(MaterialFoldingTest, NamesThatDifferInCaseOrLengthKeepMaterialsApart)
{
    const osg::NodePtr nodes[] = {addGeometry(root, simple("steel")), addGeometry(root, simple("Steel")),
                                  addGeometry(root, simple("steel ")), addGeometry(root, simple(""))};
    const osg::MaterialPtr before[] = {materialOf(nodes[0]), materialOf(nodes[1]), materialOf(nodes[2]),
                                       materialOf(nodes[3])};
    folding.optimizeMaterials(root);
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(materialOf(nodes[i]) == before[i]) << i;
}

TEST_F(MaterialFoldingTest, MaterialsWithoutANameFoldAmongThemselves)
{
    const osg::SimpleMaterialPtr first = simple("");
    addGeometry(root, first);
    const osg::NodePtr other = addGeometry(root, simple(""));
    folding.optimizeMaterials(root);
    EXPECT_TRUE(materialOf(other) == first);
}

TEST_F(MaterialFoldingTest, OtherFieldsAttachmentsAndClassesKeepMaterialsApart)
{
    const osg::SimpleMaterialPtr tagged = simple("steel");
    osg::setTags(tagged, {"x"});
    const osg::UberMaterialPtr uber = osg::UberMaterial::create();
    osg::setName(uber, "steel");
    const Materials before = {simple("steel"), simple("steel", {0.25f, 0.5f, 0.5f}), tagged, uber, brdf("steel")};
    std::vector<osg::NodePtr> nodes;
    for (const osg::MaterialPtr& material : before)
        nodes.push_back(addGeometry(root, material));
    folding.optimizeMaterials(root);
    for (std::size_t i = 0; i < nodes.size(); ++i)
        EXPECT_TRUE(materialOf(nodes[i]) == before[i]) << i;
}

TEST_F(MaterialFoldingTest, AMaterialThatIsNotEqualToItselfStaysAlone)
{
    constexpr float nothing = std::numeric_limits<float>::quiet_NaN();
    const osg::NodePtr a = addGeometry(root, simple("odd", {nothing, 0, 0}));
    const osg::NodePtr b = addGeometry(root, simple("odd", {nothing, 0, 0}));
    folding.optimizeMaterials(root);
    EXPECT_FALSE(materialOf(a) == materialOf(b));
}

TEST_F(MaterialFoldingTest, GroupsAndGeometriesChangeEachThroughItsOwnMask)
{
    const osg::SimpleMaterialPtr first = simple("steel");
    addGeometry(root, first);
    const osg::SimpleMaterialPtr other = simple("steel");
    const osg::NodePtr group = addMaterialGroup(root, other), geometry = addGeometry(root, other);
    const osg::EditAudit audit;
    folding.optimizeMaterials(root);
    EXPECT_TRUE(materialOf(group) == first);
    EXPECT_TRUE(materialOf(geometry) == first);
    EXPECT_THAT(audit.brackets(),
                ElementsAre(osg::EditAudit::Record{group->getCore()->getContainerId(), "MaterialGroup",
                                                   osg::MaterialGroupBase::MaterialFieldMask},
                            osg::EditAudit::Record{geometry->getCore()->getContainerId(), "Geometry",
                                                   osg::MaterialDrawableBase::MaterialFieldMask}));
    EXPECT_THAT(audit.unbracketed(), IsEmpty());
    EXPECT_THAT(audit.idleBrackets(), IsEmpty());
}

TEST_F(MaterialFoldingTest, ASecondRunChangesNothing)
{
    addGeometry(root, simple("steel"));
    addGeometry(root, simple("steel"));
    folding.optimizeMaterials(root);
    const osg::EditAudit audit;
    folding.optimizeMaterials(root);
    EXPECT_THAT(audit.brackets(), IsEmpty());
    EXPECT_EQ(access.visitTotal(), 2U);
}

TEST_F(MaterialFoldingTest, ATreeWithoutMaterialsStaysAsItIs)
{
    root->addChild(osg::Node::create());
    addGeometry(root, osg::MaterialPtr());
    addMaterialGroup(root, osg::MaterialPtr());
    const osg::EditAudit audit;
    folding.optimizeMaterials(root);
    folding.optimizeMaterials(osg::NodePtr());
    EXPECT_EQ(access.visitTotal(), 0U);
    EXPECT_THAT(audit.brackets(), IsEmpty());
}

TEST_F(MaterialFoldingTest, ACoreThatNodesShareIsChangedOnce)
{
    addGeometry(root, simple("steel"));
    const osg::NodePtr node = addGeometry(root, simple("steel"));
    add(root, node->getCore());
    const osg::EditAudit audit;
    folding.optimizeMaterials(root);
    EXPECT_TRUE(materialOf(node) == materialOf(root->getChild(0)));
    EXPECT_EQ(audit.brackets().size(), 1U);
    EXPECT_EQ(access.visitTotal(), 3U);
}

TEST_F(MaterialFoldingTest, AFoldedMaterialGoesWhenNobodyHoldsIt)
{
    addGeometry(root, simple("steel"));
    const osg::SimpleMaterialPtr gone = simple("steel");
    const unsigned id = idOf(gone);
    addGeometry(root, gone);
    folding.optimizeMaterials(root);
    for (const osg::LivingContainer& living : osg::livingContainers())
        EXPECT_NE(living.id, id);
}

TEST_F(MaterialFoldingTest, MaterialsThatHoldOthersFoldWhenTheseAreEqual)
{
    const osg::SwitchMaterialPtr first = switching("paint", {simple("red", {1, 0, 0})});
    addGeometry(root, first);
    const osg::NodePtr same = addGeometry(root, switching("paint", {simple("red", {1, 0, 0})}));
    const osg::SwitchMaterialPtr apart = switching("paint", {simple("red", {0, 1, 0})});
    const osg::NodePtr other = addGeometry(root, apart);
    const auto mirroring = [](const char* place) {
        const osg::UBRDFMaterialPtr material = brdf("chrome");
        material->setEnvironment(simple(place));
        return material;
    };
    const osg::UBRDFMaterialPtr chrome = mirroring("hall"), outside = mirroring("yard");
    addGeometry(root, chrome);
    const osg::NodePtr alsoChrome = addGeometry(root, mirroring("hall")), elsewhere = addGeometry(root, outside);
    folding.optimizeMaterials(root);
    EXPECT_TRUE(materialOf(same) == first);
    EXPECT_TRUE(materialOf(other) == apart);
    EXPECT_TRUE(materialOf(alsoChrome) == chrome);
    EXPECT_TRUE(materialOf(elsewhere) == outside);
}

TEST_F(MaterialFoldingTest, EachMaterialIsAskedForItsNameOnce)
{
    addGeometry(root, simple("steel"));
    const std::vector<std::string> calls = callsOf([this] { folding.optimizeMaterials(root); });
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0],
              "znMaterials::getName(material " + std::to_string(idOf(materialOf(root->getChild(0)))) + " 'steel')");
    for (int i = 0; i < 9; ++i)
        addGeometry(root, simple("steel"));
    EXPECT_EQ(callsOf([this] { folding.optimizeMaterials(root); }).size(), 10U);
}

} // namespace
