#include "ptx/readers/step/StepFile.h"

#include "files/scenefile/ConvertedTree.h"
#include "ptx/model/FileTags.h"
#include "ptx/model/Losses.h"
#include "ptx/occt/OcctGuard.h"
#include "ptx/occt/OcctProgress.h"
#include "ptx/occt/OcctSetup.h"
#include "ptx/readers/Reader.h"
#include "ptx/readers/TextFile.h"
#include "ptx/readers/step/CalloutOwners.h"
#include "ptx/readers/step/EntityWarnings.h"
#include "ptx/readers/step/ExternalNames.h"
#include "ptx/readers/step/LeftOutTags.h"
#include "ptx/readers/step/LengthUnit.h"
#include "ptx/readers/step/ProductFacts.h"
#include "ptx/readers/step/RecordLibrary.h"
#include "ptx/readers/step/StandIns.h"
#include "ptx/readers/step/UserAttributes.h"
#include "ptx/readers/step/ViewedCallouts.h"
#include "ptx/readers/step/ViewedShapes.h"
#include "ptx/readers/step/damage/ColourRange.h"
#include "ptx/readers/step/damage/CrashingEntities.h"
#include "ptx/readers/step/damage/Damage.h"
#include "ptx/readers/step/damage/FailedShapes.h"
#include "ptx/readers/step/damage/MendingLibrary.h"
#include "ptx/readers/step/placements/Placing.h"

#include <NCollection_DataMap.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <TDF_LabelMapHasher.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_WorkSession.hxx>

#include <algorithm>
#include <filesystem>
#include <optional>

namespace ptx::step
{

namespace
{

/// One reading of a file with OCCT's reader, which goes with this object.
class StepFile
{
public:
    /// Leaves out what `known` names; when that is something the file is read for another time.
    StepFile(const model::Job& job, bool isPart, const std::vector<damage::Fault>& known)
        : m_job(job), m_isPart(isPart), m_isAgain(!known.empty()), m_document(occt::newDocument()),
          m_text(new RecordLibrary(job)), m_damage(job.input, known)
    {
        m_reader.SetNameMode(true);
        m_reader.SetColorMode(true);
        m_reader.SetLayerMode(true);
        // After what crashes for itself is left out, these are what OCCT crashes on most.
        m_reader.SetPropsMode(job.rescue.translationCrashes() < 2);
        m_reader.SetMatMode(false); // see MaterialProperty.h
        m_reader.SetSHUOMode(true);
        // Both are on by default, throw on files of the wild, and what they read would not be used.
        m_reader.SetGDTMode(false);
        m_reader.SetViewMode(false);
        m_reader.ChangeReader().WS()->SetLibrary(
            new damage::MendingLibrary(m_text, [this](const Handle(StepData_StepModel) & model) { mend(model); }));
    }

    ~StepFile() { m_document->Close(); }
    StepFile(const StepFile&) = delete;
    StepFile& operator=(const StepFile&) = delete;

    /// Text to shapes, which are healed `ahead`. @return why that is impossible
    core::Trouble load(occt::HealingAhead& ahead)
    {
        core::Trouble trouble = occt::guarded("reading the STEP text", [&] { return read(); });
        if (!trouble)
            trouble = occt::guarded("translating the STEP entities", [&] { return transfer(ahead); });
        return trouble;
    }

    /// In place of load(), in an attempt after OCCT crashed: what it crashes on.
    std::vector<damage::Fault> crashingEntities()
    {
        std::vector<damage::Fault> crashing;
        // Whatever fails here fails again when the file is loaded, and is told then.
        (void)occt::guarded("looking for what crashes", [&]() -> core::Trouble {
            if (read())
                return std::nullopt;
            begin(core::Stage::Convert);
            crashing = damage::findCrashingEntities(m_reader, blame(), m_job.progress);
            return std::nullopt;
        });
        for (const damage::Fault& fault : crashing)
            m_job.log.info("the CAD kernel crashes on #" + std::to_string(fault.ident));
        return crashing;
    }

