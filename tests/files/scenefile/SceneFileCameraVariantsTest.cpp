#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "scene/VariantTable.h"
#include "tests/files/scenefile/FileBuilder.h"
#include "tests/files/scenefile/SceneFileTest.h"

namespace
{

using namespace filebuilder;
using Builder = flatbuffers::FlatBufferBuilder;
using CameraInFileTest = SceneFileTest;

TEST_F(CameraInFileTest, ACameraKeepsPlaceFlagsAndOptics)
{
    const osg::UberCameraPtr camera = osg::UberCameraBase::create();
    camera->setProjection(osg::UberCameraBase::Parallel);
    camera->setFieldOfView(33.5f);
    camera->setHeight(420);
    camera->setNear(2.5f);
    camera->setFar(9000);
    camera->setTranslation({7, -8, 9});
    camera->addFlag(osg::UberCamera::ViewpointFlag);
    osg::setName(camera, "Front_vp");
    const osg::RefPtr<osg::UberCameraPtr> back = coreRoundTrip<osg::UberCamera>(camera);
    EXPECT_EQ(back->getProjection(), osg::UberCameraBase::Parallel);
    EXPECT_EQ(back->getFieldOfView(), 33.5f);
    EXPECT_EQ(back->getHeight(), 420);
    EXPECT_EQ(back->getNear(), 2.5f);
    EXPECT_EQ(back->getFar(), 9000);
    EXPECT_EQ(back->getTranslation(), (osg::Vec3f{7, -8, 9}));
    EXPECT_EQ(back->getFlags(), 4u);
    EXPECT_STREQ(osg::getName(back.get()), "Front_vp");
}

TEST_F(CameraInFileTest, AClonedCameraIsEqual)
{
    const osg::UberCameraPtr camera = osg::UberCameraBase::create();
    camera->setFieldOfView(12);
    camera->setFar(77);
    const NodeRef node(osg::makeNodeFor(camera));
    const NodeRef clone(osg::deepCloneTree(node, std::string()));
    const auto copy = osg::fcCast<osg::UberCamera>(clone->getCore());
    ASSERT_TRUE(copy);
    EXPECT_FALSE(copy == camera);
    EXPECT_TRUE(osg::FieldContainer::isEqual(copy, camera));
    camera->setFar(78);
    EXPECT_FALSE(osg::FieldContainer::isEqual(copy, camera));
}

class VariantsInFileTest : public SceneFileTest
{
protected:
    static osg::VariantTable table()
    {
        osg::VariantTable result;
        result.groups = {"Außen", "unused"};
        result.sets = {{"Open Roof",
                        "Außen",
                        "Open Roof_vp",
                        {"Open Roof_vp", "far"},
                        {{"Roof Glass", "Tinted"}, {"Paint", ""}},
                        {{{1, 0}, "!Enable"}, {{}, "!Disable"}}},
                       {"Closed Roof", "", "", {}, {}, {}}};
        return result;
    }

    /// What the reader says of a file with one attachment of variants.
    static files::Result<osg::NodePtr>
    readVariants(const std::function<flatbuffers::Offset<fb::Variants>(Builder&)>& variants,
                 const osg::scenefile::SceneFileReadOptions& options = {})
    {
        Graph graph;
        graph.classes = {{"Group"}, {"Variants", "Attachment"}};
        graph.nodes = {fb::Node(1, 0, 0, 1, 0)};
        graph.links = {fb::Link(0, 0)};
        graph.attachments = [&](Builder& builder) {
            const auto record = variants(builder);
            return std::vector{fb::CreateAttachment(builder, 1, 0, nullptr, record)};
        };
        return read(graph.file(), options);
    }

