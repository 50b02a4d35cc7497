// Product structures in a process of their own as in this one.

#include "tests/importer/DocumentReadingFixture.h"
#include "tests/importer/plmxml/SameDocument.h"

#include <QDirIterator>
#include <QFileInfo>

#include <iostream>

namespace
{

using importer::plmxml::NormalisedDocument;
using importer::plmxml::NormaliserOptions;
using Way = NormalisedDocument::Way;

class DocumentReadingTest : public DocumentReadingFixture
{
protected:
    void expectSame(const QString& file, const NormaliserOptions& options = {})
    {
        SCOPED_TRACE(file.toStdString());
        m_session.settings().files.reading.set(Reading::Process);
        const Outcome here = read(file, options);
        m_session.settings().files.reading.set(Reading::Child);
        const Outcome there = read(file, options);
        ASSERT_TRUE(here && there) << (there ? here : there).error().toString().toStdString();
        importer::plmxml::expectSame(here->content, there->content);
        EXPECT_EQ(here->text.isEmpty(), there->text.isEmpty());
        if (here->content.way == Way::AsText) {
            EXPECT_EQ(QFileInfo(there->text).fileName(), QStringLiteral("text.plmxml"));
            EXPECT_TRUE(bytesOf(here->text) == bytesOf(there->text)) << "the texts differ";
        }
        ++m_ways[here->content.way];
        m_last = there->content;
    }

    /// The same of a document of that content, with all facts.
    void expectSameText(const QByteArray& content, NormaliserOptions options = {})
    {
        options.wantsFacts = true;
        expectSame(write(QStringLiteral("car.plmxml"), "<PLMXML>" + content + "</PLMXML>"), options);
    }

    static QByteArray bytesOf(const QString& path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }

    QString writeBelow(const QString& name)
    {
        EXPECT_TRUE(QDir(m_folder.path()).mkpath(QFileInfo(name).path()));
        return write(name, "x");
    }

