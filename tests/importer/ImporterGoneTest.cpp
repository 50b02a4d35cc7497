// Importers that go while their imports are under way, in whatever event loop.

#include "importer/Importer.h"
#include "standalone/loading/ReferenceCheck.h"
#include "tests/importer/DocumentReadingFixture.h"
#include "tests/standalone/reading/ReaderChildren.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <functional>
#include <memory>

namespace
{

using readerchildren::hasChildren;
using testing::ElementsAre;
using testing::IsEmpty;

class ImporterGone : public DocumentReadingFixture
{
protected:
    void TearDown() override
    {
        m_importer.reset();
        EXPECT_FALSE(hasChildren());
        DocumentReadingFixture::TearDown();
    }

    QString writeLargeObj(const QString& name) const
    {
        QByteArray text;
        for (int i = 0; i < 300'000; ++i) {
            const QByteArray number = QByteArray::number(i);
            text += "v " + number + " 0 0\nv " + number + ".5 1 0\nv " + number + ".25 0 1.125\nf -1 -2 -3\n";
        }
        return write(name, text);
    }

    /// A document of these part files, in their order.
    QString writeDocument(const QString& name, const QStringList& files) const
    {
        QByteArray refs, elements;
        for (int i = 0; i < files.size(); ++i) {
            const QByteArray n = QByteArray::number(i);
            refs += " i" + n;
            elements += "<Instance id='i" + n + "' partRef='#p" + n + "'/><Part id='p" + n +
                        "'><Representation format='OBJ' location='" + files[i].toUtf8() + "'/></Part>";
        }
        return write(name, "<PLMXML><ProductDef><InstanceGraph rootRefs='top'><Part id='top' instanceRefs='" +
                               refs.mid(1) + "'/>" + elements + "</InstanceGraph></ProductDef></PLMXML>");
    }

    /// Begins an import of `file`, does `what` once a child reads it, and waits until nothing is under way.
    void during(const QString& file, const std::function<void()>& what)
    {
        m_importer = std::make_unique<zn::Importer>(m_session);
        QObject::connect(m_importer.get(), &zn::Importer::finished, [this] { ++m_ends; });
        QTimer look;
        bool isDone = false;
        QObject::connect(&look, &QTimer::timeout, [&] {
            if (isDone || !hasChildren())
                return;
            isDone = true;
            what();
        });
        look.start(5);
        m_importer->import({file});
        waitFor([&] { return isDone && !isUnderWay(); });
        EXPECT_TRUE(isDone) << "nothing was read by a child";
    }

    /// The session knows the file of an import until its end.
    bool isUnderWay() { return !m_session.state<zn::loading::ImportedFile>().path.isEmpty(); }

    static void waitFor(const std::function<bool()>& isReached)
    {
        QElapsedTimer clock;
        clock.start();
        while (!isReached() && clock.elapsed() < 20000)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
        EXPECT_TRUE(isReached());
    }

    void expectNothingLeft()
    {
        EXPECT_EQ(m_ends, 0) << "there is nobody to tell";
        EXPECT_FALSE(hasChildren());
        EXPECT_THAT(childNames(m_session.sceneRoot()), IsEmpty());
        EXPECT_EQ(readFolders(), QStringList());
    }

    /// What comes of an import of `file` by a new importer.
    zn::ImportResult import(const QString& file)
    {
        zn::Importer importer(m_session);
        std::optional<zn::ImportResult> result;
        QObject::connect(&importer, &zn::Importer::finished, [&](const zn::ImportResult& end) { result = end; });
        importer.import({file});
        waitFor([&] { return result.has_value(); });
        return result.value_or(zn::ImportResult());
    }

    std::unique_ptr<zn::Importer> m_importer;
    int m_ends = 0;
};

} // namespace

TEST_F(ImporterGone, WhileAMeshIsRead)
{
    during(writeLargeObj(QStringLiteral("large.obj")), [this] {
        m_importer.reset();
        m_session.setLogSink([this](const char* text) { m_log.emplace_back(text); });
    });
    EXPECT_THAT(m_log, ElementsAre(testing::EndsWith("large.obj: the reading was cancelled")));
    expectNothingLeft();
    EXPECT_EQ(import(writeTriangle(QStringLiteral("next.obj"))).state, znCADFileTypes::JobSucceeded);
}

