#include "ptx/readers/step/StepReader.h"

#include "protocol/Formats.h"
#include "ptx/occt/OcctSetup.h"
#include "ptx/occt/PartMesher.h"
#include "ptx/readers/step/PartReferences.h"
#include "ptx/readers/step/ReferenceScan.h"
#include "ptx/readers/step/StepFile.h"

namespace ptx::step
{

namespace
{

readers::Match probe(std::string_view head, std::uint64_t)
{
    return head.find("ISO-10303-21") != std::string_view::npos ? readers::Match::Certain : readers::Match::No;
}

bool refersToParts(const std::string& path)
{
    return !referencesOf(path).empty();
}

// What OCCT's reader needs goes before the meshing starts.
core::Outcome<occt::DocumentContent> readWithParts(const model::Job& job)
{
    core::Outcome<occt::DocumentContent> content = readStepFile(job, false);
    if (!content)
        return content;
    if (!job.externalParts)
        inlineParts(content.value(), job);
    else
        keepReferences(content.value(), job);
    return content;
}

core::Outcome<model::Model> readStep(const model::Job& job)
{
    occt::setUpOcct();
    core::Outcome<occt::DocumentContent> content = readWithParts(job);
    if (!content)
        return content.failure();
    model::Model& model = content.value().model;
    if (core::Trouble trouble = readers::requireExternalParts(job.externalParts, !model.references.empty()))
        return *trouble;
    if (content.value().shapes.empty() && model.references.empty())
        return nothingToImport(job.input, "it holds no solids, surfaces or curves");
    core::Outcome<std::vector<model::Body>> bodies = occt::meshParts(std::move(content.value().shapes), job);
    if (!bodies)
        return bodies.failure();
    model.bodies = std::move(bodies.value());
    return std::move(model);
}

constexpr readers::Format Row = {protocol::format::Step.name, protocol::format::Step.extensions, probe, readStep,
                                 refersToParts};

} // namespace

const readers::Format& format()
{
    return Row;
}

} // namespace ptx::step
