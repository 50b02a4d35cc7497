#include "tools/znimport/ChosenSettings.h"

#include "standalone/session/Settings.h"
#include "tests/support/QtPrinters.h"
#include "tools/znimport/CommandLine.h"

#include <gtest/gtest.h>

#include <tuple>

namespace
{

TEST(ChosenSettings, OptionsAndAssignmentsAreSet)
{
    znimport::CommandLine line;
    line.jobs = QStringLiteral("3");
    line.assetFolder = QString::fromUtf8("/Möbel");
    line.settings = {{QStringLiteral("mesh.unit"), QStringLiteral("25.4")}};
    zn::Settings settings;
    EXPECT_EQ(znimport::applySettings(line, settings), std::nullopt);
    EXPECT_EQ(settings.processes.most.value(), 3);
    EXPECT_EQ(settings.assets.folder.value(), QString::fromUtf8("/Möbel"));
    EXPECT_TRUE(settings.scene.applyMaterialAssets);
    EXPECT_EQ(settings.mesh.unit.value(), 25.4);
}

TEST(ChosenSettings, FoldersThatFilesMayNameAreSetTogether)
{
    znimport::CommandLine line;
    line.referenceFolders = QStringList{QStringLiteral("/usr"), QStringLiteral("/etc")};
    zn::Settings settings;
    EXPECT_EQ(znimport::applySettings(line, settings), std::nullopt);
    EXPECT_EQ(settings.files.referenceFolders.value(), QStringLiteral("/usr:/etc"));
    line.referenceFolders = QStringList{QStringLiteral("/no such folder")};
    EXPECT_EQ(znimport::applySettings(line, settings),
              QStringLiteral("--allow-references wants a folder without a colon in its name, and '/no such folder' is "
                             "none"));
}

TEST(ChosenSettings, TextureCoordinatesOfBothKindsAreChosenTogether)
{
    using Box = zn::MeshSettings::Uv;
    using Surface = zn::ConvertSettings::Uv;
    const std::tuple<const char*, Box, Surface> kinds[] = {{"auto", Box::Auto, Surface::None},
                                                           {"box", Box::Box, Surface::None},
                                                           {"surface", Box::Auto, Surface::Surface},
                                                           {"none", Box::None, Surface::None}};
    zn::Settings settings;
    EXPECT_EQ(settings.mesh.uv.value(), Box::Auto);
    EXPECT_EQ(settings.convert.uv.value(), Surface::None);
    znimport::CommandLine line;
    for (const auto& [kind, box, surface] : kinds) {
        line.uv = QString::fromUtf8(kind);
        EXPECT_EQ(znimport::applySettings(line, settings), std::nullopt);
        EXPECT_EQ(settings.mesh.uv.value(), box) << kind;
        EXPECT_EQ(settings.convert.uv.value(), surface) << kind;
    }
    line.uv = QStringLiteral("sphere");
    EXPECT_EQ(znimport::applySettings(line, settings),
              QStringLiteral("--uv wants auto, box, surface or none, not 'sphere'"));
}

TEST(ChosenSettings, AnAssignmentWinsOverAnOption)
{
    znimport::CommandLine line;
    line.jobs = QStringLiteral("3");
    line.settings = {{QStringLiteral("processes.most"), QStringLiteral("5")}};
    zn::Settings settings;
    EXPECT_EQ(znimport::applySettings(line, settings), std::nullopt);
    EXPECT_EQ(settings.processes.most.value(), 5);
}

TEST(ChosenSettings, AFolderThatTakesNoFilesIsTold)
{
    znimport::CommandLine line;
    zn::Settings settings;
    line.settings = {{QStringLiteral("files.temporaryFolder"), QStringLiteral("/dev/null")}};
    EXPECT_EQ(znimport::applySettings(line, settings),
              QStringLiteral("files.temporaryFolder: /dev/null is no folder that takes files"));
    line.settings = {{QStringLiteral("files.temporaryFolder"), QStringLiteral("/")}};
    EXPECT_EQ(znimport::applySettings(line, settings), std::nullopt);
}

TEST(ChosenSettings, TheFirstThatIsWrongIsTold)
{
    znimport::CommandLine line;
    line.jobs = QStringLiteral("many");
    line.settings = {{QStringLiteral("mesh.unti"), QStringLiteral("2")}};
    zn::Settings settings;
    EXPECT_EQ(znimport::applySettings(line, settings),
              QStringLiteral("setting 'processes.most' wants a whole number from 0 to 1024, not 'many'"));
}

} // namespace
