// The tool on assemblies whose parts the scripted child converts.

#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>

namespace
{

class ZnimportAssemblyTest : public testing::Test
{
protected:
    ZnimportAssemblyTest() { EXPECT_TRUE(QDir().mkpath(path(QStringLiteral("converted")))); }

    QString path(const QString& name) const { return m_folder.filePath(name); }

    void write(const QString& name, const QByteArray& content) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    osg::NodePtr reference(const char* name, const QString& file) const
    {
        const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
        const osg::FileReferencePtr source = osg::FileReferenceBase::create();
        source->setPath(path(file).toStdString());
        core->setSourceFile(source);
        const osg::NodePtr node = osg::makeNodeFor(core);
        osg::setName(node, name);
        return node;
    }

    /// A CAD file whose conversion does what `script` says and then gives the tree at `root`.
    void writeCad(const QString& name, const osg::NodePtr& root, const QByteArray& script = {}) const
    {
        const QString made = path(name) + QStringLiteral(".osb");
        EXPECT_TRUE(osg::scenefile::writeSceneFile(root, made));
        write(name, script + "\noutput-from \"" + made.toUtf8() + "\"\n");
    }
    /// A part with one node below its root.
    void writePart(const QString& name, const char* node, const QByteArray& script = {}) const
    {
        const osg::RefPtr<osg::NodePtr> root(reference("part", name));
        root->addChild(osg::makeNodeFor(osg::Group::create()));
        osg::setName(root->getChild(0), node);
        writeCad(name, root.get(), script);
    }
    void writeEngine(const std::vector<QString>& parts) const
    {
        const osg::RefPtr<osg::NodePtr> root(reference("engine", QStringLiteral("engine.stp")));
        for (const QString& part : parts)
            root->addChild(reference("place", part));
        writeCad(QStringLiteral("engine.stp"), root.get());
    }

    QStringList arguments(const QStringList& more) const
    {
        return QStringList{path(QStringLiteral("engine.stp")),
                           QStringLiteral("-j"),
                           QStringLiteral("2"),
                           QStringLiteral("--set"),
                           QStringLiteral("converter.program=") + QString::fromUtf8(ZN_SCRIPTED_CHILD),
                           QStringLiteral("--set"),
                           QStringLiteral("files.temporaryFolder=") + path(QStringLiteral("converted"))} +
               more;
    }
    QStringList convertedFiles() const
    {
        return QDir(path(QStringLiteral("converted"))).entryList(QDir::Files | QDir::Hidden);
    }

    QTemporaryDir m_folder{QDir::tempPath() + QStringLiteral("/znimport assembly äö XXXXXX")};
    QProcess m_process;
};

TEST_F(ZnimportAssemblyTest, ACompleteAssemblyEndsWithZeroAndOneLineForItsParts)
{
    writePart(QStringLiteral("bolt.stp"), "head");
    writePart(QStringLiteral("nut.stp"), "ring");
    writeEngine({QStringLiteral("bolt.stp"), QStringLiteral("nut.stp")});
    m_process.start(QString::fromUtf8(ZNIMPORT), arguments({QStringLiteral("--tree")}));
    ASSERT_TRUE(m_process.waitForFinished(60000));
    const QString errors = QString::fromUtf8(m_process.readAllStandardError());
    const QString tree = QString::fromUtf8(m_process.readAllStandardOutput());
    EXPECT_EQ(m_process.exitCode(), 0) << errors.toStdString();
    EXPECT_TRUE(errors.contains(QStringLiteral("engine.stp: 2 of 2 parts done, 0 running, 0 failed\n")))
        << errors.toStdString();
    EXPECT_EQ(errors.count(QStringLiteral("parts done")), 1) << errors.toStdString();
    EXPECT_TRUE(tree.contains(QStringLiteral("\n    head [Group]\n"))) << tree.toStdString();
    EXPECT_TRUE(tree.contains(QStringLiteral("\n    ring [Group]\n"))) << tree.toStdString();
    EXPECT_EQ(convertedFiles(), QStringList());
}

TEST_F(ZnimportAssemblyTest, AMissingPartEndsWithThreeAndIsNamedWithItsReason)
{
    writePart(QStringLiteral("bolt.stp"), "head");
    write(QStringLiteral("nut.stp"), "log \"Error: the moon is full\"\nexit 7\n");
    writeEngine({QStringLiteral("bolt.stp"), QStringLiteral("nut.stp")});
    m_process.start(QString::fromUtf8(ZNIMPORT), arguments({QStringLiteral("--tree")}));
    ASSERT_TRUE(m_process.waitForFinished(60000));
    const QString errors = QString::fromUtf8(m_process.readAllStandardError());
    EXPECT_EQ(m_process.exitCode(), 3) << errors.toStdString();
    EXPECT_TRUE(errors.contains(QStringLiteral("missing: ") + path(QStringLiteral("nut.stp")) +
                                QStringLiteral(": The file is damaged. the moon is full")))
        << errors.toStdString();
    EXPECT_TRUE(m_process.readAllStandardOutput().contains("head [Group]"));
}

TEST_F(ZnimportAssemblyTest, CtrlCEndsAllPartsAndLeavesNoChildAndNoFile)
{
    QByteArray note = "append \"" + path(QStringLiteral("ids")).toUtf8() + "\" x\n";
    std::vector<QString> parts;
    for (int i = 0; i < 6; ++i) {
        parts.push_back(QStringLiteral("part %1.stp").arg(i));
        const QByteArray id = "pid \"" + path(QStringLiteral("id %1").arg(i)).toUtf8() + "\"\n";
        writePart(parts.back(), "head", id + note + "progress 5 Merge\nwait 600000\n");
    }
    writeEngine(parts);
    const QString glb = path(QStringLiteral("out.glb"));
    m_process.start(QString::fromUtf8(ZNIMPORT), arguments({QStringLiteral("-o"), glb}));
    ASSERT_TRUE(m_process.waitForStarted());
    for (int tries = 0; tries < 600 && QFile(path(QStringLiteral("ids"))).size() < 4; ++tries)
        m_process.waitForReadyRead(50);
    ASSERT_EQ(QFile(path(QStringLiteral("ids"))).size(), 4);

    ASSERT_EQ(kill(static_cast<pid_t>(m_process.processId()), SIGINT), 0);
    ASSERT_TRUE(m_process.waitForFinished(30000));
    EXPECT_EQ(m_process.exitCode(), 130);
    EXPECT_FALSE(QFile::exists(glb));
    EXPECT_EQ(convertedFiles(), QStringList());
    int started = 0;
    for (int i = 0; i < 6; ++i) {
        QFile id(path(QStringLiteral("id %1").arg(i)));
        if (!id.open(QIODevice::ReadOnly))
            continue;
        ++started;
        EXPECT_NE(kill(id.readAll().trimmed().toInt(), 0), 0);
    }
    EXPECT_EQ(started, 2);
}

} // namespace
