#include "cad/xml/CADNumbers.h"

#include "tests/cad/xml/DecimalComma.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <new>
#include <stdexcept>
#include <typeinfo>

using namespace HB::XML::CAD;

namespace
{

using Floats = std::vector<float>;

constexpr float infinity = std::numeric_limits<float>::infinity();

Floats transformValues(std::string_view text)
{
    Floats values;
    parseTransformValues(text, values);
    return values;
}

Floats floatList(const std::string& text)
{
    Floats list{7.0F, 7.0F};
    parseFloatList(text, list);
    return list;
}

/// The text of the exception of type Error that reading `text` throws; what else happens otherwise.
template <class Error>
std::string failure(std::string_view text)
{
    try {
        transformValues(text);
    } catch (const std::exception& error) {
        return typeid(error) == typeid(Error) ? error.what() : "another exception";
    }
    return "no exception";
}

} // namespace

TEST(TransformValues, NumbersComeInTheirOrder)
{
    EXPECT_EQ(transformValues("3 -1.5 2e2"), (Floats{3.0F, -1.5F, 200.0F}));
}

TEST(TransformValues, AreAppended)
{
    Floats values{9.0F};
    parseTransformValues("1 2", values);
    EXPECT_EQ(values, (Floats{9.0F, 1.0F, 2.0F}));
}

TEST(TransformValues, WordBeforeTheLastTokenIsAnInvalidDouble)
{
    EXPECT_EQ(failure<std::invalid_argument>("1 word 3"), "invalid stod argument");
    EXPECT_EQ(failure<std::invalid_argument>("word 3"), "invalid stod argument");
}

TEST(TransformValues, WordAtTheEndIsAnInvalidFloat)
{
    EXPECT_EQ(failure<std::invalid_argument>("1 2 word"), "invalid stof argument");
    EXPECT_EQ(failure<std::invalid_argument>("word"), "invalid stof argument");
}

TEST(TransformValues, SecondBlankMakesAnEmptyToken)
{
    EXPECT_EQ(failure<std::invalid_argument>("1  2"), "invalid stod argument");
    EXPECT_EQ(failure<std::invalid_argument>(" 1 2"), "invalid stod argument");
}

TEST(TransformValues, BlankAtTheEndMakesAnEmptyLastToken)
{
    EXPECT_EQ(failure<std::invalid_argument>("1 2 "), "invalid stof argument");
    EXPECT_EQ(failure<std::invalid_argument>(""), "invalid stof argument");
}

TEST(TransformValues, NumberBeyondFloatIsOutOfRangeInTheLastPlaceOnly)
{
    EXPECT_EQ(transformValues("1e39 -1e39 1"), (Floats{infinity, -infinity, 1.0F}));
    EXPECT_EQ(failure<std::out_of_range>("1 1e39"), "stof argument out of range");
    EXPECT_EQ(failure<std::out_of_range>("-1e39"), "stof argument out of range");
}

TEST(TransformValues, NumberBeyondDoubleIsOutOfRange)
{
    EXPECT_EQ(failure<std::out_of_range>("1e309 1"), "stod argument out of range");
    EXPECT_EQ(failure<std::out_of_range>("-1e99999999999999999999 1"), "stod argument out of range");
    EXPECT_EQ(failure<std::out_of_range>("1e309"), "stof argument out of range");
}

TEST(TransformValues, NumberOfWhichNothingIsLeftIsOutOfRange)
{
    EXPECT_EQ(failure<std::out_of_range>("1e-400 1"), "stod argument out of range");
    EXPECT_EQ(failure<std::out_of_range>("1e-60"), "stof argument out of range");
    EXPECT_EQ(transformValues("1e-60 1"), (Floats{0.0F, 1.0F}));
}

TEST(TransformValues, DenormalNumberIsANumber)
{
    EXPECT_EQ(transformValues("1e-40"), Floats{1e-40F});
    EXPECT_EQ(transformValues("1.4e-45"), Floats{std::numeric_limits<float>::denorm_min()});
    EXPECT_EQ(transformValues("1e-40 5e-324 1"), (Floats{1e-40F, 0.0F, 1.0F}));
}

TEST(TransformValues, AllButTheLastPassThroughDouble)
{
    // Just over the middle between 1 and the next float, and on it once rounded to double.
    const std::string number = "1.00000005960464477540";
    EXPECT_EQ(transformValues(number + " 0"), (Floats{1.0F, 0.0F}));
    EXPECT_EQ(transformValues(number), Floats{std::nextafter(1.0F, 2.0F)});
}

TEST(TransformValues, LettersBehindANumberAreIgnored)
{
    EXPECT_EQ(transformValues("1mm 2,5 3e 4..5 6-7 8m"), (Floats{1.0F, 2.0F, 3.0F, 4.0F, 6.0F, 8.0F}));
}

TEST(TransformValues, OtherWhiteSpaceBelongsToTheTokenAndIsSkippedBeforeIt)
{
    EXPECT_EQ(transformValues("\t1 \n\v\f\r2 3\n4"), (Floats{1.0F, 2.0F, 3.0F}));
    EXPECT_EQ(failure<std::invalid_argument>("\t 2"), "invalid stod argument");
}

