#pragma once

#include "host/HostExport.h"

#include <memory>

/// What the user wants done with the tree of a converted CAD file. A value: it does not follow later changes.
class ZN_HOST_EXPORT zndPtxSettings
{
public:
    /// What becomes of the references to source files.
    enum SourceReferenceBehavior {
        DissolveReferences = 0, ///< they become plain groups and transforms
        KeepReferences = 1,     ///< they stay what they are
    };

    struct Values; ///< the host's own

    explicit zndPtxSettings(std::shared_ptr<const Values> values);
    ///@{
    /// Shares the values, which nobody changes.
    zndPtxSettings(const zndPtxSettings& other);
    zndPtxSettings& operator=(const zndPtxSettings& other);
    ///@}
    ~zndPtxSettings();

    /// Equal materials of the parts of the tree become one.
    bool getMergeSubReferenceMaterials() const;
    /// Groups and transforms without content are taken away.
    bool getRemoveEmptyGroups() const;
    /// Transforms go into the vertices.
    bool getFlushTransformations() const;
    /// Geometries of one material under one parent become one, and are meshed anew.
    bool getMergeGeometries() const;
    /// Exact surfaces stay with the meshes.
    bool getKeepNurbs() const;
    /// Nodes do not share their cores.
    bool getUnshareNodes() const;
    /// What becomes of the references to source files.
    SourceReferenceBehavior getSourceReferenceBehavior() const;

    /// Free edges closer than the stitching tolerance are joined before surfaces are meshed.
    bool getUseStitching() const;
    /// In millimetres.
    double getStitchingTolerance() const;
    /// How far a mesh may be from its surface, in millimetres.
    double getChordDeviation() const;
    /// The largest angle between the normals at the ends of an edge, in degrees.
    double getNormalTolerance() const;
    /// The largest length of an edge, in millimetres; 0 for any.
    double getMaxChordLength() const;

private:
    std::shared_ptr<const Values> m_values;
};
