#include "importer/inventory/PartsList.h"

#include "scene/EditScope.h"
#include "tests/importer/inventory/InventoryScene.h"

namespace
{

using namespace importer::inventory;

/// Two axles of a rod and two wheels each, and a spare wheel.
class PartsListTest : public InventoryTest
{
protected:
    PartsListTest()
    {
        const osg::GeometryPtr wheel = boxCore({2, 3, 4});
        const osg::GeometryPtr rod = boxCore({1, 1, 10});
        const osg::NodePtr cart = addProduct(root.get(), "cart", "cart");
        for (const char* name : {"front", "rear"}) {
            const osg::NodePtr axle = addProduct(cart, name, "axle");
            add(addProduct(axle, "rod", "rod", {text("Material", "steel"), {"Density", 7.85, "g/cm3"}}), "shape", rod);
            for (const char* side : {"left", "right"})
                addWheel(axle, side, wheel);
        }
        addWheel(cart, "spare", wheel);
    }

    static osg::NodePtr addWheel(const osg::NodePtr& parent, const char* name, const osg::GeometryPtr& core)
    {
        const osg::NodePtr node = addProduct(parent, name, "wheel", {{"Density", 1.5, "g/cm3"}});
        add(node, "shape", core);
        return node;
    }
};

TEST_F(PartsListTest, AFlatListHasEachPartOnce)
{
    const auto rows = partsList(root.get(), PartsListLevels::Flat);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].product, "rod");
    EXPECT_EQ(rows[0].count, 2u);
    EXPECT_EQ(rows[0].path, "cart/front@axle/rod");
    EXPECT_EQ(rows[0].material, "steel");
    EXPECT_DOUBLE_EQ(rows[0].volume.value_or(0), 10);
    EXPECT_DOUBLE_EQ(rows[0].area.value_or(0), 42);
    EXPECT_DOUBLE_EQ(rows[0].mass.value_or(0), 78.5e-6);
    EXPECT_EQ(rows[0].origin, MeasureOrigin::Mesh);
    EXPECT_EQ(rows[1].product, "wheel");
    EXPECT_EQ(rows[1].count, 5u);
    EXPECT_EQ(rows[1].path, "cart/front@axle/left@wheel");
}

TEST_F(PartsListTest, AnIndentedListTellsWhatOneOfEachConsistsOf)
{
    const auto rows = partsList(root.get(), PartsListLevels::Indented);
    std::vector<std::string> lines;
    for (const PartsListRow& row : rows)
        lines.push_back(std::string(row.level, ' ') + std::to_string(row.count) + " " + row.product);
    EXPECT_EQ(lines, (std::vector<std::string>{"1 cart", " 2 axle", "  1 rod", "  2 wheel", " 1 wheel"}));
    EXPECT_DOUBLE_EQ(rows[1].volume.value_or(0), 10 + 2 * 24);
    EXPECT_DOUBLE_EQ(rows[0].volume.value_or(0), 2 * 58 + 24);
    EXPECT_DOUBLE_EQ(rows[0].mass.value_or(0), (2 * (78.5 + 2 * 36) + 36) * 1e-6);
    EXPECT_EQ(rows[0].origin, MeasureOrigin::Sum);
}

TEST_F(PartsListTest, WhatIsHiddenIsNotCounted)
{
    const osg::NodePtr rear = root->getChild(0)->getChild(1);
    const osg::EditScope edit(rear, osg::Node::ActiveFieldMask);
    rear->setActive(false);
    const auto rows = partsList(root.get(), PartsListLevels::Flat);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].count, 1u);
    EXPECT_EQ(rows[1].count, 3u);
}

TEST_F(PartsListTest, ExactMeasuresCountBeforeThoseOfTheMesh)
{
    const osg::NodePtr ball =
        addProduct(root.get(), "ball", "ball",
                   {{"Exact volume", 4.5, "mm3"}, {"Exact area", 12.5, "mm2"}, {"Density", 2.0, "g/cm3"}});
    add(ball, "shape", boxCore({1, 1, 1}));
    const PartsListRow row = partsList(root.get(), PartsListLevels::Flat).back();
    EXPECT_DOUBLE_EQ(row.volume.value_or(0), 4.5);
    EXPECT_DOUBLE_EQ(row.area.value_or(0), 12.5);
    EXPECT_DOUBLE_EQ(row.mass.value_or(0), 9e-6);
    EXPECT_EQ(row.origin, MeasureOrigin::Exact);
}

TEST_F(PartsListTest, EqualNamesWithOtherMeshesAreOtherProducts)
{
    addWheel(root->getChild(0), "other", boxCore({1, 1, 1}));
    const auto rows = partsList(root.get(), PartsListLevels::Flat);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[2].product, "wheel");
    EXPECT_EQ(rows[2].count, 1u);
}

TEST_F(InventoryTest, AGeometryWithoutProductIsOneItself)
{
    const osg::GeometryPtr core = boxCore({2, 3, 4});
    add(root.get(), "a", core);
    add(root.get(), "a", core);
    const auto rows = partsList(root.get(), PartsListLevels::Flat);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].product, "a");
    EXPECT_EQ(rows[0].count, 2u);
    EXPECT_FALSE(rows[0].mass);
    EXPECT_TRUE(partsList({}, PartsListLevels::Flat).empty());
}

} // namespace
