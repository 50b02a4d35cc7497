#include "importer/inventory/SceneSelection.h"

#include "files/scenefile/ConvertedTree.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "tests/importer/inventory/InventoryScene.h"

namespace
{

using namespace importer::inventory;

class SceneSelectionTest : public InventoryTest
{
protected:
    SceneSelectionTest()
    {
        const osg::NodePtr cart = addProduct(root.get(), "cart", "cart");
        add(addProduct(cart, "bolt", "bolt", {text("Material", "steel")}), "shape", boxCore({1, 1, 1}));
        add(addProduct(cart, "wheel", "wheel"), "shape", boxCore({2, 2, 2}));
        add(root.get(), "box", boxCore({3, 3, 3}));
    }

    static SceneQuery query(const char* text)
    {
        QString error;
        return SceneQuery::parse(QString::fromUtf8(text), error).value();
    }

    /// The names from the root down, those of hidden nodes in brackets.
    std::string names(const osg::NodePtr& node) const
    {
        std::string result;
        for (unsigned i = 0; i < node->getNChildren(); ++i) {
            const osg::NodePtr child = node->getChild(i);
            const std::string name = osg::getName(child);
            result += " " + (child->isActive() ? name : "[" + name + "]") + names(child);
        }
        return result;
    }
};

TEST_F(SceneSelectionTest, KeepsMatchesWithWhatIsAboveAndBelow)
{
    EXPECT_EQ(keepMatches(root.get(), query("attribute:Material=steel")), 1u);
    EXPECT_EQ(names(root.get()), " cart bolt shape");
}

TEST_F(SceneSelectionTest, MatchesInSeveralBranchesAreKept)
{
    EXPECT_EQ(keepMatches(root.get(), query("name=box|product=wheel")), 2u);
    EXPECT_EQ(names(root.get()), " cart wheel shape box");
}

TEST_F(SceneSelectionTest, TheMaterialIsTheOneThatIsSeen)
{
    osg::NodePtr place = root.get();
    for (const char* name : {"red", "blue"}) {
        const osg::MaterialGroupPtr group = osg::MaterialGroup::create();
        osg::beginEditCP(group, osg::MaterialGroup::MaterialFieldMask, 1);
        group->setMaterial(files::makeMaterial(name, {}));
        osg::endEditCP(group, osg::MaterialGroup::MaterialFieldMask, 1);
        place = add(place, (std::string(name) + " group").c_str(), group);
    }
    add(place, "inner", boxCore({1, 1, 1}));
    EXPECT_EQ(keepMatches(root.get(), query("material=blue")), 0u);
    EXPECT_EQ(keepMatches(root.get(), query("material=red&name=inner")), 1u);
    EXPECT_EQ(names(root.get()), " red group blue group inner");
}

TEST_F(SceneSelectionTest, WithoutAMatchNothingChanges)
{
    EXPECT_EQ(keepMatches(root.get(), query("name=nut")), 0u);
    EXPECT_EQ(names(root.get()), " cart bolt shape wheel shape box");
}

TEST_F(SceneSelectionTest, HidesMatches)
{
    EXPECT_EQ(hideMatches(root.get(), query("id=cart/bolt|name=box")), 2u);
    EXPECT_EQ(names(root.get()), " cart [bolt] shape wheel shape [box]");
}

TEST_F(SceneSelectionTest, ShowsWhatIsDrawnBesidePartsAndNothingElse)
{
    const osg::NodePtr box = root->getChild(root->getNChildren() - 1);
    osg::setTags(box, {"a", osg::scenefile::converted::PmiTag});
    add(add(box, "callout", boxCore({1, 1, 1})), "drawn", boxCore({1, 1, 1}));
    hideMatches(root.get(), query("name=bolt|name=box|name=callout"));
    EXPECT_EQ(showPmi(root.get()), 1u);
    EXPECT_EQ(names(root.get()), " cart [bolt] shape wheel shape box callout drawn");
}

} // namespace
