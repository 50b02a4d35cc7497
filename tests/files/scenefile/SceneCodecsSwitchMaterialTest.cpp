#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "tests/files/scenefile/FileBuilder.h"
#include "tests/files/scenefile/SceneFileTest.h"

namespace
{

using namespace filebuilder;
using Builder = flatbuffers::FlatBufferBuilder;

class SwitchMaterialFileTest : public SceneFileTest
{
protected:
    static osg::MaterialPtr paint(const char* name)
    {
        const osg::SimpleMaterialPtr material = osg::SimpleMaterialBase::create();
        osg::setName(material, name);
        return material;
    }

    static NodeRef groupWith(const osg::MaterialPtr& material)
    {
        const osg::MaterialGroupPtr core = osg::MaterialGroupBase::create();
        core->setMaterial(material);
        return NodeRef(osg::makeNodeFor(core));
    }

    static osg::SwitchMaterialPtr switchOf(const osg::NodePtr& node)
    {
        const auto core = osg::fcCast<osg::MaterialGroup>(node->getCore());
        return core ? osg::fcCast<osg::SwitchMaterial>(core->getMaterial()) : osg::SwitchMaterialPtr();
    }

    /// What the reader says of materials that hold each other as told: one list of numbers for each.
    static files::Result<osg::NodePtr> readNested(const std::vector<std::vector<std::uint32_t>>& inside)
    {
        Graph graph;
        graph.classes = {{"Group"}, {"SwitchMaterial"}};
        graph.materials = [&](Builder& builder) {
            std::vector<flatbuffers::Offset<fb::Material>> records;
            for (const auto& numbers : inside) {
                const auto stored = builder.CreateVector(numbers);
                records.push_back(fb::CreateMaterial(builder, 1, 0, 0, nullptr, stored, 0));
            }
            return records;
        };
        return read(graph.file());
    }
};

TEST_F(SwitchMaterialFileTest, ChoiceAndNestedMaterialsComeBackOnceEach)
{
    const osg::SwitchMaterialPtr inner = osg::SwitchMaterialBase::create();
    const osg::MaterialPtr shared = paint("shared");
    inner->addMaterial(shared);
    inner->addMaterial(paint("only here"));
    inner->setChoice(1);
    const osg::SwitchMaterialPtr outer = osg::SwitchMaterialBase::create();
    osg::setName(outer, "Roof Glass");
    outer->addMaterial(shared);
    outer->addMaterial(inner);
    outer->setChoice(7);
    const NodeRef root = groupWith(shared);
    root->addChild(groupWith(outer));
    root->addChild(groupWith(outer));

    const NodeRef back = roundTrip(root);
    const auto single = osg::fcCast<osg::MaterialGroup>(back->getCore())->getMaterial();
    const osg::SwitchMaterialPtr read = switchOf(back->getChild(0));
    ASSERT_TRUE(read);
    EXPECT_TRUE(switchOf(back->getChild(1)) == read);
    EXPECT_STREQ(osg::getName(read), "Roof Glass");
    EXPECT_EQ(read->getChoice(), 7u);
    ASSERT_EQ(read->getMaterials().size(), 2u);
    EXPECT_TRUE(read->getMaterial(0) == single);
    const auto readInner = osg::fcCast<osg::SwitchMaterial>(read->getMaterial(1));
    ASSERT_TRUE(readInner);
    EXPECT_EQ(readInner->getChoice(), 1u);
    ASSERT_EQ(readInner->getMaterials().size(), 2u);
    EXPECT_TRUE(readInner->getMaterial(0) == single);
    EXPECT_STREQ(osg::getName(readInner->getMaterial(1)), "only here");
}

TEST_F(SwitchMaterialFileTest, ARingInMemoryIsCut)
{
    const osg::RefPtr<osg::SwitchMaterialPtr> inner(osg::SwitchMaterialBase::create());
    const osg::SwitchMaterialPtr outer = osg::SwitchMaterialBase::create();
    outer->addMaterial(inner.get());
    const NodeRef root = groupWith(outer);
    inner->editMaterials().push_back(outer);
    const NodeRef back = roundTrip(root);
    inner->editMaterials().clear();
    const auto readInner = osg::fcCast<osg::SwitchMaterial>(switchOf(back)->getMaterial(0));
    ASSERT_TRUE(readInner);
    ASSERT_EQ(readInner->getMaterials().size(), 1u);
    EXPECT_FALSE(readInner->getMaterial(0));
}

TEST_F(SwitchMaterialFileTest, MaterialsHoldOnlyThoseBeforeThem)
{
    NodeRef kept(readNested({{}, {1, 0, 1}}).value());
    EXPECT_TRUE(kept);
    for (const auto& inside : std::vector<std::vector<std::vector<std::uint32_t>>>{{{1}}, {{}, {2}}, {{2}, {}}}) {
        const files::Result<osg::NodePtr> result = readNested(inside);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().code, Code::DamagedGraph);
        EXPECT_EQ(result.error().message, QStringLiteral("A reference has no target"));
    }
}

TEST_F(SwitchMaterialFileTest, NestingHasALimit)
{
    std::vector<std::vector<std::uint32_t>> inside = {{}};
    for (std::uint32_t number = 1; number <= 100; ++number)
        inside.push_back({number});
    NodeRef kept(readNested(inside).value());
    EXPECT_TRUE(kept);
    inside.push_back({101});
    const files::Result<osg::NodePtr> result = readNested(inside);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().message, QStringLiteral("The materials are nested too deeply"));
}

} // namespace
