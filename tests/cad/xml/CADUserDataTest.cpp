#include "cad/xml/CADUserData.h"

#include "cad/xml/CADUserList.h"
#include "cad/xml/CADUserListItem.h"
#include "cad/xml/CADUserValue.h"
#include "tests/cad/xml/ModelFixture.h"

#include <tinyxml.h>

namespace HB::XML::CAD
{

class CADUserDataTest : public ModelTest
{
protected:
    CADUserData& loadUserData(const std::string& attributes, const std::string& content)
    {
        return loadInProductDef<CADUserData>("<UserData " + attributes + ">" + content + "</UserData>");
    }
    CADUserValue& loadUserValue(const std::string& attributes, const std::string& content = "")
    {
        return firstChild<CADUserValue>(
            loadUserData("id='u'", "<UserValue " + attributes + ">" + content + "</UserValue>"));
    }
    CADUserList& loadUserList(const std::string& attributes, const std::string& content)
    {
        return firstChild<CADUserList>(
            loadUserValue("id='v'", "<UserList " + attributes + ">" + content + "</UserList>"));
    }
    std::string itemTextOf(const std::string& content)
    {
        return ModelTestAccess::text(*ModelTestAccess::items(loadUserList("", "<Item>" + content + "</Item>")).at(0));
    }
    int typeOf(const std::string& word) { return static_cast<int>(loadUserValue("type='" + word + "'").getType()); }
};

TEST_F(CADUserDataTest, NameAndIdComeThroughTheBase)
{
    const auto& userData = loadUserData("id='u5' name='Properties'", "");
    EXPECT_EQ(userData.getId(), "u5");
    EXPECT_EQ(userData.getName(), "Properties");
}

TEST_F(CADUserDataTest, OwnAttributesAreNone)
{
    CADUserData userData(nullptr);
    CADUserList list(nullptr);
    CADUserListItem item(nullptr);
    TiXmlElement element("Any");
    element.SetAttribute("id", "x");
    for (CADBase* base : std::initializer_list<CADBase*>{&userData, &list, &item}) {
        base->loadAttributes(element);
        EXPECT_EQ(base->getId(), "");
    }
}

TEST_F(CADUserDataTest, ValuesAreListedInFileOrder)
{
    const auto values =
        loadUserData("", "<UserValue title='b'/><Other/><UserValue title='a'/><UserValue title='b'/>").getUserValues();
    ASSERT_EQ(values.size(), 3U);
    EXPECT_EQ(values[0]->getName(), "b");
    EXPECT_EQ(values[1]->getName(), "a");
    EXPECT_EQ(values[2]->getName(), "b");
}

TEST_F(CADUserDataTest, UserDataOfUserDataIsReadAndNotAmongTheValues)
{
    const auto& userData = loadUserData("id='u'", "<UserData id='w'><UserValue title='inner'/></UserData>");
    EXPECT_TRUE(userData.getUserValues().empty());
    ASSERT_NE(userData.getUserData(), nullptr);
    EXPECT_EQ(userData.getUserData()->getUserValues()[0]->getName(), "inner");
}

TEST_F(CADUserDataTest, ValueAttributesAreRead)
{
    const auto& value = loadUserValue("id='v3' title='Mass' value='1,5 kg' format='%f' type='real'");
    EXPECT_EQ(value.getId(), "v3");
    EXPECT_EQ(value.getName(), "Mass");
    EXPECT_EQ(value.getValue(), "1,5 kg");
    EXPECT_EQ(ModelTestAccess::format(value), "%f");
    EXPECT_EQ(value.getType(), CADUserValue::Type::Real);
}

TEST_F(CADUserDataTest, TitleGoesOverNameInAnyOrder)
{
    EXPECT_EQ(loadUserValue("name='N' title='T'").getName(), "T");
    EXPECT_EQ(loadUserValue("title='T' name='N'").getName(), "T");
    EXPECT_EQ(loadUserValue("name='N'").getName(), "N");
    EXPECT_EQ(loadUserValue("name='N' title=''").getName(), "");
}

TEST_F(CADUserDataTest, ValueIsAStringByDefault)
{
    const auto& value = loadUserValue("");
    EXPECT_EQ(static_cast<int>(value.getType()), 6);
    EXPECT_EQ(value.getValue(), "");
    EXPECT_EQ(ModelTestAccess::format(value), "");
    EXPECT_EQ(ModelTestAccess::userListRef(value), "");
}

TEST_F(CADUserDataTest, TypesAreNumbered)
{
    EXPECT_EQ(typeOf("int"), 0);
    EXPECT_EQ(typeOf("ints"), 1);
    EXPECT_EQ(typeOf("real"), 2);
    EXPECT_EQ(typeOf("reals"), 3);
    EXPECT_EQ(typeOf("boolean"), 4);
    EXPECT_EQ(typeOf("booleans"), 5);
    EXPECT_EQ(typeOf("string"), 6);
    EXPECT_EQ(typeOf("reference"), 7);
    EXPECT_EQ(typeOf("enum"), 8);
    EXPECT_EQ(typeOf("list"), 9);
    EXPECT_EQ(typeOf("dateTime"), 10);
}

TEST_F(CADUserDataTest, WordsOfOtherFormsAreUnknown)
{
    for (const char* word : {"intlist", "reallist", "booleanlist", "datetime", "Int", "bool", ""})
        EXPECT_EQ(typeOf(word), 6) << word;
}

TEST_F(CADUserDataTest, ValueIsNeverParsed)
{
    const auto& value = loadUserValue("type='int' value='twelve &amp; more'");
    EXPECT_EQ(value.getType(), CADUserValue::Type::Int);
    EXPECT_EQ(value.getValue(), "twelve & more");
}

TEST_F(CADUserDataTest, LastListOfAValueIsKept)
{
    const auto& value = loadUserValue("", "<UserList id='l1'/><UserList id='l2'/>");
    EXPECT_EQ(ModelTestAccess::userListRef(value), "l2");
    EXPECT_EQ(ModelTestAccess::userLists(m_document).size(), 2U);
}

TEST_F(CADUserDataTest, ListWithoutIdIsReferredToByItsGeneratedId)
{
    const auto& value = loadUserValue("id='v'", "<UserList/>");
    const auto& list = firstChild<CADUserList>(value);
    EXPECT_TRUE(isGeneratedId(list, "v", "_ul"));
    EXPECT_EQ(ModelTestAccess::userListRef(value), list.getId());
    EXPECT_EQ(ModelTestAccess::findUserList(m_document, list.getId()), &list);
}

TEST_F(CADUserDataTest, ValueMayBearUserData)
{
    const auto& value = loadUserValue("", "<UserData id='inner'/>");
    EXPECT_EQ(value.getUserData()->getId(), "inner");
}

TEST_F(CADUserDataTest, ItemsAreListedInFileOrder)
{
    const auto& items = ModelTestAccess::items(
        loadUserList("name='L' id='l'", "<Item id='i1' name='one'>x</Item><Other/><Item id='i2'>y</Item>"));
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[0]->getId(), "i1");
    EXPECT_EQ(items[0]->getName(), "one");
    EXPECT_EQ(ModelTestAccess::text(*items[0]), "x");
    EXPECT_EQ(ModelTestAccess::text(*items[1]), "y");
    EXPECT_EQ(items[0]->getParent()->getName(), "L");
}