    /// After load(): what OCCT failed on.
    std::vector<damage::Fault> failedShapes()
    {
        std::vector<damage::Fault> failed;
        const core::Rescue::Mark mark = m_job.rescue.translate();
        if (const core::Trouble trouble = occt::guarded("looking for what failed", [&]() -> core::Trouble {
                failed = damage::findFailedShapes(m_reader);
                return std::nullopt;
            }))
            m_job.log.warning(trouble->message);
        return failed;
    }

    /// After load(): what the file holds.
    core::Outcome<StepContent> content()
    {
        core::Trouble trouble;
        const bool isAnythingBeside = !m_text->productsBeside().empty();
        if (!m_isTransferred && !isAnythingBeside)
            trouble = nothingToImport("none of its entities is a product or a shape");
        else
            trouble = occt::guarded("reading the structure", [&] { return walk(); });
        if (const std::string loss = firstLoss(); !loss.empty() && (trouble || isEmpty(m_content)))
            return core::Failure{core::ExitCode::Damaged, "nothing of the file could be translated: " + loss};
        if (trouble)
            return *trouble;
        return std::move(m_content);
    }

private:
    // The stages up to the structure are over in another reading.
    void begin(core::Stage stage) const
    {
        if (!m_isPart && (!m_isAgain || stage == core::Stage::ProcessStructure))
            m_job.progress.begin(stage);
    }

    void mend(const Handle(StepData_StepModel) & model)
    {
        if (!m_isAgain)
            warnOfUnreadEntities(model, m_job.log);
        if (const std::size_t count = damage::limitColours(*model); count > 0 && !m_isAgain)
            m_job.log.warning(std::to_string(count) + " colours with parts beyond 0 to 1 are limited");
        m_exactProducts = addStandIns(model, m_text->productsBeside());
        m_damage.cutOut(model);
    }

    core::Trouble read()
    {
        begin(core::Stage::ReadAndProcess);
        const IFSelect_ReturnStatus status = m_reader.ChangeReader().ReadFile(m_job.input.c_str());
        if (status == IFSelect_RetError)
            return unreadable();
        if (status != IFSelect_RetDone)
            return core::Failure{core::ExitCode::Damaged, "the text is not a STEP file that can be read"};
        m_names.emplace(m_reader);
        return readers::requireExternalParts(m_job.externalParts, !m_names->isEmpty());
    }

    core::Failure unreadable() const
    {
        return readers::TextFile(m_job.input)
            .trouble()
            .value_or(core::Failure{core::ExitCode::InputUnreadable, "cannot open the input"});
    }

    /// A solid without the faces that crash for themselves may crash still.
    damage::Blame blame() const
    {
        return m_job.rescue.translationCrashes() > 1 ? damage::Blame::Items : damage::Blame::Faces;
    }

    core::Trouble transfer(occt::HealingAhead& ahead)
    {
        begin(core::Stage::Convert);
        const core::Rescue::Mark mark = m_job.rescue.translate();
        Handle(occt::OcctProgress) progress = new occt::OcctProgress(m_job.progress);
        Message_ProgressScope scope(progress->Start(), nullptr, 2);
        placements::placeOccurrences(m_reader.ChangeReader(), scope.Next(),
                                     [&](const TopoDS_Shape& shape) { ahead.add(shape); });
        m_isTransferred = m_reader.Transfer(m_document, scope.Next());
        if (!m_isAgain)
            warnOfUntranslatedEntities(m_reader, m_job.log);
        return std::nullopt;
    }

