#include "importer/plmxml/NormaliserOptions.h"

#include "tests/support/QtPrinters.h"

#include <gtest/gtest.h>

namespace
{

using importer::plmxml::NormaliserOptions;
using importer::plmxml::PlaceWalk;

NormaliserOptions arrived(const NormaliserOptions& options)
{
    NormaliserOptions result;
    for (const QString& word : wordsOf(options))
        EXPECT_TRUE(takeWord(result, word)) << word.toStdString();
    return result;
}

TEST(NormaliserOptionsTest, EachOptionArrives)
{
    NormaliserOptions options;
    options.preferredFormats = QStringList{QStringLiteral("stl"), QStringLiteral(" JT "), QString()};
    options.rules = {
        {files::references::Rule::None, "/top", {"/open"}}, QStringLiteral("/top/a"), QStringLiteral("/o")};
    options.wantsFacts = true;
    options.elementsFolder = QStringLiteral("/elements=1");
    options.root = QString::fromUtf8("id = \"ä'\n");
    options.mostPlaces = 1234;
    const NormaliserOptions result = arrived(options);
    EXPECT_EQ(result.preferredFormats, options.preferredFormats);
    EXPECT_EQ(result.rules.policy.rule, files::references::Rule::None);
    EXPECT_EQ(result.rules.imported, options.rules.imported);
    EXPECT_EQ(result.rules.ownFolder, options.rules.ownFolder);
    EXPECT_TRUE(result.wantsFacts);
    EXPECT_EQ(result.elementsFolder, options.elementsFolder);
    EXPECT_EQ(result.root, options.root);
    EXPECT_EQ(result.mostPlaces, 1234u);
}

TEST(NormaliserOptionsTest, ThoseThatAreOffArriveToo)
{
    const NormaliserOptions result = arrived({});
    EXPECT_TRUE(result.preferredFormats.isEmpty());
    EXPECT_EQ(result.rules.policy.rule, files::references::Rule::Parts);
    EXPECT_FALSE(result.wantsFacts);
    EXPECT_TRUE(result.root.isEmpty());
    EXPECT_EQ(result.mostPlaces, PlaceWalk::MaxPlaces);
}

TEST(NormaliserOptionsTest, OtherWordsAreRefused)
{
    NormaliserOptions options;
    for (const char* word : {"", "facts", "facts=2", "facts=", "most-places=", "most-places=-1", "most-places=20000001",
                             "references=all", "unit=1", "=1"})
        EXPECT_FALSE(takeWord(options, QString::fromLatin1(word))) << word;
}

} // namespace
