#include "importer/plmxml/IdTable.h"

#include <gtest/gtest.h>

#include <string>

using namespace importer::plmxml;

namespace
{

class IdTableTest : public testing::Test
{
protected:
    void add(const char* id)
    {
        m_elements.push_back(m_xml.append_child("e"));
        if (id)
            m_elements.back().append_attribute("id") = id;
    }

    pugi::xml_document m_xml;
    std::vector<pugi::xml_node> m_elements;
};

TEST_F(IdTableTest, EachIsFoundByItsNumberAndOfTheSameTheFirst)
{
    for (const char* id : {"a", "b", "a", "c", "a"})
        add(id);
    const IdTable table(m_elements);
    EXPECT_EQ(table.find("a"), 0u);
    EXPECT_EQ(table.find("b"), 1u);
    EXPECT_EQ(table.find("c"), 3u);
    EXPECT_EQ(table.duplicates(), 2u);
    EXPECT_EQ(table.find("ab"), IdTable::None);
}

TEST_F(IdTableTest, ThoseWithoutIdAreNotFound)
{
    add(nullptr);
    add("");
    add("x");
    const IdTable table(m_elements);
    EXPECT_EQ(table.find(""), IdTable::None);
    EXPECT_EQ(table.find("x"), 2u);
    EXPECT_EQ(table.duplicates(), 0u);
    EXPECT_EQ(IdTable(std::vector<pugi::xml_node>()).find("x"), IdTable::None);
}

TEST_F(IdTableTest, ManyAreAllFound)
{
    for (int i = 0; i < 20000; ++i)
        add(("id" + std::to_string(i)).c_str());
    const IdTable table(m_elements);
    for (unsigned i = 0; i < 20000; ++i)
        ASSERT_EQ(table.find("id" + std::to_string(i)), i);
    EXPECT_EQ(table.find("id20000"), IdTable::None);
    EXPECT_EQ(table.duplicates(), 0u);
}

} // namespace
