#include "ptx/readers/step/ProductFacts.h"

#include "files/scenefile/ConvertedTree.h"
#include "ptx/occt/OcctText.h"
#include "ptx/readers/step/ExternalNames.h"

#include <Interface_InterfaceModel.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPConstruct_Tool.hxx>
#include <STEPControl_Reader.hxx>
#include <StepAP214_AppliedDocumentReference.hxx>
#include <StepAP214_DocumentReferenceItem.hxx>
#include <StepAP214_HArray1OfDocumentReferenceItem.hxx>
#include <StepBasic_Document.hxx>
#include <StepBasic_Product.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepBasic_ProductDefinitionFormation.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_WorkSession.hxx>

namespace ptx::step
{

namespace
{

using namespace osg::scenefile::converted;

class FactCollector
{
public:
    FactCollector(const STEPCAFControl_Reader& reader, const Handle(TDocStd_Document) & document, LabelTags& tags)
        : m_reader(reader), m_tool(reader.Reader().WS()), m_shapes(XCAFDoc_DocumentTool::ShapeTool(document->Main())),
          m_labels(reader), m_tags(tags)
    {
    }

    void add(const Handle(Standard_Transient) & entity)
    {
        if (const auto definition = Handle(StepBasic_ProductDefinition)::DownCast(entity); !definition.IsNull())
            addProduct(definition);
        else if (const auto usage = Handle(StepRepr_NextAssemblyUsageOccurrence)::DownCast(entity); !usage.IsNull())
            addDesignator(usage);
        else if (const auto reference = Handle(StepAP214_AppliedDocumentReference)::DownCast(entity);
                 !reference.IsNull())
            addDocument(*reference);
    }

private:
    void addProduct(const Handle(StepBasic_ProductDefinition) & definition)
    {
        const Handle(StepBasic_ProductDefinitionFormation) formation = definition->Formation();
        if (formation.IsNull() || formation->OfProduct().IsNull())
            return;
        const TDF_Label label = m_labels.of(definition);
        addText(label, ProductIdKey, formation->OfProduct()->Id());
        addText(label, DescriptionKey, formation->OfProduct()->Description());
        addText(label, VersionKey, formation->Id());
    }

    void addDesignator(const Handle(StepRepr_NextAssemblyUsageOccurrence) & usage)
    {
        if (!usage->HasReferenceDesignator() || usage->ReferenceDesignator().IsNull())
            return;
        const TDF_Label label =
            STEPCAFControl_Reader::FindInstance(usage, m_shapes, m_tool, m_reader.GetShapeLabelMap());
        addText(label, DesignatorKey, usage->ReferenceDesignator());
    }

    void addDocument(const StepAP214_AppliedDocumentReference& reference)
    {
        const Handle(StepBasic_Document) document = reference.AssignedDocument();
        if (document.IsNull() || reference.Items().IsNull())
            return;
        for (const StepAP214_DocumentReferenceItem& item : reference.Items()->Array1())
            if (const Handle(StepBasic_ProductDefinition) definition = item.ProductDefinition();
                !definition.IsNull() && !ExternalNames::isMark(occt::utf8(document->Id())))
                addText(m_labels.of(definition), DocumentKey, document->Id());
    }

    void addText(const TDF_Label& label, const char* key, const Handle(TCollection_HAsciiString) & text)
    {
        if (const std::string value = text.IsNull() ? std::string() : occt::utf8(text);
            !label.IsNull() && !isBlank(value))
            tagsAt(m_tags, label).push_back(tag(key, value));
    }

    static bool isBlank(const std::string& text) { return text.find_first_not_of(' ') == std::string::npos; }

    const STEPCAFControl_Reader& m_reader;
    STEPConstruct_Tool m_tool;
    Handle(XCAFDoc_ShapeTool) m_shapes;
    ProductLabels m_labels;
    LabelTags& m_tags;
};

} // namespace

void addProductFacts(const STEPCAFControl_Reader& reader, const Handle(TDocStd_Document) & document, LabelTags& tags)
{
    const Handle(Interface_InterfaceModel) model = reader.Reader().WS()->Model();
    FactCollector collector(reader, document, tags);
    for (int i = 1; i <= model->NbEntities(); ++i)
        collector.add(model->Value(i));
}

} // namespace ptx::step
