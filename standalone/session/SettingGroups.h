#pragma once

#include "import/filetypes/znCADFileTypes.h"
#include "standalone/session/Setting.h"

#include <QCoreApplication>

#include <map>

namespace zn
{

/// Where translators find the texts of the settings.
struct SettingHelp {
    Q_DECLARE_TR_FUNCTIONS(zn::Settings)
};

/// Settings whose names begin alike. A setting is one member, declared together with its row; it stands in help and
/// docs at the place that it has here.
struct SettingGroup {
    /// The settings of the group join `list`, which must live as long.
    explicit SettingGroup(SettingList& list) : m_list(list) {}

protected:
    SettingList& m_list; ///< where settings join
};

/// Converter processes.
struct ProcessSettings : SettingGroup {
    using SettingGroup::SettingGroup;

    ///@{
    /// What the help says.
    Setting<int> most{
        m_list, "processes.most", 0, SettingRange{0, 1024},
        SettingHelp::tr("How many converter processes run at a time; 0 lets cores and free memory decide.")};
    ///@}
};

/// Where files go.
struct FileSettings : SettingGroup {
    using SettingGroup::SettingGroup;

    /// Which scene files are mapped.
    enum class MappedFiles { Own, All, None };
    /// Which documents that files name are followed; as `files::references::Rule`.
    enum class References { Parts, Below, None };

    /// Where mesh files are read.
    enum class Reading { Child, Process };

    ///@{
    /// What the help says.
    Setting<QString> temporaryFolder{
        m_list, "files.temporaryFolder", QString(),
        SettingHelp::tr("Where converted files go; empty for a folder of the session's own, which goes with it.")};
    Setting<MappedFiles> map{
        m_list,
        "files.map",
        MappedFiles::Own,
        {QStringLiteral("own"), QStringLiteral("all"), QStringLiteral("none")},
        SettingHelp::tr("Which scene files are mapped instead of read into memory: own are those in the session's own "
                        "folder. A mapped file that somebody cuts short ends the program.")};
    Setting<Reading> reading{
        m_list,
        "files.reading",
        Reading::Child,
        {QStringLiteral("child"), QStringLiteral("process")},
        SettingHelp::tr("Where mesh files (OBJ, glTF, PLY, WRL) and product structures (PLMXML) are read: in a child "
                        "process, which can be stopped and whose crash costs one file, or in this process, which takes "
                        "no start of another.")};
    Setting<References> references{
        m_list,
        "files.references",
        References::Parts,
        {QStringLiteral("parts"), QStringLiteral("below"), QStringLiteral("none")},
        SettingHelp::tr("Which documents that a file names are read (part files, material libraries, documents within "
                        "documents): parts are those wherever the file says, below only those in the folder of the "
                        "imported file and below it. Buffers and pictures come from the folder of the file that names "
                        "them and below it in any case.")};
    Setting<QString> referenceFolders{
        m_list, "files.referenceFolders", QString(),
        SettingHelp::tr("Folders that files may name others in all the same, with what is below them; a colon between "
                        "two.")};
    ///@}
};

/// What reading a file may cost.
struct ReadSettings : SettingGroup {
    using SettingGroup::SettingGroup;

    ///@{
    /// What the help says.
    Setting<int> memory{
        m_list, "read.memory", 8192, SettingRange{64, 1e6, "MB"},
        SettingHelp::tr("How much memory reading one file may take before it is refused (OBJ, glTF, PLY, WRL, scene "
                        "files and PLMXML); reads that run at the same time share it. A small file gets "
                        "less: 256 MB, and 1 KB for each of its bytes.")};
    ///@}
};

/// What the converter of all formats reads.
struct ConvertSettings : SettingGroup {
    using SettingGroup::SettingGroup;

    /// Whether the converter locks itself in.
    enum class Sandbox { On, Off, Require };
    /// Which texture coordinates exact surfaces get.
    enum class Uv { None, Surface };

