#include "cad/visualization/CADNodeRecord.h"

#include "cad/xml/CADPart.h"
#include "tests/cad/visualization/TableStructure.h"

#include <gtest/gtest.h>
#include <tinyxml.h>

namespace HB::Visualization
{

namespace
{

class UserDataTextTest : public testing::Test
{
protected:
    std::string textOf(const char* partXml)
    {
        TiXmlDocument xml;
        xml.Parse(partXml);
        m_part.load(*xml.RootElement());
        return m_record.getUserDataText();
    }
    std::string textOfValue(const std::string& attributes)
    {
        return textOf(("<Part><UserData><UserValue " + attributes + "/></UserData></Part>").c_str());
    }
    static std::string inside(const char* value) { return std::string("<UserData>") + value + "</UserData>"; }

    XML::CAD::CADPart m_part{static_cast<XML::CAD::CADBase*>(nullptr)};
    CADNodeRecord m_record{&m_part};
};

TEST_F(UserDataTextTest, OnlyTheWordForStringEndsInABlank)
{
    EXPECT_EQ(textOfValue("type='int' title='A' value='1'"),
              inside(R"(<UserValue type="int"title="A" value="1"></UserValue>)"));
    EXPECT_EQ(textOfValue("type='string' title='A' value='x'"),
              inside(R"(<UserValue type="string" title="A" value="x"></UserValue>)"));
}

TEST_F(UserDataTextTest, WordsDifferFromThoseOfDocuments)
{
    const auto wordOf = [this](const char* word) {
        const std::string text = textOfValue(std::string("type='") + word + "'");
        const std::size_t start = std::string("<UserData><UserValue type=").size();
        return text.substr(start, text.find("title") - start);
    };
    EXPECT_EQ(wordOf("int"), "\"int\"");
    EXPECT_EQ(wordOf("ints"), "\"intlist\"");
    EXPECT_EQ(wordOf("real"), "\"real\"");
    EXPECT_EQ(wordOf("reals"), "\"reallist\"");
    EXPECT_EQ(wordOf("boolean"), "\"boolean\"");
    EXPECT_EQ(wordOf("booleans"), "\"booleanlist\"");
    EXPECT_EQ(wordOf("string"), "\"string\" ");
    EXPECT_EQ(wordOf("reference"), "\"reference\"");
    EXPECT_EQ(wordOf("enum"), "\"enum\"");
    EXPECT_EQ(wordOf("list"), "\"list\"");
    EXPECT_EQ(wordOf("dateTime"), "\"datetime\"");
}

TEST_F(UserDataTextTest, ValuesFollowEachOtherInTheirOrder)
{
    EXPECT_EQ(textOf("<Part><UserData><UserValue title='B' value='1'/><UserValue type='real' title='A' value='2'/>"
                     "</UserData></Part>"),
              inside(R"(<UserValue type="string" title="B" value="1"></UserValue>)"
                     R"(<UserValue type="real"title="A" value="2"></UserValue>)"));
}

TEST_F(UserDataTextTest, NothingIsEscaped)
{
    EXPECT_EQ(textOfValue("title='a &quot;b&quot;' value='&lt;c&gt; &amp; d'"),
              inside(R"(<UserValue type="string" title="a "b"" value="<c> & d"></UserValue>)"));
}

TEST_F(UserDataTextTest, UserDataWithoutValuesIsAnEmptyElement)
{
    EXPECT_EQ(textOf("<Part><UserData/></Part>"), "<UserData></UserData>");
}

TEST_F(UserDataTextTest, WithoutUserDataTheTextIsEmpty)
{
    EXPECT_EQ(textOf("<Part/>"), "");
    EXPECT_EQ(CADNodeRecord(nullptr).getUserDataText(), "");
}

TEST_F(UserDataTextTest, OnlyRecordsOfTheFirstKindAnswer)
{
    EXPECT_EQ(textOf("<Part><UserData/></Part>"), "<UserData></UserData>");
    NodeRecordTestAccess::setKind(m_record, 2);
    EXPECT_EQ(m_record.getUserDataText(), "");
}

TEST_F(UserDataTextTest, TheStructureAnswersForItsRecords)
{
    textOf("<Part><UserData/></Part>");
    TableStructure structure;
    structure.add(0);
    structure.add(0, &m_part);
    EXPECT_EQ(structure.getUserDataText(0), "");
    EXPECT_EQ(structure.getUserDataText(1), "<UserData></UserData>");
}

} // namespace

} // namespace HB::Visualization
