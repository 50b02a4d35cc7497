#pragma once

#include "host/OSGSystem/Node.h"
#include "ptx/model/Model.h"
#include "scene/Attributes.h"

#include <optional>

namespace ptx::scene
{

/// Puts what a model says of its products and occurrences onto nodes: attributes, and the rest as tags.
class NodeFacts
{
public:
    /// `model` must outlive this object.
    explicit NodeFacts(const model::Model& model) : m_model(model), m_products(model.products.size()) {}

    /// The attributes of the product are one attachment at all of its nodes. Its name is among them always, so that the
    /// nodes of a product can be told from others of their name; the name of the occurrence only where the node bears
    /// another. Within the limits of `scene/AttributeLimits.h`.
    void addTo(const osg::NodePtr& node, const model::Occurrence& occurrence);

private:
    struct ProductFacts {
        osg::RefPtr<osg::AttributeAttachment::Ptr> attributes;
        std::vector<std::string> tags;
    };

    const ProductFacts& factsOf(std::size_t product);

    const model::Model& m_model;
    std::vector<std::optional<ProductFacts>> m_products;
};

} // namespace ptx::scene
