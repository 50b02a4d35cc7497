#include "importer/materials/TableEdits.h"

#include "files/scenefile/AttributeTags.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "scene/CoreMaterial.h"
#include "scene/EditAudit.h"
#include "scene/GeometryWalk.h"
#include "tests/scene/SceneGraphTest.h"
#include "tests/support/BookmarkScene.h"

#include <gmock/gmock.h>

namespace
{

using namespace importer::materials;
using bookmarkscene::paint;
using testing::ElementsAre;

/// Puts assets that bear the names of the rows' assets on a small tree.
class TableEditsTest : public SceneGraphTest
{
protected:
    TableEditsTest() : m_root(osg::makeNodeFor(osg::Group::create())) { osg::setName(m_root.get(), "top"); }
    void TearDown() override
    {
        m_assets.clear();
        m_root = osg::NodePtr();
        SceneGraphTest::TearDown();
    }

    osg::NodePtr root() const { return m_root.get(); }

    /// A leaf of its own geometry.
    osg::NodePtr add(const osg::NodePtr& parent, const char* name, const char* material,
                     const osg::Color3f& color = {0, 0, 0})
    {
        return add(parent,
                   bookmarkscene::part(name, m_box, material ? paint(material, color) : osg::SimpleMaterialPtr()));
    }
    static osg::NodePtr add(const osg::NodePtr& parent, const osg::NodePtr& node)
    {
        parent->addChild(node);
        return node;
    }
    static osg::NodePtr again(const osg::NodePtr& parent, const char* name, const osg::NodePtr& node)
    {
        const osg::NodePtr place = osg::makeNodeFor(node->getCore());
        osg::setName(place, name);
        return add(parent, place);
    }
    static osg::NodePtr group(const osg::NodePtr& parent, const char* name, const char* material = nullptr)
    {
        const osg::MaterialGroupPtr core = osg::MaterialGroupBase::create();
        if (material)
            core->setMaterial(paint(material, {0, 0, 0}));
        const osg::NodePtr node = osg::makeNodeFor(core);
        osg::setName(node, name);
        return add(parent, node);
    }

    std::vector<std::size_t> put(std::vector<TableRow> rows)
    {
        m_table.rows = std::move(rows);
        std::vector<osg::MaterialPtr> materials;
        for (const TableRow& row : m_table.rows) {
            osg::RefPtr<osg::MaterialPtr>& asset = m_assets[row.asset];
            if (!asset)
                asset = osg::MaterialPtr(paint(row.asset.c_str(), {1, 1, 1}));
            materials.push_back(asset.get());
        }
        TableChoices choices(m_table);
        const osg::EditAudit audit;
        const std::vector<std::size_t> counts = putMaterials(choices.of(root()), materials, choices);
        EXPECT_TRUE(audit.unbracketed().empty());
        EXPECT_TRUE(audit.unmatchedEnds().empty());
        m_matched.clear();
        for (std::size_t i = 0; i < m_table.rows.size(); ++i)
            m_matched.push_back(choices.hasMatched(i));
        return counts;
    }

    /// The name of the material that a place is drawn with: that of the topmost group above it, or its own.
    static std::string seen(const osg::NodePtr& node)
    {
        osg::MaterialPtr material = osg::materialOf(node->getCore());
        for (osg::NodePtr above = node->getParent(); above; above = above->getParent())
            if (const osg::MaterialPtr ruling = osg::materialOf(above->getCore()))
                material = ruling;
        const char* name = material ? osg::getName(material) : "(none)";
        return name ? name : "(no name)";
    }

