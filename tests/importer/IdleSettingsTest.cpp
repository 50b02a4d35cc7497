#include "importer/IdleSettings.h"

#include "standalone/session/Settings.h"
#include "tests/support/QtPrinters.h"

#include <gtest/gtest.h>

namespace
{

using importer::Source;

class IdleSettingsTest : public testing::Test
{
protected:
    void set(const char* name, const char* value = "on")
    {
        ASSERT_FALSE(m_settings.set(QString::fromUtf8(name), QString::fromUtf8(value)));
    }
    void setAll()
    {
        for (const char* name :
             {"optimize.mergeMaterials", "optimize.removeEmptyGroups", "optimize.flushTransformations",
              "optimize.mergeGeometries", "optimize.keepNurbs", "optimize.unshareNodes", "optimize.solidKernel"})
            set(name);
        set("optimize.sourceReferences", "keep");
    }
    QString idle(Source source) const
    {
        return importer::idleSettings(source, m_settings.optimize).join(QLatin1Char(' '));
    }

    zn::Settings m_settings;
};

TEST_F(IdleSettingsTest, NothingIsIdleThatIsNotAskedFor)
{
    set("optimize.mergeMaterials", "off");
    for (const Source source : {Source::SceneFile, Source::MeshFile, Source::CadFile, Source::Document})
        EXPECT_EQ(idle(source), QString());
}

TEST_F(IdleSettingsTest, EachRoadHasItsOwn)
{
    setAll();
    EXPECT_EQ(idle(Source::MeshFile),
              QStringLiteral("optimize.removeEmptyGroups optimize.keepNurbs optimize.sourceReferences "
                             "optimize.solidKernel"));
    EXPECT_EQ(idle(Source::CadFile), QStringLiteral("optimize.removeEmptyGroups optimize.mergeGeometries"));
    EXPECT_EQ(idle(Source::Document),
              QStringLiteral("optimize.removeEmptyGroups optimize.flushTransformations optimize.mergeGeometries "
                             "optimize.unshareNodes"));
    EXPECT_EQ(idle(Source::SceneFile),
              QStringLiteral("optimize.removeEmptyGroups optimize.flushTransformations optimize.mergeGeometries "
                             "optimize.unshareNodes optimize.solidKernel"));
}

TEST_F(IdleSettingsTest, GeometriesOfCadFilesAreMergedWithoutTheSolidKernel)
{
    setAll();
    set("optimize.solidKernel", "off");
    EXPECT_EQ(idle(Source::CadFile), QStringLiteral("optimize.removeEmptyGroups"));
}

} // namespace
