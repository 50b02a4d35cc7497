#include "files/OutputSet.h"

#include "tests/support/QtPrinters.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{

using files::OutputSet;

class OutputSetTest : public testing::Test
{
protected:
    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }
    void put(const char* name, const QByteArray& content) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    QByteArray contentOf(const char* name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    std::string all() const
    {
        const QDir folder(m_folder.path());
        return folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
            .join(QLatin1Char(' '))
            .toStdString();
    }
    void add(OutputSet& set, const char* name, const QByteArray& content) const
    {
        set.add(path(name)).write(content.constData(), static_cast<std::uint64_t>(content.size()));
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(OutputSetTest, AllFilesAppearAndReplaceWhatWasThere)
{
    put("b", "former");
    OutputSet set;
    for (const char* name : {"a", "b", "c"})
        add(set, name, QByteArray("new ") + name);
    EXPECT_EQ(contentOf("b"), "former");
    ASSERT_TRUE(set.commit());
    for (const char* name : {"a", "b", "c"})
        EXPECT_EQ(contentOf(name), QByteArray("new ") + name);
    EXPECT_EQ(all(), "a b c");
}

TEST_F(OutputSetTest, WithoutACommitNothingIsLeft)
{
    put("b", "former");
    {
        OutputSet set;
        add(set, "a", "new");
        add(set, "b", "new");
    }
    EXPECT_EQ(contentOf("b"), "former");
    EXPECT_EQ(all(), "b");
}

TEST_F(OutputSetTest, WhenTheLastNameIsTakenTheOthersAreTakenBack)
{
    put("a", "former");
    {
        OutputSet set;
        for (const char* name : {"a", "b", "c"})
            add(set, name, "new");
        ASSERT_TRUE(QDir().mkdir(path("c")));
        const files::Expected<void> done = set.commit();
        ASSERT_FALSE(done);
        EXPECT_EQ(done.error().file, path("c"));
        EXPECT_EQ(contentOf("a"), "former");
    }
    EXPECT_EQ(all(), "a c");
}

TEST_F(OutputSetTest, WhenOneCannotBeWrittenNoneTakesItsName)
{
    put("a", "former");
    ASSERT_TRUE(QDir().mkdir(path("b")));
    {
        OutputSet set;
        add(set, "a", "new");
        add(set, "b", "new");
        EXPECT_FALSE(set.commit());
    }
    EXPECT_EQ(contentOf("a"), "former");
    EXPECT_EQ(all(), "a b");
}

} // namespace
