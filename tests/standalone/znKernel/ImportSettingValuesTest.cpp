#include "standalone/znKernel/ImportSettingValues.h"

#include "host/znKernel/znFileIOHelper.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

namespace
{

class ImportSettingValuesTest : public SessionTest
{
protected:
    void set(const char* name, const char* value)
    {
        EXPECT_FALSE(m_session.settings().set(QString::fromLatin1(name), QString::fromLatin1(value))) << name;
    }
    static zndPtxSettings ptx() { return znFileIOHelper::getImportSettingsByFileName(QStringLiteral("a.stp"), false); }
};

TEST_F(ImportSettingValuesTest, SwitchesOfATreeFollowTheirRows)
{
    const std::pair<const char*, bool (zndPtxSettings::*)() const> rows[] = {
        {"optimize.mergeMaterials", &zndPtxSettings::getMergeSubReferenceMaterials},
        {"optimize.removeEmptyGroups", &zndPtxSettings::getRemoveEmptyGroups},
        {"optimize.flushTransformations", &zndPtxSettings::getFlushTransformations},
        {"optimize.mergeGeometries", &zndPtxSettings::getMergeGeometries},
        {"optimize.keepNurbs", &zndPtxSettings::getKeepNurbs},
        {"optimize.unshareNodes", &zndPtxSettings::getUnshareNodes},
        {"tessellation.useStitching", &zndPtxSettings::getUseStitching},
    };
    for (const auto& [name, getter] : rows) {
        const bool before = (ptx().*getter)();
        set(name, before ? "off" : "on");
        EXPECT_EQ((ptx().*getter)(), !before) << name;
    }
}

TEST_F(ImportSettingValuesTest, NumbersOfATreeFollowTheirRows)
{
    set("tessellation.stitchingTolerance", "0.25");
    set("tessellation.chordDeviation", "0.5");
    set("tessellation.normalTolerance", "7.5");
    set("tessellation.maxChordLength", "120");
    EXPECT_EQ(ptx().getStitchingTolerance(), 0.25);
    EXPECT_EQ(ptx().getChordDeviation(), 0.5);
    EXPECT_EQ(ptx().getNormalTolerance(), 7.5);
    EXPECT_EQ(ptx().getMaxChordLength(), 120.0);
}

TEST_F(ImportSettingValuesTest, ReferencesAreDissolvedUnlessKept)
{
    EXPECT_EQ(int(ptx().getSourceReferenceBehavior()), 0);
    set("optimize.sourceReferences", "keep");
    EXPECT_EQ(int(ptx().getSourceReferenceBehavior()), 1);
}

TEST_F(ImportSettingValuesTest, SettingsOfEveryImportFollowTheirRows)
{
    const std::pair<const char*, bool (zndSceneImportSettings::*)() const> rows[] = {
        {"scene.applyMaterialAssets", &zndSceneImportSettings::getApplyMaterialsFromAssetManager},
        {"scene.centerInOrigin", &zndSceneImportSettings::getCenterInOrigin},
        {"scene.putOnGround", &zndSceneImportSettings::getPutOnGround},
    };
    for (const auto& [name, getter] : rows) {
        EXPECT_FALSE((znFileIOHelper::getGlobalSceneImportSettings().*getter)()) << name;
        set(name, "on");
        EXPECT_TRUE((znFileIOHelper::getGlobalSceneImportSettings().*getter)()) << name;
    }
}

TEST_F(ImportSettingValuesTest, AValueDoesNotFollowLaterChanges)
{
    const zndPtxSettings before = ptx();
    set("optimize.keepNurbs", "on");
    EXPECT_FALSE(before.getKeepNurbs());
    zndPtxSettings copy = before;
    copy = ptx();
    EXPECT_TRUE(copy.getKeepNurbs());
}

} // namespace
