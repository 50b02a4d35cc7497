#include "files/ReadRequest.h"

#include "tests/support/QtPrinters.h"

#include <gtest/gtest.h>

namespace
{

files::ReadOptions unusual()
{
    files::ReadOptions options;
    options.upAxis = files::UpAxis::Y;
    options.millimetresPerUnit = 25.4 / 3;
    options.vrmlInMetres = true;
    options.level = 3;
    options.limits = {11, 12, 13, 14, 15};
    return options;
}

TEST(ReadRequestTest, EachOptionArrivesExactly)
{
    files::ReadOptions arrived;
    for (const QString& word : files::wordsOf(unusual()))
        EXPECT_TRUE(files::takeWord(arrived, word)) << word.toStdString();
    EXPECT_EQ(arrived.upAxis, files::UpAxis::Y);
    EXPECT_EQ(arrived.millimetresPerUnit, 25.4 / 3);
    EXPECT_TRUE(arrived.vrmlInMetres);
    EXPECT_EQ(arrived.level, 3);
    EXPECT_EQ(arrived.limits.maxFileBytes, 11u);
    EXPECT_EQ(arrived.limits.maxNodes, 12u);
    EXPECT_EQ(arrived.limits.maxVertices, 13u);
    EXPECT_EQ(arrived.limits.maxDepth, 14u);
    EXPECT_EQ(arrived.limits.maxMemory, 15u);
}

TEST(ReadRequestTest, OptionsThatAreOffArriveToo)
{
    files::ReadOptions arrived = unusual();
    for (const QString& word : files::wordsOf(files::ReadOptions()))
        EXPECT_TRUE(files::takeWord(arrived, word)) << word.toStdString();
    EXPECT_EQ(arrived.upAxis, files::UpAxis::Z);
    EXPECT_FALSE(arrived.vrmlInMetres);
    EXPECT_EQ(arrived.level, 0);
    EXPECT_EQ(arrived.millimetresPerUnit, 1.0);
    EXPECT_EQ(arrived.limits.maxFileBytes, (std::uint64_t(1) << 32) - 1);
}

TEST(ReadRequestTest, TheRulesForDocumentsArriveExactly)
{
    using files::references::Rule;
    const files::DocumentRules rules{
        {Rule::Below, "/top = ä", {"/a b", "/c"}}, QStringLiteral("/top = ä/car.plmxml"), QStringLiteral("/own")};
    files::DocumentRules arrived;
    for (const QString& word : files::wordsOf(rules))
        EXPECT_TRUE(files::takeWord(arrived, word)) << word.toStdString();
    EXPECT_EQ(arrived.policy.rule, Rule::Below);
    EXPECT_EQ(arrived.policy.top, rules.policy.top);
    EXPECT_EQ(arrived.policy.folders, rules.policy.folders);
    EXPECT_EQ(arrived.imported, rules.imported);
    EXPECT_EQ(arrived.ownFolder, rules.ownFolder);
    for (const char* word : {"", "imported", "references=all", "up=y", "=parts"})
        EXPECT_FALSE(files::takeWord(arrived, QString::fromLatin1(word))) << word;
}

TEST(ReadRequestTest, OtherWordsAreRefused)
{
    files::ReadOptions options;
    for (const char* word : {"", "up", "up=x", "unit=0", "unit=-1", "unit=nan", "unit=1mm", "wrl-in-metres=2",
                             "level=-1", "level=x", "max-nodes=", "max-nodes=-1", "max-nothing=3", "=3"})
        EXPECT_FALSE(files::takeWord(options, QString::fromLatin1(word))) << word;
}

} // namespace
