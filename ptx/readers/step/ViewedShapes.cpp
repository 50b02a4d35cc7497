#include "ptx/readers/step/ViewedShapes.h"

#include "ptx/core/Log.h"
#include "ptx/occt/DocumentWalker.h"

#include <STEPCAFControl_Reader.hxx>
#include <STEPControl_Reader.hxx>
#include <TDF_LabelSequence.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Shape.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

#include <algorithm>
#include <iterator>
#include <utility>

namespace ptx::step
{

namespace
{

constexpr std::size_t MostPairs = 2'000'000;

using Views = std::vector<std::size_t>;

Views joined(const Views& a, const Views& b)
{
    Views all;
    std::set_union(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(all));
    return all;
}

} // namespace

ViewedShapes::ViewedShapes(const STEPCAFControl_Reader& reader, std::span<const SavedView> views, core::Log& log)
    : m_views(views.size())
{
    for (std::size_t i = 0; i < views.size(); ++i)
        if (views[i].scope.isWhole)
            m_whole.push_back(i);
    for (std::size_t i = 0; i < views.size() && m_pairs <= MostPairs; ++i)
        if (!views[i].scope.isWhole)
            addView(reader, i, views[i].scope);
    if (const std::size_t limited = m_views - m_whole.size(); limited > 0)
        log.info(std::to_string(limited) + " saved views show some of the shapes alone");
    const std::size_t shapes = static_cast<std::size_t>(m_ofProducts.Size()) + m_ofShapes.size();
    if (m_pairs <= MostPairs && (m_views == 0 || shapes <= MostPairs / m_views))
        return;
    log.warning("the saved views show all shapes: what each of them does to each would be too much");
    m_views = 0;
}

void ViewedShapes::addView(const STEPCAFControl_Reader& reader, std::size_t number, const ViewScope& scope)
{
    for (const TDF_Label& product : scope.products)
        addWithin(product, number);
    const Handle(Transfer_TransientProcess) process = reader.Reader().WS()->TransferReader()->TransientProcess();
    for (const Handle(Standard_Transient) & item : scope.items)
        addShape(TransferBRep::ShapeResult(process, item), number);
}

void ViewedShapes::addWithin(const TDF_Label& product, std::size_t view)
{
    std::vector<TDF_Label> open = {product};
    while (!open.empty() && ++m_pairs <= MostPairs) {
        const TDF_Label label = open.back();
        open.pop_back();
        if (!m_ofProducts.IsBound(label))
            m_ofProducts.Bind(label, {});
        Views& views = m_ofProducts.ChangeFind(label);
        if (!views.empty() && views.back() == view)
            continue;
        views.push_back(view);
        TDF_LabelSequence components;
        if (XCAFDoc_ShapeTool::IsAssembly(label))
            XCAFDoc_ShapeTool::GetComponents(label, components);
        for (const TDF_Label& component : components)
            if (TDF_Label inner; XCAFDoc_ShapeTool::GetReferredShape(component, inner))
                open.push_back(inner);
    }
}

void ViewedShapes::addShape(const TopoDS_Shape& shape, std::size_t view)
{
    const auto add = [&](const TopoDS_Shape& item) {
        Views& views = m_ofShapes[item.TShape().get()];
        if (views.empty() || views.back() != view)
            views.push_back(view);
        ++m_pairs;
    };
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More() && m_pairs <= MostPairs; face.Next())
        add(face.Current());
    for (TopExp_Explorer edge(shape, TopAbs_EDGE, TopAbs_FACE); edge.More() && m_pairs <= MostPairs; edge.Next())
        add(edge.Current());
}

void ViewedShapes::addProduct(const TDF_Label& label)
{
    const Views* views = m_ofProducts.Seek(label);
    m_products.push_back(views && m_views > 0 ? *views : Views());
}

int ViewedShapes::numberOf(const Views& views)
{
    return views.size() == m_views ? model::AlwaysShown
                                   : m_sets.try_emplace(views, static_cast<int>(m_sets.size())).first->second;
}

void ViewedShapes::finish(occt::DocumentContent& content, std::vector<FacetBody>& facets)
{
    if (m_views == m_whole.size() || m_views == 0)
        return;
    const std::vector<model::Product>& products = content.model.products;
    for (std::size_t i = 0; i < products.size() && i < m_products.size(); ++i)
        if (products[i].body != model::NoBody)
            mark(content.shapes[products[i].body], joined(m_whole, m_products[i]));
    for (FacetBody& body : facets)
        body.views = numberOf(joined(m_whole, m_products[body.product]));
    content.model.viewSets.resize(m_sets.size());
    for (const auto& [views, number] : m_sets)
        content.model.viewSets[static_cast<std::size_t>(number)] = views;
}

void ViewedShapes::mark(occt::meshing::ShapeBody& body, const Views& around)
{
    const int aroundAll = numberOf(around);
    const auto mark = [&](const TopoDS_Shape& item) {
        const auto own = m_ofShapes.find(item.TShape().get());
        const int views = own == m_ofShapes.end() ? aroundAll : numberOf(joined(around, own->second));
        if (views == model::AlwaysShown)
            return;
        if (!body.marks.IsBound(item))
            body.marks.Bind(item, {});
        body.marks.ChangeFind(item).views = views;
    };
    for (TopExp_Explorer face(body.shape, TopAbs_FACE); face.More(); face.Next())
        mark(face.Current());
    for (TopExp_Explorer edge(body.shape, TopAbs_EDGE, TopAbs_FACE); edge.More(); edge.Next())
        mark(edge.Current());
}

} // namespace ptx::step
