#include "standalone/session/SettingRows.h"

#include "import/filetypes/znCADFileTypes.h"
#include "standalone/geometry/TessellationPresets.h"

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

SettingRow needRow(const QString& name, const QString& unit, int least, int otherwise, const QString& help)
{
    return {name, SettingType::Integer, unit, double(least), 1e6, QString::number(otherwise), help};
}

/// What runs converters elsewhere, and what it is told of their needs.
void addLauncherRows(std::vector<SettingRow>& rows)
{
    rows.push_back(textRow(
        QStringLiteral("converter.launcher"), {},
        Settings::tr("What stands before the command line of a converter, to run it elsewhere; {cores}, {memory} "
                     "(MB), {seconds} and {minutes} follow from the size of the input, {input} and {output} are "
                     "the files. Empty to start it here.")));
    rows.push_back(needRow(QStringLiteral("launcher.mostCores"), {}, 1, 8,
                           Settings::tr("The most that {cores} may be: it is 1, and 1 more for each 32 MB of input.")));
    rows.push_back(needRow(QStringLiteral("launcher.memory"), QStringLiteral("MB"), 64, 1024,
                           Settings::tr("What {memory} is, without launcher.memoryPerMegabyte; the converter stops a "
                                        "little before it.")));
    rows.push_back(needRow(QStringLiteral("launcher.mostMemory"), QStringLiteral("MB"), 0, 0,
                           Settings::tr("The most that {memory} may be; 0 for any.")));
    rows.push_back(needRow(QStringLiteral("launcher.memoryPerMegabyte"), QStringLiteral("MB"), 0, 60,
                           Settings::tr("What each megabyte of input adds to {memory}.")));
    rows.push_back(needRow(QStringLiteral("launcher.time"), QStringLiteral("s"), 60, 660,
                           Settings::tr("What {seconds} is, without launcher.timePerMegabyte; the converter stops a "
                                        "minute before it.")));
    rows.push_back(needRow(QStringLiteral("launcher.timePerMegabyte"), QStringLiteral("s"), 0, 60,
                           Settings::tr("What each megabyte of input adds to {seconds}.")));
    rows.push_back(textRow(QStringLiteral("cluster.allocation"), QStringLiteral("--exclusive --mem=0"),
                           Settings::tr("What a cluster's allocation is asked for besides nodes and partition, in the "
                                        "words of salloc; whole nodes by default.")));
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

namespace
{

SettingRow lengthRow(const QString& name, double least, const QString& defaultText, const QString& help)
{
    return {name, SettingType::Number, QStringLiteral("mm"), least, 1e6, defaultText, help};
}

/// How finely exact surfaces are meshed anew.
SettingRow presetRow()
{
    SettingRow row = {QStringLiteral("tessellation.preset"),
                      SettingType::Choice,
                      {},
                      0,
                      0,
                      QStringLiteral("custom"),
                      {},
                      {QStringLiteral("custom")}};
    QStringList numbers;
    for (const geometry::TessellationPreset& preset : geometry::tessellationPresets) {
        row.choices << QString::fromLatin1(preset.name.data(), int(preset.name.size()));
        numbers << QStringLiteral("%1 %2 mm, %3 degrees")
                       .arg(row.choices.last())
                       .arg(preset.chordDeviation)
                       .arg(preset.normalTolerance);
    }
    row.help = Settings::tr("How finely exact surfaces are meshed anew: chord deviation and normal tolerance are %1, "
                            "edges of any length; custom takes the settings of their own.")
                   .arg(numbers.join(QStringLiteral("; ")));
    return row;
}

/// What becomes of a converted tree before and after it comes into the scene.
void addOptimizationRows(std::vector<SettingRow>& rows)
{
    rows.insert(
        rows.end(),
        {switchRow(QStringLiteral("optimize.mergeMaterials"), true, Settings::tr("Make one material of equal ones.")),
         switchRow(QStringLiteral("optimize.removeEmptyGroups"), false, Settings::tr("Remove groups without content.")),
         switchRow(QStringLiteral("optimize.flushTransformations"), false,
                   Settings::tr("Move transforms into the vertices. Parts that are used in several places lose their "
                                "common geometry.")),
         switchRow(QStringLiteral("optimize.mergeGeometries"), false,
                   Settings::tr("Merge geometries of one material under one parent, and mesh exact surfaces anew.")),
         switchRow(QStringLiteral("optimize.keepNurbs"), false,
                   Settings::tr("Keep exact surfaces with the meshes that have them.")),
         switchRow(QStringLiteral("optimize.unshareNodes"), false,
                   Settings::tr("Give each node a content of its own, so that changes stay local.")),
         {QStringLiteral("optimize.sourceReferences"),
          SettingType::Choice,
          {},
          0,
          0,
          QStringLiteral("dissolve"),
          Settings::tr("What becomes of references to part files."),
          {QStringLiteral("dissolve"), QStringLiteral("keep")}},
         switchRow(QStringLiteral("optimize.solidKernel"), false,
                   Settings::tr("Add ambient occlusion to imported trees, and do not merge their geometries.")),
         switchRow(QStringLiteral("export.occlusionAsColors"), false,
                   Settings::tr("Write ambient occlusion into GLB files, as vertex colors.")),
         presetRow(),
         textRow(QStringLiteral("tessellation.program"), {},
                 Settings::tr("What meshes exact surfaces anew; empty for the installed ptxtessellate.")),
         {QStringLiteral("tessellation.timeLimit"), SettingType::Number, QStringLiteral("s"), 0, 1e6,
          QStringLiteral("600"), Settings::tr("How long one run of that program may take; 0 for any time.")},
         switchRow(QStringLiteral("tessellation.useStitching"), false,
                   Settings::tr("Join free edges of surfaces before they are meshed anew.")),
         lengthRow(QStringLiteral("tessellation.stitchingTolerance"), 0, QStringLiteral("0.01"),
                   Settings::tr("How far apart edges may be to be joined.")),
         lengthRow(QStringLiteral("tessellation.chordDeviation"), 1e-6, QStringLiteral("0.1"),
                   Settings::tr("How far a new mesh may be from its surface.")),
         {QStringLiteral("tessellation.normalTolerance"), SettingType::Number, QStringLiteral("degrees"), 0.1, 90,
          QStringLiteral("15"), Settings::tr("The largest angle between normals along an edge of a new mesh.")},
         lengthRow(QStringLiteral("tessellation.maxChordLength"), 0, QStringLiteral("0"),
                   Settings::tr("The longest edge of a new mesh; 0 for any length.")),
         switchRow(QStringLiteral("scene.applyMaterialAssets"), false,
                   Settings::tr("Put the assets of the chosen folder on materials of the same name.")),
         switchRow(QStringLiteral("scene.centerInOrigin"), false,
                   Settings::tr("Move what is imported so that its middle is in the origin.")),
         switchRow(QStringLiteral("scene.putOnGround"), false,
                   Settings::tr("Move what is imported so that its lowest point is at the height 0."))});
}

} // namespace

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
         Settings::tr("What one unit of a file without a unit of its own (OBJ, PLY, WRL) is.")},
        {QStringLiteral("mesh.up"),
         SettingType::Choice,
         {},
         0,
         0,
         QStringLiteral("z"),
         Settings::tr("Which axis points up in a file that does not say so (OBJ, PLY, WRL)."),
         {QStringLiteral("y"), QStringLiteral("z")}},
        {QStringLiteral("mesh.level"),
         SettingType::Integer,
         {},
         0,
         9,
         QStringLiteral("0"),
         Settings::tr("Which level of detail is taken of files that hold several (JT): 0 is the finest; a part with "
                      "fewer levels gives its coarsest.")},
        switchRow(QStringLiteral("mesh.wrlInMetres"), false,
                  Settings::tr("Take WRL files by their standard: metres, and Y points up. CAD systems write "
                               "millimetres and Z up.")),
        textRow(QStringLiteral("converter.program"), {},
                Settings::tr("The converter; empty for the installed ptxconvert.")),
        textRow(QStringLiteral("converter.options"), {},
                Settings::tr("Settings of the converter, name=value and blank between them; ptxconvert --help-settings "
                             "lists them.")),
        textRow(QStringLiteral("converter.updateProgram"), {},
                Settings::tr("The tool that brings an old Stylar file up to date.")),
        textRow(QStringLiteral("converter.updateArguments"), QStringLiteral("{input} {output}"),
                Settings::tr("What that tool is given: {input} is the old file, {output} the new one.")),
    };
    addLauncherRows(rows);
    addOptimizationRows(rows);
    rows.push_back(switchRow(QStringLiteral("import.uberMaterials"), false,
                             Settings::tr("Make uber materials of the simple ones that referenced files bring.")));
    rows.push_back(textRow(QStringLiteral("assets.folder"), {},
                           Settings::tr("The folder of material assets: glTF files whose materials have a uuid and a "
                                        "name in their extras.")));
    addConverterRows(rows);
    addReferencedFilesRows(rows);
    return rows;
}

} // namespace zn
