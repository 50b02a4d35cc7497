#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"

#include <memory>
#include <vector>

/// Meshes geometries anew from the exact surfaces that they have kept.
///
/// `addNodes` and `setupTessellation` come first, then `applyTessellation`, which makes the new meshes, then
/// `rebuildSurfaces`, which gives them to the geometries, then `finalize`. A geometry without an exact surface keeps
/// its mesh, and so does one whose surface cannot be meshed as a whole; the user is told of both. No call throws.
class ZN_HOST_EXPORT znRetessellation
{
public:
    znRetessellation();
    /// Drops meshes that were made and not given to their geometries.
    ~znRetessellation();
    znRetessellation(const znRetessellation&) = delete;
    znRetessellation& operator=(const znRetessellation&) = delete;

    /// Takes the settings of the session that `setupTessellation` does not name: which program meshes and how long it
    /// may take. They hold for every object, made before or after, until the next call; before the first one the
    /// defaults do.
    static void copySettings();

    /// Adds the geometries at and below `nodes`, each once, however many nodes use it. Null is ignored. The object
    /// holds a reference on each geometry until `finalize`.
    void addNodes(const std::vector<osg::NodePtr>& nodes);

    /// How the new meshes shall be.
    /// @param chordDeviation how far a mesh may be from its surface, in millimetres
    /// @param normalTolerance the largest angle between the normals at the ends of an edge, in degrees
    /// @param maxChordLength longer edges are split, alike on both sides, so that no crack opens; in millimetres, 0 for
    /// any length
    /// @param useStitching free edges are joined first
    /// @param stitchingTolerance how far apart edges may be to be joined, in millimetres
    void setupTessellation(double chordDeviation, double normalTolerance, double maxChordLength, bool useStitching,
                           double stitchingTolerance);

    /// Makes the new meshes, in a process of its own: a damaged surface can end that process, never this one. All
    /// others get their meshes all the same. Returns when all is done; no event is delivered meanwhile.
    void applyTessellation();

    /// Gives the geometries their new meshes. Exact surfaces, lines and points stay; texture coordinates, colours and
    /// occlusion belonged to the old vertices and go. Nodes that share a geometry share it still.
    void rebuildSurfaces();

    /// Tells the user what kept its mesh, and lets go of all geometries.
    void finalize();

private:
    struct State;
    std::unique_ptr<State> m_state;
};
