#include "files/scenefile/AttributeFields.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "scene/SceneEdits.h"
#include "tests/files/scenefile/FileBuilder.h"
#include "tests/files/scenefile/SceneFileTest.h"
#include "tests/support/HostileAttributes.h"

#include <limits>
#include <optional>

namespace
{

using namespace filebuilder;
using osg::AttributeList;
using osg::AttributeOwner;

const AttributeList all = {{"text", std::string("\xC3\xA4\n")},
                           {"text", std::string()},
                           {"least", std::numeric_limits<std::int64_t>::min()},
                           {"real", 0.1, "kg/m3"},
                           {"yes", true},
                           {"no", false},
                           {"day", osg::AttributeDate{"2024-05-31T08:00:00"}},
                           {"two", std::vector<std::string>{"a", "b"}},
                           {"none", std::vector<std::string>{}},
                           {"one", std::vector<std::string>{"c"}, "mm"}};

class AttributeFieldsTest : public SceneFileTest
{
protected:
    /// What becomes of a file with this attribute. A tree is gone at once.
    static std::optional<files::ErrorCode> readAttribute(const fb::Attribute& attribute,
                                                         const std::vector<std::uint32_t>& items = {})
    {
        Graph graph;
        graph.attachments = [&](flatbuffers::FlatBufferBuilder& builder) {
            const auto list = builder.CreateVectorOfStructs(&attribute, 1);
            const auto texts = builder.CreateVector(items);
            return std::vector{fb::CreateAttachment(builder, 0, 0, nullptr, 0, list, texts)};
        };
        const files::Result<osg::NodePtr> result = read(graph.file());
        if (!result)
            return result.error().code;
        const NodeRef root(result.value());
        return std::nullopt;
    }
};

TEST_F(AttributeFieldsTest, EveryTypeComesBackAtNodesAndMaterials)
{
    const NodeRef root(osg::Node::create());
    const osg::GeometryPtr geometry = osg::Geometry::create();
    osg::exchangeCore(root.get(), geometry);
    geometry->setMaterial(osg::SimpleMaterial::create());
    osg::addAttributes(geometry->getMaterial(), AttributeOwner::Product, {{"coat", 7.5, "um"}});
    osg::addAttributes(root.get(), AttributeOwner::Product, all);
    osg::addAttributes(root.get(), AttributeOwner::Occurrence, {{"place", std::string("top")}});
    const NodeRef back = roundTrip(root);
    EXPECT_EQ(osg::attributesOf(back.get(), AttributeOwner::Product), all);
    EXPECT_EQ(osg::attributesOf(back.get(), AttributeOwner::Occurrence),
              (AttributeList{{"place", std::string("top")}}));
    const auto core = osg::fcCast<osg::Geometry>(back->getCore());
    EXPECT_EQ(osg::attributesOf(core->getMaterial(), AttributeOwner::Product), (AttributeList{{"coat", 7.5, "um"}}));
}

TEST_F(AttributeFieldsTest, TheNodesOfAProductShareItsAttributesAgain)
{
    const NodeRef root(osg::Node::create());
    const osg::RefPtr<osg::AttributeAttachment::Ptr> product(osg::AttributeAttachment::create(all));
    for (int i = 0; i < 2; ++i) {
        osg::addChild(root.get(), osg::Node::create());
        osg::setAttributes(root->getChild(i), AttributeOwner::Product, product.get());
    }
    const NodeRef back = roundTrip(root);
    const auto first = osg::attributeAttachment(back->getChild(0), AttributeOwner::Product);
    ASSERT_TRUE(first);
    EXPECT_EQ(osg::attributeAttachment(back->getChild(1), AttributeOwner::Product), first);
}

/// Attributes outlive the tree that they were read with: they keep the file mapped.
TEST_F(AttributeFieldsTest, AttributesAreReadAfterTheTreeIsGone)
{
    const NodeRef root(osg::Node::create());
    osg::addAttributes(root.get(), AttributeOwner::Product, all);
    osg::RefPtr<osg::AttributeAttachment::Ptr> kept;
    {
        const NodeRef back = roundTrip(root);
        kept = osg::attributeAttachment(back.get(), AttributeOwner::Product);
    }
    EXPECT_EQ(kept->attributes(), all);
}

/// Files that have no table of attributes have them in attachments.
TEST_F(AttributeFieldsTest, RecordsOfFormerFilesAreRead)
{
    using Type = fb::AttributeType;
    Graph graph;
    graph.texts = {"text", "kg", "item"};
    graph.classes.push_back({"Attributes"});
    graph.nodes = {fb::Node(1, 0, 0, 1, 0)};
    graph.links = {fb::Link(0, 1)};
    graph.attachments = [](flatbuffers::FlatBufferBuilder& builder) {
        const std::vector<fb::Attribute> records = {
            {2, 0, 0, Type::Text}, {7, 0, 0, Type::Integer}, {0, 2, 2, Type::Real}, {1, 0, 0, Type::Boolean},
            {1, 0, 0, Type::Date}, {1, 0, 0, Type::List},    {2, 0, 0, Type::List}};
        const auto list = builder.CreateVectorOfStructs(records);
        const auto items = builder.CreateVector(std::vector<std::uint32_t>{2, 0, 1});
        return std::vector{fb::CreateAttachment(builder, 4, 0, nullptr, 0, list, items)};
    };
    const NodeRef root(read(graph.file()).value());
    EXPECT_EQ(osg::attributesOf(root.get(), AttributeOwner::Occurrence),
              (AttributeList{{"text", std::string("item")},
                             {"text", std::int64_t(7)},
                             {"item", 0.0, "kg"},
                             {"text", true},
                             {"text", osg::AttributeDate{"kg"}},
                             {"text", std::vector<std::string>{"item"}},
                             {"text", std::vector<std::string>{"text", "kg"}}}));
}

TEST_F(AttributeFieldsTest, ReferencesWithoutATargetAreRefused)
{
    using Type = fb::AttributeType;
    constexpr std::uint32_t far = 1000;
    EXPECT_FALSE(readAttribute({0, 0, 0, Type::Text}));
    EXPECT_FALSE(readAttribute({far, 0, 1, Type::Integer}));
    EXPECT_FALSE(readAttribute({2, 0, 0, Type::List}, {0, 0}));
    for (const std::optional<files::ErrorCode> result :
         {readAttribute({far, 0, 0, Type::Text}), readAttribute({std::uint64_t(1) << 32, 0, 0, Type::Date}),
          readAttribute({0, far, 0, Type::Real}), readAttribute({0, 0, far, Type::Real}),
          readAttribute({3, 0, 0, Type::List}, {0, 0}), readAttribute({1, 0, 0, Type::List}, {far}),
          readAttribute({0, 0, 0, static_cast<Type>(6)})})
        EXPECT_EQ(result, files::ErrorCode::DamagedGraph);
}

TEST_F(AttributeFieldsTest, HostileAttributesAreKeptToTheByte)
{
    const AttributeList hostile = hostileAttributes(10'000'000, 1'000'000);
    const NodeRef node(osg::Node::create());
    osg::addAttributes(node.get(), AttributeOwner::Product, hostile);
    EXPECT_TRUE(osg::attributesOf(roundTrip(node).get(), AttributeOwner::Product) == hostile);
}

} // namespace
