#include "tools/ptxconvert/readers/step/StepReader.h"

#include "standalone/scenefile/ConvertedTree.h"
#include "tools/ptxconvert/kernel/DocumentWalker.h"
#include "tools/ptxconvert/kernel/KernelGuard.h"
#include "tools/ptxconvert/kernel/KernelProgress.h"
#include "tools/ptxconvert/kernel/KernelSetup.h"
#include "tools/ptxconvert/kernel/PartMesher.h"
#include "tools/ptxconvert/readers/FileContent.h"
#include "tools/ptxconvert/readers/step/CountingBuffer.h"
#include "tools/ptxconvert/readers/step/LengthUnit.h"
#include "tools/ptxconvert/readers/step/UserAttributes.h"

#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <TDocStd_Document.hxx>

#include <istream>

namespace ptx::step
{

namespace
{

// The lexer's share of reading; the rest is building entities, which reports nothing.
constexpr double TextShare = 0.7;

Failure damaged(const std::string& message)
{
    return {ExitCode::Damaged, message};
}

class StepConversion
{
public:
    explicit StepConversion(const Job& job) : m_job(job) {}

    Outcome<Model> run()
    {
        setUpKernel();
        Outcome<DocumentContent> content = readContent();
        if (!content)
            return content.failure();
        if (content.value().shapes.empty())
            return Failure{ExitCode::NothingToImport,
                           "the file is a STEP file, but holds no solids, surfaces or curves"};
        Outcome<std::vector<Body>> bodies = meshParts(std::move(content.value().shapes), m_job);
        if (!bodies)
            return bodies.failure();
        content.value().model.bodies = std::move(bodies.value());
        return std::move(content.value().model);
    }

private:
    // The reader with all its entities and the document go before the meshing starts.
    Outcome<DocumentContent> readContent()
    {
        STEPCAFControl_Reader reader;
        reader.SetNameMode(true);
        reader.SetColorMode(true);
        reader.SetLayerMode(true);
        reader.SetPropsMode(true);
        reader.SetMatMode(true);
        reader.SetSHUOMode(true);
        Handle(TDocStd_Document) document = newDocument();
        DocumentContent content;
        Trouble trouble = guarded("reading the STEP text", [&] { return read(reader); });
        if (!trouble)
            trouble = guarded("translating the STEP entities", [&] { return transfer(reader, document); });
        if (!trouble)
            trouble = guarded("reading the structure", [&]() -> Trouble {
                m_job.progress.begin(Stage::ProcessStructure);
                const LabelTags attributes = userAttributes(reader);
                content = walkDocument(document, m_job, [&](const TDF_Label& label) {
                    const auto* tags = attributes.Seek(label);
                    return tags ? *tags : std::vector<std::string>();
                });
                addUnit(reader, content.model);
                return std::nullopt;
            });
        document->Close();
        if (trouble)
            return *trouble;
        return content;
    }

    Trouble read(STEPCAFControl_Reader& reader)
    {
        m_job.progress.begin(Stage::ReadAndProcess);
        CountingBuffer buffer(m_job.input, m_job.inputBytes, TextShare, m_job.progress);
        std::istream stream(&buffer);
        if (!buffer.isOpen())
            return Failure{ExitCode::InputUnreadable, "cannot open the input"};
        const IFSelect_ReturnStatus status = reader.ChangeReader().ReadStream(m_job.input.c_str(), stream);
        if (status != IFSelect_RetDone)
            return damaged("the text is not a STEP file that can be read");
        return std::nullopt;
    }

    Trouble transfer(STEPCAFControl_Reader& reader, Handle(TDocStd_Document) & document)
    {
        m_job.progress.begin(Stage::Convert);
        Handle(KernelProgress) progress = new KernelProgress(m_job.progress);
        if (!reader.Transfer(document, progress->Start()))
            return nothing("none of its entities is a product or a shape");
        return std::nullopt;
    }

    void addUnit(const STEPCAFControl_Reader& reader, Model& model) const
    {
        const std::string unit = lengthUnit(reader);
        if (unit.empty())
            return;
        model.tags.push_back(osg::converted::tag(osg::converted::UnitKey, unit));
        m_job.log.info("length unit of the file: " + unit);
    }

    // The installed kernel has no entities for tessellated geometry and says nothing about it.
    Failure nothing(const std::string& cause) const
    {
        const Outcome<std::string> text = ptx::readContent(m_job.input);
        const bool isTessellated = text && text.value().find("TESSELLATED_") != std::string::npos;
        return {ExitCode::NothingToImport,
                "the file is a STEP file, but " + cause +
                    (isTessellated ? "; it has tessellated geometry, which is not read" : "")};
    }

    const Job& m_job;
};

Match probe(std::string_view head, std::uint64_t)
{
    return head.find("ISO-10303-21") != head.npos ? Match::Certain : Match::No;
}

Outcome<Model> readStep(const Job& job)
{
    return StepConversion(job).run();
}

constexpr const char* Extensions[] = {"stp", "step"};
constexpr Format Row = {"STEP", Extensions, probe, readStep};

} // namespace

const Format& format()
{
    return Row;
}

} // namespace ptx::step
