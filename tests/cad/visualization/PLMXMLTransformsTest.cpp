// What the numbers of a transform become.

#include "tests/cad/visualization/PLMXMLStructureTest.h"

namespace HB::Visualization
{

namespace
{

using TransformMatrixTest = PLMXMLStructureTest;

TEST_F(TransformMatrixTest, TranslationsAreMetres)
{
    EXPECT_TRUE(matrixOf("<Transform id='t' type='translate'>1 2 3</Transform>") ==
                (osg::Matrix{{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1000, 2000, 3000, 1}}));
}

TEST_F(TransformMatrixTest, RotationsFillThreeColumns)
{
    const osg::Matrix expected{{1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1}};
    EXPECT_TRUE(matrixOf("<Transform id='t' type='rotate'>1 2 3 4 5 6 7 8 9</Transform>") == expected);
    EXPECT_TRUE(matrixOf("<Transform id='t' type='general3'>1 2 3 4 5 6 7 8 9</Transform>") == expected);
}

TEST_F(TransformMatrixTest, AScaleIsUniform)
{
    EXPECT_TRUE(matrixOf("<Transform id='t' type='scale'>2.5</Transform>") ==
                (osg::Matrix{{2.5F, 0, 0, 0, 0, 2.5F, 0, 0, 0, 0, 2.5F, 0, 0, 0, 0, 1}}));
}

TEST_F(TransformMatrixTest, OnlyTheTranslationOfAGeneralMatrixIsScaled)
{
    EXPECT_TRUE(matrixOf("<Transform id='t'>1 2 3 4 5 6 7 8 9 10 11 12 0.5 14 -15 16</Transform>") ==
                (osg::Matrix{{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 500, 14000, -15000, 16}}));
}

TEST_F(TransformMatrixTest, ACountThatDoesNotFitIsNoTransform)
{
    for (const char* transform :
         {"<Transform id='t' type='rotate'>1 2 3 4 5 6 7 8</Transform>",
          "<Transform id='t' type='general3'>1 2 3 4 5 6 7 8 9 10</Transform>",
          "<Transform id='t' type='translate'>1 2</Transform>",
          "<Transform id='t' type='translate'>1 2 3 4</Transform>", "<Transform id='t' type='scale'>2 2 2</Transform>",
          "<Transform id='t'>2 0 0 0 0 2 0 0 0 0 2 0 5 6 7</Transform>", "<Transform id='t'/>",
          "<Transform id='t' type='scale'/>"})
        EXPECT_TRUE(matrixOf(transform).isIdentity()) << transform;
}

} // namespace

} // namespace HB::Visualization
