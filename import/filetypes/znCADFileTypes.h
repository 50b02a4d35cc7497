#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>

/// The words that the library and its host share: results of jobs, file formats and their extensions.
/// A leaf without dependencies, so that every layer may include it.
namespace znCADFileTypes
{

/// Result of a job. The numbers are part of the contract and travel in signals.
enum JobState : std::int32_t {
    JobSucceeded = 0, ///< the job's result is complete
    JobFailed = 1,    ///< nothing usable
    JobWaiting = 2,   ///< the job never ran; set by the job frame alone
    JobPartial = 3,   ///< the main file is loaded, but at least one part file did not arrive
    JobRunning = 4,   ///< the first stage passed, child work is still to come
};

/// Order in which a managed queue starts its jobs; a higher priority starts first.
enum znJobPriority : std::int32_t {
    LowestPriority = 0, ///< whatever can wait
    LowPriority = 1,    ///< what a queue gives its jobs when nobody says otherwise
    ChildPriority = 2,  ///< conversions of part files that a loader job waits for
    HighPriority = 3,   ///< ahead of all others
};

/// File formats, numbered without gaps. Each enumerator stands for the format of its name; extensionTable() tells the
/// extensions of its files, and which of them go through the converter.
enum FileType : std::int32_t {
    Cinema4D = 0,
    Cosmo,
    WebDraft,
    XFB,
    Animara,
    Obj,
    OpenSG,
    PLMXML,
    Python,
    ThreeDStage,
    Quillon,
    VRML,
    ACIS,
    Stylar,
    DraftKit,
    CatiaV4,
    CatiaV5,
    DGN,
    Mechanor,
    JT,
    NX,
    Iges,
    Parasolid,
    ProEngineer,
    Rhino,
    SketchUp,
    SolidEdge,
    SolidWorks,
    Step,
    STL,
    BCAD,        ///< has a name and no extension
    Undefined,   ///< a file whose name tells no format
    Unsupported, ///< has a name and no extension; no file is taken for it
};

/// The name text of `type`, which is the key of the import options of that format; "undefined" for a value that is no
/// enumerator. The text lives as long as the program.
const char* fileTypeName(FileType type);

/// One row of the extension table.
struct FileTypeRow {
    std::unordered_set<std::string> extensions; ///< lower case, without the dot
    bool cadFormat = false;                     ///< the format goes through the external converter
};

/// From each format to its row.
using ExtensionTable = std::unordered_map<FileType, FileTypeRow>;

/// All rows, filled once at program start and never changed. BCAD, Undefined and Unsupported have no row.
const ExtensionTable& extensionTable();

/// The row of `type`, null if it has none.
const FileTypeRow* findRow(FileType type);

/// Extensions (lower case, without the dot) of the files that may refer to part files.
const std::unordered_set<std::string>& assemblyExtensions();

/// The formats that can contain mixed assemblies: parts of their own beside references to part files.
const std::unordered_set<FileType>& mixedAssemblyTypes();

} // namespace znCADFileTypes
