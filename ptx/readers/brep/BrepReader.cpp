#include "ptx/readers/brep/BrepReader.h"

#include "ptx/core/TimedProgress.h"
#include "ptx/occt/OcctGuard.h"
#include "ptx/occt/OcctSetup.h"
#include "ptx/occt/PartMesher.h"
#include "ptx/occt/meshing/ShapeQueries.h"
#include "ptx/readers/brep/recognition/BrepFormat.h"

#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <BinTools.hxx>

#include <filesystem>
#include <fstream>

namespace ptx::brep
{

namespace
{

constexpr double SecondsPerMegabyte = 0.1;

core::Trouble readShape(const model::Job& job, TopoDS_Shape& shape)
{
    const core::TimedProgress timedProgress(job.progress, 0,
                                            1 + SecondsPerMegabyte * static_cast<double>(job.inputBytes) / (1 << 20));
    std::ifstream stream(job.input, std::ios::binary);
    char mark[recognition::MarkWithin] = {};
    stream.read(mark, recognition::MarkWithin);
    const bool binary = recognition::isBinary({mark, static_cast<std::size_t>(stream.gcount())});
    stream.clear();
    stream.seekg(0);
    if (binary)
        BinTools::Read(shape, stream);
    else
        BRepTools::Read(shape, stream, BRep_Builder());
    if (shape.IsNull())
        return core::Failure{core::ExitCode::Damaged, "the BREP file is cut off or damaged"};
    return std::nullopt;
}

} // namespace

core::Outcome<model::Model> read(const model::Job& job)
{
    occt::setUpOcct();
    job.progress.begin(core::Stage::ReadAndProcess);
    std::vector<occt::meshing::ShapeBody> shapes(1);
    if (core::Trouble trouble = occt::guarded("reading the BREP file", [&] { return readShape(job, shapes[0].shape); }))
        return *trouble;
    shapes[0].name = std::filesystem::path(job.input).stem().string();
    model::Model model;
    model.products.push_back({shapes[0].name, {}, 0, model::NoAppearance, {}, {}});
    model.roots.emplace_back();
    if (!occt::meshing::hasGeometry(shapes[0].shape))
        return core::Failure{core::ExitCode::NothingToImport,
                             "the file is a BREP file, but its shape has no faces or edges"};
    core::Outcome<std::vector<model::Body>> bodies = occt::meshParts(std::move(shapes), job);
    if (!bodies)
        return bodies.failure();
    model.bodies = std::move(bodies.value());
    return model;
}

} // namespace ptx::brep
