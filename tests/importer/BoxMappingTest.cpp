#include "importer/BoxMapping.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "scene/EditAudit.h"
#include "scene/GeometryWalk.h"
#include "scene/MaterialLook.h"
#include "scene/SceneEdits.h"
#include "tests/support/BookmarkScene.h"

#include <gtest/gtest.h>

namespace
{

using Uv = zn::MeshSettings::Uv;

osg::SimpleMaterialPtr textured(std::uint8_t set = 0)
{
    const osg::SimpleMaterialPtr material = bookmarkscene::paint("checker", {1, 1, 1});
    osg::PhysicalSurface surface = osg::surfaceOf(material);
    osg::Texture texture;
    texture.image = osg::EncodedImage::share(std::vector<std::byte>(8, std::byte{7}), "image/png", "checker");
    texture.set = set;
    surface.textures[osg::TextureSlot::Normal] = texture;
    osg::setSurface(material, surface);
    return material;
}

class BoxMappingTest : public testing::Test
{
protected:
    static std::shared_ptr<const osg::Mesh> box() { return bookmarkscene::box({0, 0, 0}, {10, 20, 30}); }
    osg::NodePtr add(const osg::NodePtr& parent, const osg::NodePtr& node) const
    {
        osg::addChild(parent, node);
        return node;
    }
    osg::NodePtr addPart(const std::shared_ptr<const osg::Mesh>& mesh, const osg::MaterialPtr& material) const
    {
        return add(root.get(), bookmarkscene::part("part", mesh, material));
    }
    osg::NodePtr addGroup(const osg::NodePtr& parent, const osg::MaterialPtr& material) const
    {
        const osg::MaterialGroupPtr core = osg::MaterialGroupBase::create();
        core->setMaterial(material);
        return add(parent, osg::makeNodeFor(core));
    }
    static std::shared_ptr<const osg::Mesh> meshOf(const osg::NodePtr& node)
    {
        return osg::GeometryAccess::sharedMesh(*osg::geometryOf(node));
    }
    static bool isMapped(const osg::NodePtr& node) { return !meshOf(node)->texCoords.empty(); }
    void map(Uv wish = Uv::Auto) const { importer::mapBoxes(root.get(), wish); }

