#include "standalone/loading/ReferenceCheck.h"

#include "files/scenefile/ConvertedTree.h"
#include "files/scenefile/SceneFile.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "host/znJobProcessing/znOsbLoaderJob.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/SceneEdits.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

#include <gmock/gmock.h>

namespace
{

using References = zn::FileSettings::References;
using files::references::Refusal;
using testing::ElementsAre;
using testing::IsEmpty;

class ReferenceCheck : public SessionTest
{
protected:
    void TearDown() override
    {
        m_tree = osg::NodePtr();
        m_job.reset();
        SessionTest::TearDown();
    }

    static osg::NodePtr reference(const QString& file)
    {
        const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
        const osg::FileReferencePtr source = osg::FileReferenceBase::create();
        source->setPath(file.toStdString());
        core->setSourceFile(source);
        return osg::makeNodeFor(core);
    }

    /// What a converter gives for `top`, with references to `parts`; loaded by the job of the host.
    void load(const QString& top, const QStringList& parts)
    {
        const osg::RefPtr<osg::NodePtr> root(reference(top));
        osg::setTags(root.get(), {osg::scenefile::converted::ConvertedTag});
        for (const QString& part : parts)
            osg::addChild(root.get(), reference(part));
        const QString file = path(QStringLiteral("made.osb"));
        ASSERT_TRUE(osg::scenefile::writeSceneFile(root.get(), file));
        m_job = std::make_unique<znOsbLoaderJob>(file);
        m_job->run();
        QCoreApplication::processEvents();
        m_tree = m_job->getLoadedNode();
        ASSERT_TRUE(m_tree);
    }

    static std::string pathOf(const osg::NodePtr& node)
    {
        const auto core = osg::fcCast<osg::ExtReference>(node->getCore());
        return core && core->getSourceFile() ? core->getSourceFile()->getPath() : "none";
    }

    void import(const QString& file, References rule)
    {
        m_session.state<zn::loading::ImportedFile>().path = file;
        m_session.settings().files.references.set(rule);
    }

    std::unique_ptr<znOsbLoaderJob> m_job;
    osg::NodePtr m_tree;
};

} // namespace

TEST_F(ReferenceCheck, NamesThatTheRequestDidNotAllowAreTakenOutOfASceneFile)
{
    const QString top = path(QStringLiteral("top.stp"));
    import(top, References::Below);
    load(top, {path(QStringLiteral("sub/part.stp")), QStringLiteral("/etc/passwd")});
    EXPECT_EQ(pathOf(m_tree->getChild(0)), path(QStringLiteral("sub/part.stp")).toStdString());
    EXPECT_EQ(pathOf(m_tree->getChild(1)), "");
    EXPECT_EQ(pathOf(m_tree), top.toStdString());
    EXPECT_THAT(osg::tagsOf(m_tree->getChild(0)), IsEmpty());
    EXPECT_THAT(osg::tagsOf(m_tree->getChild(1)),
                ElementsAre("ptx::missing=refused, as it does not lie below the folder of the imported file "
                            "(files.references=below); --allow-references DIR allows it\n/etc/passwd"));
}

TEST_F(ReferenceCheck, WithNoneEachNameIsTakenOutAndWithPartsNone)
{
    const QString top = path(QStringLiteral("top.stp"));
    import(top, References::None);
    load(top, {path(QStringLiteral("part.stp"))});
    EXPECT_EQ(pathOf(m_tree->getChild(0)), "");
    EXPECT_EQ(pathOf(m_tree), top.toStdString()) << "its own name is no reference";
    import(top, References::Parts);
    load(top, {QStringLiteral("/elsewhere/part.stp")});
    EXPECT_EQ(pathOf(m_tree->getChild(0)), "/elsewhere/part.stp");
}

TEST_F(ReferenceCheck, BothFilesOfAReferenceAreLookedAtAndItsTagsStay)
{
    import(path(QStringLiteral("top.stp")), References::Below);
    const osg::RefPtr<osg::NodePtr> root(reference(path(QStringLiteral("top.stp"))));
    const osg::NodePtr part = reference(path(QStringLiteral("part.stp")));
    const osg::FileReferencePtr smart = osg::FileReferenceBase::create();
    smart->setPath("/etc/passwd");
    osg::fcCast<osg::ExtReference>(part->getCore())->setSmartFile(smart);
    osg::setTags(part, {"mine"});
    osg::addChild(root.get(), part);
    zn::loading::dropRefusedReferences(m_session, root.get());
    EXPECT_EQ(smart->getPath(), "/etc/passwd") << "no converter made this tree";
    osg::setTags(root.get(), {osg::scenefile::converted::ConvertedTag});
    zn::loading::dropRefusedReferences(m_session, root.get());
    EXPECT_EQ(smart->getPath(), "");
    EXPECT_EQ(pathOf(part), path(QStringLiteral("part.stp")).toStdString());
    EXPECT_THAT(osg::tagsOf(part), ElementsAre("mine", testing::HasSubstr("/etc/passwd")));
}

TEST_F(ReferenceCheck, WithoutAnImportSceneFilesStayAsTheyAre)
{
    import({}, References::None);
    load(path(QStringLiteral("top.stp")), {QStringLiteral("/elsewhere/part.stp")});
    EXPECT_EQ(pathOf(m_tree->getChild(0)), "/elsewhere/part.stp");
    EXPECT_EQ(zn::loading::refusalOfDocument(m_session, QStringLiteral("/elsewhere/part.stp")), std::nullopt);
}

TEST_F(ReferenceCheck, TheImportedFileAndWhatTheImportMadeItselfMayBeRead)
{
    const QString top = path(QStringLiteral("top.plmxml"));
    import(top, References::None);
    EXPECT_EQ(zn::loading::refusalOfDocument(m_session, top), std::nullopt);
    EXPECT_EQ(zn::loading::refusalOfDocument(m_session, m_session.temporaryFolder() + QStringLiteral("/d/e.plmxml")),
              std::nullopt);
    EXPECT_EQ(zn::loading::refusalOfDocument(m_session, path(QStringLiteral("part.stl"))), Refusal::NotFollowed);
}

TEST_F(ReferenceCheck, RulesWithoutAFolderOfTheirOwnOpenNone)
{
    const files::DocumentRules rules{{files::references::Rule::None, {}}, path(QStringLiteral("top.plmxml")), {}};
    EXPECT_EQ(rules.refusal(path(QStringLiteral("part.stl"))), Refusal::NotFollowed);
}

TEST_F(ReferenceCheck, TheSettingsBecomeThePolicy)
{
    import(path(QStringLiteral("top.stp")), References::Below);
    m_session.settings().files.referenceFolders.set(QStringLiteral("/share/a:/share/b"));
    const files::references::Policy policy = zn::loading::referencePolicy(m_session);
    EXPECT_EQ(policy.rule, files::references::Rule::Below);
    EXPECT_EQ(policy.top, QFileInfo(path(QStringLiteral("top.stp"))).absolutePath().toStdString());
    EXPECT_THAT(policy.folders, ElementsAre("/share/a", "/share/b"));
}
