#include "ptx/occt/PartWork.h"

#include "ptx/model/EdgeSplitter.h"
#include "ptx/occt/Healing.h"
#include "ptx/occt/MeshExtraction.h"
#include "ptx/occt/OcctGuard.h"
#include "ptx/occt/SolidOrientation.h"
#include "ptx/occt/meshing/Meshing.h"
#include "ptx/occt/meshing/Sewing.h"
#include "ptx/occt/meshing/ShapeQueries.h"

#include <algorithm>
#include <numbers>

namespace ptx
{

namespace
{

// A part that needs too many triangles gets this much coarser with each attempt.
constexpr int CoarserAttempts = 4;
constexpr double CoarserDeviation = 4;
constexpr double CoarserAngle = 1.5;
constexpr double CoarsestAngle = std::numbers::pi / 3;

void warn(const Job& job, const ShapeBody& part, const std::string& text)
{
    job.log.warning("part \"" + part.name + "\": " + text);
}

bool isTooMany(double triangles, const PartBudget& budget)
{
    return budget.mostTriangles > 0 && triangles > budget.mostTriangles;
}

/// Meshes as finely as the budget allows. @return the tolerance that did it
Tolerance tessellateWithin(const ShapeBody& part, const Job& job, const PartBudget& budget)
{
    Tolerance tolerance = toleranceFor(part.shape, job.settings);
    tessellate(part.shape, tolerance, budget.inParallel);
    for (int i = 0; i < CoarserAttempts && isTooMany(static_cast<double>(triangleCount(part.shape)), budget); ++i) {
        tolerance.deviation *= CoarserDeviation;
        tolerance.angle = std::min(tolerance.angle * CoarserAngle, CoarsestAngle);
        tessellate(part.shape, tolerance, budget.inParallel);
        warn(job, part, "meshed more coarsely to stay within tessellation.max-triangles");
    }
    return tolerance;
}

void splitPieces(PartResult& result, const ShapeBody& part, const Job& job, const PartBudget& budget)
{
    const auto longest = static_cast<float>(job.settings.number(Setting::MaxEdgeLength));
    if (longest <= 0)
        return;
    double estimate = 0;
    for (const Piece& piece : result.body.pieces)
        estimate += splitEstimate(*piece.mesh, longest);
    if (isTooMany(estimate, budget))
        return warn(job, part,
                    "edges stay longer than tessellation.max-edge-length, or it would need more than "
                    "tessellation.max-triangles");
    result.triangles = 0;
    for (Piece& piece : result.body.pieces) {
        piece.mesh = splitEdges(*piece.mesh, longest);
        result.triangles += piece.mesh->triangles.size() / 3;
    }
}

} // namespace

void healPart(ShapeBody& part, const Job& job, bool inParallel)
{
    if (!job.settings.isOn(Setting::Heal))
        return;
    if (const Trouble trouble = guarded("healing", [&]() -> Trouble { return heal(part, inParallel), std::nullopt; }))
        warn(job, part, trouble->message);
}

void stitchPart(ShapeBody& part, const Job& job, double seconds)
{
    const Trouble trouble = guarded("stitching", [&]() -> Trouble {
        const std::size_t before = freeEdgeCount(part.shape);
        if (before == 0 || !job.settings.isOn(Setting::Stitch))
            return std::nullopt;
        orientByRay(part);
        if (sew(part, stitchTolerance(part.shape, job.settings), seconds) == SewingResult::OutOfTime)
            return Failure{ExitCode::TimeLimit, "its faces stay loose, for stitch.time is over"};
        const std::size_t after = freeEdgeCount(part.shape);
        if (after < before)
            job.log.info("part \"" + part.name + "\": stitched, free edges " + std::to_string(before) + " -> " +
                         std::to_string(after));
        return std::nullopt;
    });
    if (trouble)
        warn(job, part, trouble->message);
}

PartResult meshPart(ShapeBody& part, const Job& job, const PartBudget& budget)
{
    PartResult result;
    const Trouble trouble = guarded("meshing", [&]() -> Trouble {
        const Tolerance tolerance = tessellateWithin(part, job, budget);
        orientByMesh(part, tolerance.deviation);
        result = extract(part, tolerance, job.settings.isOn(Setting::KeepBrep));
        splitPieces(result, part, job, budget);
        return std::nullopt;
    });
    if (trouble)
        warn(job, part, trouble->message);
    if (result.emptyFaces > 0)
        warn(job, part,
             std::to_string(result.emptyFaces) + " of " + std::to_string(result.faces) +
                 " faces and free edges got no mesh");
    return result;
}

} // namespace ptx
