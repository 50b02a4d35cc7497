#pragma once

#include "geometry/WrongNormals.h"
#include "host/OSGSystem/Node.h"
#include "import/filetypes/znCADFileTypes.h"
#include "importer/SceneText.h"
#include "importer/plmxml/DocumentStructure.h"

#include <QMetaType>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace zn
{

/// A part file that did not come in, or something that a file lost by entities that are broken.
struct MissingPart {
    QString file;   ///< its path, as the import looked for it
    QString reason; ///< why it did not come in, for a person
    /// The places that it belongs to, each as the names from the top of the tree down; empty where they are not known.
    QStringList instances;
};

/// What files hold beside their parts and the converters do not bring in. The parts are complete without it.
struct LeftOutContent {
    QString what;          ///< for a person, many of them: "segments of PMI"
    std::size_t count = 0; ///< in all files together
    std::size_t files = 0; ///< that hold some; 0 where nobody counts them
};

/// A step of the optimisation, and what the tree held before and after it.
struct TreeStep {
    QString name;       ///< as the optimisation job calls it
    double seconds = 0; ///< without the counting
    SceneCounts before; ///< what the tree held when it began
    SceneCounts after;  ///< what it held when it had ended
};

/// What a row of the table of material assets has done.
struct MaterialRow {
    QString row;             ///< what it looks for, as the table has it: `part "Bolt*"`
    QString asset;           ///< the name or the uuid of its asset
    std::size_t places = 0;  ///< of geometries, and choices of switch materials, that bear the asset by this row
    bool hasMatched = false; ///< something is what it looks for, be it that another row is weightier there
};

/// What became of one file.
struct ImportResult {
    QString file;                                               ///< the path that the request names
    znCADFileTypes::JobState state = znCADFileTypes::JobFailed; ///< succeeded, partial or failed
    osg::RefPtr<osg::NodePtr> node;                             ///< in the scene; null after a failure
    QString error;                                              ///< why it failed; empty otherwise
    QStringList messages;                                       ///< what the log said meanwhile
    /// Part files that did not come in, and what was lost of others; empty for a complete import.
    std::vector<MissingPart> missing;
    std::vector<LeftOutContent> leftOut; ///< each kind once; `messages` tells of them too
    bool cancelled = false;              ///< ended by Importer::cancel()
    /// Nodes that said nothing and were taken out in the end, see the setting scene.fold.
    std::size_t folded = 0;
    /// Of the table "materials.json" in the folder of material assets; empty where none was put on the tree.
    std::vector<MaterialRow> materialRows;
    /// What a PLMXML document holds; null for another file, for one that could not be read, and, unless the request
    /// wants it, for one that the loader could read as it stands.
    std::shared_ptr<const DocumentStructure> document;
    /// Triangles of its tree with wrong normals, before they were mended; nothing unless the request wants the steps or
    /// the setting mesh.repairNormals is on.
    std::optional<geometry::WrongNormals> wrongNormals;
    bool repairedNormals = false; ///< those were mended
    std::vector<TreeStep> steps;  ///< of the optimisation, those begun, in order; empty unless the request wants them
};

} // namespace zn

Q_DECLARE_METATYPE(zn::ImportResult)
