#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

namespace znimport
{

/// One option of the command line. Help, manual and completion follow from the table of these.
struct OptionRow {
    const char* shortName; ///< null if it has none
    const char* name;
    const char* valueName; ///< null for an option without a value
    const char* help;
};

/// All options, in the order in which they are shown.
const std::vector<OptionRow>& optionTable();

/// What the command line asks for.
struct CommandLine {
    QStringList files;
    QList<QByteArray> arguments = {}; ///< all, as the system gave them
    QString outputFile;               ///< empty when nothing is to be written; with `batchFolder` a folder
    QString batchFolder;              ///< of which each file is imported for itself; empty for an import of `files`
    QStringList batchOptions;         ///< those that go on to each import of a batch
    QString snapshotFile;             ///< empty when no picture is wanted
    QString snapshotSize;
    QString snapshotView;
    QString look;            ///< of pictures; empty for what the setting says
    QString environmentFile; ///< of the light in pictures; empty for that of a studio
    QString background;      ///< of pictures; empty for a soft grey
    bool isViewGiven = false;
    QString variantFilesFolder;         ///< for a GLB file of each variant set; empty when none is wanted
    bool areAnnotationsInFront = false; ///< in pictures, whatever their view says
    QString variantFolder;              ///< for a picture of each variant set; empty when none is wanted
    QString reportFile;                 ///< empty when no report is wanted
    QString unit;                       ///< of a GLB file; empty for metres
    QString up;                         ///< axis of a GLB file; empty for Y
    bool scaleIntoVertices = false;     ///< of GLB files, whatever the setting says
    bool web = false;                   ///< GLB files are to be small
    bool instances = false;             ///< GLB files are to have one node for a mesh at several places
    bool isMergeBelowGiven = false;     ///< which meshes of GLB files become one was said
    bool glbEdges = false;              ///< GLB files are to have edges, whatever the setting says
    bool isLodGiven = false;            ///< levels of detail of GLB files were said
    bool lodFiles = false;              ///< and that they are files of their own
    bool isSimplifyGiven = false;       ///< how far GLB files may be simplified was said
    bool areTexturesGiven = false;      ///< where the pictures of GLB files are was said
    bool isMaxTextureGiven = false;     ///< and how large they may be
    QString attributes;                 ///< how much of them is written; empty for all
    QStringList attributeFilters;       ///< patterns of the names that are written
    QString bomFile;                    ///< of a parts list; empty when none is wanted
    QString bomLevels;                  ///< empty for a flat one
    QString keep;                       ///< a query; null when everything is kept
    QString hide;                       ///< a query; null when nothing is hidden
    QString show;                       ///< what is shown that is hidden at first; empty for nothing
    QString jobs;                       ///< how many conversions run at a time; null when it was not said
    std::optional<QString> assetFolder; ///< of the material assets to apply
    std::optional<QString> uv;          ///< which texture coordinates are made
    QStringList referenceFolders;       ///< where files may name others, as given
    QString cluster;                    ///< the scheduler that conversions run on; empty to run them here
    int clusterNodes = 0;               ///< 0 leaves it to the scheduler
    QString partition;                  ///< of the cluster; empty for the scheduler's own choice
    bool variants = false;
    std::optional<QString> variant; ///< the set to apply
    bool tree = false;
    bool treeAttributes = false;
    bool treeOnly = false; ///< the structure of PLMXML documents, without their part files
    QStringList preferred; ///< formats of part files, the best first
    QString keptDocument;  ///< where to write the form of a PLMXML document that was read; empty for nowhere
    bool trace = false;
    bool help = false;
    bool version = false;
    bool helpSettings = false;
    bool selfCheck = false;
    std::vector<std::pair<QString, QString>> settings; ///< name and value, in the order given
};

/// Either a command line or the sentence that says what is wrong with it.
struct CommandLineResult {
    CommandLine commandLine;
    std::optional<QString> error;
};

/// `arguments` without the program's name.
CommandLineResult parseCommandLine(const QStringList& arguments);

/// What the exit codes mean, in one sentence.
QString exitCodesText();

/// The text of `--help`.
QString helpText();

} // namespace znimport