    std::map<Way, int> m_ways;
    NormalisedDocument m_last;
};

QByteArray part(const QByteArray& location)
{
    return "<Part id='p' name='P'><Representation id='r' format='JT' location='" + location + "'/></Part>";
}

TEST_F(DocumentReadingTest, WhatNeedsNoRewritingIsReadTheSame)
{
    expectSameText("<ProductDef id='d'><InstanceGraph id='g' rootRefs='i'><Instance id='i' name='I' partRef='#p'/>"
                   "</InstanceGraph>" +
                   QByteArray(part("a.jt")).replace("<Part", "<Part type='solid'") + "</ProductDef>");
    EXPECT_EQ(m_ways[Way::AsItStands], 1);
    EXPECT_TRUE(m_last.isRead);
    EXPECT_EQ(m_last.structure.placements.size(), 1u);
    EXPECT_TRUE(m_log.empty());
}

TEST_F(DocumentReadingTest, WhatIsPassedOverIsToldTheSame)
{
    expectSameText(
        "<ProductView id='v' name='V\xc3\xa4' rootRefs='o'><Occurrence id='o' name='O' occurrenceRefs='a a2' "
        "partRef='#p'><UserData><UserValue title='mass' value='3'/></UserData></Occurrence>\n"
        "<Occurrence id='a' name='a&#10;b&#128512;' partRef='#none' materialRef='m' visible='false'/>"
        "<Occurrence id='lost' instanceRefs='i j'/><ProductView name='other'/></ProductView>"
        "<Material id='m' name='M' diffuse='1 0 x'/>" +
        part("missing.jt"));
    EXPECT_GT(m_last.facts.danglingCount, 0u);
    EXPECT_GT(m_last.facts.unplacedCount, 0u);
    EXPECT_FALSE(m_last.asked.isEmpty());
    EXPECT_FALSE(m_last.structure.placements.empty());
}

TEST_F(DocumentReadingTest, DocumentsWithNothingToImportAreRefusedTheSame)
{
    expectSameText("");
    expectSameText("<ProductDef><InstanceGraph rootRefs='i'><Instance id='i' partRef='#q'/><Instance id='j' "
                   "partRef='#q'/></InstanceGraph><Part id='q' instanceRefs='j'/></ProductDef>");
    EXPECT_EQ(m_last.refusal.why, importer::plmxml::Refusal::Why::Ring);
    NormaliserOptions options;
    options.root = QString::fromUtf8("k\"ein's \xc3\xa4\n");
    expectSameText(part("a.jt"), options);
    EXPECT_EQ(m_last.refusal.id, options.root);
    options = {};
    options.mostPlaces = 1;
    expectSameText("<Instance id='i' partRef='#p'/><Instance id='j' partRef='#p'/>" + part("a.jt"), options);
    EXPECT_EQ(m_last.refusal.why, importer::plmxml::Refusal::Why::TooLarge);
    EXPECT_EQ(m_ways[Way::Refuse], 4);
}

TEST_F(DocumentReadingTest, WhatIsNoDocumentIsLeftToTheLoader)
{
    expectSame(write(QStringLiteral("cut.plmxml"), "<PLMXML><ProductDef>"));
    expectSame(write(QStringLiteral("empty.plmxml"), ""));
    expectSame(path(QStringLiteral("none.plmxml")));
    expectSame(m_folder.path());
    EXPECT_EQ(m_ways[Way::AsItStands], 4);
}

/// Each way on which a file is found, where the box has the folders listed alone.
TEST_F(DocumentReadingTest, PartFilesAreFoundAlike)
{
    writeBelow(QStringLiteral("Sub/Case.JT"));
    writeBelow(QStringLiteral("beside.jt"));
    writeBelow(QStringLiteral("car/own.jt"));
    writeBelow(QStringLiteral("docs/deep/below.jt"));
    const QTemporaryDir elsewhere;
    QFile(elsewhere.filePath(QStringLiteral("Far.jt"))).open(QIODevice::WriteOnly);
    const QByteArray far = elsewhere.path().toUtf8();
    const char* const locations[] = {"sub/case.jt", "C:\\x\\beside.jt", "y/own.jt", "below.jt", "FAR.JT", "none.jt"};
    QByteArray content;
    for (const char* location : locations)
        content += QByteArray("<Instance partRef='#q") + location + "'/><Part id='q" + location +
                   "'><Representation format='JT' location='" + location + "'/></Part>";
    const QString file = write(QStringLiteral("car.plmxml"),
                               "<PLMXML referenceSearchPaths='docs/deep " + far + "'>" + content + "</PLMXML>");
    NormaliserOptions options;
    options.wantsFacts = true;
    const auto found = [this] {
        std::vector<std::string> names;
        for (const zn::StructureFile& each : m_last.facts.files)
            names.push_back(QFileInfo(each.found).fileName().toStdString() + ' ' + each.foundBy.toStdString());
        return names;
    };
    expectSame(file, options);
    EXPECT_THAT(found(), testing::ElementsAre("Case.JT letter case", "beside.jt beside the document",
                                              "own.jt in the document's folder", "below.jt search path",
                                              "Far.jt search path", " "));
    options.rules = {{files::references::Rule::Below, m_folder.path().toStdString(), {}}, file, {}};
    expectSame(file, options);
    EXPECT_THAT(found()[4], " ") << "outside";
    EXPECT_THAT(found()[0], "Case.JT letter case");
    options.rules.policy.folders = {far.toStdString()};
    expectSame(file, options);
    EXPECT_THAT(found()[4], "Far.jt search path") << "opened";
    options.rules.policy.rule = files::references::Rule::None;
    expectSame(file, options);
    EXPECT_THAT(found()[1], " ");
}

/// Out of the folder that is open and back into it, through one that is not.
TEST_F(DocumentReadingTest, AWayThroughAFolderThatIsClosedIsFoundAlike)
{
    writeBelow(QStringLiteral("top/Part.jt"));
    const QString file = write(QStringLiteral("top/car.plmxml"),
                               "<PLMXML><Instance partRef='#p'/>" + part("../top/part.jt") + "</PLMXML>");
    NormaliserOptions options;
    options.wantsFacts = true;
    options.rules = {{files::references::Rule::Below, path(QStringLiteral("top")).toStdString(), {}}, file, {}};
    expectSame(file, options);
    ASSERT_EQ(m_last.facts.files.size(), 1u);
    EXPECT_EQ(m_last.facts.files[0].foundBy, QStringLiteral("letter case"));
}

TEST_F(DocumentReadingTest, FoldersBesideThatOfANestedDocumentAreLookedThroughAlike)
{
    writeBelow(QStringLiteral("sub/none.jt"));
    writeBelow(QStringLiteral("other/Part.jt"));
    NormaliserOptions options;
    options.wantsFacts = true;
    options.rules = {
        {files::references::Rule::Below, m_folder.path().toStdString(), {}}, path(QStringLiteral("top.plmxml")), {}};
    expectSame(write(QStringLiteral("sub/car.plmxml"),
                     "<PLMXML><Instance partRef='#p'/>" + part("../other/part.jt") + "</PLMXML>"),
               options);
    ASSERT_EQ(m_last.facts.files.size(), 1u);
    EXPECT_EQ(m_last.facts.files[0].foundBy, QStringLiteral("letter case"));
}

TEST_F(DocumentReadingTest, PreferredFormatsRootsAndElementsAreThoseOfTheChild)
{
    writeBelow(QStringLiteral("a.jt"));
    writeBelow(QStringLiteral("a.stl"));
    writeBelow(QStringLiteral("other.plmxml"));
    NormaliserOptions options;
    options.preferredFormats = QStringList{QStringLiteral("stl")};
    options.elementsFolder = m_session.temporaryFolder() + QStringLiteral("/elements x");
    options.root = QStringLiteral("q");
    expectSameText("<Part id='q' instanceRefs='i j'/><Instance id='i' partRef='#p'/><Instance id='j' "
                   "partRef='other.plmxml#x'/><Part id='p'><Representation format='JT' location='a.jt'/>"
                   "<Representation format='STL' location='a.stl'/></Part>",
                   options);
    ASSERT_EQ(m_last.elements.size(), 1u);
    EXPECT_EQ(m_last.elements[0].id, QStringLiteral("x"));
    EXPECT_EQ(m_ways[Way::AsText], 1);
}

TEST_F(DocumentReadingTest, NamesAsLongAsTheSystemAllowsAreRead)
{
    m_session.settings().files.reading.set(Reading::Child);
    const QString name = QString(240, QLatin1Char('n')) + QStringLiteral(".plmxml");
    const Outcome outcome = importer::readDocument(m_session, writeLarge(2), name, {});
    ASSERT_TRUE(outcome);
    EXPECT_EQ(QFileInfo(outcome->text).fileName(), name);
    EXPECT_GT(QFileInfo(outcome->text).size(), 100);
}

TEST_F(DocumentReadingTest, AllDocumentsOfTheCorpusAreReadTheSame)
{
    const QString corpus = qEnvironmentVariable("ZN_CORPUS");
    if (corpus.isEmpty())
        GTEST_SKIP() << "ZN_CORPUS is not set";
    QDirIterator step(corpus, {QStringLiteral("*.plmxml"), QStringLiteral("*.xml")}, QDir::Files,
                      QDirIterator::Subdirectories);
    while (step.hasNext() && !HasFailure()) {
        const QString file = step.next();
        for (const bool wantsFacts : {false, true}) {
            NormaliserOptions options;
            options.wantsFacts = wantsFacts;
            expectSame(file, options);
        }
    }
    std::cout << m_ways[Way::AsText] << " rewritten, " << m_ways[Way::AsItStands] << " as they stand\n";
    EXPECT_GT(m_ways[Way::AsText], 0);
}

} // namespace
