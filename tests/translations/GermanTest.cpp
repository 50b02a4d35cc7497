#include "converter/StageLabels.h"
#include "standalone/znKernel/ConverterFailure.h"
#include "tests/support/QtPrinters.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QProcess>
#include <QTemporaryDir>
#include <QTranslator>

#include <gtest/gtest.h>

namespace
{

class GermanTest : public testing::Test
{
protected:
    void SetUp() override
    {
        const QLocale german(QLocale::German, QLocale::Austria);
        ASSERT_TRUE(m_translator.load(german, QStringLiteral("znCADImport"), QStringLiteral("_"),
                                      QStringLiteral(":/translations")));
        ASSERT_TRUE(QCoreApplication::installTranslator(&m_translator));
    }

private:
    QTranslator m_translator;
};

TEST_F(GermanTest, EveryStageHasItsWord)
{
    const std::pair<const char*, const char*> words[] = {
        {"ReadAndProcess", "Einlesen"},
        {"Convert", "Umwandeln"},
        {"ProcessStructure", "Verarbeiten"},
        {"Merge", "Zusammenführen"},
        {"Stitch", "Vernähen"},
        {"FixSurfaceOrientation", "Flächennormalen angleichen"},
        {"Tessellate", "Tessellieren"},
        {"BuildOsgTree", "Szenenbaum aufbauen"},
        {"Finalize", "Aufräumen"},
        {"Write", "Datei schreiben"},
        {"Finished", "Umwandlung beendet"},
        {"Polish", "Unbekannt"},
    };
    for (const auto& [stage, word] : words)
        EXPECT_EQ(znStageLabels::translated(stage), QString::fromUtf8(word)) << stage;
}

TEST_F(GermanTest, TheJobSpeaksToo)
{
    EXPECT_EQ(
        QCoreApplication::translate("znPtxConverterJob", "No external part files found. Retrying with inlined option."),
        QString::fromUtf8("Keine externen Teiledateien gefunden. Neuer Versuch mit eingebetteten Teilen."));
    EXPECT_EQ(QCoreApplication::translate("znPtxConverterJob", "Updating Legacy Stylar File"),
              QString::fromUtf8("Alte Stylar-Datei wird aktualisiert"));
}

/// The reason of each exit code, and of one that nobody knows.
TEST_F(GermanTest, ReasonsOfFailedConversionsAreToldInGerman)
{
    EXPECT_EQ(zn::kernel::exitCodeMeaning(7), QString::fromUtf8("Die Datei ist beschädigt."));
    EXPECT_EQ(zn::kernel::exitCodeMeaning(128 + 11), QString::fromUtf8("Der Konverter ist abgestürzt (Signal 11)."));
    EXPECT_EQ(zn::kernel::exitCodeMeaning(77), QString::fromUtf8("Der Konverter endete mit dem Code 77."));
    for (const int code : {-1, 0, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12, 21, 25, 77, 127, 128 + 15, 128 + 9, 250}) {
        const QString german = zn::kernel::exitCodeMeaning(code);
        EXPECT_FALSE(german.startsWith(QStringLiteral("The"))) << code << german.toStdString();
    }
}

TEST(TranslationFileTest, EveryTextOfTheSourcesIsTranslated)
{
    const QDir root(QString::fromUtf8(ZN_SOURCE_ROOT));
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("znCADImport_de.ts"));
    ASSERT_TRUE(QFile::copy(root.filePath(QStringLiteral("translations/znCADImport_de.ts")), copy));
    ASSERT_TRUE(QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner));
    QStringList arguments{QStringLiteral("-silent"), QStringLiteral("-I"), root.path(), QStringLiteral("-locations"),
                          QStringLiteral("none")};
    for (const char* source :
         {"converter", "importer", "loader", "standalone/reading", "standalone/znKernel", "tools/znimport"})
        if (root.exists(QString::fromUtf8(source)))
            arguments.append(root.filePath(QString::fromUtf8(source)));
    arguments << QStringLiteral("-ts") << copy;
    ASSERT_EQ(QProcess::execute(QString::fromUtf8(LUPDATE), arguments), 0);
    QFile updated(copy);
    ASSERT_TRUE(updated.open(QIODevice::ReadOnly));
    const QByteArray text = updated.readAll();
    EXPECT_TRUE(text.contains("Tessellieren"));
    EXPECT_FALSE(text.contains("unfinished")) << text.constData();
    EXPECT_FALSE(text.contains("vanished")) << text.constData();
}

} // namespace
