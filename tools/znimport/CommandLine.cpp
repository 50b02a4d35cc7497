#include "tools/znimport/CommandLine.h"

#include "importer/plmxml/Recognition.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>

namespace znimport
{

namespace
{

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

void addOptions(QCommandLineParser& parser)
{
    for (const OptionRow& row : optionTable()) {
        QStringList names{text(row.name)};
        if (row.shortName)
            names.prepend(text(row.shortName));
        parser.addOption({names, text(row.help), row.valueName ? text(row.valueName) : QString()});
    }
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("File to import; several land in one scene."),
                                 QStringLiteral("FILE..."));
}

QString valueOr(const QCommandLineParser& parser, const char* option, const char* otherwise)
{
    return parser.isSet(text(option)) ? parser.value(text(option)) : text(otherwise);
}

void readOutputs(const QCommandLineParser& parser, CommandLine& line)
{
    line.outputFile = parser.value(QStringLiteral("output"));
    line.unit = parser.value(QStringLiteral("unit"));
    line.up = parser.value(QStringLiteral("up"));
    line.scaleIntoVertices = parser.isSet(QStringLiteral("scale-into-vertices"));
    line.glbEdges = parser.isSet(QStringLiteral("glb-edges"));
    line.web = parser.isSet(QStringLiteral("web"));
    line.instances = parser.isSet(QStringLiteral("instances"));
    line.reportFile = parser.value(QStringLiteral("report"));
    line.bomFile = parser.value(QStringLiteral("bom"));
    line.bomLevels = parser.value(QStringLiteral("bom-levels"));
    line.snapshotFile = parser.value(QStringLiteral("snapshot"));
    line.snapshotSize = valueOr(parser, "size", "1280x800");
    line.snapshotView = valueOr(parser, "view", "iso");
    line.isViewGiven = parser.isSet(QStringLiteral("view"));
    line.look = parser.value(QStringLiteral("look"));
    line.environmentFile = parser.value(QStringLiteral("environment"));
    line.background = parser.value(QStringLiteral("background"));
    line.variantFilesFolder = parser.value(QStringLiteral("variant-files"));
    line.areAnnotationsInFront = parser.isSet(QStringLiteral("pmi-in-front"));
    line.variantFolder = parser.value(QStringLiteral("snapshot-variants"));
}

/// The options that choose of the scene.
void readChoices(const QCommandLineParser& parser, CommandLine& line)
{
    line.attributes = parser.value(QStringLiteral("attributes"));
    line.attributeFilters = parser.values(QStringLiteral("attribute-filter"));
    if (parser.isSet(QStringLiteral("keep")))
        line.keep = parser.value(QStringLiteral("keep"));
    if (parser.isSet(QStringLiteral("hide")))
        line.hide = parser.value(QStringLiteral("hide"));
    line.show = parser.value(QStringLiteral("show"));
}

/// The options that stand for settings.
void readShortcuts(const QCommandLineParser& parser, CommandLine& line)
{
    if (parser.isSet(QStringLiteral("jobs")))
        line.jobs = parser.value(QStringLiteral("jobs"));
    if (parser.isSet(QStringLiteral("material-assets")))
        line.assetFolder = parser.value(QStringLiteral("material-assets"));
    line.isLodGiven = parser.isSet(QStringLiteral("lod"));
    if (line.isLodGiven)
        line.settings.emplace_back(QStringLiteral("export.lod"), parser.value(QStringLiteral("lod")));
    line.lodFiles = parser.isSet(QStringLiteral("lod-files"));
    if (line.lodFiles)
        line.settings.emplace_back(QStringLiteral("export.lodFiles"), QStringLiteral("on"));
    line.isSimplifyGiven = parser.isSet(QStringLiteral("simplify"));
    if (line.isSimplifyGiven)
        line.settings.emplace_back(QStringLiteral("export.simplify"), parser.value(QStringLiteral("simplify")));
    line.areTexturesGiven = parser.isSet(QStringLiteral("textures"));
    if (line.areTexturesGiven)
        line.settings.emplace_back(QStringLiteral("export.textures"), parser.value(QStringLiteral("textures")));
    line.isMaxTextureGiven = parser.isSet(QStringLiteral("max-texture"));
    if (line.isMaxTextureGiven)
        line.settings.emplace_back(QStringLiteral("export.maxTexture"), parser.value(QStringLiteral("max-texture")));
    line.isMergeBelowGiven = parser.isSet(QStringLiteral("merge-below"));
    if (line.isMergeBelowGiven)
        line.settings.emplace_back(QStringLiteral("export.mergeBelow"), parser.value(QStringLiteral("merge-below")));
    if (parser.isSet(QStringLiteral("uv")))
        line.uv = parser.value(QStringLiteral("uv"));
    line.referenceFolders = parser.values(QStringLiteral("allow-references"));
}

void readDocumentOptions(const QCommandLineParser& parser, CommandLine& line)
{
    line.treeOnly = parser.isSet(QStringLiteral("tree-only"));
    line.treeAttributes = parser.isSet(QStringLiteral("tree-attributes"));
    line.tree = line.treeOnly || line.treeAttributes || parser.isSet(QStringLiteral("tree"));
    line.preferred = parser.value(QStringLiteral("prefer")).split(QLatin1Char(','), Qt::SkipEmptyParts);
    line.keptDocument = parser.value(QStringLiteral("keep-normalised"));
    if (line.treeOnly)
        line.settings.emplace_back(QStringLiteral("import.PLMXML.referencedFiles"), QStringLiteral("off"));
}

/// The options that mean the same for each file of a batch.
constexpr const char* batchOptions[] = {"unit",
                                        "up",
                                        "scale-into-vertices",
                                        "web",
                                        "instances",
                                        "merge-below",
                                        "glb-edges",
                                        "lod",
                                        "lod-files",
                                        "simplify",
                                        "textures",
                                        "max-texture",
                                        "attributes",
                                        "attribute-filter",
                                        "keep",
                                        "hide",
                                        "show",
                                        "material-assets",
                                        "uv",
                                        "variant",
                                        "prefer",
                                        "set",
                                        "allow-references"};

/// Gives a sentence when something does not go with a batch.
std::optional<QString> readBatch(const QCommandLineParser& parser, CommandLine& line)
{
    line.batchFolder = parser.value(QStringLiteral("batch"));
    if (line.batchFolder.isEmpty())
        return std::nullopt;
    if (!line.files.isEmpty())
        return QStringLiteral("--batch imports a folder, and %1 is named beside it").arg(line.files.first());
    if (!QFileInfo(line.batchFolder).isDir())
        return QStringLiteral("--batch wants a folder, and there is none at '%1'").arg(line.batchFolder);
    if (line.outputFile.isEmpty() || (QFileInfo::exists(line.outputFile) && !QFileInfo(line.outputFile).isDir()))
        return QStringLiteral("--batch wants a folder for its GLB files: --output FOLDER");
    if (!line.jobs.isNull() && line.jobs.toInt() < 1)
        return QStringLiteral("--jobs wants a number from 1 on with --batch, not '%1'").arg(line.jobs);
    for (const OptionRow& row : optionTable()) {
        const QString name = text(row.name);
        if (!parser.isSet(name) || name == QLatin1String("batch") || name == QLatin1String("output") ||
            name == QLatin1String("jobs"))
            continue;
        if (std::find_if(std::begin(batchOptions), std::end(batchOptions),
                         [&](const char* option) { return name == QLatin1String(option); }) == std::end(batchOptions))
            return QStringLiteral("--%1 does not go with --batch").arg(name);
        if (!row.valueName)
            line.batchOptions << QStringLiteral("--%1").arg(name);
        for (const QString& value : parser.values(name))
            line.batchOptions << QStringLiteral("--%1=%2").arg(name, value);
    }
    return std::nullopt;
}

/// Gives a sentence when a value is wrong.
std::optional<QString> readCluster(const QCommandLineParser& parser, CommandLine& line)
{
    line.cluster = parser.value(QStringLiteral("cluster"));
    line.partition = parser.value(QStringLiteral("partition"));
    const bool isWanted = parser.isSet(QStringLiteral("cluster"));
    if (isWanted && line.cluster != QLatin1String("slurm"))
        return QStringLiteral("--cluster wants slurm, not '%1'").arg(line.cluster);
    if (!isWanted && (parser.isSet(QStringLiteral("nodes")) || parser.isSet(QStringLiteral("partition"))))
        return QStringLiteral("--nodes and --partition want --cluster slurm");
    if (!parser.isSet(QStringLiteral("nodes")))
        return std::nullopt;
    line.clusterNodes = parser.value(QStringLiteral("nodes")).toInt();
    if (line.clusterNodes < 1 || line.clusterNodes > 100000)
        return QStringLiteral("--nodes wants a number from 1 to 100000, not '%1'")
            .arg(parser.value(QStringLiteral("nodes")));
    return std::nullopt;
}

/// The values of `--set`, split at the first equals sign. Gives a sentence when one has none.
std::optional<QString> readSettings(const QStringList& values, CommandLine& line)
{
    for (const QString& value : values) {
        const int equals = value.indexOf(QLatin1Char('='));
        if (equals <= 0)
            return QStringLiteral("--set wants name=value, not '%1'").arg(value);
        line.settings.emplace_back(value.left(equals), value.mid(equals + 1));
    }
    return std::nullopt;
}

/// What is missing or too much, once every option is known.
std::optional<QString> complaint(const CommandLine& line)
{
    if (line.help || line.version || line.helpSettings || line.selfCheck || !line.batchFolder.isEmpty())
        return std::nullopt;
    if (line.files.isEmpty())
        return QStringLiteral("no file to import");
    for (const QString& file : line.files)
        if (line.treeOnly && QFileInfo::exists(file) && !importer::plmxml::isDocument(file))
            return QStringLiteral("--tree-only wants PLMXML documents, and %1 is none").arg(file);
    if (line.assetFolder && !QFileInfo(*line.assetFolder).isDir())
        return QStringLiteral("--material-assets wants a folder, and there is none at '%1'").arg(*line.assetFolder);
    return std::nullopt;
}

} // namespace