TEST_F(CADUserDataTest, LastTextOfAnItemWins)
{
    EXPECT_EQ(itemTextOf("first<!-- -->second"), "second");
    EXPECT_EQ(itemTextOf("first<UserData/>second<![CDATA[ third ]]>"), " third ");
}

TEST_F(CADUserDataTest, ItemTextIsCondensed)
{
    EXPECT_EQ(itemTextOf("\n  two\n words "), "two words");
}

TEST_F(CADUserDataTest, ItemWithoutTextKeepsItEmpty)
{
    EXPECT_EQ(itemTextOf(""), "");
    EXPECT_EQ(itemTextOf("<!-- text -->"), "");
}

TEST_F(CADUserDataTest, GeneratedIdsBeginEmptyUnderParentsWithoutId)
{
    const auto& userData = loadUserData("", "<UserValue><UserList><Item/></UserList></UserValue>");
    const auto& value = firstChild<CADUserValue>(userData);
    const auto& list = firstChild<CADUserList>(value);
    EXPECT_TRUE(isGeneratedId(userData, "pd", "_ud"));
    EXPECT_TRUE(isGeneratedId(value, "", "_uv"));
    EXPECT_TRUE(isGeneratedId(list, "", "_ul"));
    EXPECT_TRUE(isGeneratedId(firstChild<CADUserListItem>(list), "", "_uli"));
}

TEST_F(CADUserDataTest, ValuesAreGivenAsACopy)
{
    const auto& userData = loadUserData("", "<UserValue/>");
    userData.getUserValues().clear();
    EXPECT_EQ(userData.getUserValues().size(), 1U);
}

} // namespace HB::XML::CAD
