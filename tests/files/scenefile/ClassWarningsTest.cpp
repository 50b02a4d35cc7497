// Classes that a reader or the writer does not know.

#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Tags.h"
#include "tests/files/scenefile/FileBuilder.h"
#include "tests/files/scenefile/SceneFileTest.h"

#include <gmock/gmock.h>

namespace
{

using namespace filebuilder;
using UnknownClassTest = SceneFileTest;
using Builder = flatbuffers::FlatBufferBuilder;
using testing::ElementsAre;

std::vector<std::string> textsOf(const std::vector<files::Note>& warnings)
{
    std::vector<std::string> texts;
    for (const files::Note& warning : warnings)
        texts.push_back(warning.message.toStdString());
    return texts;
}

/// A group that no codec knows.
class Elevator final : public osg::Group
{
public:
    static inline osg::FieldContainerType type{"Elevator", &osg::Group::_type};
    const osg::FieldContainerType& getType() const override { return type; }
};

class Hologram final : public osg::Drawable
{
public:
    static inline osg::FieldContainerType type{"Hologram", &osg::DrawableBase::_type};
    const osg::FieldContainerType& getType() const override { return type; }

private:
    bool equalFields(const osg::FieldContainer&) const override { return true; }
    osg::FieldContainerPtr copy() const override { return osg::DrawablePtr(new Hologram); }
};

class Sticker final : public osg::Attachment
{
public:
    static inline osg::FieldContainerType type{"Sticker", &osg::Attachment::_type, "Sticker"};
    const osg::FieldContainerType& getType() const override { return type; }

private:
    bool equalFields(const osg::FieldContainer&) const override { return true; }
    osg::FieldContainerPtr copy() const override { return osg::AttachmentPtr(new Sticker); }
};

TEST_F(UnknownClassTest, TheReaderTakesTheNearestBaseItKnows)
{
    Graph graph;
    graph.classes = {{"MotorisedTransform", "Turntable", "Transform", "Group", "NodeCore"}};
    graph.nodes = {fb::Node(1, 1, 0, 0, 0), fb::Node(2, 0, 0, 0, 0)};
    graph.cores = [](Builder& builder) {
        const fb::Matrix matrix(std::array<float, 16>{3, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1});
        return std::vector{fb::CreateCore(builder, 0, 0, 0, &matrix), fb::CreateCore(builder, 0)};
    };
    const files::Result<osg::NodePtr> result = read(graph.file());
    const NodeRef root(result.value());
    ASSERT_TRUE(root);
    EXPECT_THAT(textsOf(result.warnings),
                ElementsAre("2 objects of the class MotorisedTransform were taken as Transform"));
    ASSERT_EQ(&root->getCore()->getType(), &osg::TransformBase::_type);
    EXPECT_EQ(static_cast<const osg::Transform*>(root->getCore().get())->getMatrix()[12], 5);
}

TEST_F(UnknownClassTest, TheReaderLeavesOutWhatItKnowsNoBaseOf)
{
    Graph graph;
    graph.classes = {{"Cloud", "Drawable"}, {"Velvet", "Material"}, {"Smell"}, {"Geometry"}, {"Tags"}};
    graph.nodes = {fb::Node(1, 1, 1, 2, 0), fb::Node(2, 0, 0, 0, 0)};
    graph.links = {fb::Link(0, 0), fb::Link(1, 0), fb::Link(1, 0), fb::Link(1, 0)};
    graph.cores = [](Builder& builder) {
        return std::vector{fb::CreateCore(builder, 0, 1, 1),
                           fb::CreateCore(builder, 3, 1, 1, nullptr, nullptr, 0, nullptr, 1)};
    };
    graph.materials = [](Builder& builder) { return std::vector{fb::CreateMaterial(builder, 1, 1)}; };
    graph.attachments = [](Builder& builder) {
        const auto tags = builder.CreateVector(std::vector<std::uint32_t>{0});
        return std::vector{fb::CreateAttachment(builder, 2), fb::CreateAttachment(builder, 4, tags)};
    };
    const files::Result<osg::NodePtr> result = read(graph.file());
    const NodeRef root(result.value());
    ASSERT_TRUE(root);
    EXPECT_THAT(textsOf(result.warnings),
                ElementsAre("1 objects of the class Smell were left out", "1 objects of the class Velvet were left out",
                            "1 objects of the class Cloud were left out"));
    EXPECT_FALSE(root->getCore());
    EXPECT_STREQ(osg::getName(root.get()), "text");
    EXPECT_EQ(osg::tagsOf(root.get()), std::vector<std::string>{"text"});
    const osg::NodeCorePtr geometry = root->getChild(0)->getCore();
    ASSERT_EQ(&geometry->getType(), &osg::GeometryBase::_type);
    EXPECT_FALSE(static_cast<const osg::Geometry*>(geometry.get())->getMaterial());
    EXPECT_EQ(osg::tagsOf(geometry), std::vector<std::string>{"text"});
}

TEST_F(UnknownClassTest, AClassOfAnotherKindIsUnknown)
{
    Graph graph;
    graph.classes = {{"SimpleMaterial"}};
    const files::Result<osg::NodePtr> result = read(graph.file());
    const NodeRef root(result.value());
    EXPECT_THAT(textsOf(result.warnings), ElementsAre("1 objects of the class SimpleMaterial were left out"));
    EXPECT_FALSE(root->getCore());
}

TEST_F(UnknownClassTest, TheWriterTakesTheNearestBaseItKnows)
{
    const osg::GroupPtr core(new Elevator);
    osg::setName(core, "lift");
    const NodeRef root(osg::makeNodeFor(core));
    root->addChild(osg::makeNodeFor(core));
    const files::Result<std::uint64_t> result = osg::scenefile::writeSceneFile(root, path());
    EXPECT_TRUE(result);
    EXPECT_THAT(textsOf(result.warnings), ElementsAre("1 objects of the class Elevator were taken as Group"));
    const NodeRef back(osg::scenefile::readSceneFile(path()).value());
    EXPECT_EQ(&back->getCore()->getType(), &osg::Group::_type);
    EXPECT_STREQ(osg::getName(back->getCore()), "lift");
    EXPECT_TRUE(back->getCore() == back->getChild(0)->getCore());
}

TEST_F(UnknownClassTest, TheWriterLeavesOutWhatItKnowsNoBaseOf)
{
    const osg::DrawablePtr core(new Hologram);
    const NodeRef root(osg::makeNodeFor(core));
    root->addChild(osg::makeNodeFor(core));
    root->addAttachment(osg::AttachmentPtr(new Sticker));
    osg::setTags(root.get(), {"kept"});
    const files::Result<std::uint64_t> result = osg::scenefile::writeSceneFile(root, path());
    EXPECT_TRUE(result);
    EXPECT_THAT(textsOf(result.warnings), ElementsAre("1 objects of the class Hologram were left out",
                                                      "1 objects of the class Sticker were left out"));
    const files::Result<osg::NodePtr> back = osg::scenefile::readSceneFile(path());
    const NodeRef backRoot(back.value());
    EXPECT_TRUE(back.warnings.empty());
    EXPECT_FALSE(backRoot->getCore());
    EXPECT_EQ(backRoot->getNChildren(), 1u);
    EXPECT_EQ(osg::tagsOf(backRoot.get()), std::vector<std::string>{"kept"});
}

} // namespace
