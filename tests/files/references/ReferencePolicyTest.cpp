#include "files/references/ReferencePolicy.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

using files::references::Policy;
using files::references::Refusal;
using files::references::Rule;
using files::references::Use;

namespace
{

/// A folder with a file inside, one beside it, and links between them.
class ReferencePolicy : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string pattern = fs::temp_directory_path() / "zn ü-XXXXXX";
        base = ::mkdtemp(pattern.data());
        top = base + "/top";
        fs::create_directories(top + "/sub");
        fs::create_directories(base + "/share");
        fs::create_directories(base + "/topside");
        for (const std::string& file :
             {top + "/in.bin", top + "/sub/in.bin", base + "/out.bin", base + "/share/s.bin", base + "/topside/t.bin"})
            std::ofstream(file) << "x";
        fs::create_symlink("../out.bin", top + "/leaves.bin");
        fs::create_symlink("../share", top + "/leaving");
        fs::create_symlink("in.bin", top + "/stays.bin");
        fs::create_symlink("../nothing", top + "/dangling");
        fs::create_symlink("/nothing/at/all", top + "/loose");
        fs::create_directory_symlink(top, base + "/alias");
    }
    void TearDown() override { fs::remove_all(base); }

    std::optional<Refusal> bytes(const std::string& path) const { return policy.refusal(Use::Bytes, path, top); }
    std::optional<Refusal> document(const std::string& path) const { return policy.refusal(Use::Document, path, top); }

    std::string base;
    std::string top;
    Policy policy;
};

} // namespace

TEST_F(ReferencePolicy, BytesComeFromTheFolderOfTheNamingFileAndBelowInEverySetting)
{
    for (const Rule rule : {Rule::Parts, Rule::Below, Rule::None}) {
        policy.rule = rule;
        policy.top = base;
        for (const char* inside : {"/in.bin", "/sub/in.bin", "/sub/../in.bin", "/./in.bin", "/stays.bin", "/none.bin"})
            EXPECT_EQ(bytes(top + inside), std::nullopt) << inside;
        for (const char* outside : {"/../out.bin", "/sub/../../out.bin", "/leaves.bin", "/leaving/s.bin", "/dangling",
                                    "/loose", "/../topside/t.bin", "/.."})
            EXPECT_EQ(bytes(top + outside), Refusal::BytesOutside) << outside;
        EXPECT_EQ(bytes("/etc/passwd"), Refusal::BytesOutside);
        EXPECT_EQ(bytes(top + std::string("/in.bin\0.x", 10)), Refusal::BytesOutside);
    }
}

TEST_F(ReferencePolicy, DocumentsAreFollowedAnywhereBelowTheTopOrNowhere)
{
    policy.top = top;
    policy.rule = Rule::Parts;
    EXPECT_EQ(document(base + "/out.bin"), std::nullopt);
    policy.rule = Rule::Below;
    EXPECT_EQ(document(top + "/sub/in.bin"), std::nullopt);
    EXPECT_EQ(document(base + "/out.bin"), Refusal::DocumentOutside);
    EXPECT_EQ(document(top + "/leaves.bin"), Refusal::DocumentOutside);
    EXPECT_EQ(policy.refusal(Use::Document, base + "/share/s.bin", base + "/share"), Refusal::DocumentOutside)
        << "the folder of the file that was asked for counts";
    policy.rule = Rule::None;
    EXPECT_EQ(document(top + "/in.bin"), Refusal::NotFollowed);
}

TEST_F(ReferencePolicy, WhatLiesOutsideIsRefusedWhetherItIsThereOrNot)
{
    policy.rule = Rule::Below;
    policy.top = top;
    for (const char* name : {"/out.bin", "/none.bin", "/share/s.bin", "/share/none.bin"})
        EXPECT_EQ(document(base + name), Refusal::DocumentOutside) << name;
    for (const char* name : {"/leaving/s.bin", "/leaving/none.bin", "/leaves.bin"})
        EXPECT_EQ(document(top + name), Refusal::DocumentOutside) << name;
}

TEST_F(ReferencePolicy, AllowedFoldersAreOpenToDocumentsBelowAndToBytes)
{
    policy.rule = Rule::Below;
    policy.top = top;
    policy.folders = {base + "/share/"};
    EXPECT_EQ(document(base + "/share/s.bin"), std::nullopt);
    EXPECT_EQ(bytes(base + "/share/s.bin"), std::nullopt);
    EXPECT_EQ(bytes(top + "/leaving/s.bin"), std::nullopt) << "a link into an allowed folder";
    EXPECT_EQ(bytes(base + "/out.bin"), Refusal::BytesOutside);
    policy.rule = Rule::None;
    EXPECT_EQ(document(base + "/share/s.bin"), Refusal::NotFollowed);
    EXPECT_EQ(bytes(base + "/share/s.bin"), std::nullopt);
}

TEST_F(ReferencePolicy, TheFolderMayBeCalledByALink)
{
    EXPECT_EQ(policy.refusal(Use::Bytes, base + "/alias/in.bin", base + "/alias"), std::nullopt);
    EXPECT_EQ(policy.refusal(Use::Bytes, top + "/in.bin", base + "/alias"), std::nullopt);
    EXPECT_EQ(policy.refusal(Use::Bytes, base + "/alias/leaves.bin", base + "/alias"), Refusal::BytesOutside);
}

TEST(ReferenceWords, EachRuleHasOneAndOthersMeanNothing)
{
    for (const Rule rule : {Rule::Parts, Rule::Below, Rule::None})
        EXPECT_EQ(files::references::ruleOf(files::references::word(rule)), rule);
    EXPECT_EQ(files::references::ruleOf("all"), std::nullopt);
    EXPECT_STREQ(files::references::word(Rule::Below), "below");
}

TEST(ReferenceWords, SentencesNameTheOptionThatAllows)
{
    using files::references::sentence;
    EXPECT_STREQ(sentence(Refusal::BytesOutside),
                 "refused, as it does not lie below the folder of the file that names it; --allow-references DIR "
                 "allows it");
    EXPECT_STREQ(sentence(Refusal::DocumentOutside),
                 "refused, as it does not lie below the folder of the imported file (files.references=below); "
                 "--allow-references DIR allows it");
    EXPECT_STREQ(sentence(Refusal::NotFollowed),
                 "refused, as no references are followed (files.references=none); files.references=parts allows it");
}