const std::vector<OptionRow>& optionTable()
{
    static const std::vector<OptionRow> table = {
        {"o", "output", "OUT", "Write the scene to this file: glTF binary (.glb) or scene file (.osb)."},
        {nullptr, "batch", "FOLDER",
         "Import each file of this folder and those below for itself and write a GLB file for each into the folder of "
         "--output; begun again it goes on where it was interrupted."},
        {nullptr, "unit", "UNIT",
         "Length unit of a .glb file: mm, cm, m, in or ft. glTF asks for m, which is what it is without it."},
        {nullptr, "up", "AXIS",
         "Axis that points up in a .glb file: y or z. glTF asks for y, which is what it is without it."},
        {nullptr, "scale-into-vertices", nullptr,
         "Write vertices of .glb files in the unit of the file, and transforms without scale; the same as --set "
         "export.scaleIntoVertices=on."},
        {nullptr, "web", nullptr,
         "Write .glb files small, for web pages: positions as integers, normals of 8 bits, compressed (readers have to "
         "know KHR_mesh_quantization, EXT_meshopt_compression and EXT_mesh_gpu_instancing), with few draw calls. How "
         "far vertices may have moved is told."},
        {nullptr, "instances", nullptr,
         "Let one node of a .glb file draw a mesh at all of its places (EXT_mesh_gpu_instancing); the same as --set "
         "export.instances=on."},
        {nullptr, "merge-below", "N",
         "Make one mesh of those in a .glb file that have fewer than N triangles at all of their places, with a "
         "primitive for each material and a table of the parts; 0 for none; 10000 with --web. The same as --set "
         "export.mergeBelow=N."},
        {nullptr, "glb-edges", nullptr,
         "Add the edges between faces to .glb files, as lines that tell their faces; the same as --set "
         "export.edges=on."},
        {nullptr, "simplify", "ERROR",
         "Write .glb files with fewer triangles, within ERROR millimetres of the scene; how far they are off is "
         "measured and told. The same as --set export.simplify=ERROR."},
        {nullptr, "lod", "SHARES",
         "Add levels of detail to .glb files (MSFT_lod), by the share of the triangles that each has, such as 0.5,0.1; "
         "the same as --set export.lod=SHARES."},
        {nullptr, "lod-files", nullptr,
         "Write each level of --lod as a file beside that of --output, such as OUT.lod1.glb; the same as --set "
         "export.lodFiles=on."},
        {nullptr, "textures", "WHERE",
         "Where .glb files have the pictures of their materials: embed, external (in files beside) or none; the same "
         "as "
         "--set export.textures=WHERE."},
        {nullptr, "max-texture", "N",
         "Make pictures of .glb files smaller whose longer side has more than N pixels; the same as --set "
         "export.maxTexture=N."},
        {nullptr, "attributes", "DETAIL",
         "How much of the attributes is written and shown: none, names (with empty values) or all; all without it."},
        {nullptr, "attribute-filter", "PATTERN",
         "Write and show only attributes whose names match, such as 'Mat*'; with '!' before it, all others. May be "
         "given "
         "several times."},
        {nullptr, "bom", "OUT",
         "Write a parts list to this file: product, count, path, material, measures, attributes (.csv or .json). The "
         "converter measures exact surfaces for it; the triangles are measured where there are none."},
        {nullptr, "bom-levels", "LEVELS",
         "Form of the parts list: flat, with each part once, or indented, with what one of each assembly consists of; "
         "flat without it."},
        {nullptr, "keep", "QUERY",
         "Keep only what matches, such as 'name~Bolt*|attribute:Material=Steel', with what is above and below it."},
        {nullptr, "hide", "QUERY", "Hide what matches."},
        {nullptr, "show", "WHAT", "Show what is hidden at first: pmi, what STEP files draw beside parts."},
        {nullptr, "report", "OUT.json", "Write what came of the import, step by step, to this file."},
        {nullptr, "material-assets", "FOLDER",
         "Put the assets of this folder on materials of the same name; the same as --set assets.folder=FOLDER --set "
         "scene.applyMaterialAssets=on."},
        {nullptr, "uv", "KIND",
         "Texture coordinates to make: auto, those of a box for meshes without any that a material with a texture "
         "comes on; box, for all without any; surface, those of exact surfaces, and auto for others; none. The same as "
         "--set mesh.uv=... --set convert.uv=..."},
        {nullptr, "snapshot", "OUT.png", "Draw a picture of the scene into this file."},
        {nullptr, "size", "WIDTHxHEIGHT", "Size of the picture in pixels; 1280x800 without it."},
        {nullptr, "view", "VIEW",
         "Where the picture looks from: iso, front, back, left, right, top or bottom, or saved:NAME for the view of "
         "the "
         "variant set of that name; iso without it."},
        {nullptr, "look", "LOOK",
         "How pictures show surfaces: plain, or studio, with metalness, roughness and textures; the same as --set "
         "picture.look=LOOK."},
        {nullptr, "environment", "FILE.hdr",
         "Radiance picture of the light all around, for pictures with --look studio; a studio without colors is "
         "around without it."},
        {nullptr, "background", "BACKGROUND",
         "What stands behind the scene in pictures: a color (#rrggbb or a name), transparent, or the file of a "
         "picture; "
         "a soft gray without it."},
        {nullptr, "pmi-in-front", nullptr,
         "Draw annotations before all parts, also those that are behind some; without it where a saved view says so."},
        {nullptr, "variants", nullptr, "Print the variant sets with their groups and viewpoints."},
        {nullptr, "variant", "SET", "Apply this variant set before anything is printed or written."},
        {nullptr, "snapshot-variants", "FOLDER",
         "Draw a picture of each variant set into this folder, from the set's viewpoint unless --view is given."},
        {nullptr, "variant-files", "FOLDER",
         "Write a GLB file of what each variant set shows into this folder, for viewers that know no variants."},
        {nullptr, "tree", nullptr, "Print the scene tree."},
        {nullptr, "tree-attributes", nullptr, "Print the scene tree with the attributes of its nodes."},
        {nullptr, "tree-only", nullptr,
         "Print the structure of PLMXML documents without reading a part file, and which files would be read."},
        {nullptr, "prefer", "FORMATS",
         "Formats to take where a PLMXML document names files of several for one part, the best first, such as "
         "jt,step."},
        {nullptr, "keep-normalised", "FILE", "Write the form in which a PLMXML document was read to this file."},
        {"j", "jobs", "N", "Run at most N converter processes at a time; the same as --set processes.most=N."},
        {nullptr, "cluster", "SCHEDULER",
         "Run the conversions on a cluster: slurm. One allocation is taken for the run, or the one that it is started "
         "in."},
        {nullptr, "nodes", "N", "Ask the cluster for this many nodes; one without it."},
        {nullptr, "partition", "NAME", "Ask this partition of the cluster; its default one without it."},
        {nullptr, "trace", nullptr, "Print each call that goes into the host to the standard error stream."},
        {nullptr, "allow-references", "DIR",
         "Let files name others in this folder and below it, whatever files.references says, also pictures and "
         "buffers; may be given several times."},
        {nullptr, "set", "NAME=VALUE", "Change a setting; may be given several times."},
        {nullptr, "self-check", nullptr,
         "Tell what is installed, import a cube through the converter, and tell what is missing."},
        {nullptr, "help-settings", nullptr, "List the settings with their types, ranges and defaults."},
        {"h", "help", nullptr, "Show this text."},
        {nullptr, "version", nullptr, "Show the version."},
    };
    return table;
}

