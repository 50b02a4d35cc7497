#include "ptx/readers/iges/IgesReader.h"

#include "ptx/core/TimedProgress.h"
#include "ptx/model/FileTags.h"
#include "ptx/model/Losses.h"
#include "ptx/occt/DocumentWalker.h"
#include "ptx/occt/LooseFaces.h"
#include "ptx/occt/OcctGuard.h"
#include "ptx/occt/OcctProgress.h"
#include "ptx/occt/OcctSetup.h"
#include "ptx/occt/PartMesher.h"
#include "ptx/readers/iges/RescuedReader.h"

#include <TDocStd_Document.hxx>

#include <filesystem>

namespace ptx::iges
{

namespace
{

constexpr double SecondsPerMegabyte = 0.2;

core::Trouble read(RescuedReader& reader, const model::Job& job)
{
    job.progress.begin(core::Stage::ReadAndProcess);
    const core::TimedProgress timedProgress(job.progress, 0,
                                            1 + SecondsPerMegabyte * static_cast<double>(job.inputBytes) / (1 << 20));
    if (reader.ReadFile(job.input.c_str()) != IFSelect_RetDone)
        return core::Failure{core::ExitCode::Damaged, "the text is not an IGES file that can be read"};
    reader.mendNames();
    return std::nullopt;
}

core::Trouble transfer(RescuedReader& reader, Handle(TDocStd_Document) & document, const model::Job& job)
{
    job.progress.begin(core::Stage::Convert);
    const core::Rescue::Mark mark = job.rescue.translate();
    Handle(occt::OcctProgress) progress = new occt::OcctProgress(job.progress);
    if (!reader.Transfer(document, progress->Start()))
        return core::Failure{core::ExitCode::NothingToImport,
                             "the file is an IGES file, but none of its entities is a shape"};
    return std::nullopt;
}

/// What an attempt before crashed on stays out.
void leaveOutCrashing(RescuedReader& reader, const model::Job& job, std::vector<std::string>& losses)
{
    if (job.rescue.translationCrashes() == 0)
        return;
    for (const std::string& reason : reader.leaveOutCrashing(job.progress))
        losses.push_back(model::lossOf(job, reason));
}

core::Outcome<occt::DocumentContent> readContent(const model::Job& job, std::vector<std::string>& losses)
{
    RescuedReader reader;
    reader.SetNameMode(true);
    reader.SetColorMode(true);
    reader.SetLayerMode(true);
    Handle(TDocStd_Document) document = occt::newDocument();
    occt::DocumentContent content;
    core::Trouble trouble = occt::guarded("reading the IGES text", [&] { return read(reader, job); });
    if (!trouble)
        leaveOutCrashing(reader, job, losses);
    if (!trouble)
        trouble = occt::guarded("translating the IGES entities", [&] { return transfer(reader, document, job); });
    if (!trouble)
        trouble = occt::guarded("reading the structure", [&]() -> core::Trouble {
            job.progress.begin(core::Stage::ProcessStructure);
            content = occt::walkDocument(document, job);
            return std::nullopt;
        });
    document->Close();
    if (trouble)
        return *trouble;
    return content;
}

} // namespace

core::Outcome<model::Model> read(const model::Job& job)
{
    occt::setUpOcct();
    std::vector<std::string> losses;
    core::Outcome<occt::DocumentContent> content = readContent(job, losses);
    if (!losses.empty() && (!content || content.value().shapes.empty()))
        return core::Failure{core::ExitCode::Damaged,
                             "nothing of the file could be translated: the CAD kernel crashes on it"};
    if (!content)
        return content.failure();
    if (content.value().shapes.empty())
        return core::Failure{
            core::ExitCode::NothingToImport,
            "the file is an IGES file, but holds no surfaces, solids or curves (points are not imported)"};
    job.progress.begin(core::Stage::Merge);
    if (const std::size_t count =
            occt::mergeLooseFaces(content.value(), std::filesystem::path(job.input).stem().string()))
        job.log.info(std::to_string(count) + " loose surfaces and curves become one part");
    model::tagFile(content.value().model, losses);
    core::Outcome<std::vector<model::Body>> bodies =
        occt::meshParts(std::move(content.value().shapes), job, occt::Loose::Stitch);
    if (!bodies)
        return bodies.failure();
    content.value().model.bodies = std::move(bodies.value());
    return std::move(content.value().model);
}

} // namespace ptx::iges
