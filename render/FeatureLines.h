#pragma once

#include "render/Painter.h"

namespace render
{

/// How strong a line between two neighbouring samples of a picture is, from 0 to 1: strong at outlines of parts and at
/// sharp creases, weak where two faces of the model meet smoothly. Strokes have no outlines.
/// `pixelSize` is the size of a pixel on the stage where the samples are.
float lineStrength(const FirstHit& a, const FirstHit& b, float pixelSize);

/// True when both samples see the same smooth and evenly coloured, opaque surface, or both see nothing.
bool isAlike(const FirstHit& a, const FirstHit& b, float pixelSize);

} // namespace render
