#include "tools/znimport/CommandLine.h"

#include <gtest/gtest.h>

using namespace znimport;

namespace
{

CommandLineResult parse(std::initializer_list<const char*> words)
{
    QStringList arguments;
    for (const char* word : words)
        arguments.append(QString::fromUtf8(word));
    return parseCommandLine(arguments);
}

TEST(CommandLine, FilesAndOptionsMayStandInAnyOrder)
{
    const auto [line, error] = parse({"a.obj", "-o", "out ä.glb", "b.stp", "--tree", "--set", "mesh.unit=25.4"});
    ASSERT_FALSE(error);
    EXPECT_EQ(line.files, QStringList({QStringLiteral("a.obj"), QStringLiteral("b.stp")}));
    EXPECT_EQ(line.outputFile, QString::fromUtf8("out ä.glb"));
    EXPECT_TRUE(line.tree);
    ASSERT_EQ(line.settings.size(), 1u);
    EXPECT_EQ(line.settings[0].first, QStringLiteral("mesh.unit"));
    EXPECT_EQ(line.settings[0].second, QStringLiteral("25.4"));
}

TEST(CommandLine, ASettingIsSplitAtItsFirstEqualsSign)
{
    const auto [line, error] = parse({"a.obj", "--set", "converter.options=a=1 b=2"});
    ASSERT_FALSE(error);
    EXPECT_EQ(line.settings[0].second, QStringLiteral("a=1 b=2"));
}

TEST(CommandLine, TheStructureAloneIsATreeWithoutPartFiles)
{
    const auto [line, error] =
        parse({"none.plmxml", "--tree-only", "--prefer", "step,jt", "--keep-normalised", "k.plmxml"});
    ASSERT_FALSE(error);
    EXPECT_TRUE(line.tree);
    EXPECT_TRUE(line.treeOnly);
    ASSERT_EQ(line.settings.size(), 1u);
    EXPECT_EQ(line.settings[0].first, QStringLiteral("import.PLMXML.referencedFiles"));
    EXPECT_EQ(line.settings[0].second, QStringLiteral("off"));
    EXPECT_EQ(line.preferred, (QStringList{QStringLiteral("step"), QStringLiteral("jt")}));
    EXPECT_EQ(line.keptDocument, QStringLiteral("k.plmxml"));
}

TEST(CommandLine, OnlyProductStructuresHaveAStructure)
{
    EXPECT_EQ(parse({"/dev/null", "--tree-only"}).error,
              QStringLiteral("--tree-only wants PLMXML documents, and /dev/null is none"));
}

TEST(CommandLine, AClusterIsAskedForNodesAndAPartition)
{
    const auto [line, error] = parse({"a.stp", "--cluster", "slurm", "--nodes", "12", "--partition", "night"});
    ASSERT_FALSE(error);
    EXPECT_EQ(line.cluster, QStringLiteral("slurm"));
    EXPECT_EQ(line.clusterNodes, 12);
    EXPECT_EQ(line.partition, QStringLiteral("night"));
}

TEST(CommandLine, WrongWishesOfAClusterAreRefused)
{
    EXPECT_EQ(parse({"a.stp", "--cluster", "pbs"}).error, QStringLiteral("--cluster wants slurm, not 'pbs'"));
    EXPECT_EQ(parse({"a.stp", "--nodes", "2"}).error, QStringLiteral("--nodes and --partition want --cluster slurm"));
    EXPECT_EQ(parse({"a.stp", "--cluster", "slurm", "--nodes", "0"}).error,
              QStringLiteral("--nodes wants a number from 1 to 100000, not '0'"));
}

TEST(CommandLine, JobsIsTheLimitOfProcesses)
{
    const auto [line, error] = parse({"a.stp", "-j", "3"});
    ASSERT_FALSE(error);
    EXPECT_EQ(line.jobs, QStringLiteral("3"));
}

TEST(CommandLine, AVariantSetMayBeNamedAndAllListed)
{
    const auto [line, error] = parse({"a.osb", "--variant", "Open Röof", "--variants", "--view", "top"});
    ASSERT_FALSE(error);
    EXPECT_EQ(line.variant, QString::fromUtf8("Open Röof"));
    EXPECT_TRUE(line.variants);
    EXPECT_TRUE(line.isViewGiven);
    const CommandLine plain = parse({"a.osb"}).commandLine;
    EXPECT_FALSE(plain.variant);
    EXPECT_FALSE(plain.variants);
    EXPECT_FALSE(plain.isViewGiven);
}

TEST(CommandLine, WrongUseIsToldInASentence)
{
    EXPECT_EQ(*parse({}).error, QStringLiteral("no file to import"));
    EXPECT_EQ(*parse({"a.obj", "--set", "unit"}).error, QStringLiteral("--set wants name=value, not 'unit'"));
    EXPECT_TRUE(parse({"a.obj", "--nonsense"}).error);
    EXPECT_TRUE(parse({"a.obj", "-o"}).error);
}

TEST(CommandLine, ABatchHandsItsOptionsOn)
{
    const auto [line, error] = parse({"--batch", "/", "-o", "/tmp", "--unit", "mm", "--set", "a=b", "--set", "c=d",
                                      "--scale-into-vertices", "--web"});
    ASSERT_FALSE(error) << error->toStdString();
    EXPECT_EQ(line.batchOptions,
              QStringList({QStringLiteral("--unit=mm"), QStringLiteral("--scale-into-vertices"),
                           QStringLiteral("--web"), QStringLiteral("--set=a=b"), QStringLiteral("--set=c=d")}));
}

TEST(CommandLine, WhatDoesNotGoWithABatchIsRefused)
{
    EXPECT_EQ(parse({"--batch", "/none", "-o", "x"}).error,
              QStringLiteral("--batch wants a folder, and there is none at '/none'"));
    EXPECT_EQ(parse({"--batch", "/"}).error,
              QStringLiteral("--batch wants a folder for its GLB files: --output FOLDER"));
    EXPECT_EQ(parse({"--batch", "/", "-o", "/dev/null"}).error,
              QStringLiteral("--batch wants a folder for its GLB files: --output FOLDER"));
    EXPECT_EQ(parse({"--batch", "/", "-o", "/tmp", "a.stp"}).error,
              QStringLiteral("--batch imports a folder, and a.stp is named beside it"));
    EXPECT_EQ(parse({"--batch", "/", "-o", "/tmp", "--report", "r.json"}).error,
              QStringLiteral("--report does not go with --batch"));
    EXPECT_EQ(parse({"--batch", "/", "-o", "/tmp", "-j", "many"}).error,
              QStringLiteral("--jobs wants a number from 1 on with --batch, not 'many'"));
}

TEST(CommandLine, QuestionsNeedNoFile)
{
    EXPECT_FALSE(parse({"--help"}).error);
    EXPECT_FALSE(parse({"--version"}).error);
    EXPECT_FALSE(parse({"--help-settings"}).error);
}

TEST(CommandLine, TheHelpShowsEveryOption)
{
    const QString help = helpText();
    for (const OptionRow& row : optionTable())
        EXPECT_TRUE(help.contains(QStringLiteral("--") + QString::fromUtf8(row.name))) << row.name;
    EXPECT_TRUE(help.startsWith(QStringLiteral("Usage: znimport [options] FILE...")));
}

} // namespace
