// Which road a file takes, by whole imports through the real converter.

#include "importer/ImportRoad.h"

#include "importer/Importer.h"
#include "importer/SceneText.h"
#include "standalone/startup/StandaloneSession.h"
#include "standalone/znUtils/CallTrace.h"
#include "tests/roads/BrepText.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <gmock/gmock.h>

using testing::Contains;
using testing::StartsWith;

namespace
{

class ImportRoadTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_FALSE(session.settings().set(QStringLiteral("converter.program"), QString::fromUtf8(ZN_PTXCONVERT)));
    }

    /// Imports a file of this name that holds a BREP rectangle; notes the calls into the host.
    zn::ImportResult importRectangle(const QString& name)
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(RectangleBrep);
        file.close();
        const zn::CallTrace trace([this](const std::string& call) { calls.push_back(call); });
        zn::Importer importer(session);
        QEventLoop loop;
        zn::ImportResult result;
        QObject::connect(&importer, &zn::Importer::finished, &loop, [&](const zn::ImportResult& end) {
            result = end;
            loop.quit();
        });
        QTimer::singleShot(60000, &loop, &QEventLoop::quit);
        importer.import({file.fileName()});
        loop.exec();
        return result;
    }

    QTemporaryDir folder{QDir::tempPath() + QStringLiteral("/import road äö XXXXXX")};
    zn::StandaloneSession session;
    std::vector<std::string> calls;
};

TEST_F(ImportRoadTest, BothExtensionsOfBrepGoThroughTheConverter)
{
    for (const char* name : {"part.brep", "part.brp", "part.BRP"}) {
        const zn::ImportResult result = importRectangle(QString::fromUtf8(name));
        ASSERT_EQ(result.state, znCADFileTypes::JobSucceeded) << name << ": " << result.error.toStdString();
        EXPECT_EQ(zn::countScene(result.node).triangles, 2u) << name;
    }
}

TEST_F(ImportRoadTest, ABrepTakesTheStepsForConvertedTrees)
{
    for (const char* name : {"part.brep", "part.brp"}) {
        calls.clear();
        const zn::ImportResult result = importRectangle(QString::fromUtf8(name));
        ASSERT_EQ(result.state, znCADFileTypes::JobSucceeded) << name << ": " << result.error.toStdString();
        EXPECT_THAT(calls, Contains(StartsWith("znOptimize::removeNURBS("))) << name;
        EXPECT_THAT(calls, Contains(StartsWith("zndPtxSettings::getUnshareNodes("))) << name;
    }
}

} // namespace
