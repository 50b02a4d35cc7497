#include "standalone/session/SettingRows.h"

#include "import/znCADFileTypes.h"

namespace zn
{

namespace
{

SettingRow switchRow(const QString& name, bool on, const QString& help)
{
    return {name, SettingType::Switch, {}, 0, 0, on ? QStringLiteral("on") : QStringLiteral("off"), help};
}

SettingRow textRow(const QString& name, const QString& defaultText, const QString& help)
{
    return {name, SettingType::Text, {}, 0, 0, defaultText, help};
}

/// The converters of single formats.
void addConverterRows(std::vector<SettingRow>& rows)
{
    for (int type = 0; type <= znCADFileTypes::Unsupported; ++type) {
        const auto fileType = static_cast<znCADFileTypes::FileType>(type);
        const znCADFileTypes::FileTypeRow* row = znCADFileTypes::findRow(fileType);
        if (!row || !row->cadFormat)
            continue;
        const QString name = QString::fromLatin1(znCADFileTypes::fileTypeName(fileType));
        rows.push_back(
            textRow(converterProgramSetting(name), {},
                    Settings::tr("The converter of the format %1; empty for that of all formats.").arg(name)));
        rows.push_back(textRow(converterArgumentsSetting(name),
                               QStringLiteral("{external:--external-parts} {input} {output}"),
                               Settings::tr("What that converter is given. {external:WORD} and {inlined:WORD} are WORD "
                                            "when part files are kept apart and when they are taken in.")));
    }
}

/// The formats whose files may refer to part files.
void addReferencedFilesRows(std::vector<SettingRow>& rows)
{
    for (int type = 0; type <= znCADFileTypes::Unsupported; ++type) {
        const auto fileType = static_cast<znCADFileTypes::FileType>(type);
        const znCADFileTypes::FileTypeRow* row = znCADFileTypes::findRow(fileType);
        const bool wanted = row && (row->cadFormat || fileType == znCADFileTypes::PLMXML);
        if (!wanted)
            continue;
        const QString name = QString::fromLatin1(znCADFileTypes::fileTypeName(fileType));
        rows.push_back(
            switchRow(referencedFilesSetting(name), true,
                      Settings::tr("Import the part files that a file of the format %1 refers to.").arg(name)));
    }
}

} // namespace

QString referencedFilesSetting(const QString& formatName)
{
    return QStringLiteral("import.%1.referencedFiles").arg(formatName);
}

QString converterProgramSetting(const QString& formatName)
{
    return QStringLiteral("converter.%1.program").arg(formatName);
}

QString converterArgumentsSetting(const QString& formatName)
{
    return QStringLiteral("converter.%1.arguments").arg(formatName);
}

std::vector<SettingRow> settingRows()
{
    std::vector<SettingRow> rows = {
        {QStringLiteral("processes.most"),
         SettingType::Integer,
         {},
         0,
         1024,
         QStringLiteral("0"),
         Settings::tr("How many converter processes run at a time; 0 lets cores and free memory decide.")},
        textRow(QStringLiteral("files.temporaryFolder"), {},
                Settings::tr("Where converted files go; empty for a folder of the session's own, which goes with it.")),
        {QStringLiteral("mesh.unit"), SettingType::Number, QStringLiteral("mm"), 1e-6, 1e6, QStringLiteral("1"),
         Settings::tr("What one unit of a file without a unit of its own (OBJ, PLY) is.")},
        {QStringLiteral("mesh.up"),
         SettingType::Choice,
         {},
         0,
         0,
         QStringLiteral("z"),
         Settings::tr("Which axis points up in a file that does not say so (OBJ, PLY)."),
         {QStringLiteral("y"), QStringLiteral("z")}},
        textRow(QStringLiteral("converter.program"), {},
                Settings::tr("The converter; empty for the ptxconvert beside this program or on the PATH.")),
        textRow(QStringLiteral("converter.options"), {},
                Settings::tr("Settings of the converter, name=value and blank between them; ptxconvert --help-settings "
                             "lists them.")),
        textRow(QStringLiteral("converter.updateProgram"), {},
                Settings::tr("The tool that brings an old Stylar file up to date.")),
        textRow(QStringLiteral("converter.updateArguments"), QStringLiteral("{input} {output}"),
                Settings::tr("What that tool is given: {input} is the old file, {output} the new one.")),
    };
    rows.push_back(switchRow(QStringLiteral("import.uberMaterials"), false,
                             Settings::tr("Make uber materials of the simple ones that referenced files bring.")));
    addConverterRows(rows);
    addReferencedFilesRows(rows);
    return rows;
}

} // namespace zn