TEST(TransformValues, SignsAreRead)
{
    EXPECT_EQ(transformValues("+1 -2 -.5 +3."), (Floats{1.0F, -2.0F, -0.5F, 3.0F}));
    EXPECT_TRUE(std::signbit(transformValues("-0 1").front()));
}

TEST(TransformValues, TwoSignsAreNoNumber)
{
    EXPECT_EQ(failure<std::invalid_argument>("--1 1"), "invalid stod argument");
    EXPECT_EQ(failure<std::invalid_argument>("+-1"), "invalid stof argument");
    EXPECT_EQ(failure<std::invalid_argument>("-"), "invalid stof argument");
    EXPECT_EQ(failure<std::invalid_argument>("- 1"), "invalid stod argument");
    EXPECT_EQ(failure<std::invalid_argument>(". 1"), "invalid stod argument");
}

TEST(TransformValues, InfinityAndNotANumberAreNumbers)
{
    EXPECT_EQ(transformValues("inf -INFINITY 1"), (Floats{infinity, -infinity, 1.0F}));
    EXPECT_TRUE(std::isnan(transformValues("nan")[0]));
    EXPECT_TRUE(std::isnan(transformValues("-NaN(1) 1")[0]));
}

TEST(TransformValues, HexadecimalNumbersAreRead)
{
    EXPECT_EQ(transformValues("0x1F -0X.8p1 0x1g +0x10"), (Floats{31.0F, -1.0F, 1.0F, 16.0F}));
    EXPECT_EQ(failure<std::out_of_range>("0x1p9999 1"), "stod argument out of range");
}

TEST(TransformValues, HexadecimalPrefixWithoutDigitsIsAZero)
{
    EXPECT_EQ(transformValues("0x 0xg 0x-5 0x.g 0xinf 0x"), (Floats{0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F}));
}

TEST(TransformValues, DecimalCommaOfTheProgramChangesNothing)
{
    const DecimalComma locale;
    EXPECT_EQ(transformValues("1.5 2,5 3.25"), (Floats{1.5F, 2.0F, 3.25F}));
}

TEST(FloatList, NumbersAreSeparatedByAnyWhiteSpace)
{
    EXPECT_EQ(floatList("0.25\t1\n  -3e1\r4"), (Floats{0.25F, 1.0F, -30.0F, 4.0F}));
}

TEST(FloatList, ReplacesWhatTheListHeld)
{
    EXPECT_EQ(floatList("0.125"), Floats{0.125F});
}

TEST(FloatList, LeadingWhiteSpaceIsSkipped)
{
    EXPECT_EQ(floatList("  1 2"), (Floats{1.0F, 2.0F}));
}

TEST(FloatList, TrailingWhiteSpaceDoublesTheLastNumber)
{
    EXPECT_EQ(floatList("1 2 3 "), (Floats{1.0F, 2.0F, 3.0F, 3.0F}));
    EXPECT_EQ(floatList("1 2 3\n\n  "), (Floats{1.0F, 2.0F, 3.0F, 3.0F}));
}

TEST(FloatList, EmptyAndBlankTextsGiveOneElement)
{
    EXPECT_EQ(floatList(""), Floats{0.0F});
    EXPECT_EQ(floatList(" \n "), Floats{0.0F});
}

TEST(FloatList, WordFailsLikeAnEndlessList)
{
    EXPECT_THROW(floatList("word"), std::bad_alloc);
    EXPECT_THROW(floatList("1 word"), std::bad_alloc);
    EXPECT_THROW(floatList("1 word 2"), std::bad_alloc);
    EXPECT_THROW(floatList("0.5,0.5,0.5"), std::bad_alloc);
    EXPECT_THROW(floatList("1 2mm"), std::bad_alloc);
}

TEST(FloatList, InfinityAndNotANumberAreWords)
{
    EXPECT_THROW(floatList("inf"), std::bad_alloc);
    EXPECT_THROW(floatList("1 nan 2"), std::bad_alloc);
}

TEST(FloatList, NumberBeyondFloatWithTextBehindItFailsLikeAnEndlessList)
{
    EXPECT_THROW(floatList("1e50 1"), std::bad_alloc);
    EXPECT_THROW(floatList("1e50 "), std::bad_alloc);
}

TEST(FloatList, NumberBeyondFloatAtTheEndIsTheLargestFloat)
{
    constexpr float largest = std::numeric_limits<float>::max();
    EXPECT_EQ(floatList("1 1e50"), (Floats{1.0F, largest}));
    EXPECT_EQ(floatList("-1e50"), Floats{-largest});
}

TEST(FloatList, NumberCutOffAtTheEndEndsTheList)
{
    EXPECT_EQ(floatList("1 2e"), (Floats{1.0F, 0.0F}));
    EXPECT_EQ(floatList("1 -"), (Floats{1.0F, 0.0F}));
}

TEST(FloatList, DenormalNumberIsANumber)
{
    EXPECT_EQ(floatList("1e-40 1"), (Floats{1e-40F, 1.0F}));
}

TEST(FloatList, DecimalCommaOfTheProgramChangesNothing)
{
    const DecimalComma locale;
    EXPECT_EQ(floatList("1.5 0.25"), (Floats{1.5F, 0.25F}));
    EXPECT_THROW(floatList("1,5"), std::bad_alloc);
}