TEST_F(ImporterGone, WhileADocumentIsRead)
{
    during(writeLarge(500'000), [this] { m_importer.reset(); });
    expectNothingLeft();
    const auto outcome = read(writeLarge(3));
    EXPECT_TRUE(outcome) << "others read on";
}

TEST_F(ImporterGone, WhileAPartOfADocumentIsReadTheOthersAreNotReadAnyMore)
{
    writeLargeObj(QStringLiteral("large.obj"));
    QStringList parts{QStringLiteral("large.obj")};
    for (int i = 0; i < 200; ++i)
        parts << QFileInfo(writeTriangle(QStringLiteral("part%1.obj").arg(i))).fileName();
    QElapsedTimer sinceGone;
    during(writeDocument(QStringLiteral("top.plmxml"), parts), [&] {
        m_importer.reset();
        sinceGone.start();
    });
    EXPECT_LT(sinceGone.elapsed(), 2000);
    expectNothingLeft();
}

TEST_F(ImporterGone, WhileAPartOfADocumentWithinADocumentIsRead)
{
    writeLargeObj(QStringLiteral("large.obj"));
    writeDocument(QStringLiteral("inner.plmxml"), {QStringLiteral("large.obj")});
    const QString top = writeDocument(QStringLiteral("top.plmxml"), {QStringLiteral("inner.plmxml")});
    during(top, [this] { m_importer.reset(); });
    expectNothingLeft();
    EXPECT_EQ(import(writeDocument(QStringLiteral("small.plmxml"),
                                   {QFileInfo(writeTriangle(QStringLiteral("t.obj"))).fileName()}))
                  .state,
              znCADFileTypes::JobSucceeded);
}

TEST_F(ImporterGone, InASlotOnItsProgress)
{
    const QString file = writeTriangle(QStringLiteral("t.obj"));
    m_importer = std::make_unique<zn::Importer>(m_session);
    QObject::connect(m_importer.get(), &zn::Importer::finished, [this] { ++m_ends; });
    QObject::connect(m_importer.get(), &zn::Importer::progressChanged, [this] { m_importer.reset(); });
    m_importer->import({file});
    waitFor([this] { return !m_importer && !isUnderWay(); });
    expectNothingLeft();
}

TEST_F(ImporterGone, InASlotOnItsProgressWithItsTreeInTheScene)
{
    m_importer = std::make_unique<zn::Importer>(m_session);
    QObject::connect(m_importer.get(), &zn::Importer::finished, [this] { ++m_ends; });
    bool wasInScene = false;
    QObject::connect(m_importer.get(), &zn::Importer::progressChanged, [&] {
        wasInScene = m_session.sceneRoot()->getNChildren() > 0;
        if (wasInScene)
            m_importer.reset();
    });
    m_importer->import({writeTriangle(QStringLiteral("t.obj"))});
    waitFor([this] { return !m_importer && !isUnderWay(); });
    EXPECT_TRUE(wasInScene);
    expectNothingLeft();
}

TEST_F(ImporterGone, TheNextOneBeginsAfterItAndKnowsNothingOfIt)
{
    const QString large = writeLargeObj(QStringLiteral("large.obj"));
    const QString next = writeTriangle(QStringLiteral("next.obj"));
    const QString& underWay = m_session.state<zn::loading::ImportedFile>().path;
    QStringList heard;
    std::optional<zn::ImportResult> result;
    during(large, [&] {
        m_importer = std::make_unique<zn::Importer>(m_session);
        QObject::connect(m_importer.get(), &zn::Importer::message, [&](const QString& line) { heard << line; });
        QObject::connect(m_importer.get(), &zn::Importer::progressChanged, [&] { EXPECT_EQ(underWay, next); });
        QObject::connect(m_importer.get(), &zn::Importer::finished, [&](const zn::ImportResult& end) { result = end; });
        m_importer->import({next});
        EXPECT_TRUE(m_importer->isRunning());
        EXPECT_EQ(underWay, large) << "until its jobs have ended";
    });
    waitFor([&] { return result.has_value(); });
    EXPECT_EQ(heard, QStringList(large + QStringLiteral(": the reading was cancelled")));
    EXPECT_EQ(result->state, znCADFileTypes::JobSucceeded) << result->error.toStdString();
    EXPECT_EQ(result->messages, QStringList()) << "what was read before is no matter of this import";
    EXPECT_THAT(childNames(m_session.sceneRoot()), ElementsAre("next"));
}

TEST_F(ImporterGone, TheNextOneMayBeCancelledBeforeItBegins)
{
    const QString next = writeTriangle(QStringLiteral("next.obj"));
    std::optional<zn::ImportResult> result;
    during(writeLargeObj(QStringLiteral("large.obj")), [&] {
        m_importer = std::make_unique<zn::Importer>(m_session);
        QObject::connect(m_importer.get(), &zn::Importer::finished, [&](const zn::ImportResult& end) { result = end; });
        m_importer->import({next});
        m_importer->cancel();
        m_importer->cancel();
    });
    waitFor([&] { return result.has_value(); });
    QCoreApplication::processEvents();
    EXPECT_TRUE(result->cancelled);
    EXPECT_EQ(result->state, znCADFileTypes::JobFailed);
    EXPECT_FALSE(m_importer->isRunning());
    EXPECT_THAT(childNames(m_session.sceneRoot()), IsEmpty());
}

TEST_F(ImporterGone, TheNextOneMayGoBeforeItBegins)
{
    const QString next = writeTriangle(QStringLiteral("next.obj"));
    during(writeLargeObj(QStringLiteral("large.obj")), [&] {
        m_importer = std::make_unique<zn::Importer>(m_session);
        m_importer->import({next});
        m_importer.reset();
    });
    expectNothingLeft();
    EXPECT_EQ(import(next).state, znCADFileTypes::JobSucceeded);
}

/// A program that ends does not come back to its event loop; the fixture looks what is left.
TEST_F(ImporterGone, AndTheSessionAfterIt)
{
    m_importer = std::make_unique<zn::Importer>(m_session);
    m_importer->import({writeTriangle(QStringLiteral("t.obj"))});
    m_importer.reset();
    EXPECT_TRUE(isUnderWay());
}
