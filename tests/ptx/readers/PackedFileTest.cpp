#include "ptx/readers/PackedFile.h"

#include "tests/roads/ptxconvert/TempFolder.h"
#include "tests/support/PackedFiles.h"

#include <gmock/gmock.h>

using namespace ptx::readers;
using ptxtest::TempFolder;
using testing::HasSubstr;

namespace
{

std::string textOf(const std::string& path)
{
    auto content = packed::content(path);
    return content ? content.value() : "failed: " + content.failure().message;
}

/// Longer than the pieces that are read, and not the same all over.
std::string longText()
{
    std::string text;
    for (int line = 0; text.size() < 3'000'000; ++line)
        text += "line " + std::to_string(line) + "\n";
    return text;
}

} // namespace

TEST(PackedFile, IsToldByItsFirstBytes)
{
    EXPECT_TRUE(packed::isPacked(packedfiles::gzipped("x")));
    EXPECT_TRUE(packed::isPacked("PK\x03\x04rest"));
    EXPECT_FALSE(packed::isPacked("ISO-10303-21;"));
    EXPECT_FALSE(packed::isPacked("PK"));
    EXPECT_FALSE(packed::isPacked(""));
}

TEST(PackedFile, GivesTheContentOfGzipInWholeOrItsBeginning)
{
    TempFolder folder;
    const std::string text = longText();
    const std::string path = folder.write("a.stpz", packedfiles::gzipped(text));
    EXPECT_EQ(textOf(path), text);
    EXPECT_EQ(packed::content(path, 1000).value(), text.substr(0, 1000));
    EXPECT_EQ(packed::sizeOf(path), text.size());
}

TEST(PackedFile, MembersOfGzipFollowEachOther)
{
    TempFolder folder;
    EXPECT_EQ(textOf(folder.write("a.gz", packedfiles::gzipped("one ") + packedfiles::gzipped("two"))), "one two");
}

TEST(PackedFile, GivesTheOnlyStepFileOfAZipFile)
{
    TempFolder folder;
    const std::string path = folder.file("a.stpz");
    const std::string text = longText();
    packedfiles::writeZip(path, {{"readme.txt", "hello"}, {"folder/Part.STEP", text}, {"__MACOSX/._Part.step", "x"}});
    EXPECT_EQ(textOf(path), text);
    EXPECT_EQ(packed::content(path, 1000).value(), text.substr(0, 1000));
    EXPECT_EQ(packed::sizeOf(path), text.size());
}

TEST(PackedFile, AZipFileWithoutOrWithSeveralStepFilesIsRefused)
{
    TempFolder folder;
    packedfiles::writeZip(folder.file("none.zip"), {{"a.txt", "x"}});
    EXPECT_EQ(textOf(folder.file("none.zip")), "failed: the ZIP file holds no STEP file");
    packedfiles::writeZip(folder.file("two.zip"), {{"a.stp", "x"}, {"b.step", "y"}});
    EXPECT_EQ(textOf(folder.file("two.zip")),
              "failed: the ZIP file holds 2 STEP files (\"a.stp\", \"b.step\"): unpack the one that is meant");
}

TEST(PackedFile, DamageIsFound)
{
    TempFolder folder;
    const std::string gzip = packedfiles::gzipped(longText());
    EXPECT_THAT(textOf(folder.write("cut.gz", gzip.substr(0, gzip.size() / 2))), HasSubstr("failed: its gzip data"));
    EXPECT_THAT(textOf(folder.write("head.gz", gzip.substr(0, 2))), HasSubstr("failed: its gzip data"));
    std::string wrong = gzip;
    wrong[wrong.size() - 6] = static_cast<char>(wrong[wrong.size() - 6] ^ 1); // in the checksum
    EXPECT_THAT(textOf(folder.write("wrong.gz", wrong)), HasSubstr("failed: its gzip data"));
    packedfiles::writeZip(folder.file("a.zip"), {{"a.stp", longText()}});
    const std::string zip = ptxtest::contentOf(folder.file("a.zip"));
    EXPECT_THAT(textOf(folder.write("cut.zip", zip.substr(0, zip.size() / 2))), HasSubstr("failed: its ZIP directory"));
    wrong = zip;
    wrong[zip.size() / 2] = static_cast<char>(wrong[zip.size() / 2] ^ 0x55);
    EXPECT_THAT(textOf(folder.write("wrong.zip", wrong)),
                HasSubstr("failed: the STEP file in the ZIP file is damaged"));
}

TEST(PackedFile, NoSizeIsBeyondWhatTheBytesCanBecome)
{
    TempFolder folder;
    std::string gzip = packedfiles::gzipped("short");
    gzip.replace(gzip.size() - 4, 4, "\xff\xff\xff\xff");
    EXPECT_EQ(packed::sizeOf(folder.write("a.gz", gzip)), 1032 * gzip.size());
    EXPECT_EQ(packed::sizeOf(folder.write("plain.stp", "12345")), 5u);
    EXPECT_EQ(packed::sizeOf(folder.file("gone.stp")), 0u);
}
