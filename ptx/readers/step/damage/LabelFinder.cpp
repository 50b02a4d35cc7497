#include "ptx/readers/step/damage/LabelFinder.h"

#include <Interface_InterfaceModel.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

#include <set>
#include <unordered_set>

namespace ptx::step::damage
{

LabelFinder::LabelFinder(const STEPCAFControl_Reader& reader) : m_reader(reader)
{
    const Handle(Interface_InterfaceModel) model = reader.Reader().WS()->Model();
    for (int i = 1; i <= model->NbEntities(); ++i) {
        const auto usage = Handle(StepRepr_NextAssemblyUsageOccurrence)::DownCast(model->Value(i));
        if (!usage.IsNull() && !usage->RelatedProductDefinition().IsNull() &&
            !usage->RelatingProductDefinition().IsNull())
            m_parents[usage->RelatedProductDefinition().get()].push_back(usage->RelatingProductDefinition());
    }
}

TDF_Label LabelFinder::labelOf(const Handle(StepBasic_ProductDefinition) & product) const
{
    const Handle(Transfer_TransientProcess) process = m_reader.Reader().WS()->TransferReader()->TransientProcess();
    const TopoDS_Shape shape = TransferBRep::ShapeResult(process, product);
    TDF_Label label;
    if (!shape.IsNull())
        m_reader.GetShapeLabelMap().Find(shape, label);
    return label;
}

std::vector<std::pair<int, TDF_Label>> LabelFinder::of(const Owners& owners) const
{
    std::vector<std::pair<int, TDF_Label>> labels;
    Owners open = owners;
    std::unordered_set<const Standard_Transient*> seen;
    std::set<int> found;
    while (!open.empty()) {
        const Handle(StepBasic_ProductDefinition) product = open.back();
        open.pop_back();
        if (!seen.insert(product.get()).second)
            continue;
        if (const TDF_Label label = labelOf(product); !label.IsNull()) {
            if (found.insert(label.Tag()).second)
                labels.emplace_back(label.Tag(), label);
        } else if (const auto parents = m_parents.find(product.get()); parents != m_parents.end()) {
            open.insert(open.end(), parents->second.begin(), parents->second.end());
        }
    }
    if (labels.empty())
        labels.emplace_back(0, TDF_Label());
    return labels;
}

} // namespace ptx::step::damage
