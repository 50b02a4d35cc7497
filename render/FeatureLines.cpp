#include "render/FeatureLines.h"

#include <cmath>

namespace render
{

namespace
{

constexpr float outline = 0.85f;
constexpr float crease = 0.70f;
constexpr float smoothBorder = 0.22f;
/// Cosines of the angles from which on a bend is a crease: at the border of two faces, and within one.
constexpr float borderBend = 0.985f;
constexpr float innerBend = 0.88f;
/// A step in depth counts from this many pixels on; a smooth surface stays below one on its way out of sight.
constexpr float stepPixels = 2.5f;
/// Colours that differ by less (in light) count as one.
constexpr float evenColor = 0.02f;

bool isSurface(const FirstHit& hit)
{
    return hit.placed < FirstHit::Stroke;
}

bool hasStep(const FirstHit& a, const FirstHit& b, float pixelSize)
{
    const Eigen::Vector3f way = b.position - a.position;
    return std::max(std::abs(way.dot(a.normal)), std::abs(way.dot(b.normal))) > stepPixels * pixelSize;
}

} // namespace

float lineStrength(const FirstHit& a, const FirstHit& b, float pixelSize)
{
    if (!isSurface(a) || !isSurface(b)) {
        const bool meetsNothing = a.placed == FirstHit::Nothing || b.placed == FirstHit::Nothing;
        return meetsNothing && (isSurface(a) || isSurface(b)) ? outline : 0;
    }
    if (a.placed != b.placed || hasStep(a, b, pixelSize))
        return outline;
    const float bend = a.normal.dot(b.normal);
    if (a.face != b.face)
        return bend < borderBend ? crease : smoothBorder;
    return bend < innerBend ? crease : 0;
}

bool isAlike(const FirstHit& a, const FirstHit& b, float pixelSize)
{
    if (a.placed != b.placed || a.placed == FirstHit::Stroke || !a.isOpaque || !b.isOpaque)
        return false;
    return (a.color - b.color).cwiseAbs().maxCoeff() < evenColor && lineStrength(a, b, pixelSize) == 0;
}

} // namespace render
