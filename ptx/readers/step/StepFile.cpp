#include "ptx/readers/step/StepFile.h"

#include "files/scenefile/ConvertedTree.h"
#include "ptx/occt/OcctGuard.h"
#include "ptx/occt/OcctProgress.h"
#include "ptx/occt/OcctSetup.h"
#include "ptx/readers/MappedFile.h"
#include "ptx/readers/Reader.h"
#include "ptx/readers/step/CountingBuffer.h"
#include "ptx/readers/step/EntityWarnings.h"
#include "ptx/readers/step/ExternalNames.h"
#include "ptx/readers/step/LengthUnit.h"
#include "ptx/readers/step/ProductFacts.h"
#include "ptx/readers/step/UserAttributes.h"

#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFDoc_ShapeTool.hxx>

#include <istream>
#include <optional>

namespace ptx::step
{

namespace
{

// The lexer's share of reading; the rest is building entities, which reports nothing.
constexpr double TextShare = 0.7;

/// One file with OCCT's reader, which goes with this object.
class StepFile
{
public:
    StepFile(const model::Job& job, bool isPart) : m_job(job), m_isPart(isPart), m_document(occt::newDocument())
    {
        m_reader.SetNameMode(true);
        m_reader.SetColorMode(true);
        m_reader.SetLayerMode(true);
        m_reader.SetPropsMode(true);
        m_reader.SetMatMode(false); // see MaterialProperty.h
        m_reader.SetSHUOMode(true);
    }

    ~StepFile() { m_document->Close(); }
    StepFile(const StepFile&) = delete;
    StepFile& operator=(const StepFile&) = delete;

    core::Outcome<occt::DocumentContent> content()
    {
        core::Trouble trouble = occt::guarded("reading the STEP text", [&] { return read(); });
        if (!trouble)
            trouble = occt::guarded("translating the STEP entities", [&] { return transfer(); });
        if (!trouble)
            trouble = occt::guarded("reading the structure", [&] { return walk(); });
        if (trouble)
            return *trouble;
        return std::move(m_content);
    }

private:
    void begin(core::Stage stage) const
    {
        if (!m_isPart)
            m_job.progress.begin(stage);
    }

    core::Trouble read()
    {
        begin(core::Stage::ReadAndProcess);
        CountingBuffer buffer(m_job.input, m_job.inputBytes, TextShare, m_job.progress);
        std::istream stream(&buffer);
        if (!buffer.isOpen())
            return core::Failure{core::ExitCode::InputUnreadable, "cannot open the input"};
        const IFSelect_ReturnStatus status = m_reader.ChangeReader().ReadStream(m_job.input.c_str(), stream);
        if (status != IFSelect_RetDone)
            return core::Failure{core::ExitCode::Damaged, "the text is not a STEP file that can be read"};
        warnOfUnreadEntities(m_reader, m_job.log);
        m_names.emplace(m_reader);
        return readers::requireExternalParts(m_job.externalParts, !m_names->isEmpty());
    }

    core::Trouble transfer()
    {
        begin(core::Stage::Convert);
        Handle(occt::OcctProgress) progress = new occt::OcctProgress(m_job.progress);
        if (!m_reader.Transfer(m_document, progress->Start()))
            return nothingToImport(m_job.input, "none of its entities is a product or a shape");
        warnOfUntranslatedEntities(m_reader, m_job.log);
        return std::nullopt;
    }

    core::Trouble walk()
    {
        begin(core::Stage::ProcessStructure);
        LabelTags attributes = userAttributes(m_reader);
        addProductFacts(m_reader, m_document, attributes);
        m_content = occt::walkDocument(m_document, m_job, [&](const TDF_Label& label, model::Product& product) {
            addTags(attributes, label, product.tags);
            addComponentTags(attributes, label, product);
            if (product.body == model::NoBody && product.children.empty())
                product.externalNames = m_names->of(label);
        });
        addUnit();
        return std::nullopt;
    }

    static void addTags(const LabelTags& attributes, const TDF_Label& label, std::vector<std::string>& tags)
    {
        if (const auto* more = attributes.Seek(label))
            tags.insert(tags.end(), more->begin(), more->end());
    }

    static void addComponentTags(const LabelTags& attributes, const TDF_Label& label, model::Product& product)
    {
        TDF_LabelSequence components;
        if (!product.children.empty())
            XCAFDoc_ShapeTool::GetComponents(label, components);
        auto child = product.children.begin();
        for (const TDF_Label& component : components)
            addTags(attributes, component, (child++)->tags);
    }

    void addUnit()
    {
        const std::string unit = lengthUnit(m_reader);
        if (unit.empty())
            return;
        m_content.model.tags.push_back(osg::scenefile::converted::tag(osg::scenefile::converted::UnitKey, unit));
        m_job.log.info("length unit of the file: " + unit);
    }

    const model::Job& m_job;
    bool m_isPart;
    STEPCAFControl_Reader m_reader;
    Handle(TDocStd_Document) m_document;
    std::optional<ExternalNames> m_names;
    occt::DocumentContent m_content;
};

} // namespace

core::Outcome<occt::DocumentContent> readStepFile(const model::Job& job, bool isPart)
{
    return StepFile(job, isPart).content();
}

// The installed OCCT has no entities for tessellated geometry and says nothing about it.
core::Failure nothingToImport(const std::string& path, const std::string& cause)
{
    const bool isTessellated = readers::MappedFile(path).text().find("TESSELLATED_") != std::string_view::npos;
    return {core::ExitCode::NothingToImport,
            "the file is a STEP file, but " + cause +
                (isTessellated ? "; it has tessellated geometry, which is not read" : "")};
}

} // namespace ptx::step