    static flatbuffers::Offset<fb::Variants> oneSet(Builder& builder, flatbuffers::Offset<fb::VariantSet> set)
    {
        return fb::CreateVariants(builder, 0, builder.CreateVector(std::vector{set}));
    }
};

TEST_F(VariantsInFileTest, EverythingInTheTableComesBack)
{
    const NodeRef root(osg::Node::create());
    root->addAttachment(osg::VariantAttachment::create(table()));
    const NodeRef back = roundTrip(root);
    const auto attachment = osg::VariantAttachment::of(back);
    ASSERT_TRUE(attachment);
    EXPECT_EQ(attachment->table(), table());
}

TEST_F(VariantsInFileTest, ATableWithoutRecordsIsEmpty)
{
    const auto result = readVariants([](Builder&) { return flatbuffers::Offset<fb::Variants>(); });
    ASSERT_TRUE(result);
    const NodeRef root(result.value());
    EXPECT_TRUE(osg::VariantAttachment::of(root)->table().empty());
}

TEST_F(VariantsInFileTest, TextsThatAreNotThereAreRefused)
{
    const std::vector<std::function<flatbuffers::Offset<fb::Variants>(Builder&)>> damages = {
        [](Builder& b) { return fb::CreateVariants(b, b.CreateVector(std::vector<std::uint32_t>{1})); },
        [](Builder& b) { return oneSet(b, fb::CreateVariantSet(b, 1)); },
        [](Builder& b) { return oneSet(b, fb::CreateVariantSet(b, 0, 2)); },
        [](Builder& b) { return oneSet(b, fb::CreateVariantSet(b, 0, 0, 2)); },
        [](Builder& b) {
            const auto viewpoints = b.CreateVector(std::vector<std::uint32_t>{0, 1});
            return oneSet(b, fb::CreateVariantSet(b, 0, 0, 0, viewpoints));
        },
        [](Builder& b) {
            const auto materials = b.CreateVectorOfStructs(std::vector{fb::MaterialState(1, 0)});
            return oneSet(b, fb::CreateVariantSet(b, 0, 0, 0, 0, materials));
        },
        [](Builder& b) {
            const auto materials = b.CreateVectorOfStructs(std::vector{fb::MaterialState(0, 1)});
            return oneSet(b, fb::CreateVariantSet(b, 0, 0, 0, 0, materials));
        },
        [](Builder& b) {
            const auto nodes = b.CreateVector(std::vector{fb::CreateNodeState(b, 0, 1)});
            return oneSet(b, fb::CreateVariantSet(b, 0, 0, 0, 0, 0, nodes));
        },
    };
    for (std::size_t i = 0; i < damages.size(); ++i) {
        const files::Result<osg::NodePtr> result = readVariants(damages[i]);
        ASSERT_FALSE(result) << i;
        EXPECT_EQ(result.error().code, Code::DamagedGraph) << i;
    }
}

TEST_F(VariantsInFileTest, APathThatManyStatesShareIsCountedEachTime)
{
    const auto record = [](Builder& b) {
        const auto path = b.CreateVector(std::vector<std::uint32_t>(1000, 5));
        std::vector<flatbuffers::Offset<fb::NodeState>> states;
        for (int i = 0; i < 100; ++i)
            states.push_back(fb::CreateNodeState(b, path, 0));
        const auto nodes = b.CreateVector(states);
        return oneSet(b, fb::CreateVariantSet(b, 0, 0, 0, 0, 0, nodes));
    };
    osg::scenefile::SceneFileReadOptions options;
    options.maxTextBytes = 500'000;
    NodeRef kept(readVariants(record, options).value());
    EXPECT_TRUE(kept);
    options.maxTextBytes = 400'000;
    const files::Result<osg::NodePtr> result = readVariants(record, options);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().code, Code::LimitExceeded);
}

TEST_F(VariantsInFileTest, PathsLeadToNodesAndBack)
{
    const NodeRef root(osg::Node::create());
    root->addChild(osg::Node::create());
    root->addChild(osg::Node::create());
    root->getChild(1)->addChild(osg::Node::create());
    const osg::NodePtr deep = root->getChild(1)->getChild(0);
    EXPECT_EQ(osg::pathTo(deep, root), (osg::NodePath{1, 0}));
    EXPECT_EQ(osg::pathTo(root, root), osg::NodePath());
    EXPECT_EQ(osg::pathTo(root, deep), std::nullopt);
    EXPECT_EQ(osg::pathTo({}, root), std::nullopt);
    EXPECT_TRUE(osg::nodeAt({1, 0}, root) == deep);
    EXPECT_TRUE(osg::nodeAt({}, root) == root.get());
    EXPECT_FALSE(osg::nodeAt({1, 1}, root));
    EXPECT_FALSE(osg::nodeAt({7, 0}, root));
}

} // namespace