    const std::vector<bool>& matched() const { return m_matched; }

private:
    std::shared_ptr<const osg::Mesh> m_box = bookmarkscene::box({0, 0, 0}, {1, 1, 1});
    osg::RefPtr<osg::NodePtr> m_root;
    AssetTable m_table;
    std::map<std::string, osg::RefPtr<osg::MaterialPtr>> m_assets;
    std::vector<bool> m_matched;
};

using K = RowKind;

TEST_F(TableEditsTest, RowsOfEachKindFindTheirPlaces)
{
    const osg::NodePtr bolt = add(root(), "Bolt M8", "a");
    const osg::NodePtr unit = group(root(), "unit");
    osg::setAttributes(
        unit, osg::AttributeOwner::Product,
        osg::AttributeAttachment::create({{osg::scenefile::converted::ProductName, std::string("Pump")}}));
    const osg::NodePtr inPump = add(unit, "x", "a");
    const osg::NodePtr named = add(root(), "y", "Eiche hell");
    const osg::NodePtr heavy = add(root(), "z", "a");
    osg::setAttributes(heavy, osg::AttributeOwner::Occurrence,
                       osg::AttributeAttachment::create({{"Mass", 2.5, "kg"}, {"Werkstoff", std::string("1.4301")}}));
    const osg::NodePtr grey = add(root(), "w", "a", {0.5f, 0.25f, 1});
    const osg::NodePtr other = add(root(), "v", "a");
    EXPECT_THAT(put({{K::Occurrence, "Bolt*", "A"},
                     {K::Part, "P?mp", "B"},
                     {K::Material, "Eiche*", "C"},
                     {K::Attribute, "Werkstoff=1.43*", "D"},
                     {K::Color, "#8040ff", "E"}}),
                ElementsAre(1u, 1u, 1u, 1u, 1u));
    EXPECT_EQ(seen(bolt), "A");
    EXPECT_EQ(seen(inPump), "B");
    EXPECT_EQ(seen(named), "C");
    EXPECT_EQ(seen(heavy), "D");
    EXPECT_EQ(seen(grey), "E");
    EXPECT_EQ(seen(other), "a");
}

TEST_F(TableEditsTest, KindsComeBeforeOneAnotherAndThenTheFirstRow)
{
    const osg::NodePtr bolt = add(root(), "Bolt", "steel", {1, 0, 0});
    osg::setName(bolt->getCore(), "Bolt DIN 912");
    osg::setAttributes(bolt, osg::AttributeOwner::Product,
                       osg::AttributeAttachment::create({{"class", std::string("8.8")}}));
    std::vector<TableRow> rows = {{K::Color, "#ff0000", "color"},     {K::Attribute, "class=*", "attribute"},
                                  {K::Material, "steel", "material"}, {K::Part, "Bolt DIN*", "part"},
                                  {K::Occurrence, "Bolt", "first"},   {K::Occurrence, "B*", "second"}};
    const std::vector<std::string> expected = {"second", "part", "material", "attribute", "color"};
    put(rows);
    EXPECT_EQ(seen(bolt), "first");
    EXPECT_THAT(matched(), ElementsAre(true, true, true, true, true, true)) << "also those that did not win";
}

TEST_F(TableEditsTest, EachKindWinsOverThoseBehindIt)
{
    const std::vector<TableRow> all = {{K::Color, "#ff0000", "color"},
                                       {K::Attribute, "class=*", "attribute"},
                                       {K::Material, "steel", "material"},
                                       {K::Part, "Bolt DIN*", "part"},
                                       {K::Occurrence, "Bolt", "occurrence"}};
    for (std::size_t count = 1; count <= all.size(); ++count) {
        const osg::NodePtr bolt = add(root(), "Bolt", "steel", {1, 0, 0});
        osg::setName(bolt->getCore(), "Bolt DIN 912");
        osg::setAttributes(bolt, osg::AttributeOwner::Product,
                           osg::AttributeAttachment::create({{"class", std::string("8.8")}}));
        put({all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count)});
        EXPECT_EQ(seen(bolt), all[count - 1].asset);
        root()->subChild(bolt);
    }
}

TEST_F(TableEditsTest, AnOccurrenceHoldsForAllBelowIt)
{
    const osg::NodePtr door = add(group(group(root(), "Door left"), "inner"), "panel", "a");
    EXPECT_THAT(put({{K::Occurrence, "Door*", "A"}}), ElementsAre(1u));
    EXPECT_EQ(seen(door), "A");
}

TEST_F(TableEditsTest, WhatMatchesNothingIsKnown)
{
    add(root(), "a", "b");
    EXPECT_THAT(put({{K::Part, "x", "A"}, {K::Occurrence, "a", "B"}, {K::Material, "b", "C"}}),
                ElementsAre(0u, 1u, 0u));
    EXPECT_THAT(matched(), ElementsAre(false, true, true));
}

