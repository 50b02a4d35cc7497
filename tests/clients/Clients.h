#pragma once

#include <QString>
#include <QStringList>

#include <nlohmann/json.hpp>

/// Programs of other makers that read GLB files, for tests. `scripts/setup --with clients` installs them; where one is
/// not there, a test skips.
namespace clients
{

/// Those that tell what they see of a file: "blender", "three", "gltf-transform" and "gltfpack".
QStringList names();

/// Whether the client is on this machine, or "chromium" with the package three, or what "meshopt" and "draco" of
/// `optimize` take.
bool isInstalled(const QString& client);

/// What the client has of the GLB file: "objects", "meshObjects", "meshes", "triangles" as drawn, "materials", the
/// "box" in the axes of the file and, of Blender, objects with "numbered" names, "looseEdges", and meshes with
/// "customNormals". Null when it could not read it. Waits two minutes at most.
nlohmann::json seen(const QString& client, const QString& file);

/// What glTF-Transform has of a file with instances and merged parts; see web.mjs. Null when it could not read the
/// file.
nlohmann::json gathered(const QString& file);

/// The names of the parts that rays hit which three.js shoots at each part of a file; see pick.mjs. Null when it could
/// not.
nlohmann::json picked(const QString& file);

/// Writes the file anew to `to`, by "gltf-transform", "gltfpack" or, as small as that makes it, "gltfpack-small"; or
/// with nothing but the compression "meshopt" or "draco" of glTF-Transform. False when that failed.
bool optimize(const QString& client, const QString& file, const QString& to);

/// What glTF-Transform knows of the materials of a glTF file, by their names; see surfaces.mjs. Null when it could not
/// read the file.
nlohmann::json surfaces(const QString& file);

/// How many points Chromium draws of the file in the page of examples/variants, at first ("") and with each set: of all
/// colours "points", of those that are mostly of one "red", "green" and "blue". Null when it could not.
nlohmann::json drawn(const QString& file);

/// Lets Chromium draw the balls of `chart` (see chart.mjs) in the light of the Radiance picture `light` into the file
/// `picture`. False when it could not.
bool drawChart(const QString& chart, const QString& light, const QString& picture);

} // namespace clients
