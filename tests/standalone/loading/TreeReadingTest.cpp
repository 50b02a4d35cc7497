#include "standalone/loading/TreeReading.h"

#include "files/ReadTask.h"
#include "files/SceneBuilding.h"
#include "files/SceneReaders.h"
#include "scene/VariantTable.h"
#include "standalone/loading/ReferenceCheck.h"
#include "standalone/znVariants/SessionVariants.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

#include <gmock/gmock.h>

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using zn::MeshSettings;
using zn::loading::readTree;

/// Files with the extension "probe" are read by a function of the test, which sees what was asked for.
class TreeReading : public SessionTest
{
protected:
    void SetUp() override
    {
        readBy([](files::ReadTask&) { return files::makeGroup({}); });
        m_session.state<files::SceneReaders>().add(
            {QStringLiteral("Probe"), {QStringLiteral("probe")}, [this](files::ReadTask& task) {
                 m_asked = task.options();
                 return m_read(task);
             }});
    }

    void readBy(files::ReadFunction read) { m_read = std::move(read); }

    osg::RefPtr<osg::NodePtr> read(const QString& file)
    {
        const std::optional<osg::NodePtr> root = readTree(m_session, file);
        EXPECT_TRUE(root) << "the read failed";
        return osg::RefPtr<osg::NodePtr>(root.value_or(osg::NodePtr()));
    }

    /// What a reader is asked for with the settings as they are.
    const files::ReadOptions& asked()
    {
        m_asked.reset();
        read(probe());
        if (!m_asked)
            throw std::logic_error("the reader was not called");
        return *m_asked;
    }

    QString probe() const { return write(QStringLiteral("a.probe"), "x"); }

private:
    files::ReadFunction m_read;
    std::optional<files::ReadOptions> m_asked;
};

} // namespace

TEST_F(TreeReading, TheReadersOfTheSessionReadTheFile)
{
    readBy([](files::ReadTask& task) {
        return files::makeGroup("of " + QFileInfo(task.path()).fileName().toStdString());
    });
    const osg::RefPtr<osg::NodePtr> root = read(write(QString::fromUtf8("Träger 支架.probe"), "x"));
    ASSERT_TRUE(root.get());
    EXPECT_EQ(nameOf(root.get()), "Träger 支架") << "it is the root that the table gives";
    EXPECT_FALSE(root.get()->getParent());
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(TreeReading, WithoutSettingsFilesAreReadAsTheyAre)
{
    const files::ReadOptions& options = asked();
    EXPECT_EQ(options.upAxis, files::UpAxis::Z);
    EXPECT_EQ(options.millimetresPerUnit, 1);
    EXPECT_FALSE(options.vrmlInMetres);
    EXPECT_EQ(options.level, 0);
    EXPECT_FALSE(options.mapsFile);
}

TEST_F(TreeReading, TheSettingsOfMeshesBecomeOptions)
{
    MeshSettings& mesh = m_session.settings().mesh;
    mesh.up.set(MeshSettings::Axis::Y);
    mesh.unit.set(25.4);
    mesh.wrlInMetres.set(true);
    mesh.level.set(2);
    const files::ReadOptions& options = asked();
    EXPECT_EQ(options.upAxis, files::UpAxis::Y);
    EXPECT_EQ(options.millimetresPerUnit, 25.4);
    EXPECT_TRUE(options.vrmlInMetres);
    EXPECT_EQ(options.level, 2);
}

TEST_F(TreeReading, TheMemoryOfAReadIsThatOfTheSettings)
{
    m_session.settings().read.memory.set(6000);
    EXPECT_EQ(asked().limits.maxMemory, std::uint64_t(6000) << 20);
}

TEST_F(TreeReading, TheRuleOfTheRunningImportHoldsForTheNamesInTheFile)
{
    m_session.state<zn::loading::ImportedFile>().path = path(QStringLiteral("top.stp"));
    m_session.settings().files.references.set(zn::FileSettings::References::Below);
    EXPECT_EQ(asked().references.rule, files::references::Rule::Below);
    EXPECT_EQ(asked().references.top, QFileInfo(path(QStringLiteral("top.stp"))).absolutePath().toStdString());
}

TEST_F(TreeReading, AFileIsMappedWhenTheSettingSaysSo)
{
    m_session.settings().files.map.set(zn::FileSettings::MappedFiles::All);
    EXPECT_TRUE(asked().mapsFile);
}

TEST_F(TreeReading, AFileThatTheImportMayNotReadIsNotOpened)
{
    m_session.state<zn::loading::ImportedFile>().path = path(QStringLiteral("top.stp"));
    m_session.settings().files.references.set(zn::FileSettings::References::None);
    bool isRead = false;
    readBy([&isRead](files::ReadTask&) {
        isRead = true;
        return files::makeGroup({});
    });
    const QString file = probe();
    EXPECT_EQ(readTree(m_session, file), std::nullopt);
    EXPECT_FALSE(isRead);
    EXPECT_THAT(m_log, ElementsAre(HasSubstr(file.toStdString() + ": " +
                                             files::textOf(files::references::Refusal::NotFollowed).toStdString())));
}

TEST_F(TreeReading, AFailureIsToldBehindTheWarnings)
{
    readBy([](files::ReadTask& task) -> osg::NodePtr {
        task.warn(QStringLiteral("a face is missing"), QStringLiteral("line 3"));
        task.fail(files::ErrorCode::Damaged, QStringLiteral("the rest is torn off"), QStringLiteral("line 4"));
    });
    const QString file = probe();
    EXPECT_EQ(readTree(m_session, file), std::nullopt);
    EXPECT_THAT(m_log, ElementsAre(HasSubstr(file.toStdString() + ": a face is missing (line 3)"),
                                   HasSubstr(file.toStdString() + ": the rest is torn off (line 4)")));
}

TEST_F(TreeReading, WarningsOfAReadThatWentWellAreToldAsWell)
{
    readBy([](files::ReadTask& task) {
        task.warn(QStringLiteral("a face is missing"));
        return files::makeGroup({});
    });
    read(probe());
    EXPECT_THAT(m_log, ElementsAre(HasSubstr("a.probe: a face is missing")));
}

TEST_F(TreeReading, NoTreeIsNoFailureWhereTheReaderFindsNoFault)
{
    readBy([](files::ReadTask&) { return osg::NodePtr(); });
    const std::optional<osg::NodePtr> root = readTree(m_session, probe());
    ASSERT_TRUE(root);
    EXPECT_FALSE(*root);
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(TreeReading, VariantsOfAFileGoOverToTheSessionAndWhatDoesNotFitIsToldWithTheFile)
{
    readBy([](files::ReadTask&) {
        const osg::NodePtr root = files::makeGroup({});
        osg::VariantTable table;
        table.sets = {{"S", "", "", {}, {{"Paint", "x"}}, {}}};
        root->addAttachment(osg::VariantAttachment::create(table));
        return root;
    });
    const QString file = probe();
    const osg::RefPtr<osg::NodePtr> root = read(file);
    EXPECT_FALSE(osg::VariantAttachment::of(root.get()));
    EXPECT_EQ(zn::variants::sessionVariants().sets().size(), 1u);
    EXPECT_THAT(m_log, ElementsAre(HasSubstr(file.toStdString() +
                                             ": the variant set 'S' names a material 'Paint' that is not there")));
}
