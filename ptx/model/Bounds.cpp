#include "ptx/model/Bounds.h"

#include <algorithm>
#include <utility>

namespace ptx::model
{

namespace
{

osg::Vec3f placed(const osg::Matrix& matrix, const osg::Vec3f& point)
{
    const auto& m = matrix.values;
    return {m[0] * point.x + m[4] * point.y + m[8] * point.z + m[12],
            m[1] * point.x + m[5] * point.y + m[9] * point.z + m[13],
            m[2] * point.x + m[6] * point.y + m[10] * point.z + m[14]};
}

void addPlaced(Bounds& whole, const Bounds& part, const osg::Matrix& matrix)
{
    for (unsigned i = 0; i < 8 && !part.isEmpty; ++i)
        whole.add(placed(matrix, part.corner(i)));
}

Bounds aroundBody(const Body& body)
{
    Bounds bounds;
    for (const Piece& piece : body.pieces)
        for (const osg::Vec3f& position : piece.mesh->positions)
            bounds.add(position);
    return bounds;
}

/// Boxes of products, each made once, children before those that contain them.
class ProductBounds
{
public:
    explicit ProductBounds(const Model& model) : m_model(model), m_bounds(model.products.size()) {}

    const Bounds& of(std::size_t product)
    {
        std::vector<std::pair<std::size_t, std::size_t>> open = {{product, 0}}; // with the number of the next child
        m_isBegun.resize(m_model.products.size());
        while (!open.empty()) {
            auto& [number, next] = open.back();
            const std::vector<Occurrence>& children = m_model.products[number].children;
            m_isBegun[number] = true;
            while (next < children.size() && m_isBegun[children[next].product])
                ++next;
            if (next < children.size()) {
                open.emplace_back(children[next].product, 0);
                continue;
            }
            finish(number);
            open.pop_back();
        }
        return m_bounds[product];
    }

    /// Those of the products that were asked for, and of what these contain.
    std::vector<Bounds> all() && { return std::move(m_bounds); }

private:
    void finish(std::size_t number)
    {
        const Product& product = m_model.products[number];
        Bounds bounds;
        if (product.body != NoBody)
            bounds = aroundBody(m_model.bodies[product.body]);
        for (const Occurrence& child : product.children)
            addPlaced(bounds, m_bounds[child.product], child.placement);
        m_bounds[number] = bounds;
    }

    const Model& m_model;
    std::vector<Bounds> m_bounds;
    std::vector<bool> m_isBegun;
};

} // namespace

void Bounds::add(const osg::Vec3f& point)
{
    if (isEmpty)
        low = high = point;
    isEmpty = false;
    low = {std::min(low.x, point.x), std::min(low.y, point.y), std::min(low.z, point.z)};
    high = {std::max(high.x, point.x), std::max(high.y, point.y), std::max(high.z, point.z)};
}

osg::Vec3f Bounds::corner(unsigned number) const
{
    return {number & 1 ? high.x : low.x, number & 2 ? high.y : low.y, number & 4 ? high.z : low.z};
}

ModelBounds boundsOf(const Model& model)
{
    ProductBounds products(model);
    Bounds whole;
    for (const Occurrence& root : model.roots)
        addPlaced(whole, Bounds(products.of(root.product)), root.placement);
    return {whole, std::move(products).all()};
}

} // namespace ptx::model
