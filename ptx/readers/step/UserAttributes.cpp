#include "ptx/readers/step/UserAttributes.h"

#include "files/scenefile/ConvertedTree.h"
#include "ptx/core/Settings.h"
#include "ptx/occt/OcctText.h"
#include "ptx/readers/step/MaterialProperty.h"

#include <Interface_InterfaceModel.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <StepBasic_MeasureValueMember.hxx>
#include <StepBasic_MeasureWithUnit.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepRepr_DescriptiveRepresentationItem.hxx>
#include <StepRepr_MeasureRepresentationItem.hxx>
#include <StepRepr_ProductDefinitionShape.hxx>
#include <StepRepr_PropertyDefinition.hxx>
#include <StepRepr_PropertyDefinitionRepresentation.hxx>
#include <StepRepr_Representation.hxx>
#include <StepRepr_ValueRepresentationItem.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

#include <algorithm>
#include <cctype>

namespace ptx::step
{

namespace
{

bool contains(std::string text, const std::string& word)
{
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text.find(word) != std::string::npos;
}

// Moments of inertia and origins come as a swarm of numbers from some systems.
bool isNoise(const std::string& name)
{
    const bool isMoment = name.size() == 3 && name[0] == 'I' && std::islower(static_cast<unsigned char>(name[1]));
    return isMoment || name.starts_with("Origin");
}

// Each of these may be null in files of the wild.
std::string valueOf(const Handle(StepRepr_RepresentationItem) & item)
{
    if (const auto text = Handle(StepRepr_DescriptiveRepresentationItem)::DownCast(item); !text.IsNull())
        return occt::utf8(text->Description());
    Handle(StepBasic_MeasureValueMember) member;
    if (const auto measure = Handle(StepRepr_MeasureRepresentationItem)::DownCast(item); !measure.IsNull()) {
        if (!measure->Measure().IsNull())
            member = measure->Measure()->ValueComponentMember();
    } else if (const auto value = Handle(StepRepr_ValueRepresentationItem)::DownCast(item); !value.IsNull()) {
        member = value->ValueComponentMember();
    }
    // OCCT reads a number that is left out as a zero of no kind.
    const bool isHole = member.IsNull() || (!member->HasName() && member->Real() == 0);
    return isHole ? std::string() : core::numberText(member->Real());
}

/// Of a property of a product; null for any other.
Handle(StepBasic_ProductDefinition) productOf(const Handle(StepRepr_PropertyDefinition) & property)
{
    if (property.IsNull() || property->IsKind(STANDARD_TYPE(StepRepr_ProductDefinitionShape)) ||
        contains(occt::utf8(property->Name()), "validation"))
        return {};
    return property->Definition().ProductDefinition();
}

class AttributeCollector
{
public:
    explicit AttributeCollector(const STEPCAFControl_Reader& reader)
        : m_reader(reader), m_process(reader.Reader().WS()->TransferReader()->TransientProcess())
    {
    }

    void add(const StepRepr_PropertyDefinitionRepresentation& link)
    {
        const Handle(StepRepr_PropertyDefinition) property = link.Definition().PropertyDefinition();
        const Handle(StepBasic_ProductDefinition) product = productOf(property);
        if (product.IsNull() || link.UsedRepresentation().IsNull() || link.UsedRepresentation()->Items().IsNull())
            return;
        const TopoDS_Shape shape = TransferBRep::ShapeResult(m_process, product);
        if (shape.IsNull() || !m_reader.GetShapeLabelMap().IsBound(shape))
            return;
        const TDF_Label label = m_reader.GetShapeLabelMap().Find(shape);
        if (const std::optional<std::string> material = materialTag(*link.UsedRepresentation()))
            return addTag(label, *material);
        for (const Handle(StepRepr_RepresentationItem) & item : link.UsedRepresentation()->Items()->Array1())
            addItem(label, occt::utf8(property->Name()), item);
    }

    LabelTags take() { return m_tags; }

private:
    void addItem(const TDF_Label& label, const std::string& property, const Handle(StepRepr_RepresentationItem) & item)
    {
        if (item.IsNull())
            return;
        const std::string own = occt::utf8(item->Name());
        const std::string& name = own.empty() ? property : own;
        const std::string value = valueOf(item);
        if (name.empty() || value.empty() || isNoise(name))
            return;
        addTag(label, osg::scenefile::converted::tag(osg::scenefile::converted::AttributePrefix + name, value));
    }

    void addTag(const TDF_Label& label, const std::string& tag)
    {
        if (!m_tags.IsBound(label))
            m_tags.Bind(label, {});
        m_tags.ChangeFind(label).push_back(tag);
    }

    const STEPCAFControl_Reader& m_reader;
    Handle(Transfer_TransientProcess) m_process;
    LabelTags m_tags;
};

} // namespace

LabelTags userAttributes(const STEPCAFControl_Reader& reader)
{
    const Handle(Interface_InterfaceModel) model = reader.Reader().WS()->Model();
    AttributeCollector collector(reader);
    for (int i = 1; i <= model->NbEntities(); ++i) {
        const auto link = Handle(StepRepr_PropertyDefinitionRepresentation)::DownCast(model->Value(i));
        if (!link.IsNull())
            collector.add(*link);
    }
    return collector.take();
}

} // namespace ptx::step