    core::Trouble walk()
    {
        begin(core::Stage::ProcessStructure);
        LabelTags tags = userAttributes(m_reader);
        addProductFacts(m_reader, m_document, tags);
        const std::vector<std::string> ofNoProduct = addLosses(tags);
        const annotations::Drawing drawing = m_text->takeAnnotations();
        SavedViews saved;
        if (!m_isPart)
            saved = savedViews(m_reader, m_document, m_job.settings.isOn(core::Setting::AutomaticViews), m_job.log);
        m_content.views = std::move(saved.views);
        const ViewedCallouts viewed(m_content.views, drawing.callouts.size(), m_job.log);
        findDefaultView(m_content.views, viewed, drawing);
        CalloutOwners callouts(m_reader, drawing, viewed, m_job.log);
        const facets::Parts parts = m_text->takeFacets();
        FacetOwners facets(m_reader, parts, m_exactProducts);
        ViewedShapes shapes(m_reader, m_content.views, m_job.log);
        NCollection_DataMap<TDF_Label, std::size_t, TDF_LabelMapHasher>
            numbers; // of products, which come in this order
        static_cast<occt::DocumentContent&>(m_content) =
            occt::walkDocument(m_document, m_job, [&](const TDF_Label& label, model::Product& product) {
                addTags(tags, label, product.tags);
                addComponentTags(tags, label, product);
                callouts.addTo(product, label);
                const auto number = static_cast<std::size_t>(numbers.Size());
                numbers.Bind(label, number);
                facets.addTo(number, label);
                shapes.addProduct(label);
                if (product.body == model::NoBody && product.children.empty())
                    product.externalNames = m_names->of(label);
            });
        for (SavedView& view : m_content.views)
            if (const std::size_t* part = view.scope.part.IsNull() ? nullptr : numbers.Seek(view.scope.part))
                view.part = *part;
        m_content.facets = facets.finish(parts, m_job.log);
        shapes.finish(m_content, m_content.facets);
        callouts.finish(m_content.model, std::filesystem::path(m_job.input).stem().string());
        model::tagFile(m_content.model, ofNoProduct);
        model::tagFile(m_content.model, leftOutTags(m_job.input, saved.leftOut, drawing));
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

    /// Adds the tags of what is missing from products. @return those of what is missing from nobody knows what
    std::vector<std::string> addLosses(LabelTags& tags)
    {
        m_damage.addUnplaced(m_reader);
        std::vector<std::string> ofNoProduct;
        for (const std::string& reason : m_text->losses())
            ofNoProduct.push_back(model::lossOf(m_job, reason));
        for (const damage::Damage::Mark& mark : m_damage.marks(m_reader)) {
            const std::string tag = model::lossOf(m_job, mark.reason);
            if (mark.label.IsNull())
                ofNoProduct.push_back(tag);
            else if (auto* own = tags.ChangeSeek(mark.label))
                own->push_back(tag);
            else
                tags.Bind(mark.label, {tag});
        }
        return ofNoProduct;
    }

    std::string firstLoss() const
    {
        if (!m_text->losses().empty())
            return m_text->losses().front();
        return m_damage.isEmpty() ? std::string() : m_damage.firstLoss();
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
    bool m_isAgain;
    STEPCAFControl_Reader m_reader;
    Handle(TDocStd_Document) m_document;
    Handle(RecordLibrary) m_text;
    std::optional<ExternalNames> m_names;
    damage::Damage m_damage;
    std::set<std::uint32_t> m_exactProducts; ///< among those with annotations or triangles
    bool m_isTransferred = false;
    StepContent m_content;
};

} // namespace

// Faces that fail for themselves are found by the first reading; the second may find shapes that need them.
core::Outcome<StepContent> readStepFile(const model::Job& job, bool isPart, occt::HealingAhead& ahead)
{
    constexpr int MostReadings = 3;
    std::vector<damage::Fault> known;
    if (job.rescue.translationCrashes() > 0)
        known = StepFile(job, isPart, {}).crashingEntities();
    const std::size_t before = ahead.count();
    for (int reading = 1;; ++reading) {
        StepFile file(job, isPart, known);
        if (core::Trouble trouble = file.load(ahead))
            return *trouble;
        const std::vector<damage::Fault> failed = file.failedShapes();
        if (failed.empty() || reading == MostReadings)
            return file.content();
        ahead.dropSince(before);
        known.insert(known.end(), failed.begin(), failed.end());
        job.log.info("reading again without " + std::to_string(failed.size()) + " entities that cannot be translated");
    }
}

bool isEmpty(const StepContent& content)
{
    const std::vector<model::Product>& products = content.model.products;
    return content.shapes.empty() && content.facets.empty() &&
           std::all_of(products.begin(), products.end(), [](const model::Product& product) {
               return product.externalNames.empty() && product.callouts.empty();
           });
}

core::Failure nothingToImport(const std::string& cause)
{
    return {core::ExitCode::NothingToImport, "the file is a STEP file, but " + cause};
}

} // namespace ptx::step