    ///@{
    /// What the help says.
    Setting<bool> pmi{m_list, "convert.pmi", true,
                      SettingHelp::tr("Read what is drawn beside parts (STEP): dimensions, tolerances, notes.")};
    Setting<bool> automaticViews{
        m_list, "convert.automatic-views", false,
        SettingHelp::tr("Keep the saved views that a program made by itself (STEP): \"* front\" and the like.")};
    Setting<Uv> uv{
        m_list,
        "convert.uv",
        Uv::None,
        {QStringLiteral("none"), QStringLiteral("surface")},
        SettingHelp::tr("Texture coordinates of exact surfaces (STEP, IGES, BREP): with surface their own parameters, "
                        "by length, so that a picture lies once on each metre.")};
    Setting<Sandbox> sandbox{
        m_list,
        "convert.sandbox",
        Sandbox::On,
        {QStringLiteral("on"), QStringLiteral("off"), QStringLiteral("require")},
        SettingHelp::tr("Whether ptxconvert and ptxtessellate lock themselves in before they open a file: on as far as "
                        "the kernel can, off not at all; with require they do not begin without.")};
    ///@}
};

/// What files of meshes do not say of themselves.
struct MeshSettings : SettingGroup {
    using SettingGroup::SettingGroup;

    /// An axis that points up.
    enum class Axis { Y, Z };
    /// Which meshes without texture coordinates get some.
    enum class Uv { Auto, Box, None };

    ///@{
    /// What the help says.
    Setting<double> unit{m_list, "mesh.unit", 1, SettingRange{1e-6, 1e6, "mm"},
                         SettingHelp::tr("What one unit of a file without a unit of its own (OBJ, PLY, WRL) is.")};
    Setting<Axis> up{m_list,
                     "mesh.up",
                     Axis::Z,
                     {QStringLiteral("y"), QStringLiteral("z")},
                     SettingHelp::tr("Which axis points up in a file that does not say so (OBJ, PLY, WRL).")};
    Setting<int> level{
        m_list, "mesh.level", 0, SettingRange{0, 9},
        SettingHelp::tr("Which level of detail is taken of files that hold several (JT, glTF): 0 is the finest; a part "
                        "with fewer levels gives its coarsest.")};
    Setting<bool> repairNormals{
        m_list, "mesh.repairNormals", false,
        SettingHelp::tr(
            "Mend normals that are more than 60 degrees off their triangles, and turn triangles round whose "
            "normals are on their backs. Meshes that change lose their exact surfaces.")};
    Setting<Uv> uv{
        m_list,
        "mesh.uv",
        Uv::Auto,
        {QStringLiteral("auto"), QStringLiteral("box"), QStringLiteral("none")},
        SettingHelp::tr("Which meshes without texture coordinates get those of a box around them: with auto those that "
                        "a material with a texture comes on, with box all, with none no one. A picture lies once on "
                        "each metre of the part's own space; of the scene's with optimize.flushTransformations.")};
    Setting<bool> wrlInMetres{
        m_list, "mesh.wrlInMetres", false,
        SettingHelp::tr("Take WRL files by their standard: metres, and Y points up. CAD systems write "
                        "millimetres and Z up.")};
    ///@}
};

/// The converter of all formats, and how it is started. FormatSettings has those of single formats.
struct ConverterSettings : SettingGroup {
    using SettingGroup::SettingGroup;

    ///@{
    /// What the help says.
    Setting<QString> program{m_list, "converter.program", QString(),
                             SettingHelp::tr("The converter; empty for the installed ptxconvert.")};
    Setting<QString> options{
        m_list, "converter.options", QString(),
        SettingHelp::tr("Settings of the converter, name=value and blank between them; ptxconvert --help-settings "
                        "lists them.")};
    Setting<QString> updateProgram{m_list, "converter.updateProgram", QString(),
                                   SettingHelp::tr("The tool that brings an old Stylar file up to date.")};
    Setting<QString> updateArguments{
        m_list, "converter.updateArguments", QStringLiteral("{input} {output}"),
        SettingHelp::tr("What that tool is given: {input} is the old file, {output} the new one.")};
    Setting<QString> launcher{
        m_list, "converter.launcher", QString(),
        SettingHelp::tr("What stands before the command line of a converter, to run it elsewhere; {cores}, {memory} "
                        "(MB), {seconds} and {minutes} follow from the size of the input, {input} and {output} are "
                        "the files. Empty to start it here.")};
    Setting<bool> server{m_list, "converter.server", true,
                         SettingHelp::tr("Whether many conversions that need the CAD kernel, and many reads in "
                                         "processes of their own, are done by copies of one converter that has loaded "
                                         "what they need.")};
    ///@}
};

/// What a launcher is told of the needs of converters.
struct LauncherSettings : SettingGroup {
    using SettingGroup::SettingGroup;

