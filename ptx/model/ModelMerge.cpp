#include "ptx/model/ModelMerge.h"

#include <iterator>

namespace ptx::model
{

namespace
{

class Merger
{
public:
    Merger(Model& whole, const Model& part, std::size_t firstBody)
        : m_whole(whole), m_part(part), m_firstProduct(whole.products.size()), m_firstBody(firstBody)
    {
    }

    int appearance(int number) const
    {
        return number == NoAppearance ? NoAppearance : m_whole.appearances.indexOf(m_part.appearances[number]);
    }

    std::size_t product(std::size_t number) const { return m_firstProduct + number; }

    void move(Occurrence& occurrence) const
    {
        occurrence.product = product(occurrence.product);
        occurrence.appearance = appearance(occurrence.appearance);
    }

    void move(Product& product) const
    {
        for (Occurrence& child : product.children)
            move(child);
        if (product.body != NoBody)
            product.body += m_firstBody;
        product.appearance = appearance(product.appearance);
        for (Callout& callout : product.callouts) {
            callout.views.clear();
            for (Piece& piece : callout.pieces)
                piece.appearance = appearance(piece.appearance);
        }
    }

    void move(PathOverride& override) const
    {
        for (auto& [parent, child] : override.path)
            parent = product(parent);
        override.appearance = appearance(override.appearance);
    }

private:
    Model& m_whole;
    const Model& m_part;
    std::size_t m_firstProduct;
    std::size_t m_firstBody;
};

template <class T>
void append(std::vector<T>& to, std::vector<T>& from, const Merger& merger)
{
    for (T& each : from)
        merger.move(each);
    to.insert(to.end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
}

} // namespace

std::vector<Occurrence> mergeModel(Model& whole, Model part, std::size_t firstBody)
{
    const Merger merger(whole, part, firstBody);
    append(whole.products, part.products, merger);
    append(whole.overrides, part.overrides, merger);
    std::vector<Occurrence> roots;
    append(roots, part.roots, merger);
    for (Occurrence& root : roots)
        root.copied = whole.copiedTrees++;
    return roots;
}

} // namespace ptx::model
