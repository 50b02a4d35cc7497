#include "cad/xml/CADReference.h"

#include <gtest/gtest.h>

using namespace HB::XML::CAD;

using Texts = std::vector<std::string>;

TEST(CADReference, BareIdIsAllIdAndLeavesFilePartAlone)
{
    std::string file = "kept";
    std::string id = "old";
    EXPECT_FALSE(splitReference("id7", file, id));
    EXPECT_EQ(file, "kept");
    EXPECT_EQ(id, "id7");
}

TEST(CADReference, LocalReferenceHasEmptyFilePart)
{
    std::string file = "replaced";
    std::string id;
    EXPECT_FALSE(splitReference("#id7", file, id));
    EXPECT_EQ(file, "");
    EXPECT_EQ(id, "id7");
}

TEST(CADReference, ReferenceIntoAnotherFileGivesBothPartsAndTrue)
{
    std::string file;
    std::string id;
    EXPECT_TRUE(splitReference("a.plmxml#id7", file, id));
    EXPECT_EQ(file, "a.plmxml");
    EXPECT_EQ(id, "id7");
}

TEST(CADReference, TrailingHashSignGivesEmptyId)
{
    std::string file;
    std::string id = "old";
    EXPECT_TRUE(splitReference("a.plmxml#", file, id));
    EXPECT_EQ(file, "a.plmxml");
    EXPECT_EQ(id, "");
}

TEST(CADReference, LoneHashSignHasNeitherFileNorId)
{
    std::string file;
    std::string id = "old";
    EXPECT_FALSE(splitReference("#", file, id));
    EXPECT_EQ(file, "");
    EXPECT_EQ(id, "");
}

TEST(CADReference, FirstHashSignDivides)
{
    std::string file;
    std::string id;
    EXPECT_TRUE(splitReference("a#b#c", file, id));
    EXPECT_EQ(file, "a");
    EXPECT_EQ(id, "b#c");
    EXPECT_EQ(referenceId("a#b#c"), "b#c");
}

TEST(CADReference, EmptyTextIsAnEmptyId)
{
    std::string file;
    std::string id = "old";
    EXPECT_FALSE(splitReference("", file, id));
    EXPECT_EQ(file, "");
    EXPECT_EQ(id, "");
}

TEST(CADReference, ReferenceIdDropsWhateverFilePart)
{
    EXPECT_EQ(referenceId("id7"), "id7");
    EXPECT_EQ(referenceId("#id7"), "id7");
    EXPECT_EQ(referenceId("a.plmxml#id7"), "id7");
    EXPECT_EQ(referenceId("a.plmxml#"), "");
}

TEST(CADReference, ListIsSplitAtAnyWhiteSpaceAndKeepsHashSigns)
{
    Texts tokens;
    splitRefList(" #a\tb\n\n c.xml#d \r\v\f#e  ", tokens);
    EXPECT_EQ(tokens, (Texts{"#a", "b", "c.xml#d", "#e"}));
}

TEST(CADReference, ListIsAppended)
{
    Texts tokens{"first"};
    splitRefList("second third", tokens);
    EXPECT_EQ(tokens, (Texts{"first", "second", "third"}));
}

TEST(CADReference, EmptyAndBlankTextsAppendNothing)
{
    Texts tokens{"first"};
    splitRefList("", tokens);
    splitRefList(" \t\n", tokens);
    EXPECT_EQ(tokens, Texts{"first"});
}

TEST(CADReference, PathsAreComparedByIdParts)
{
    EXPECT_TRUE(equalPaths({"a", "#b", "f.plmxml#c"}, {"#a", "g.plmxml#b", "c"}));
    EXPECT_FALSE(equalPaths({"a", "b"}, {"a", "c"}));
    EXPECT_FALSE(equalPaths({"a", "b"}, {"b", "a"}));
}

TEST(CADReference, PathsOfDifferentLengthDiffer)
{
    EXPECT_FALSE(equalPaths({"a"}, {"a", "b"}));
    EXPECT_FALSE(equalPaths({"a", "b"}, {"a"}));
    EXPECT_FALSE(equalPaths({}, {""}));
}

TEST(CADReference, EmptyPathsMatch)
{
    EXPECT_TRUE(equalPaths({}, {}));
}

TEST(CADReference, PathComparisonMindsCase)
{
    EXPECT_FALSE(equalPaths({"Id7"}, {"id7"}));
}
