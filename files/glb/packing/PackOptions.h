#pragma once

namespace files::glb
{

/// The steps that make a file smaller. Each stands for itself; none of them leaves a triangle, a name or a mesh out.
struct PackOptions {
    /// Writes positions as 16-bit integers on a grid for each mesh (`KHR_mesh_quantization`), texture coordinates from
    /// 0 to 1 and colours as integers, too. Meshes then hang below nodes that scale them.
    bool quantize = false;
    /// How far such a vertex may move in the scene, in millimetres. It is less in scenes below 2048 times that, and
    /// 1/16384 of the longest side of a mesh where that is more.
    double error = 0.05;
    /// Bits of the components of normals: 8 or 10, or 0 for floats.
    int normalBits = 0;
    bool weld = false;     ///< vertices of a mesh that are equal in everything become one
    bool reorder = false;  ///< triangles and vertices in the order in which GPUs take them quickly
    bool compress = false; ///< `EXT_meshopt_compression`

    /// Whether there is anything to do.
    bool isOn() const { return quantize || normalBits > 0 || weld || reorder || compress; }
};

} // namespace files::glb
