#pragma once

#include <QByteArray>
#include <QString>

/// glTF-Transform, another program's library for glTF files, on a file that a test has written. It is a package that
/// scripts/setup installs together with the glTF validator; where it is not installed, a test skips.
namespace gltftransform
{

/// True if node is on the PATH and the package is in its place.
bool isInstalled();

/// The extras of the GLB file `from` as JSON text, as `extras.mjs` tells them; it writes the document anew to the file
/// `to`. Empty when that failed. Waits a minute at most.
QByteArray passOn(const QString& from, const QString& to);

} // namespace gltftransform
