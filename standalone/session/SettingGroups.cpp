#include "standalone/session/SettingGroups.h"

#include "geometry/TessellationPresets.h"

namespace zn
{

namespace
{

using znCADFileTypes::FileType;

/// The formats of the vocabulary that have files, in its order.
std::vector<FileType> formatsWithFiles()
{
    std::vector<FileType> types;
    for (int type = 0; type <= znCADFileTypes::Unsupported; ++type)
        if (znCADFileTypes::findRow(static_cast<FileType>(type)))
            types.push_back(static_cast<FileType>(type));
    return types;
}

QString nameOf(FileType type)
{
    return QString::fromLatin1(znCADFileTypes::fileTypeName(type));
}

/// The value of `type` in `settings`; null without one.
template <class Value>
const Value* valueOf(const std::map<FileType, Value>& settings, FileType type)
{
    const auto found = settings.find(type);
    return found == settings.end() ? nullptr : &found->second;
}

QString wordOf(const geometry::TessellationPreset& preset)
{
    return QString::fromLatin1(preset.name.data(), int(preset.name.size()));
}

} // namespace

QStringList TessellationSettings::presetWords()
{
    QStringList words{QStringLiteral("custom")};
    for (const geometry::TessellationPreset& preset : geometry::tessellationPresets)
        words << wordOf(preset);
    return words;
}

QString TessellationSettings::presetHelp()
{
    QStringList numbers;
    for (const geometry::TessellationPreset& preset : geometry::tessellationPresets)
        numbers << QStringLiteral("%1 %2 mm, %3 degrees")
                       .arg(wordOf(preset))
                       .arg(preset.chordDeviation)
                       .arg(preset.normalTolerance);
    return SettingHelp::tr("How finely exact surfaces are meshed anew: chord deviation and normal tolerance are %1, "
                           "edges of any length; custom takes the settings of their own.")
        .arg(numbers.join(QStringLiteral("; ")));
}

FormatSettings::Converter::Converter(SettingList& list, const QString& format)
    : program(list, QStringLiteral("converter.%1.program").arg(format).toUtf8(), QString(),
              SettingHelp::tr("The converter of the format %1; empty for that of all formats.").arg(format)),
      arguments(list, QStringLiteral("converter.%1.arguments").arg(format).toUtf8(),
                QStringLiteral("{external:--external-parts} {input} {output}"),
                SettingHelp::tr("What that converter is given. {external:WORD} and {inlined:WORD} are WORD "
                                "when part files are kept apart and when they are taken in."))
{
}

FormatSettings::FormatSettings(SettingList& list) : SettingGroup(list)
{
    for (const FileType type : formatsWithFiles())
        if (znCADFileTypes::findRow(type)->cadFormat)
            m_converters.try_emplace(type, list, nameOf(type));
    for (const FileType type : formatsWithFiles())
        if (znCADFileTypes::findRow(type)->cadFormat || type == znCADFileTypes::PLMXML)
            m_referencedFiles.try_emplace(
                type, list, QStringLiteral("import.%1.referencedFiles").arg(nameOf(type)).toUtf8(), true,
                SettingHelp::tr("Import the part files that a file of the format %1 refers to.").arg(nameOf(type)));
}

const FormatSettings::Converter* FormatSettings::converter(FileType type) const
{
    return valueOf(m_converters, type);
}

const Setting<bool>* FormatSettings::referencedFiles(FileType type) const
{
    return valueOf(m_referencedFiles, type);
}

} // namespace zn
