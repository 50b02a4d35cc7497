#include "standalone/session/Settings.h"

#include "tests/support/QtPrinters.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <clocale>
#include <set>

#include <unistd.h>

using testing::HasSubstr;

namespace
{

class SettingsTest : public testing::Test
{
protected:
    SettingsTest() : m_folder(QDir::tempPath() + QString::fromUtf8("/zn settings ä %2 XXXXXX")) {}

    /// What `set` complains about; empty for nothing.
    std::string set(const char* name, const char* text)
    {
        return m_settings.set(QString::fromUtf8(name), QString::fromUtf8(text)).value_or(QString()).toStdString();
    }
    QString write(const QByteArray& content) const
    {
        QFile file(m_folder.filePath(QStringLiteral("settings.txt")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    /// What `load` complains about, without the folder of the file; empty for nothing.
    std::string load(const QString& path)
    {
        return m_settings.load(path)
            .value_or(QString())
            .replace(m_folder.path() + QLatin1Char('/'), QString())
            .toStdString();
    }

    bool referencedFiles() const { return *m_settings.formats.referencedFiles(znCADFileTypes::CatiaV5); }
    int processes() const { return m_settings.processes.most; }
    double unit() const { return m_settings.mesh.unit; }
    QString up() const { return m_settings.mesh.up.text(); }
    QString folder() const { return m_settings.files.temporaryFolder; }

    QTemporaryDir m_folder;
    zn::Settings m_settings;
};

TEST_F(SettingsTest, StartWithTheirDefaults)
{
    EXPECT_EQ(processes(), 0);
    EXPECT_EQ(unit(), 1.0);
    EXPECT_EQ(up(), QStringLiteral("z"));
    EXPECT_EQ(folder(), QString());
    EXPECT_TRUE(referencedFiles());
}

TEST_F(SettingsTest, EveryDefaultIsAValueOfItsSetting)
{
    for (const zn::AnySetting* setting : m_settings.all())
        EXPECT_FALSE(m_settings.set(setting->row().name, setting->row().defaultText))
            << setting->row().name.toStdString();
}

TEST_F(SettingsTest, EveryRowHasANameOfItsOwnAndTellsWhatItIsFor)
{
    std::set<QString> names;
    for (const zn::AnySetting* setting : m_settings.all()) {
        const zn::SettingRow& row = setting->row();
        EXPECT_TRUE(names.insert(row.name).second) << row.name.toStdString();
        EXPECT_TRUE(row.help.endsWith(QLatin1Char('.'))) << row.name.toStdString();
        EXPECT_EQ(row.choices.isEmpty(), row.type != zn::SettingType::Choice) << row.name.toStdString();
    }
}

TEST_F(SettingsTest, TakeTheirValuesAsText)
{
    EXPECT_EQ(set("processes.most", "3"), "");
    EXPECT_EQ(set("mesh.unit", "25.4"), "");
    EXPECT_EQ(set("mesh.up", "y"), "");
    EXPECT_EQ(set("files.temporaryFolder", "/tmp/Größe 1 "), "");
    EXPECT_EQ(set("import.Catia V5.referencedFiles", "off"), "");
    EXPECT_EQ(processes(), 3);
    EXPECT_EQ(unit(), 25.4);
    EXPECT_EQ(up(), QStringLiteral("y"));
    EXPECT_EQ(folder(), QString::fromUtf8("/tmp/Größe 1 "));
    EXPECT_FALSE(referencedFiles());
}

TEST_F(SettingsTest, TakeWordsInAnyCaseAndWithBlanksAround)
{
    for (const char* word : {"off", "FALSE", "no", " 0 "}) {
        EXPECT_EQ(set("import.Catia V5.referencedFiles", word), "");
        EXPECT_FALSE(referencedFiles()) << word;
        EXPECT_EQ(set("import.Catia V5.referencedFiles", "on"), "");
    }
    for (const char* word : {"On", "true", "YES", "1"}) {
        EXPECT_EQ(set("import.Catia V5.referencedFiles", "off"), "");
        EXPECT_EQ(set("import.Catia V5.referencedFiles", word), "");
        EXPECT_TRUE(referencedFiles()) << word;
    }
    EXPECT_EQ(set("mesh.up", " Y"), "");
    EXPECT_EQ(up(), QStringLiteral("y"));
}

TEST_F(SettingsTest, RefuseAnUnknownName)
{
    EXPECT_EQ(set("mesh.unti", "2"), "there is no setting 'mesh.unti'; --help-settings lists them");
    EXPECT_EQ(set("", "2"), "there is no setting ''; --help-settings lists them");
    EXPECT_EQ(set("Mesh.Unit", "2"), "there is no setting 'Mesh.Unit'; --help-settings lists them");
}

TEST_F(SettingsTest, TellNameValueAndRangeWhenTheyRefuseAValue)
{
    EXPECT_EQ(set("processes.most", "many"),
              "setting 'processes.most' wants a whole number from 0 to 1024, not 'many'");
    EXPECT_EQ(set("mesh.unit", "0"), "setting 'mesh.unit' wants a number from 1e-06 to 1e+06 mm, not '0'");
    EXPECT_EQ(set("mesh.up", "x"), "setting 'mesh.up' wants y or z, not 'x'");
    EXPECT_EQ(set("import.Catia V5.referencedFiles", "maybe"),
              "setting 'import.Catia V5.referencedFiles' wants on or off, not 'maybe'");
}

TEST_F(SettingsTest, KeepTheOldValueWhenTheyRefuseOne)
{
    EXPECT_EQ(set("processes.most", "3"), "");
    for (const char* text : {"-1", "1025", "2.5", "3 4", "", "99999999999999999999", "0x10", "nan"})
        EXPECT_NE(set("processes.most", text), "") << text;
    EXPECT_EQ(processes(), 3);
    EXPECT_EQ(set("mesh.unit", "2.5"), "");
    for (const char* text : {"0", "-2", "1e7", "1e400", "inf", "nan", "2,5", "1,000", "2.5 mm", ""})
        EXPECT_NE(set("mesh.unit", text), "") << text;
    EXPECT_EQ(unit(), 2.5);
}

TEST_F(SettingsTest, ReadNumbersTheSameUnderALocaleWithACommaAsDecimalPoint)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8"))
        GTEST_SKIP() << "no locale de_DE.UTF-8";
    EXPECT_EQ(set("mesh.unit", "25.4"), "");
    EXPECT_EQ(unit(), 25.4);
    EXPECT_NE(set("mesh.unit", "25,4"), "");
    EXPECT_EQ(set("mesh.unit", "0"), "setting 'mesh.unit' wants a number from 1e-06 to 1e+06 mm, not '0'");
    std::setlocale(LC_ALL, before.c_str());
}

TEST_F(SettingsTest, MembersReadAndWriteWhatTextsDo)
{
    EXPECT_EQ(m_settings.processes.most.set(3), std::nullopt);
    EXPECT_EQ(m_settings.mesh.unit.set(25.4), std::nullopt);
    EXPECT_EQ(m_settings.mesh.up.set(zn::MeshSettings::Axis::Y), std::nullopt);
    EXPECT_EQ(m_settings.optimize.keepNurbs.set(true), std::nullopt);
    EXPECT_EQ(m_settings.assets.folder.set(QStringLiteral("/A b")), std::nullopt);
    EXPECT_EQ(m_settings.processes.most.text(), QStringLiteral("3"));
    EXPECT_EQ(m_settings.mesh.unit.text(), QStringLiteral("25.4"));
    EXPECT_EQ(m_settings.mesh.up.text(), QStringLiteral("y"));
    EXPECT_EQ(m_settings.optimize.keepNurbs.text(), QStringLiteral("on"));
    EXPECT_EQ(m_settings.assets.folder.text(), QStringLiteral("/A b"));
    EXPECT_EQ(set("mesh.up", "Z"), "");
    EXPECT_EQ(m_settings.mesh.up.value(), zn::MeshSettings::Axis::Z);
    EXPECT_EQ(set("optimize.keepNurbs", "no"), "");
    EXPECT_FALSE(m_settings.optimize.keepNurbs);
}

TEST_F(SettingsTest, MembersRefuseWhatTheirRowsDoNotAllow)
{
    EXPECT_EQ(m_settings.processes.most.set(1025).value_or(QString()).toStdString(),
              "setting 'processes.most' wants a whole number from 0 to 1024, not '1025'");
    EXPECT_EQ(m_settings.processes.most.value(), 0);
    EXPECT_TRUE(m_settings.tessellation.preset.set(QStringLiteral("rough")));
    EXPECT_EQ(m_settings.tessellation.preset.value(), QStringLiteral("custom"));
}

TEST_F(SettingsTest, AFormatHasTheSettingsThatItsFilesCanNeed)
{
    EXPECT_EQ(m_settings.formats.referencedFiles(znCADFileTypes::Undefined), nullptr);
    EXPECT_EQ(m_settings.formats.referencedFiles(znCADFileTypes::Obj), nullptr);
    EXPECT_NE(m_settings.formats.referencedFiles(znCADFileTypes::PLMXML), nullptr);
    EXPECT_EQ(m_settings.formats.converter(znCADFileTypes::PLMXML), nullptr);
    EXPECT_EQ(set("converter.Catia V5.program", "/opt/c5"), "");
    ASSERT_NE(m_settings.formats.converter(znCADFileTypes::CatiaV5), nullptr);
    EXPECT_EQ(m_settings.formats.converter(znCADFileTypes::CatiaV5)->program.value(), QStringLiteral("/opt/c5"));
    EXPECT_EQ(m_settings.formats.converter(znCADFileTypes::Step)->program.value(), QString());
}

TEST_F(SettingsTest, HaveARowForTheReferencedFilesOfEachFormatThatCanReferToAny)
{
    const QString help = m_settings.helpText();
    for (const char* format : {"ACIS", "Stylar", "DraftKit", "Catia V4", "Step", "STL", "PLMXML"})
        EXPECT_TRUE(help.contains(QStringLiteral("\nimport.%1.referencedFiles\n").arg(QString::fromUtf8(format))))
            << format;
    EXPECT_FALSE(help.contains(QStringLiteral("import.Obj.")));
    EXPECT_FALSE(help.contains(QStringLiteral("import.Undefined.")));
}

TEST_F(SettingsTest, HelpTellsNameMeaningRangeUnitAndDefaultOfEachRow)
{
    const std::string help = m_settings.helpText().toStdString();
    EXPECT_THAT(help, HasSubstr("mesh.unit\n"
                                "    What one unit of a file without a unit of its own (OBJ, PLY, WRL) is.\n"
                                "    a number from 1e-06 to 1e+06 mm; default: 1\n"));
    EXPECT_THAT(help, HasSubstr("mesh.up\n"
                                "    Which axis points up in a file that does not say so (OBJ, PLY, WRL).\n"
                                "    y or z; default: z\n"));
    EXPECT_THAT(help, HasSubstr("    a text; default: empty\n"));
    EXPECT_THAT(help, HasSubstr("    on or off; default: on\n"));
}

TEST_F(SettingsTest, ComeFromAFileOfLines)
{
    EXPECT_EQ(load(write("# for inches\n\n  mesh.unit =  25.4 \r\nmesh.up=y\n"
                         "import.Catia V5.referencedFiles = off\nfiles.temporaryFolder = /tmp/a = b/Größe\n")),
              "");
    EXPECT_EQ(unit(), 25.4);
    EXPECT_EQ(up(), QStringLiteral("y"));
    EXPECT_FALSE(referencedFiles());
    EXPECT_EQ(folder(), QString::fromUtf8("/tmp/a = b/Größe"));
}

TEST_F(SettingsTest, AnEmptyFileChangesNothing)
{
    EXPECT_EQ(load(write("")), "");
    EXPECT_EQ(unit(), 1.0);
}

TEST_F(SettingsTest, AFileMayBeginWithAByteOrderMark)
{
    EXPECT_EQ(load(write("\xef\xbb\xbfmesh.unit = 25.4\n")), "");
    EXPECT_EQ(unit(), 25.4);
}

TEST_F(SettingsTest, AFileIsTakenAsAWholeOrNotAtAll)
{
    EXPECT_EQ(set("mesh.unit", "2.5"), "");
    EXPECT_EQ(load(write("mesh.unit = 25.4\n\nmesh.up = x\nprocesses.most = 7\n")),
              "settings.txt:3: setting 'mesh.up' wants y or z, not 'x'");
    EXPECT_EQ(unit(), 2.5);
    EXPECT_EQ(processes(), 0);
}

TEST_F(SettingsTest, AFilesComplaintNamesItsLine)
{
    EXPECT_EQ(load(write("mesh.unit 25.4\n")), "settings.txt:1: a line is 'name = value'");
    EXPECT_EQ(load(write("# a\n= 3\n")), "settings.txt:2: there is no setting ''; --help-settings lists them");
    EXPECT_THAT(load(write(QByteArray("mesh.unit = \xff\xfe\n"))), HasSubstr("settings.txt:1: setting 'mesh.unit'"));
    EXPECT_THAT(load(write(QByteArray("mesh.unit = 2\0 5\n", 18))), HasSubstr("settings.txt:1: setting 'mesh.unit'"));
}

TEST_F(SettingsTest, WhatIsNoFileOfReasonableLengthIsRefused)
{
    EXPECT_THAT(load(m_folder.filePath(QStringLiteral("missing.txt"))), HasSubstr("missing.txt: "));
    EXPECT_EQ(load(m_folder.path()), m_folder.path().toStdString() + " is no file");
    EXPECT_EQ(load(write(QByteArray(1048577, '#'))), "settings.txt is longer than 1048576 bytes");
    EXPECT_EQ(load(write(QByteArray(1048576, '#'))), "");
}

} // namespace
