#include "ptx/readers/jt/ShapeSupply.h"

#include "tests/support/jt/FileWriter.h"

#include <gtest/gtest.h>

using namespace ptx::jt;
using namespace ptx::jt::graph;
using namespace ptx::jt::shapes;

namespace
{

constexpr Id Shapes = 60;

/// A file of triangles, each as large as its number.
JtFile fileOfTriangles()
{
    jttest::FileWriter writer(8);
    jttest::Ids ids;
    for (Id id = 1; id <= Shapes; ++id)
        ids.push_back(id);
    writer.partition(0, ids, "x.jt");
    for (const Id id : ids)
        writer.triangle(id, static_cast<float>(id));
    return std::move(openJtFile("x.jt", writer.file()).value());
}

/// How large the triangle is that a supply gives; 0 when it gives none.
float sizeOf(const Shape& shape)
{
    return shape.positions.size() == 3 ? shape.positions[1][0] : 0;
}

class JtShapeSupply : public testing::TestWithParam<unsigned>
{
protected:
    static std::vector<Id> inOrder()
    {
        std::vector<Id> order;
        for (Id id = Shapes; id > 0; --id)
            order.push_back(id);
        return order;
    }

    JtFile m_file = fileOfTriangles();
};

} // namespace

TEST_P(JtShapeSupply, GivesEachShapeInOrder)
{
    ShapeSupply supply(m_file, inOrder(), GetParam());
    for (Id id = Shapes; id > 0; --id)
        EXPECT_EQ(sizeOf(supply.take(id)), static_cast<float>(id));
}

TEST_P(JtShapeSupply, GivesShapesThatAreSkippedRepeatedOrUnexpected)
{
    ShapeSupply supply(m_file, inOrder(), GetParam());
    for (const Id id : {60, 60, 57, 58, 1, 40, 39, 39, 2, 38})
        EXPECT_EQ(sizeOf(supply.take(id)), static_cast<float>(id));
}

TEST_P(JtShapeSupply, EndsWhileShapesAreLeft)
{
    ShapeSupply supply(m_file, inOrder(), GetParam());
    EXPECT_EQ(sizeOf(supply.take(60)), 60);
}

TEST_P(JtShapeSupply, WithoutAnOrderDecodesWhatIsAskedFor)
{
    ShapeSupply supply(m_file, {}, GetParam());
    EXPECT_EQ(sizeOf(supply.take(7)), 7);
}

INSTANTIATE_TEST_SUITE_P(Threads, JtShapeSupply, testing::Values(1u, 2u, 7u));