    ///@{
    /// What the help says.
    Setting<int> mostCores{
        m_list, "launcher.mostCores", 8, SettingRange{1, 1e6},
        SettingHelp::tr("The most that {cores} may be: it is 1, and 1 more for each 32 MB of input.")};
    Setting<int> memory{m_list, "launcher.memory", 1024, SettingRange{64, 1e6, "MB"},
                        SettingHelp::tr("What {memory} is, without launcher.memoryPerMegabyte; the converter stops a "
                                        "little before it.")};
    Setting<int> mostMemory{m_list, "launcher.mostMemory", 0, SettingRange{0, 1e6, "MB"},
                            SettingHelp::tr("The most that {memory} may be; 0 for any.")};
    Setting<int> memoryPerMegabyte{m_list, "launcher.memoryPerMegabyte", 60, SettingRange{0, 1e6, "MB"},
                                   SettingHelp::tr("What each megabyte of input adds to {memory}.")};
    Setting<int> time{m_list, "launcher.time", 660, SettingRange{60, 1e6, "s"},
                      SettingHelp::tr("What {seconds} is, without launcher.timePerMegabyte; the converter stops a "
                                      "minute before it.")};
    Setting<int> timePerMegabyte{m_list, "launcher.timePerMegabyte", 60, SettingRange{0, 1e6, "s"},
                                 SettingHelp::tr("What each megabyte of input adds to {seconds}.")};
    ///@}
};

/// Clusters.
struct ClusterSettings : SettingGroup {
    using SettingGroup::SettingGroup;

    ///@{
    /// What the help says.
    Setting<QString> allocation{
        m_list, "cluster.allocation", QStringLiteral("--exclusive --mem=0"),
        SettingHelp::tr("What a cluster's allocation is asked for besides nodes and partition, in the "
                        "words of salloc; whole nodes by default.")};
    ///@}
};

/// What becomes of a converted tree before it comes into the scene.
struct OptimizeSettings : SettingGroup {
    using SettingGroup::SettingGroup;

    /// What becomes of references.
    enum class References { Dissolve, Keep };

    ///@{
    /// What the help says.
    Setting<bool> mergeMaterials{m_list, "optimize.mergeMaterials", true,
                                 SettingHelp::tr("Make one material of equal ones.")};
    Setting<bool> removeEmptyGroups{
        m_list, "optimize.removeEmptyGroups", false,
        SettingHelp::tr("Remove groups without content. No import comes to it: trees keep all groups.")};
    Setting<bool> flushTransformations{
        m_list, "optimize.flushTransformations", false,
        SettingHelp::tr("Move transforms into the vertices. Parts that are used in several places lose their "
                        "common geometry.")};
    Setting<bool> mergeGeometries{
        m_list, "optimize.mergeGeometries", false,
        SettingHelp::tr("Merge geometries of one material under one parent, and mesh exact surfaces anew. The merged "
                        "ones bear the name of the first.")};
    Setting<bool> keepNurbs{m_list, "optimize.keepNurbs", false,
                            SettingHelp::tr("Keep exact surfaces with the meshes that have them.")};
    Setting<bool> unshareNodes{m_list, "optimize.unshareNodes", false,
                               SettingHelp::tr("Give each node a content of its own, so that changes stay local.")};
    Setting<References> sourceReferences{m_list,
                                         "optimize.sourceReferences",
                                         References::Dissolve,
                                         {QStringLiteral("dissolve"), QStringLiteral("keep")},
                                         SettingHelp::tr("What becomes of references to part files. A dissolved one "
                                                         "without a transform goes with its name and tags.")};
    Setting<bool> solidKernel{
        m_list, "optimize.solidKernel", false,
        SettingHelp::tr("Add ambient occlusion to imported trees, and do not merge their geometries.")};
    ///@}
};

/// What scenes are written with.
struct ExportSettings : SettingGroup {
    /// What becomes of hidden nodes that a variant shows; as `files::glb::Hidden`.
    enum class Hidden { Shrink, Keep, LeaveOut };
    /// Where the pictures of materials are; as `files::glb::Textures`.
    enum class Textures { Embed, External, None };
    /// How many bits the components of a normal have.
    enum class NormalBits { All, Eight, Ten };

    using SettingGroup::SettingGroup;