CommandLineResult parseCommandLine(const QStringList& arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(QStringList(QStringLiteral("znimport")) + arguments))
        return {{}, parser.errorText()};

    CommandLine line;
    line.files = parser.positionalArguments();
    readOutputs(parser, line);
    line.variants = parser.isSet(QStringLiteral("variants"));
    if (parser.isSet(QStringLiteral("variant")))
        line.variant = parser.value(QStringLiteral("variant"));
    readDocumentOptions(parser, line);
    line.trace = parser.isSet(QStringLiteral("trace"));
    line.help = parser.isSet(QStringLiteral("help"));
    line.version = parser.isSet(QStringLiteral("version"));
    line.helpSettings = parser.isSet(QStringLiteral("help-settings"));
    line.selfCheck = parser.isSet(QStringLiteral("self-check"));
    readChoices(parser, line);
    readShortcuts(parser, line);
    std::optional<QString> error = readSettings(parser.values(QStringLiteral("set")), line);
    if (!error)
        error = readCluster(parser, line);
    if (!error)
        error = readBatch(parser, line);
    if (!error)
        error = complaint(line);
    return {line, error};
}

QString exitCodesText()
{
    return QStringLiteral("Exit codes: 0 all imported, 1 nothing imported, 2 wrong use, 3 imported in part, "
                          "130 interrupted.");
}

QString helpText()
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Imports 3D and CAD files into a scene, shows what came in and "
                                                    "writes it.\n\n") +
                                     exitCodesText());
    addOptions(parser);
    return parser.helpText().replace(QCoreApplication::arguments().value(0), QStringLiteral("znimport"));
}

} // namespace znimport
