#include "ptx/readers/step/UserAttributes.h"

#include "files/scenefile/AttributeTags.h"
#include "files/scenefile/ConvertedTree.h"
#include "ptx/occt/OcctText.h"
#include "ptx/readers/step/MaterialProperty.h"
#include "ptx/readers/step/UnitText.h"

#include <Interface_InterfaceModel.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <StepBasic_MeasureValueMember.hxx>
#include <StepBasic_MeasureWithUnit.hxx>
#include <StepBasic_Product.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepBasic_ProductDefinitionFormation.hxx>
#include <StepRepr_DescriptiveRepresentationItem.hxx>
#include <StepRepr_IntegerRepresentationItem.hxx>
#include <StepRepr_MakeFromUsageOption.hxx>
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
#include <optional>
#include <unordered_map>
#include <utility>

namespace ptx::step
{

namespace
{

bool contains(std::string text, const std::string& word)
{
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text.find(word) != std::string::npos;
}

/// A value and its unit.
struct ItemValue {
    osg::AttributeValue value;
    std::string unit;
};

// OCCT reads a number that is left out as a zero of no kind.
bool isHole(const Handle(StepBasic_MeasureValueMember) & member)
{
    return member.IsNull() || (!member->HasName() && member->Real() == 0);
}

std::optional<ItemValue> measureOf(const Handle(StepBasic_MeasureWithUnit) & measure)
{
    if (measure.IsNull() || isHole(measure->ValueComponentMember()))
        return std::nullopt;
    return ItemValue{measure->ValueComponentMember()->Real(), unitText(measure->UnitComponent())};
}

// What it refers to may be null in files of the wild.
std::optional<ItemValue> valueOf(const Handle(StepRepr_RepresentationItem) & item)
{
    if (const auto text = Handle(StepRepr_DescriptiveRepresentationItem)::DownCast(item); !text.IsNull()) {
        const std::string value = occt::utf8(text->Description());
        return value.empty() ? std::nullopt : std::optional(ItemValue{value, {}});
    }
    if (const auto number = Handle(StepRepr_IntegerRepresentationItem)::DownCast(item); !number.IsNull())
        return ItemValue{std::int64_t(number->Value()), {}};
    if (const auto measure = Handle(StepRepr_MeasureRepresentationItem)::DownCast(item); !measure.IsNull())
        return measureOf(measure->Measure());
    if (const auto value = Handle(StepRepr_ValueRepresentationItem)::DownCast(item); !value.IsNull())
        if (!isHole(value->ValueComponentMember()))
            return ItemValue{value->ValueComponentMember()->Real(), {}};
    return std::nullopt;
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
    explicit AttributeCollector(const STEPCAFControl_Reader& reader) : m_labels(reader) {}

    void add(const StepRepr_PropertyDefinitionRepresentation& link)
    {
        const Handle(StepRepr_PropertyDefinition) property = link.Definition().PropertyDefinition();
        const Handle(StepBasic_ProductDefinition) product = productOf(property);
        if (product.IsNull() || link.UsedRepresentation().IsNull() || link.UsedRepresentation()->Items().IsNull())
            return;
        for (const TDF_Label& label : labelsOf(product))
            addValues(label, *property, *link.UsedRepresentation());
    }

    /// A product that is made of `usage`'s raw material, which is a product without a shape, has the properties of it.
    void addRawMaterial(const StepRepr_MakeFromUsageOption& usage)
    {
        const Handle(StepBasic_ProductDefinition) made = usage.RelatingProductDefinition();
        const Handle(StepBasic_ProductDefinition) raw = usage.RelatedProductDefinition();
        if (made.IsNull() || raw.IsNull() || m_labels.of(made).IsNull() || !m_labels.of(raw).IsNull())
            return;
        m_madeOf[raw.get()].push_back(m_labels.of(made));
        const std::string name = nameOf(*raw);
        if (!name.empty())
            tagsAt(m_tags, m_labels.of(made))
                .push_back(osg::scenefile::converted::tag(osg::scenefile::converted::MaterialKey, name));
    }

    LabelTags take() { return m_tags; }

private:
    static std::string nameOf(const StepBasic_ProductDefinition& definition)
    {
        const Handle(StepBasic_ProductDefinitionFormation) formation = definition.Formation();
        if (formation.IsNull() || formation->OfProduct().IsNull())
            return {};
        return occt::utf8(formation->OfProduct()->Name());
    }

    std::vector<TDF_Label> labelsOf(const Handle(StepBasic_ProductDefinition) & product) const
    {
        if (const TDF_Label label = m_labels.of(product); !label.IsNull())
            return {label};
        const auto made = m_madeOf.find(product.get());
        return made == m_madeOf.end() ? std::vector<TDF_Label>() : made->second;
    }

    void addValues(const TDF_Label& label, const StepRepr_PropertyDefinition& property,
                   const StepRepr_Representation& values)
    {
        if (const std::optional<std::string> material = materialTag(values))
            return tagsAt(m_tags, label).push_back(*material);
        for (const Handle(StepRepr_RepresentationItem) & item : values.Items()->Array1())
            addItem(label, occt::utf8(property.Name()), item);
    }

    void addItem(const TDF_Label& label, const std::string& property, const Handle(StepRepr_RepresentationItem) & item)
    {
        if (item.IsNull())
            return;
        const std::string own = occt::utf8(item->Name());
        const std::string& name = own.empty() ? property : own;
        std::optional<ItemValue> value = valueOf(item);
        if (!name.empty() && value)
            tagsAt(m_tags, label)
                .push_back(
                    osg::scenefile::converted::attributeTag({name, std::move(value->value), std::move(value->unit)}));
    }

    ProductLabels m_labels;
    LabelTags m_tags;
    std::unordered_map<const StepBasic_ProductDefinition*, std::vector<TDF_Label>> m_madeOf; ///< by raw material
};

} // namespace

std::vector<std::string>& tagsAt(LabelTags& tags, const TDF_Label& label)
{
    if (!tags.IsBound(label))
        tags.Bind(label, {});
    return tags.ChangeFind(label);
}

ProductLabels::ProductLabels(const STEPCAFControl_Reader& reader)
    : m_reader(reader), m_process(reader.Reader().WS()->TransferReader()->TransientProcess())
{
}

TDF_Label ProductLabels::of(const Handle(StepBasic_ProductDefinition) & definition) const
{
    const TopoDS_Shape shape = TransferBRep::ShapeResult(m_process, definition);
    if (shape.IsNull() || !m_reader.GetShapeLabelMap().IsBound(shape))
        return {};
    return m_reader.GetShapeLabelMap().Find(shape);
}

LabelTags userAttributes(const STEPCAFControl_Reader& reader)
{
    const Handle(Interface_InterfaceModel) model = reader.Reader().WS()->Model();
    AttributeCollector collector(reader);
    for (int i = 1; i <= model->NbEntities(); ++i)
        if (const auto usage = Handle(StepRepr_MakeFromUsageOption)::DownCast(model->Value(i)); !usage.IsNull())
            collector.addRawMaterial(*usage);
    for (int i = 1; i <= model->NbEntities(); ++i) {
        const auto link = Handle(StepRepr_PropertyDefinitionRepresentation)::DownCast(model->Value(i));
        if (!link.IsNull())
            collector.add(*link);
    }
    return collector.take();
}

} // namespace ptx::step
