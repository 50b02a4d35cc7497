#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace files::glb
{

/// Fewer triangles, in the meshes of the file or in coarser ones for views from afar. Vertices never move: triangles
/// are made of fewer of them, and their open borders stay.
struct LevelOptions {
    /// How far the surface of a mesh may be from what it was, in millimetres of the scene at the largest size in which
    /// it is drawn; 0 leaves the triangles as they are.
    double simplify = 0;
    /// Of each coarser level the share of triangles that it is to have: above 0 and below 1, each less than the one
    /// before. Empty for none.
    std::vector<double> shares;
    /// The levels are files beside the first one (`levelPath`) rather than in it (`MSFT_lod`).
    bool asFiles = false;

    /// Whether there is anything to do.
    bool isOn() const { return simplify > 0 || !shares.empty(); }
};

/// The shares of a text such as "0.5,0.1"; none of an empty one. Nothing when they are not as `LevelOptions::shares`
/// has to be, or more than 9.
std::optional<std::vector<double>> levelShares(const QString& text);

/// Where the file of a level stands, counted from 1 on: "OUT.lod1.glb" for "OUT.glb".
QString levelPath(const QString& path, std::size_t level);

} // namespace files::glb
