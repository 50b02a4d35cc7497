// Which road a file takes, by whole imports through the real converter.

#include "importer/ImportRoad.h"

#include "importer/Importer.h"
#include "importer/SceneText.h"
#include "standalone/startup/StandaloneSession.h"
#include "standalone/znUtils/CallTrace.h"
#include "tests/roads/BrepText.h"
#include "tests/support/StepText.h"

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

    /// Imports a file of this name that holds a BREP rectangle.
    zn::ImportResult importRectangle(const QString& name) { return importText(name, RectangleBrep); }

    /// Imports a file of this name and content; notes the calls into the host.
    zn::ImportResult importText(const QString& name, const QByteArray& content)
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
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

TEST_F(ImportRoadTest, WhatAStepFileLostByABrokenEntityIsMissingAtItsPlace)
{
    ptxtest::StepText step;
    const ptxtest::StepProduct top = step.product("top");
    ptxtest::StepProduct box = step.product("box");
    step.box(box, {0, 0, 0}, {1, 2, 3});
    step.place(top, box, "use", {5, 6, 7});
    QByteArray text = QByteArray::fromStdString(step.text());
    const int plane = text.indexOf("PLANE('',") + 9;
    text.replace(plane, text.indexOf(')', plane) - plane, "$");
    const int line = 1 + text.left(plane).count('\n');
    const zn::ImportResult result = importText(QStringLiteral("broken.stp"), text);
    EXPECT_EQ(result.state, znCADFileTypes::JobPartial) << result.error.toStdString();
    EXPECT_EQ(zn::countScene(result.node).triangles, 10u);
    ASSERT_EQ(result.missing.size(), 1u);
    EXPECT_EQ(result.missing[0].file, folder.filePath(QStringLiteral("broken.stp")));
    EXPECT_TRUE(result.missing[0].reason.contains(QStringLiteral(" PLANE in line %1: ").arg(line)))
        << result.missing[0].reason.toStdString();
    EXPECT_EQ(result.missing[0].instances, QStringList{QStringLiteral("top/use")});
}

} // namespace
