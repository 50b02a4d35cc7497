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

Match probe(std::string_view head, std::uint64_t)
{
    return head.find("ISO-10303-21") != std::string_view::npos ? Match::Certain : Match::No;
}

bool refersToParts(const std::string& path)
{
    return !referencesOf(path).empty();
}

// What the kernel's reader needs goes before the meshing starts.
Outcome<DocumentContent> readWithParts(const Job& job)
{
    Outcome<DocumentContent> content = readStepFile(job, false);
    if (!content)
        return content;
    if (!job.externalParts)
        inlineParts(content.value(), job);
    else
        keepReferences(content.value(), job);
    return content;
}

Outcome<Model> readStep(const Job& job)
{
    setUpOcct();
    Outcome<DocumentContent> content = readWithParts(job);
    if (!content)
        return content.failure();
    Model& model = content.value().model;
    if (Trouble trouble = requireExternalParts(job.externalParts, !model.references.empty()))
        return *trouble;
    if (content.value().shapes.empty() && model.references.empty())
        return nothingToImport(job.input, "it holds no solids, surfaces or curves");
    Outcome<std::vector<Body>> bodies = meshParts(std::move(content.value().shapes), job);
    if (!bodies)
        return bodies.failure();
    model.bodies = std::move(bodies.value());
    return std::move(model);
}

constexpr Format Row = {protocol::format::Step.name, protocol::format::Step.extensions, probe, readStep, refersToParts};

} // namespace

const Format& format()
{
    return Row;
}

} // namespace ptx::step