    ///@{
    /// What the help says.
    Setting<bool> occlusionAsColors{m_list, "export.occlusionAsColors", false,
                                    SettingHelp::tr("Write ambient occlusion into GLB files, as vertex colors. Those "
                                                    "that files bring are always removed on import.")};
    Setting<bool> fold{m_list, "export.fold", true,
                       SettingHelp::tr("Make one node of a GLB file of those that stand alone below another and say "
                                       "nothing there: no place, no attributes, no other name.")};
    Setting<Hidden> hidden{
        m_list,
        "export.hidden",
        Hidden::Shrink,
        {QStringLiteral("shrink"), QStringLiteral("keep"), QStringLiteral("leave-out")},
        SettingHelp::tr("What becomes of parts in GLB files that are hidden at present and shown by a variant set, for "
                        "viewers that draw whatever they find: shrink makes them too small to be seen and keeps their "
                        "transform beside, keep writes them as they are.")};
    Setting<bool> scaleIntoVertices{
        m_list, "export.scaleIntoVertices", false,
        SettingHelp::tr("Write the vertices of GLB files in the unit of the file, and transforms without scale.")};
    Setting<bool> edges{m_list, "export.edges", false,
                        SettingHelp::tr("Add the edges between faces to GLB files, as lines: those of exact surfaces, "
                                        "and of other meshes where triangles meet at more than 30 degrees.")};
    Setting<Textures> textures{
        m_list,
        "export.textures",
        Textures::Embed,
        {QStringLiteral("embed"), QStringLiteral("external"), QStringLiteral("none")},
        SettingHelp::tr("Where the pictures of materials are: embed in the GLB file, external in files beside it.")};
    Setting<int> maxTexture{
        m_list, "export.maxTexture", 0, SettingRange{0, 65536, "pixels"},
        SettingHelp::tr("Make pictures in GLB files smaller whose longer side is longer; 0 for none. Pictures of the "
                        "kinds KTX2 and DDS stay as they are.")};
    Setting<bool> quantize{m_list, "export.quantize", false,
                           SettingHelp::tr("Write positions in GLB files as integers of 16 bits, and texture "
                                           "coordinates and colors too (KHR_mesh_quantization).")};
    Setting<double> error{m_list, "export.error", 0.05, SettingRange{1e-6, 1e6, "mm"},
                          SettingHelp::tr("How far export.quantize may move a vertex; less in small scenes, and a "
                                          "16384th of the longest side of a large mesh.")};
    Setting<NormalBits> normalBits{m_list,
                                   "export.normalBits",
                                   NormalBits::All,
                                   {QStringLiteral("all"), QStringLiteral("8"), QStringLiteral("10")},
                                   SettingHelp::tr("How many bits the components of normals in GLB files have.")};
    Setting<bool> weld{m_list, "export.weld", false,
                       SettingHelp::tr("Make one vertex of those of a mesh in a GLB file that are equal.")};
    Setting<bool> reorder{m_list, "export.reorder", false,
                          SettingHelp::tr("Put triangles and vertices of GLB files in an order that graphics "
                                          "processors take quickly.")};
    Setting<bool> compress{m_list, "export.compress", false,
                           SettingHelp::tr("Compress vertices and indices of GLB files (EXT_meshopt_compression).")};
    Setting<bool> instances{m_list, "export.instances", false,
                            SettingHelp::tr("Let one node of a GLB file draw a mesh at all of its places "
                                            "(EXT_mesh_gpu_instancing). Names and attributes are in its extras.")};
    Setting<int> mergeBelow{
        m_list, "export.mergeBelow", 0, SettingRange{0, 1000000000, "triangles"},
        SettingHelp::tr("Make one mesh of those in a GLB file that have fewer triangles at all of their places, with a "
                        "primitive for each material; 0 for none. Names and attributes are in the extras.")};
    Setting<QString> lod{m_list, "export.lod", QString(),
                         SettingHelp::tr("Levels of detail in GLB files (MSFT_lod): the share of the triangles that "
                                         "each has, such as 0.5,0.1; empty for none.")};
    Setting<bool> lodFiles{m_list, "export.lodFiles", false,
                           SettingHelp::tr("Write each level of export.lod as a GLB file beside the first one, such "
                                           "as OUT.lod1.glb, instead of into it.")};
    Setting<double> simplify{m_list, "export.simplify", 0, SettingRange{0, 1e6, "mm"},
                             SettingHelp::tr("How far the surfaces of GLB files may be from those of the scene, to "
                                             "have fewer triangles; 0 leaves the triangles as they are.")};
    ///@}
};

/// How pictures are drawn.
struct PictureSettings : SettingGroup {
    /// As `render::SnapshotLook`.
    enum class Look { Plain, Studio };

    using SettingGroup::SettingGroup;

