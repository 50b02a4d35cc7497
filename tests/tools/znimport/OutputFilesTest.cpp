#include "tools/znimport/OutputFiles.h"

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

TEST(OutputFiles, WishesThatCannotBeWrittenAreToldBeforeTheImport)
{
    const auto complaint = [](std::initializer_list<const char*> words) {
        return outputComplaint(parse(words).commandLine).value_or(QString());
    };
    EXPECT_EQ(complaint({"a.obj", "-o", "a.glb"}), QString());
    EXPECT_EQ(complaint({"a.obj", "-o", "A.OSB"}), QString());
    EXPECT_EQ(complaint({"a.obj", "-o", "a.fbx"}), QStringLiteral("--output writes .glb and .osb files, not 'a.fbx'"));
    EXPECT_EQ(complaint({"a.obj", "--snapshot", "a.jpg"}), QStringLiteral("--snapshot writes .png files, not 'a.jpg'"));
    EXPECT_EQ(complaint({"a.obj", "-o", "a.glb", "--unit", "in", "--up", "Z"}), QString());
    EXPECT_EQ(complaint({"a.obj", "-o", "a.glb", "--unit", "inch"}),
              QStringLiteral("--unit wants mm, cm, m, in or ft, not 'inch'"));
    EXPECT_EQ(complaint({"a.obj", "-o", "a.glb", "--up", "x"}), QStringLiteral("--up wants y or z, not 'x'"));
    EXPECT_EQ(complaint({"a.obj", "-o", "a.osb", "--unit", "mm"}),
              QStringLiteral("--unit and --up are for .glb files, and --output names none"));
    EXPECT_EQ(complaint({"a.obj", "--up", "z"}),
              QStringLiteral("--unit and --up are for .glb files, and --output names none"));
    EXPECT_EQ(complaint({"a.obj", "-o", "a.glb", "--scale-into-vertices"}), QString());
    EXPECT_EQ(complaint({"a.obj", "--variant-files", "sets", "--scale-into-vertices"}), QString());
    EXPECT_EQ(complaint({"a.obj", "-o", "a.osb", "--scale-into-vertices"}),
              QStringLiteral("--scale-into-vertices is for .glb files, and --output names none"));
    EXPECT_EQ(complaint({"a.obj", "-o", "a.glb", "--web"}), QString());
    EXPECT_EQ(complaint({"a.obj", "-o", "a.osb", "--web"}),
              QStringLiteral("--web is for .glb files, and --output names none"));
    EXPECT_EQ(complaint({"a.obj", "--report", "a.stp"}), QStringLiteral("--report writes .json files, not 'a.stp'"));
    EXPECT_EQ(complaint({"a.obj", "--size", "640"}), QStringLiteral("--size wants WIDTHxHEIGHT in pixels, not '640'"));
    EXPECT_EQ(complaint({"a.obj", "--size", "0x5"}), QStringLiteral("--size wants WIDTHxHEIGHT in pixels, not '0x5'"));
    EXPECT_TRUE(complaint({"a.obj", "--view", "inside"}).contains(QStringLiteral("iso")));
}

TEST(OutputFiles, LooksAndBackgroundsOfPicturesAreToldBeforeTheImport)
{
    const auto complaint = [](std::initializer_list<const char*> words) {
        return outputComplaint(parse(words).commandLine).value_or(QString());
    };
    EXPECT_EQ(complaint({"a.obj", "--snapshot", "a.png", "--look", "Studio", "--background", "#102030"}), QString());
    EXPECT_EQ(complaint({"a.obj", "--snapshot-variants", "sets", "--background", "transparent"}), QString());
    EXPECT_TRUE(complaint({"a.obj", "--snapshot", "a.png", "--look", "shiny"}).contains(QStringLiteral("shiny")));
    EXPECT_TRUE(complaint({"a.obj", "--snapshot", "a.png", "--background", "no/such.png"})
                    .contains(QStringLiteral("--background: ")));
    EXPECT_TRUE(complaint({"a.obj", "--snapshot", "a.png", "--environment", "no/such.hdr"})
                    .contains(QStringLiteral("no/such.hdr")));
    EXPECT_EQ(complaint({"a.obj", "--snapshot", "a.png", "--look", "plain", "--environment", "x.hdr"}),
              QStringLiteral("--environment is for pictures with --look studio"));
    for (const char* option : {"--look", "--background", "--environment"})
        EXPECT_EQ(complaint({"a.obj", option, "plain"}),
                  QStringLiteral("--look, --environment and --background are for pictures, and --snapshot names none"));
}

} // namespace
