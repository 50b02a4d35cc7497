#include "importer/materials/AssetTable.h"

#include "tests/support/QtPrinters.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

using namespace importer::materials;

class AssetTableTest : public testing::Test
{
protected:
    files::Expected<AssetTable> read(const QByteArray& text)
    {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        file.close();
        return readAssetTable(path());
    }

    /// Message and place of a table that must be refused.
    QString errorOf(const QByteArray& text)
    {
        const auto table = read(text);
        if (table)
            return QStringLiteral("none");
        EXPECT_EQ(table.error().file, path());
        return table.error().message + QStringLiteral(" @ ") + table.error().place;
    }

    QString path() const { return m_folder.filePath(QStringLiteral("materials.json")); }

private:
    QTemporaryDir m_folder;
};

TEST_F(AssetTableTest, RowsKeepTheirOrder)
{
    const auto table = read(R"({"rows": [
        {"color": "#C0c0fF", "asset": "steel"},
        {"occurrence": "Bolt*", "asset": "u-1"},
        {"part": "Housing ?", "asset": "alu"},
        {"asset": "oak", "material": "Eiche"},
        {"attribute": "Werkstoff=1.4301*", "asset": "steel"}]})");
    ASSERT_TRUE(table) << table.error().toString().toStdString();
    EXPECT_EQ(table->file, path());
    ASSERT_EQ(table->rows.size(), 5u);
    const std::vector<std::string> told = {"color \"#c0c0ff\"", "occurrence \"Bolt*\"", "part \"Housing ?\"",
                                           "material \"Eiche\"", "attribute \"Werkstoff=1.4301*\""};
    const std::vector<std::string> assets = {"steel", "u-1", "alu", "oak", "steel"};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(describe(table->rows[i]).toStdString(), told[i]);
        EXPECT_EQ(table->rows[i].asset, assets[i]);
    }
    EXPECT_TRUE(read(R"({"rows": []})")->rows.empty());
}

TEST_F(AssetTableTest, WhatIsNoJsonIsToldByItsLine)
{
    EXPECT_EQ(errorOf("{\n\"rows\": [\n{]}"), QStringLiteral("this is no JSON text @ line 3"));
    EXPECT_EQ(errorOf(""), QStringLiteral("this is no JSON text @ line 1"));
    EXPECT_EQ(errorOf("{\"rows\": [] } x"), QStringLiteral("this is no JSON text @ line 1"));
    EXPECT_EQ(errorOf("{\"rows\": [{\"part\": \"\xff\", \"asset\": \"a\"}]}"),
              QStringLiteral("this is no JSON text @ line 1"));
}

TEST_F(AssetTableTest, WhatIsNoTableIsToldByItsPlace)
{
    const QString noList = QStringLiteral("a table of materials is an object with a list \"rows\" @ /");
    for (const char* const text : {"[]", "7", "{}", R"({"rows": {}})", R"({"row": []})"})
        EXPECT_EQ(errorOf(text), noList) << text;
    EXPECT_EQ(errorOf(R"({"rows": [], "colour": 1})"), QStringLiteral("\"colour\" is not known @ /"));
}

TEST_F(AssetTableTest, AFaultOfARowIsToldByItsPlace)
{
    const auto errorOfRow = [this](const QByteArray& row) {
        return errorOf(R"({"rows": [{"part": "a", "asset": "b"}, )" + row + "]}");
    };
    EXPECT_EQ(errorOfRow("7"), QStringLiteral("a row is an object @ /rows/1"));
    EXPECT_EQ(errorOfRow(R"({"part": "a"})"),
              QStringLiteral("a row needs the name or the uuid of an \"asset\" @ /rows/1"));
    EXPECT_EQ(errorOfRow(R"({"asset": "a"})"),
              QStringLiteral("a row needs one of \"occurrence\", \"part\", \"material\", \"attribute\" and \"color\" "
                             "@ /rows/1"));
    EXPECT_EQ(errorOfRow(R"({"part": "a", "material": "b", "asset": "c"})"),
              QStringLiteral("a row looks at one thing only @ /rows/1/part"));
    EXPECT_EQ(errorOfRow(R"({"parts": "a", "asset": "c"})"), QStringLiteral("\"parts\" is not known @ /rows/1/parts"));
    for (const char* const value : {"7", "\"\"", "null", "[\"a\"]"})
        EXPECT_EQ(errorOfRow(QByteArray(R"({"part": )") + value + R"(, "asset": "c"})"),
                  QStringLiteral("this is no text, or an empty one @ /rows/1/part"))
            << value;
    for (const char* const value : {"red", "#12345", "#1234567", "#12345g", "1234567"})
        EXPECT_EQ(errorOfRow(QByteArray(R"({"color": ")") + value + R"(", "asset": "c"})"),
                  QStringLiteral("a colour is written as \"#rrggbb\" @ /rows/1/color"))
            << value;
    EXPECT_EQ(errorOfRow(R"({"attribute": "Mass", "asset": "c"})"),
              QStringLiteral("an attribute is written as \"name=value\" @ /rows/1/attribute"));
}

TEST_F(AssetTableTest, AMissingFileIsToldAsOne)
{
    const auto table = readAssetTable(path());
    ASSERT_FALSE(table);
    EXPECT_EQ(table.error().code, files::ErrorCode::NotFound);
}

} // namespace