    ///@{
    /// What the help says.
    Setting<Look> look{
        m_list,
        "picture.look",
        Look::Plain,
        {QStringLiteral("plain"), QStringLiteral("studio")},
        SettingHelp::tr("How pictures show surfaces: plain with their diffuse colors and lines at creases, "
                        "studio with metalness, roughness and textures in the light of a studio.")};
    ///@}
};

/// How exact surfaces are meshed anew.
struct TessellationSettings : SettingGroup {
    using SettingGroup::SettingGroup;

    ///@{
    /// What the help says. A preset is "custom", or the name of one of `geometry::tessellationPresets`.
    Setting<QString> preset{m_list, "tessellation.preset", presetWords(), presetHelp()};
    Setting<QString> program{
        m_list, "tessellation.program", QString(),
        SettingHelp::tr("What meshes exact surfaces anew; empty for the installed ptxtessellate.")};
    Setting<double> timeLimit{m_list, "tessellation.timeLimit", 600, SettingRange{0, 1e6, "s"},
                              SettingHelp::tr("How long one run of that program may take; 0 for any time.")};
    Setting<bool> useStitching{m_list, "tessellation.useStitching", false,
                               SettingHelp::tr("Join free edges of surfaces before they are meshed anew.")};
    Setting<double> stitchingTolerance{m_list, "tessellation.stitchingTolerance", 0.01, SettingRange{0, 1e6, "mm"},
                                       SettingHelp::tr("How far apart edges may be to be joined.")};
    Setting<double> chordDeviation{m_list, "tessellation.chordDeviation", 0.1, SettingRange{1e-6, 1e6, "mm"},
                                   SettingHelp::tr("How far a new mesh may be from its surface.")};
    Setting<double> normalTolerance{m_list, "tessellation.normalTolerance", 15, SettingRange{0.1, 90, "degrees"},
                                    SettingHelp::tr("The largest angle between normals along an edge of a new mesh.")};
    Setting<double> maxChordLength{m_list, "tessellation.maxChordLength", 0, SettingRange{0, 1e6, "mm"},
                                   SettingHelp::tr("The longest edge of a new mesh; 0 for any length.")};
    ///@}

private:
    static QStringList presetWords();
    static QString presetHelp();
};

/// What becomes of a tree in the scene.
struct SceneSettings : SettingGroup {
    using SettingGroup::SettingGroup;

    ///@{
    /// What the help says.
    Setting<bool> applyMaterialAssets{
        m_list, "scene.applyMaterialAssets", false,
        SettingHelp::tr("Put the assets of the chosen folder on materials of the same name.")};
    Setting<bool> centerInOrigin{m_list, "scene.centerInOrigin", false,
                                 SettingHelp::tr("Move what is imported so that its middle is in the origin.")};
    Setting<bool> putOnGround{m_list, "scene.putOnGround", false,
                              SettingHelp::tr("Move what is imported so that its lowest point is at the height 0.")};
    Setting<bool> fold{m_list, "scene.fold", true,
                       SettingHelp::tr("Take nodes out of what is imported that only wrap others: without a name, or "
                                       "with that of the one node around or below them, and without anything else.")};
    ///@}
};

/// What imports make of files of any format.
struct ImportSettings : SettingGroup {
    using SettingGroup::SettingGroup;

    ///@{
    /// What the help says.
    Setting<bool> uberMaterials{m_list, "import.uberMaterials", false,
                                SettingHelp::tr("Make uber materials of the simple ones that referenced files bring.")};
    ///@}
};

/// Assets.
struct AssetSettings : SettingGroup {
    using SettingGroup::SettingGroup;

    ///@{
    /// What the help says.
    Setting<QString> folder{
        m_list, "assets.folder", QString(),
        SettingHelp::tr("The folder of material assets: glTF files whose materials have a uuid and a "
                        "name in their extras.")};
    ///@}
};

/// The settings that each format has of its own.
struct FormatSettings : SettingGroup {
    using FileType = znCADFileTypes::FileType; ///< a format

    /// What converts the files of one format.
    struct Converter {
        /// `format` is the name of the format.
        Converter(SettingList& list, const QString& format);

        Setting<QString> program;   ///< empty for the converter of all formats
        Setting<QString> arguments; ///< what that program is given
    };

    /// The settings of all formats join `list`, which must live as long.
    explicit FormatSettings(SettingList& list);

    /// The converter of a format's own; null for a format that goes through none.
    const Converter* converter(FileType type) const;

    /// Whether the part files of an assembly of this format are wanted; null for a format that refers to none.
    const Setting<bool>* referencedFiles(FileType type) const;

private:
    std::map<FileType, Converter> m_converters;
    std::map<FileType, Setting<bool>> m_referencedFiles;
};

} // namespace zn
