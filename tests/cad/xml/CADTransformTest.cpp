#include "cad/xml/CADTransform.h"

#include "cad/xml/CADUserData.h"
#include "tests/cad/xml/ModelFixture.h"

#include <limits>

namespace HB::XML::CAD
{

class CADTransformTest : public ModelTest
{
protected:
    CADTransform& loadTransform(const std::string& content, const std::string& attributes = "")
    {
        return loadInGraph<CADTransform>("<Transform " + attributes + ">" + content + "</Transform>");
    }
    Floats valuesOf(const std::string& content) { return loadTransform(content).getTransformValues(); }
    int typeOf(const std::string& word)
    {
        return static_cast<int>(loadTransform("1", "type='" + word + "'").getType());
    }
    LoadOutcome outcomeOfText(const std::string& content)
    {
        return outcomeOf(m_document,
                         write("transform.plmxml", "<PLMXML><ProductDef><InstanceGraph><Transform>" + content +
                                                       "</Transform></InstanceGraph></ProductDef></PLMXML>"));
    }
};

TEST_F(CADTransformTest, TypesAreNumbered)
{
    EXPECT_EQ(typeOf("rotate"), 0);
    EXPECT_EQ(typeOf("translate"), 1);
    EXPECT_EQ(typeOf("scale"), 2);
    EXPECT_EQ(typeOf("general3"), 3);
    EXPECT_EQ(typeOf("general"), 4);
}

TEST_F(CADTransformTest, TypeIsGeneralByDefaultAndForUnknownWords)
{
    EXPECT_EQ(loadTransform("1").getType(), CADTransform::Type::General);
    EXPECT_EQ(typeOf("Scale"), 4);
    EXPECT_EQ(typeOf("shear"), 4);
}

TEST_F(CADTransformTest, NameAndIdAreRead)
{
    const auto& transform = loadTransform("1", "id='t5' name='Place'");
    EXPECT_EQ(transform.getId(), "t5");
    EXPECT_EQ(transform.getName(), "Place");
    EXPECT_EQ(m_document.findTransform("t5"), &transform);
}

TEST_F(CADTransformTest, ValuesAreKeptAsTheyStand)
{
    EXPECT_EQ(loadTransform("0.5 -2 3e-3", "type='translate'").getTransformValues(), (Floats{0.5F, -2.0F, 0.003F}));
    EXPECT_EQ(valuesOf("2 0 0 0 0 3 0 0 0 0 4 0 5 6 7 1"), (Floats{2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 5, 6, 7, 1}));
}

TEST_F(CADTransformTest, CountIsNotChecked)
{
    EXPECT_EQ(loadTransform("1 2 3 4 5", "type='scale'").getTransformValues(), (Floats{1, 2, 3, 4, 5}));
}

TEST_F(CADTransformTest, WithoutTextTheListIsEmpty)
{
    EXPECT_TRUE(valuesOf("").empty());
    EXPECT_TRUE(valuesOf(" \n\t ").empty());
    EXPECT_TRUE(valuesOf("<!-- 1 2 3 -->").empty());
}

TEST_F(CADTransformTest, WhiteSpaceOfTheDocumentIsCondensed)
{
    EXPECT_EQ(valuesOf("\n  1   2\n\t 3 \r\n 4  \n"), (Floats{1, 2, 3, 4}));
}

TEST_F(CADTransformTest, TextNodesRunOnIntoOneList)
{
    EXPECT_EQ(valuesOf("1 2 <!-- comment --> 3 4"), (Floats{1, 2, 3, 4}));
    EXPECT_EQ(valuesOf("1<Other>9</Other>2 3<UserData/>4"), (Floats{1, 2, 3, 4}));
    EXPECT_EQ(valuesOf("1 <![CDATA[2 3]]>4"), (Floats{1, 2, 3, 4}));
}

TEST_F(CADTransformTest, LastNumberOfEveryTextNodeIsReadAsFloat)
{
    EXPECT_EQ(outcomeOfText("1 1e39<!-- -->2"), (LoadOutcome{"std::out_of_range", "stof argument out of range"}));
    EXPECT_EQ(valuesOf("1 1e39 2"), (Floats{1, std::numeric_limits<float>::infinity(), 2}));
}

TEST_F(CADTransformTest, UserDataIsReadAndOtherChildrenAreNot)
{
    const auto& transform = loadTransform("<UserData id='u'/><Transform>5</Transform><Material/>1");
    EXPECT_EQ(transform.getUserData()->getId(), "u");
    EXPECT_EQ(ModelTestAccess::children(transform).size(), 1U);
    EXPECT_EQ(transform.getTransformValues(), Floats{1});
}

TEST_F(CADTransformTest, WordsFailTheLoadByTheirPlace)
{
    EXPECT_EQ(outcomeOfText("1 two 3"), (LoadOutcome{"std::invalid_argument", "invalid stod argument"}));
    EXPECT_EQ(outcomeOfText("1 2 three"), (LoadOutcome{"std::invalid_argument", "invalid stof argument"}));
}

TEST_F(CADTransformTest, CDataIsNotCondensed)
{
    EXPECT_EQ(outcomeOfText("<![CDATA[1  2]]>"), (LoadOutcome{"std::invalid_argument", "invalid stod argument"}));
    EXPECT_EQ(outcomeOfText("<![CDATA[1 2 ]]>"), (LoadOutcome{"std::invalid_argument", "invalid stof argument"}));
    EXPECT_EQ(outcomeOfText("<![CDATA[]]>"), (LoadOutcome{"std::invalid_argument", "invalid stof argument"}));
    EXPECT_EQ(valuesOf("<![CDATA[1\n2 3]]>"), (Floats{1, 3}));
}

TEST_F(CADTransformTest, BlankWrittenAsAReferenceIsABlankOfItsOwn)
{
    EXPECT_EQ(outcomeOfText("1 &#32;2"), (LoadOutcome{"std::invalid_argument", "invalid stod argument"}));
    EXPECT_EQ(valuesOf("1 &#9;2 3"), (Floats{1, 2, 3}));
}

TEST_F(CADTransformTest, ValuesAreGivenAsACopy)
{
    const auto& transform = loadTransform("1 2");
    transform.getTransformValues().clear();
    EXPECT_EQ(transform.getTransformValues(), (Floats{1, 2}));
}

} // namespace HB::XML::CAD
