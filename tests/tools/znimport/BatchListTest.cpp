#include "tools/znimport/BatchList.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace znimport;

namespace
{

class BatchListTest : public testing::Test
{
protected:
    QString path() const { return m_folder.filePath(QStringLiteral("list.tsv")); }

    QTemporaryDir m_folder;
};

TEST_F(BatchListTest, TellsWhatItWasTold)
{
    const QString name = QString::fromUtf8("sub/ä\tb\n%.stp");
    {
        BatchList list(path());
        ASSERT_FALSE(list.error());
        list.add({name, 3, 1.5, 7, QStringLiteral("12-ab")});
        list.add({QStringLiteral("a"), 0, 0, 1, QStringLiteral("1-1")});
        list.add({QStringLiteral("a"), 1, 0, 2, QStringLiteral("2-2")});
    }
    const BatchList list(path());
    ASSERT_NE(list.find(name), nullptr);
    EXPECT_EQ(list.find(name)->exitCode, 3);
    EXPECT_EQ(list.find(name)->seconds, 1.5);
    EXPECT_EQ(list.find(name)->bytes, 7);
    EXPECT_EQ(list.find(name)->stamp, QStringLiteral("12-ab"));
    EXPECT_EQ(list.find(QStringLiteral("a"))->exitCode, 1) << "the last line counts";
    EXPECT_EQ(list.find(QStringLiteral("b")), nullptr);
}

TEST_F(BatchListTest, ALineThatWasCutOffDoesNotCountAndSpoilsNoOther)
{
    {
        BatchList list(path());
        list.add({QStringLiteral("a"), 0, 1, 1, QStringLiteral("1")});
        list.add({QStringLiteral("b"), 0, 1, 1, QStringLiteral("1")});
    }
    QFile file(path());
    ASSERT_TRUE(file.resize(file.size() - 1));
    {
        BatchList list(path());
        EXPECT_NE(list.find(QStringLiteral("a")), nullptr);
        EXPECT_EQ(list.find(QStringLiteral("b")), nullptr);
        list.add({QStringLiteral("c"), 0, 1, 1, QStringLiteral("1")});
    }
    const BatchList list(path());
    EXPECT_NE(list.find(QStringLiteral("c")), nullptr);
}

TEST_F(BatchListTest, ThatCannotBeKeptSaysSo)
{
    EXPECT_TRUE(BatchList(QStringLiteral("/dev/null/list.tsv")).error());
}

} // namespace
