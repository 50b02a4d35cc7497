#include "ptx/occt/PartWork.h"

#include "ptx/model/EdgeSplitter.h"
#include "ptx/occt/ExactMeasures.h"
#include "ptx/occt/Healing.h"
#include "ptx/occt/HealingAhead.h"
#include "ptx/occt/MeshExtraction.h"
#include "ptx/occt/OcctGuard.h"
#include "ptx/occt/SolidOrientation.h"
#include "ptx/occt/meshing/Meshing.h"
#include "ptx/occt/meshing/Sewing.h"
#include "ptx/occt/meshing/ShapeQueries.h"

#include <algorithm>
#include <numbers>

namespace ptx::occt
{

namespace
{

// A part that needs too many triangles gets this much coarser with each attempt.
constexpr int CoarserAttempts = 4;
constexpr double CoarserDeviation = 4;
constexpr double CoarserAngle = 1.5;
constexpr double CoarsestAngle = std::numbers::pi / 3;

void warn(const model::Job& job, const occt::meshing::ShapeBody& part, const std::string& text)
{
    job.log.warning("part \"" + part.name + "\": " + text);
}

bool isTooMany(double triangles, const PartBudget& budget)
{
    return budget.mostTriangles > 0 && triangles > budget.mostTriangles;
}

/// Meshes as finely as the budget allows. @return the tolerance that did it
occt::meshing::Tolerance tessellateWithin(const occt::meshing::ShapeBody& part, const model::Job& job,
                                          const PartBudget& budget)
{
    occt::meshing::Tolerance tolerance = occt::meshing::toleranceFor(part.shape, job.settings);
    occt::meshing::tessellate(part.shape, tolerance, budget.inParallel);
    for (int i = 0;
         i < CoarserAttempts && isTooMany(static_cast<double>(occt::meshing::triangleCount(part.shape)), budget); ++i) {
        tolerance.deviation *= CoarserDeviation;
        tolerance.angle = std::min(tolerance.angle * CoarserAngle, CoarsestAngle);
        occt::meshing::tessellate(part.shape, tolerance, budget.inParallel);
        warn(job, part, "meshed more coarsely to stay within tessellation.max-triangles");
    }
    return tolerance;
}

PieceWishes wishesOf(const core::Settings& settings)
{
    using occt::meshing::Coordinates;
    return {settings.isOn(core::Setting::KeepBrep),
            settings.isOn(core::Setting::SurfaceUv) ? Coordinates::Surface : Coordinates::None};
}

void splitPieces(PartResult& result, const occt::meshing::ShapeBody& part, const model::Job& job,
                 const PartBudget& budget)
{
    const auto longest = static_cast<float>(job.settings.number(core::Setting::MaxEdgeLength));
    if (longest <= 0)
        return;
    double estimate = 0;
    for (const model::Piece& piece : result.body.pieces)
        estimate += model::splitEstimate(*piece.mesh, longest);
    if (isTooMany(estimate, budget))
        return warn(job, part,
                    "edges stay longer than tessellation.max-edge-length, or it would need more than "
                    "tessellation.max-triangles");
    result.triangles = 0;
    for (model::Piece& piece : result.body.pieces) {
        piece.mesh = model::splitEdges(*piece.mesh, longest);
        result.triangles += piece.mesh->triangles.size() / 3;
    }
}

} // namespace

void healPart(occt::meshing::ShapeBody& part, const model::Job& job, bool inParallel, HealingAhead* ahead)
{
    if (!job.settings.isOn(core::Setting::Heal))
        return;
    core::Trouble trouble;
    if (!ahead || !ahead->take(part, trouble))
        trouble = guarded("healing", [&]() -> core::Trouble { return heal(part, inParallel), std::nullopt; });
    if (trouble)
        warn(job, part, trouble->message);
}

void stitchPart(occt::meshing::ShapeBody& part, const model::Job& job, double seconds)
{
    const core::Trouble trouble = guarded("stitching", [&]() -> core::Trouble {
        const std::size_t before = occt::meshing::freeEdgeCount(part.shape);
        if (before == 0 || !job.settings.isOn(core::Setting::Stitch))
            return std::nullopt;
        orientByRay(part);
        if (occt::meshing::sew(part, occt::meshing::stitchTolerance(part.shape, job.settings), seconds) ==
            occt::meshing::SewingResult::OutOfTime)
            return core::Failure{core::ExitCode::TimeLimit, "its faces stay loose, for stitch.time is over"};
        const std::size_t after = occt::meshing::freeEdgeCount(part.shape);
        if (after < before)
            job.log.info("part \"" + part.name + "\": stitched, free edges " + std::to_string(before) + " -> " +
                         std::to_string(after));
        return std::nullopt;
    });
    if (trouble)
        warn(job, part, trouble->message);
}

PartResult meshPart(occt::meshing::ShapeBody& part, const model::Job& job, const PartBudget& budget)
{
    PartResult result;
    const core::Trouble trouble = guarded("meshing", [&]() -> core::Trouble {
        const occt::meshing::Tolerance tolerance = tessellateWithin(part, job, budget);
        orientByMesh(part, tolerance.deviation);
        result = extract(part, tolerance, wishesOf(job.settings));
        splitPieces(result, part, job, budget);
        if (job.settings.isOn(core::Setting::ExactMeasures))
            result.body.measures = exactMeasures(part.shape);
        return std::nullopt;
    });
    if (trouble)
        warn(job, part, trouble->message);
    if (result.emptyFaces > 0)
        warn(job, part,
             std::to_string(result.emptyFaces) + " of " + std::to_string(result.faces) +
                 " faces and free edges got no mesh");
    if (result.facesWithoutParameters > 0)
        warn(job, part,
             std::to_string(result.facesWithoutParameters) + " of " + std::to_string(result.faces) +
                 " faces have no parameters, and there are no texture coordinates beside them");
    return result;
}

} // namespace ptx::occt
