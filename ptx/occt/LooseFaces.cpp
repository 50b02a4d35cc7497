#include "ptx/occt/LooseFaces.h"

#include <BRep_Builder.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Compound.hxx>

#include <algorithm>

namespace ptx::occt
{

namespace
{

class Merger
{
public:
    Merger(DocumentContent& content, const std::string& name) : m_content(content) { m_whole.name = name; }

    std::size_t merge()
    {
        std::vector<model::Occurrence>& roots = m_content.model.roots;
        const auto isLooseRoot = [this](const model::Occurrence& root) { return isLoose(root); };
        const auto count = static_cast<std::size_t>(std::count_if(roots.begin(), roots.end(), isLooseRoot));
        if (count < 2)
            return 0;
        BRep_Builder().MakeCompound(m_compound);
        for (const model::Occurrence& root : roots)
            if (isLoose(root))
                add(m_content.model.products[root.product]);
        roots.erase(std::remove_if(roots.begin(), roots.end(), isLooseRoot), roots.end());
        finish();
        return count;
    }

private:
    bool isLoose(const model::Occurrence& root) const
    {
        const model::Product& product = m_content.model.products[root.product];
        return product.body != model::NoBody && product.children.empty() && root.placement.isIdentity() &&
               !TopExp_Explorer(m_content.shapes[product.body].shape, TopAbs_SOLID).More();
    }

    void add(const model::Product& product)
    {
        const occt::meshing::ShapeBody& part = m_content.shapes[product.body];
        m_whole.precision = part.precision;
        BRep_Builder().Add(m_compound, part.shape);
        addAppearances(part, product.appearance, TopAbs_FACE);
        addAppearances(part, product.appearance, TopAbs_EDGE);
    }

    void addAppearances(const occt::meshing::ShapeBody& part, int fallback, TopAbs_ShapeEnum kind)
    {
        for (TopExp_Explorer item(part.shape, kind); item.More(); item.Next()) {
            const occt::meshing::Mark* own = part.marks.Seek(item.Current());
            if (own || fallback != model::NoAppearance)
                m_whole.marks.Bind(item.Current(), own ? *own : occt::meshing::Mark{fallback});
        }
    }

    // The bodies of parts that no root uses any more go.
    void finish()
    {
        model::Model& model = m_content.model;
        m_whole.shape = m_compound;
        std::vector<occt::meshing::ShapeBody> kept;
        std::vector<bool> isUsed(model.products.size());
        for (const model::Occurrence& root : model.roots)
            isUsed[root.product] = true;
        for (const model::Product& product : model.products)
            for (const model::Occurrence& child : product.children)
                isUsed[child.product] = true;
        for (std::size_t i = 0; i < model.products.size(); ++i)
            keepBody(model.products[i], isUsed[i], kept);
        model::Product whole;
        whole.name = m_whole.name;
        whole.body = kept.size();
        kept.push_back(std::move(m_whole));
        model::Occurrence root;
        root.product = model.products.size();
        model.products.push_back(std::move(whole));
        model.roots.push_back(std::move(root));
        m_content.shapes = std::move(kept);
    }

    void keepBody(model::Product& product, bool isUsed, std::vector<occt::meshing::ShapeBody>& kept)
    {
        if (product.body == model::NoBody)
            return;
        const std::size_t old = std::exchange(product.body, isUsed ? kept.size() : model::NoBody);
        if (isUsed)
            kept.push_back(std::move(m_content.shapes[old]));
    }

    DocumentContent& m_content;
    TopoDS_Compound m_compound;
    occt::meshing::ShapeBody m_whole;
};

} // namespace

std::size_t mergeLooseFaces(DocumentContent& content, const std::string& name)
{
    return Merger(content, name).merge();
}

} // namespace ptx::occt
