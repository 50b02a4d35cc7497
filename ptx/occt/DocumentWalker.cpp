#include "ptx/occt/DocumentWalker.h"

#include "ptx/occt/DocumentColors.h"
#include "ptx/occt/DocumentProperties.h"
#include "ptx/occt/OcctMatrix.h"
#include "ptx/occt/OcctSetup.h"
#include "ptx/occt/OcctText.h"
#include "ptx/occt/meshing/ShapeQueries.h"

#include <TDF_AttributeSequence.hxx>
#include <TDF_LabelMapHasher.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDocStd_Document.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_GraphNode.hxx>
#include <XCAFDoc_ShapeTool.hxx>

namespace ptx::occt
{

namespace
{

class Walker
{
public:
    using Complete = std::function<void(const TDF_Label&, model::Product&)>;

    Walker(const Handle(TDocStd_Document) & document, const model::Job& job, const Complete& complete)
        : m_complete(complete), m_facts(document), m_shapes(XCAFDoc_DocumentTool::ShapeTool(document->Main())),
          m_colors(XCAFDoc_DocumentTool::ColorTool(document->Main()), m_content.model.appearances), m_job(job)
    {
    }

    DocumentContent walk()
    {
        TDF_LabelSequence roots;
        m_shapes->GetFreeShapes(roots);
        for (const TDF_Label& root : roots)
            m_content.model.roots.push_back(occurrence(root));
        // Products that come up on the way join the end of the queue.
        for (std::size_t next = 0; next < m_queue.size(); ++next) {
            fill(next, TDF_Label(m_queue[next])); // the queue grows on the way
            m_job.progress.report(static_cast<double>(next) / static_cast<double>(m_queue.size()));
        }
        for (const TDF_Label& component : m_components)
            collectOverrides(component);
        return std::move(m_content);
    }

private:
    std::size_t productOf(const TDF_Label& label)
    {
        if (const std::size_t* known = m_products.Seek(label))
            return *known;
        const std::size_t number = m_queue.size();
        m_products.Bind(label, number);
        m_queue.push_back(label);
        m_content.model.products.emplace_back();
        return number;
    }

    model::Occurrence occurrence(const TDF_Label& label)
    {
        TDF_Label referred;
        model::Occurrence result;
        if (!XCAFDoc_ShapeTool::GetReferredShape(label, referred)) {
            result.product = productOf(label);
            result.isVisible = isVisible(label);
            return result;
        }
        result.product = productOf(referred);
        result.name = nameOf(label);
        result.placement = toMatrix(XCAFDoc_ShapeTool::GetLocation(label).Transformation());
        result.appearance = m_colors.of(label);
        result.isVisible = isVisible(label) && isVisible(referred);
        result.tags = m_facts.of(label);
        return result;
    }

    bool isVisible(const TDF_Label& label) const { return m_colors.isVisible(label) && m_facts.isVisible(label); }

    void fill(std::size_t number, const TDF_Label& label)
    {
        model::Product product;
        product.name = nameOf(label);
        product.appearance = m_colors.of(label);
        product.tags = m_facts.of(label);
        if (XCAFDoc_ShapeTool::IsAssembly(label))
            addComponents(number, label, product);
        else
            addBody(label, product);
        if (m_complete)
            m_complete(label, product);
        m_content.model.products[number] = std::move(product);
    }

    void addComponents(std::size_t number, const TDF_Label& label, model::Product& product)
    {
        TDF_LabelSequence components;
        XCAFDoc_ShapeTool::GetComponents(label, components);
        for (const TDF_Label& component : components) {
            m_places.Bind(component, {number, product.children.size()});
            m_components.push_back(component);
            product.children.push_back(occurrence(component));
        }
    }

    void addBody(const TDF_Label& label, model::Product& product)
    {
        occt::meshing::ShapeBody body;
        body.shape = XCAFDoc_ShapeTool::GetShape(label);
        if (body.shape.IsNull() || !occt::meshing::hasGeometry(body.shape))
            return;
        body.name = product.name;
        body.precision = precisionOf(body.shape, body.precision);
        m_colors.collect(label, body);
        product.body = m_content.shapes.size();
        m_content.shapes.push_back(std::move(body));
    }

    void collectOverrides(const TDF_Label& component)
    {
        TDF_AttributeSequence usages;
        if (!XCAFDoc_ShapeTool::GetAllComponentSHUO(component, usages))
            return;
        for (const Handle(TDF_Attribute) & usage : usages) {
            const auto node = Handle(XCAFDoc_GraphNode)::DownCast(usage);
            if (!node.IsNull() && node->NbFathers() == 0)
                addOverride(node);
        }
    }

    // A chain of usages, each on a label below its component; the colour is with the first.
    void addOverride(Handle(XCAFDoc_GraphNode) node)
    {
        model::PathOverride result;
        result.appearance = m_colors.of(node->Label());
        while (!node.IsNull()) {
            const auto* place = m_places.Seek(node->Label().Father());
            if (!place || result.path.size() > m_content.model.products.size())
                return;
            result.path.push_back(*place);
            node = node->NbChildren() > 0 ? node->GetChild(1) : Handle(XCAFDoc_GraphNode)();
        }
        if (result.appearance != model::NoAppearance)
            m_content.model.overrides.push_back(std::move(result));
    }

    DocumentContent m_content;
    const Complete& m_complete;
    DocumentProperties m_facts;
    Handle(XCAFDoc_ShapeTool) m_shapes;
    DocumentColors m_colors;
    const model::Job& m_job;
    NCollection_DataMap<TDF_Label, std::size_t, TDF_LabelMapHasher> m_products;
    NCollection_DataMap<TDF_Label, std::pair<std::size_t, std::size_t>, TDF_LabelMapHasher> m_places;
    std::vector<TDF_Label> m_queue;
    std::vector<TDF_Label> m_components;
};

} // namespace

DocumentContent walkDocument(const Handle(TDocStd_Document) & document, const model::Job& job,
                             const std::function<void(const TDF_Label&, model::Product&)>& complete)
{
    return Walker(document, job, complete).walk();
}

} // namespace ptx::occt
