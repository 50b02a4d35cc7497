#include "importer/inventory/PartsListFile.h"

#include "tests/support/HostileAttributes.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

using namespace importer::inventory;

class PartsListFileTest : public testing::Test
{
protected:
    QByteArray written(const char* name, const std::vector<PartsListRow>& rows)
    {
        const QString path = m_folder.filePath(QString::fromUtf8(name));
        result = writePartsList(rows, PartsListLevels::Flat, path);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    static PartsListRow wheel()
    {
        PartsListRow row;
        row.product = "wheel, \"left\"";
        row.count = 4;
        row.path = "cart/wheel";
        row.material = "rubber";
        row.density = 1.5;
        row.area = 52;
        row.volume = 24.125;
        row.mass = 36e-6;
        row.origin = MeasureOrigin::Exact;
        row.attributes = {{"Product", std::string("wheel")},
                          {"Tyre", std::string("400 x 60")},
                          {"Spokes", std::int64_t(6)},
                          {"Load", 150.0, "kg"},
                          {"Tyre", std::string("line\nend")}};
        return row;
    }

    PartsListWritten result;

private:
    QTemporaryDir m_folder;
};

TEST_F(PartsListFileTest, CsvHasAColumnForEachAttribute)
{
    PartsListRow bare;
    bare.product = "rod";
    bare.count = 1;
    EXPECT_EQ(
        written("parts.csv", {wheel(), bare}),
        "level,product,count,path,material,density g/cm3,area mm2,volume mm3,mass kg,measured,Load,Spokes,Tyre\r\n"
        "0,\"wheel, \"\"left\"\"\",4,cart/wheel,rubber,1.5,52,24.125,3.6e-05,exact,150 kg,6,\"400 x 60; line\nend\"\r\n"
        "0,rod,1,,,,,,,,,,\r\n");
}

/// What spreadsheets would take for a formula, which can send data away or start programs, stands behind an apostrophe.
TEST_F(PartsListFileTest, CsvHasNoFormulas)
{
    const auto lineOf = [this](const std::string& text) {
        PartsListRow row;
        row.product = text;
        return written("parts.csv", {row}).split('\n').mid(1).join('\n');
    };
    for (const char* text : {"=1+1", "+cmd", "-cmd", "@SUM(A1)", "\tx", "-", "=", "-5 kg", "+-5", "-1-1"})
        EXPECT_EQ(lineOf(text), QByteArray("0,'") + text + ",0,,,,,,,\r\n");
    EXPECT_EQ(lineOf("\r=1"), "0,\"'\r=1\",0,,,,,,,\r\n");
    for (const char* text : {"-12.5", "+3", "1+1", "a=b", "'", "-1e-5"})
        EXPECT_EQ(lineOf(text), QByteArray("0,") + text + ",0,,,,,,,\r\n");
}

TEST_F(PartsListFileTest, FormulasStayAsTheyAreInJson)
{
    PartsListRow row;
    row.product = "=1+1";
    const QJsonObject json = QJsonDocument::fromJson(written("parts.json", {row})).object();
    EXPECT_EQ(json[QStringLiteral("parts")].toArray().at(0)[QStringLiteral("product")], QStringLiteral("=1+1"));
}

TEST_F(PartsListFileTest, JsonKeepsTypes)
{
    const QJsonObject json = QJsonDocument::fromJson(written("parts.JSON", {wheel()})).object();
    EXPECT_EQ(json[QStringLiteral("format")].toString(), QStringLiteral("znimport-bom"));
    EXPECT_EQ(json[QStringLiteral("levels")].toString(), QStringLiteral("flat"));
    const QJsonObject part = json[QStringLiteral("parts")].toArray().at(0).toObject();
    EXPECT_EQ(part[QStringLiteral("count")].toInt(), 4);
    EXPECT_DOUBLE_EQ(part[QStringLiteral("volume")].toDouble(), 24.125);
    EXPECT_EQ(part[QStringLiteral("measured")].toString(), QStringLiteral("exact"));
    const QJsonArray attributes = part[QStringLiteral("attributes")].toArray();
    ASSERT_EQ(attributes.size(), 5);
    EXPECT_EQ(attributes.at(2).toObject()[QStringLiteral("value")], QJsonValue(6));
    EXPECT_EQ(attributes.at(3).toObject()[QStringLiteral("unit")].toString(), QStringLiteral("kg"));
}

TEST_F(PartsListFileTest, TooManyAttributesAreToldAndTheRareOnesLeftOut)
{
    std::vector<PartsListRow> rows(2);
    for (int i = 0; i < 1500; ++i)
        rows[0].attributes.push_back({"a" + std::to_string(i), std::string("x")});
    rows[1].attributes = {{"a1499", std::string("y")}};
    const QByteArray text = written("parts.csv", rows);
    const QByteArray head = text.left(text.indexOf('\r'));
    EXPECT_EQ(head.count(','), 9 + 1000);
    EXPECT_TRUE(head.contains(",a1499"));
    EXPECT_EQ(result.warnings, QStringList(QStringLiteral("the parts list has columns for 1000 of 1500 attributes")));
}

TEST_F(PartsListFileTest, AFileThatCannotBeWrittenIsNamed)
{
    const QString path = QStringLiteral("/nonexistent/parts.csv");
    const auto error = writePartsList({}, PartsListLevels::Flat, path).error;
    ASSERT_TRUE(error);
    EXPECT_TRUE(error->startsWith(path));
}

TEST_F(PartsListFileTest, HostileAttributesAreValidTextOfBoundedWidth)
{
    PartsListRow row;
    row.product = "a\x1B\nb";
    row.count = 1;
    row.attributes = hostileAttributes(10'000'000, 100'000);
    const QByteArray csv = written("parts.csv", {row});
    EXPECT_EQ(result.warnings, QStringList(QStringLiteral("the parts list has columns for 1000 of 100007 attributes")));
    const QString text = QString::fromUtf8(csv);
    EXPECT_EQ(text.toUtf8(), csv);
    for (const QChar letter : {u'\x1B', u'\x07', u'\0', u'\x7F', u'\x9B'})
        EXPECT_FALSE(text.contains(letter)) << letter.unicode();
    EXPECT_TRUE(text.contains(QStringLiteral("\r\n0,\"a\uFFFD\nb\",1,")));
    const QJsonArray parts =
        QJsonDocument::fromJson(written("parts.json", {row})).object()[QStringLiteral("parts")].toArray();
    ASSERT_EQ(parts.size(), 1);
    const QJsonArray attributes = parts[0].toObject()[QStringLiteral("attributes")].toArray();
    ASSERT_EQ(attributes.size(), 100'007);
    EXPECT_EQ(attributes[1].toObject()[QStringLiteral("value")].toString(),
              QString::fromUtf8("\xFF\xC3(\xED\xA0\x80\xF8"));
    EXPECT_EQ(attributes[2].toObject()[QStringLiteral("value")].toString().size(), 10'000'000);
}

} // namespace