    osg::RefPtr<osg::NodePtr> root{osg::makeNodeFor(osg::Group::create())};
    osg::RefPtr<osg::SimpleMaterialPtr> plain{bookmarkscene::paint("plain", {1, 0, 0})};
    osg::RefPtr<osg::SimpleMaterialPtr> checker{textured()};
};

TEST_F(BoxMappingTest, AutoWantsATexture)
{
    const osg::NodePtr with = addPart(box(), checker.get());
    const osg::NodePtr without = addPart(box(), plain.get());
    const osg::NodePtr bare = addPart(box(), osg::MaterialPtr());
    const std::shared_ptr<const osg::Mesh> before = meshOf(without);
    map();
    EXPECT_EQ(meshOf(with)->texCoords.size(), 24u);
    EXPECT_TRUE(meshOf(with)->texCoords1.empty());
    EXPECT_EQ(meshOf(without), before) << "not even a copy";
    EXPECT_FALSE(isMapped(bare));
}

TEST_F(BoxMappingTest, BoxTakesAllAndNoneTakesNo)
{
    const osg::NodePtr without = addPart(box(), plain.get());
    const osg::NodePtr bare = addPart(box(), osg::MaterialPtr());
    const osg::NodePtr with = addPart(box(), checker.get());
    map(Uv::None);
    EXPECT_FALSE(isMapped(without) || isMapped(bare) || isMapped(with));
    map(Uv::Box);
    EXPECT_TRUE(isMapped(without) && isMapped(bare) && isMapped(with));
    importer::mapBoxes({}, Uv::Box);
}

TEST_F(BoxMappingTest, WhatHasCoordinatesOrNoTrianglesStays)
{
    auto first = std::make_shared<osg::Mesh>(*box());
    first->texCoords = std::vector<osg::Vec2f>(8);
    auto second = std::make_shared<osg::Mesh>(*box());
    second->texCoords1 = std::vector<osg::Vec2f>(8);
    auto lines = std::make_shared<osg::Mesh>(*box());
    lines->triangles = {};
    lines->lines = std::vector<std::uint32_t>{0, 1};
    for (const auto& mesh : {first, second, lines})
        addPart(mesh, checker.get());
    addPart(nullptr, checker.get());
    map(Uv::Box);
    EXPECT_EQ(meshOf(root->getChild(0)), first);
    EXPECT_EQ(meshOf(root->getChild(1)), second);
    EXPECT_EQ(meshOf(root->getChild(2)), lines);
}

TEST_F(BoxMappingTest, TheTopmostMaterialGroupIsWhatIsSeen)
{
    const osg::NodePtr outer = addGroup(root.get(), checker.get());
    const osg::NodePtr below = add(addGroup(outer, plain.get()), bookmarkscene::part("a", box(), plain.get()));
    const osg::NodePtr other = addGroup(root.get(), plain.get());
    const osg::NodePtr hidden = add(addGroup(other, checker.get()), bookmarkscene::part("b", box(), checker.get()));
    const osg::NodePtr empty = addGroup(root.get(), osg::MaterialPtr());
    const osg::NodePtr own = add(empty, bookmarkscene::part("c", box(), checker.get()));
    map();
    EXPECT_TRUE(isMapped(below));
    EXPECT_FALSE(isMapped(hidden));
    EXPECT_TRUE(isMapped(own));
}

TEST_F(BoxMappingTest, OneUseWithATextureIsEnough)
{
    const osg::NodePtr part = addPart(box(), plain.get());
    const osg::NodePtr again = osg::makeNodeFor(part->getCore());
    osg::addChild(addGroup(root.get(), checker.get()), again);
    map();
    EXPECT_TRUE(isMapped(part));
}

TEST_F(BoxMappingTest, AllChoicesOfSwitchMaterialsCount)
{
    const osg::SwitchMaterialPtr inner = osg::SwitchMaterialBase::create();
    inner->addMaterial(plain.get());
    inner->addMaterial(checker.get());
    const osg::SwitchMaterialPtr outer = osg::SwitchMaterialBase::create();
    outer->addMaterial(plain.get());
    outer->addMaterial(inner);
    const osg::NodePtr part = addPart(box(), outer);
    part->setActive(false);
    map();
    EXPECT_TRUE(isMapped(part));
}

TEST_F(BoxMappingTest, AMeshOfManyIsMadeOnceForEachNeed)
{
    const osg::RefPtr<osg::SimpleMaterialPtr> second{textured(1)};
    const std::shared_ptr<const osg::Mesh> shared = box();
    const osg::NodePtr a = addPart(shared, checker.get()), b = addPart(shared, checker.get());
    const osg::NodePtr c = addPart(shared, plain.get());
    const osg::NodePtr d = addPart(shared, second.get()), e = addPart(shared, second.get());
    map();
    EXPECT_TRUE(isMapped(a));
    EXPECT_EQ(meshOf(a), meshOf(b));
    EXPECT_EQ(meshOf(c), shared);
    EXPECT_EQ(meshOf(d), meshOf(e));
    EXPECT_NE(meshOf(a), meshOf(d));
    EXPECT_EQ(meshOf(d)->texCoords1, meshOf(d)->texCoords) << "its texture asks for the second set";
    map(Uv::Box);
    EXPECT_TRUE(isMapped(c));
}

TEST_F(BoxMappingTest, MeshesChangeWithinTheBracketOfTheirField)
{
    addPart(box(), checker.get());
    const osg::EditAudit audit;
    map();
    ASSERT_EQ(audit.brackets().size(), 1u);
    EXPECT_EQ(audit.brackets().front().mask, osg::GeometryBase::MeshFieldMask);
    EXPECT_TRUE(audit.unbracketed().empty());
}

} // namespace
