#include "importer/plmxml/Matrix4.h"

#include <gtest/gtest.h>

using namespace importer::plmxml;

namespace
{

std::optional<Matrix4> matrix(const char* type, const char* numbers)
{
    pugi::xml_document xml;
    pugi::xml_node node = xml.append_child("Transform");
    if (*type)
        node.append_attribute("type") = type;
    node.text() = numbers;
    return matrixOf(node);
}

TEST(Matrix4Test, SixteenNumbersAreAxesAndTranslation)
{
    EXPECT_EQ(matrix("", "0 1 0 0 -1 0 0 0 0 0 1 0 1.5 -2e-003 3 1"),
              (Matrix4{0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 1.5, -0.002, 3, 1}));
}

TEST(Matrix4Test, TheLastNumberDividesTheTranslation)
{
    EXPECT_EQ(matrix("", "1 0 0 0 0 1 0 0 0 0 1 0 2 4 6 2"), (Matrix4{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}));
    EXPECT_EQ(matrix("", "1 0 0 0 0 1 0 0 0 0 1 0 2 4 6 0"), (Matrix4{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 2, 4, 6, 1}));
}

TEST(Matrix4Test, OtherTypesHaveFewerNumbers)
{
    EXPECT_EQ(matrix("translate", " 1\n2\t3 "), (Matrix4{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1}));
    EXPECT_EQ(matrix("scale", "+2"), (Matrix4{2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1}));
    EXPECT_EQ(matrix("rotate", "0 1 0 -1 0 0 0 0 1"), (Matrix4{0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
}

TEST(Matrix4Test, OtherCountsAndWordsAreNothing)
{
    EXPECT_FALSE(matrix("translate", "1 2"));
    EXPECT_FALSE(matrix("", "1 2 3"));
    EXPECT_FALSE(matrix("", "1 0 0 0 0 1 0 0 0 0 1 0 x 0 0 1"));
    EXPECT_FALSE(matrix("translate", "1 2 nan"));
    EXPECT_FALSE(matrix("", ""));
}

TEST(Matrix4Test, TheInverseUndoesAxesAndTranslation)
{
    const Matrix4 moved = {0, 2, 0, 0, -2, 0, 0, 0, 0, 0, 3, 0, 10, 20, 30, 1};
    ASSERT_TRUE(inverseOf(moved));
    EXPECT_TRUE(isNear(moved * *inverseOf(moved), Identity4));
    const Matrix4 outer = {1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 5, 6, 7, 1};
    EXPECT_TRUE(isNear(moved * outer * *inverseOf(outer), moved));
    EXPECT_FALSE(isNear(outer * moved * *inverseOf(outer), moved));
    EXPECT_FALSE(inverseOf(Matrix4{1, 0, 0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 0, 0, 0, 1}));
    EXPECT_FALSE(inverseOf(Matrix4{}));
}

TEST(Matrix4Test, NearnessCountsLongTranslationsByTheirLength)
{
    Matrix4 far = Identity4;
    far[12] = 1000;
    Matrix4 beside = far;
    beside[12] += 0.0005;
    EXPECT_TRUE(isNear(far, beside));
    beside[12] += 0.01;
    EXPECT_FALSE(isNear(far, beside));
    Matrix4 turned = Identity4;
    turned[1] = 1e-5;
    EXPECT_FALSE(isNear(turned, Identity4));
}

} // namespace