TEST_F(TableEditsTest, APlaceOfASharedGeometryGetsACoreOfItsOwn)
{
    const osg::NodePtr left = add(root(), "left", "a");
    const osg::NodePtr right = again(root(), "right", left), third = again(root(), "right too", left);
    EXPECT_THAT(put({{K::Occurrence, "right*", "A"}}), ElementsAre(2u));
    EXPECT_EQ(seen(left), "a");
    EXPECT_EQ(seen(right), "A");
    EXPECT_TRUE(right->getCore() == third->getCore()) << "those that are alike still share";
    EXPECT_EQ(osg::GeometryAccess::sharedMesh(*osg::geometryOf(right)),
              osg::GeometryAccess::sharedMesh(*osg::geometryOf(left)));
}

TEST_F(TableEditsTest, ASharedGeometryThatIsAlikeEverywhereStaysShared)
{
    const osg::NodePtr left = add(root(), "left", "a");
    const osg::NodePtr right = again(root(), "right", left);
    const osg::NodeCorePtr core = left->getCore();
    EXPECT_THAT(put({{K::Material, "a", "A"}}), ElementsAre(2u));
    EXPECT_TRUE(left->getCore() == core && right->getCore() == core);
    EXPECT_EQ(seen(left), "A");
}

TEST_F(TableEditsTest, TheMaterialOfAGroupRules)
{
    const osg::NodePtr top = group(root(), "top group", "steel");
    const osg::NodePtr inner = add(group(top, "inner", "oak"), "x", "oak");
    EXPECT_THAT(put({{K::Material, "oak", "A"}}), ElementsAre(0u));
    EXPECT_EQ(seen(inner), "steel");
    EXPECT_THAT(put({{K::Material, "steel", "B"}}), ElementsAre(1u));
    EXPECT_EQ(seen(inner), "B");
    EXPECT_TRUE(osg::fcCast<osg::MaterialGroup>(top->getCore()));
}

TEST_F(TableEditsTest, AnExceptionBelowAGroupTakesTheGroupApart)
{
    const osg::NodePtr top = group(root(), "top group", "steel");
    const osg::NodePtr inner = group(top, "inner", "oak");
    const osg::NodePtr bolt = add(inner, "bolt", "brass"), plate = add(inner, "plate", "brass");
    const osg::NodePtr outside = again(root(), "outside", plate);
    const osg::NodePtr twin = again(root(), "twin", top);
    EXPECT_THAT(put({{K::Occurrence, "bolt", "A"}}), ElementsAre(1u));
    EXPECT_EQ(seen(bolt), "A");
    EXPECT_EQ(seen(plate), "steel");
    EXPECT_EQ(seen(outside), "brass");
    EXPECT_TRUE(osg::materialOf(twin->getCore())) << "another place of the group's core";
}

TEST_F(TableEditsTest, AGeometryInAGroupTakenApartIsIndependentOfItsOtherPlaces)
{
    const osg::NodePtr top = group(root(), "top group", "steel");
    const osg::NodePtr own = add(
        root(), bookmarkscene::part("own", bookmarkscene::box({0, 0, 0}, {1, 1, 1}), osg::materialOf(top->getCore())));
    const osg::NodePtr inGroup = again(top, "in group", own), bolt = add(top, "bolt", "x");
    EXPECT_THAT(put({{K::Occurrence, "own", "A"}, {K::Occurrence, "bolt", "B"}}), ElementsAre(1u, 1u));
    EXPECT_EQ(seen(own), "A");
    EXPECT_EQ(seen(inGroup), "steel");
    EXPECT_EQ(seen(bolt), "B");
}

TEST_F(TableEditsTest, AGeometryWithoutAMaterialGetsOneByItsPlace)
{
    const osg::NodePtr bare = add(root(), "bare", nullptr);
    EXPECT_THAT(put({{K::Occurrence, "bare", "A"}}), ElementsAre(1u));
    EXPECT_EQ(seen(bare), "A");
}

TEST_F(TableEditsTest, ASwitchMaterialKeepsItsChoicesApart)
{
    const osg::SwitchMaterialPtr glass = bookmarkscene::roofGlass();
    const osg::NodePtr roof = add(root(), bookmarkscene::part("roof", bookmarkscene::box({0, 0, 0}, {1, 1, 1}), glass));
    EXPECT_THAT(put({{K::Occurrence, "roof", "A"}, {K::Material, "Tinted", "B"}}), ElementsAre(0u, 1u));
    EXPECT_EQ(seen(roof), "Roof Glass");
    EXPECT_STREQ(osg::getName(glass->getMaterial(0)), "Clear");
    EXPECT_STREQ(osg::getName(glass->getMaterial(1)), "B");
}

} // namespace
