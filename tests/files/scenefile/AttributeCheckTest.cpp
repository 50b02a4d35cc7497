#include "files/scenefile/AttributeCheck.h"

#include "scene/Attributes.h"
#include "tests/files/scenefile/FileBuilder.h"
#include "tests/files/scenefile/SceneFileTest.h"

#include <optional>

namespace
{

using namespace filebuilder;
using osg::AttributeList;
using osg::AttributeOwner;
using Type = fb::AttributeType;
using Code = files::ErrorCode;

constexpr std::uint64_t list(std::uint64_t first, std::uint64_t count)
{
    return first << 32 | count;
}

/// A table of two rows of one shape at a node and its core.
struct Table {
    std::string bytes = "namekgvaluex";
    std::vector<std::uint32_t> ends = {4, 6, 11, 12}; // "name", "kg", "value", "x"
    std::vector<std::vector<fb::AttributeColumn>> shapes = {
        {{0, 0, Type::Text}, {0, 2, Type::Real}, {3, 0, Type::List}, {0, 0, Type::Date}}};
    std::vector<fb::AttributeRow> rows = {{0, 0}, {0, 4}};
    std::vector<std::uint64_t> values = {2, 0, list(0, 2), 3, 3, 0, list(1, 1), 2};
    std::vector<std::uint32_t> items = {2, 3};
    std::vector<fb::AttributeUse> uses = {{0, 0, 0}, {0, 1, 1}, {1, 0, 0}};

    Graph graph() const
    {
        Graph graph;
        graph.attributes = [*this](flatbuffers::FlatBufferBuilder& builder) {
            std::vector<flatbuffers::Offset<fb::AttributeShape>> made;
            for (const auto& columns : shapes)
                made.push_back(fb::CreateAttributeShape(builder, builder.CreateVectorOfStructs(columns)));
            const auto text = builder.CreateVector(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            const auto endVector = builder.CreateVector(ends);
            const auto shapeVector = builder.CreateVector(made);
            const auto rowVector = builder.CreateVectorOfStructs(rows);
            const auto valueVector = builder.CreateVector(values);
            const auto itemVector = builder.CreateVector(items);
            const auto useVector = builder.CreateVectorOfStructs(uses);
            return fb::CreateAttributeTable(builder, text, endVector, shapeVector, rowVector, valueVector, itemVector,
                                            useVector);
        };
        return graph;
    }
};

class AttributeCheckTest : public SceneFileTest
{
protected:
    static std::optional<Code> readTable(const Table& table, const osg::scenefile::SceneFileReadOptions& options = {})
    {
        const files::Result<osg::NodePtr> result = read(table.graph().file(), options);
        if (!result)
            return result.error().code;
        const NodeRef root(result.value());
        return std::nullopt;
    }
};

TEST_F(AttributeCheckTest, TheTableOfTheseTestsIsSound)
{
    const NodeRef root(read(Table().graph().file()).value());
    const AttributeList first = {{"name", std::string("value")},
                                 {"name", 0.0, "kg"},
                                 {"x", std::vector<std::string>{"value", "x"}},
                                 {"name", osg::AttributeDate{"x"}}};
    EXPECT_EQ(osg::attributesOf(root.get(), AttributeOwner::Product), first);
    EXPECT_EQ(osg::attributesOf(root.get(), AttributeOwner::Occurrence),
              (AttributeList{{"name", std::string("x")},
                             {"name", 0.0, "kg"},
                             {"x", std::vector<std::string>{"x"}},
                             {"name", osg::AttributeDate{"value"}}}));
    EXPECT_EQ(osg::attributeAttachment(root->getCore(), AttributeOwner::Product),
              osg::attributeAttachment(root.get(), AttributeOwner::Product));
}

TEST_F(AttributeCheckTest, WhatHasNoTargetIsRefused)
{
    const auto broken = [](const auto& damage) {
        Table table;
        damage(table);
        return readTable(table);
    };
    for (const std::optional<Code> result : {
             broken([](Table& t) {
                 t.ends = {4, 6, 11, 13};
             }),
             broken([](Table& t) {
                 t.ends = {4, 3, 11, 12};
             }),
             broken([](Table& t) {
                 t.shapes[0][1] = {4, 0, Type::Real};
             }),
             broken([](Table& t) {
                 t.shapes[0][1] = {0, 5, Type::Real};
             }),
             broken([](Table& t) {
                 t.shapes[0][1] = {0, 0, static_cast<Type>(6)};
             }),
             broken([](Table& t) {
                 t.rows[1] = {1, 4};
             }),
             broken([](Table& t) {
                 t.rows[1] = {0, 5};
             }),
             broken([](Table& t) {
                 t.rows[1] = {0, 0xFFFFFFFF};
             }),
             broken([](Table& t) { t.values[0] = 4; }),
             broken([](Table& t) { t.values[0] = std::uint64_t(1) << 32; }),
             broken([](Table& t) { t.values[7] = 4; }),
             broken([](Table& t) { t.values[2] = list(1, 2); }),
             broken([](Table& t) { t.values[2] = list(0xFFFFFFFF, 0xFFFFFFFF); }),
             broken([](Table& t) { t.items[1] = 4; }),
             broken([](Table& t) {
                 t.uses[2] = {2, 0, 0};
             }),
             broken([](Table& t) {
                 t.uses[2] = {1, 2, 0};
             }),
             broken([](Table& t) {
                 t.uses[2] = {1, 0, 0x10000};
             }),
             broken([](Table& t) {
                 t.uses = {{0, 1, 0}, {0, 0, 1}};
             }),
             broken([](Table& t) {
                 t.uses = {{0, 0, 0}, {0, 1, 0}};
             }),
             broken([](Table& t) {
                 t.uses = {{0, 0, 1}, {0, 1, 0}};
             }),
             broken([](Table& t) {
                 t.uses = {{1, 0, 0}, {0, 1, 0}};
             }),
         })
        EXPECT_EQ(result, Code::DamagedGraph);
}

/// The texts of a row count as often as it stands in the table.
TEST_F(AttributeCheckTest, TextsHaveALimit)
{
    osg::scenefile::SceneFileReadOptions options;
    const std::uint64_t classes = 4 * 32 + 5 + 14 + 4 + 8;
    const std::uint64_t names = 5 * 32 + 3 * 4 + 2 + 1;
    const std::uint64_t first = 4 * 32 + 5 + 5 + 1 + 1;
    const std::uint64_t second = 3 * 32 + 1 + 1 + 5;
    options.maxTextBytes = 32 + 4 + classes + 2 * names + first + second;
    EXPECT_EQ(readTable({}, options), std::nullopt);
    options.maxTextBytes -= 1;
    EXPECT_EQ(readTable({}, options), Code::LimitExceeded);
}

TEST_F(AttributeCheckTest, RowsCountAsObjects)
{
    osg::scenefile::SceneFileReadOptions options;
    options.maxContainers = 5; // a node, its name, its core, two rows
    EXPECT_EQ(readTable({}, options), std::nullopt);
    options.maxContainers = 4;
    EXPECT_EQ(readTable({}, options), Code::LimitExceeded);
}

/// The core is left out with its class, and its attributes with it; those that it shares stay.
TEST_F(AttributeCheckTest, WhatIsLeftOutTakesItsAttributesAlong)
{
    Graph graph = Table().graph();
    graph.classes[0] = {"Unknown"};
    const NodeRef root(read(graph.file()).value());
    EXPECT_FALSE(root->getCore());
    EXPECT_EQ(osg::attributesOf(root.get(), AttributeOwner::Product).size(), 4u);
}

} // namespace
