#include "host/znKernel/znFileIOHelper.h"
#include "host/znKernel/znPtxHelper.h"
#include "tests/standalone/session/SessionTest.h"

namespace
{

class TessellationPresetTest : public SessionTest
{
protected:
    zndPtxSettings imported(const char* preset)
    {
        for (const auto& [name, value] : {std::pair("preset", preset), std::pair("chordDeviation", "0.33"),
                                          std::pair("normalTolerance", "21"), std::pair("maxChordLength", "77")})
            EXPECT_EQ(m_session.settings().set(QStringLiteral("tessellation.") + QString::fromLatin1(name),
                                               QString::fromLatin1(value)),
                      std::nullopt);
        return znFileIOHelper::getImportSettingsByFileName(QStringLiteral("part.stp"), false);
    }
};

TEST_F(TessellationPresetTest, EachNameStandsForNumbers)
{
    EXPECT_DOUBLE_EQ(imported("coarse").getChordDeviation(), 0.5);
    EXPECT_DOUBLE_EQ(imported("coarse").getNormalTolerance(), 30);
    EXPECT_DOUBLE_EQ(imported("medium").getChordDeviation(), 0.1);
    EXPECT_DOUBLE_EQ(imported("medium").getNormalTolerance(), 15);
    EXPECT_DOUBLE_EQ(imported("fine").getChordDeviation(), 0.02);
    EXPECT_DOUBLE_EQ(imported("fine").getNormalTolerance(), 7.5);
    EXPECT_DOUBLE_EQ(imported("fine").getMaxChordLength(), 0);
}

TEST_F(TessellationPresetTest, CustomTakesTheSettingsOfTheirOwn)
{
    EXPECT_DOUBLE_EQ(imported("custom").getChordDeviation(), 0.33);
    EXPECT_DOUBLE_EQ(imported("custom").getNormalTolerance(), 21);
    EXPECT_DOUBLE_EQ(imported("custom").getMaxChordLength(), 77);
}

TEST_F(TessellationPresetTest, TheConverterIsToldToKeepSurfacesThatAreNeededLater)
{
    const auto isTold = [&](const char* merge, const char* keep, const char* solid) {
        for (const auto& [name, value] :
             {std::pair("mergeGeometries", merge), std::pair("keepNurbs", keep), std::pair("solidKernel", solid)})
            EXPECT_EQ(m_session.settings().set(QStringLiteral("optimize.") + QString::fromLatin1(name),
                                               QString::fromLatin1(value)),
                      std::nullopt);
        const std::string command = znPtxHelper::createProcessCommand("/a/part.stp", false, "/out").first;
        return command.find("\"--set\" \"keep-brep=1\" \"/a/part.stp\"") != command.npos;
    };
    EXPECT_TRUE(isTold("on", "off", "off"));
    EXPECT_TRUE(isTold("off", "on", "off"));
    EXPECT_TRUE(isTold("off", "on", "on"));
    EXPECT_FALSE(isTold("on", "off", "on"));
    EXPECT_FALSE(isTold("off", "off", "off"));
}

TEST_F(TessellationPresetTest, TheHelpTellsTheNumbers)
{
    EXPECT_TRUE(m_session.settings().helpText().contains(
        QStringLiteral("coarse 0.5 mm, 30 degrees; medium 0.1 mm, 15 degrees; fine 0.02 mm, 7.5 degrees")));
}

} // namespace
