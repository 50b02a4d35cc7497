#pragma once

#include "files/glb/GlbJson.h"
#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Node.h"
#include "scene/Attributes.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace files::glb
{

/// The attributes of a file as members of `extras`. Those of products stand once, in a list that the nodes refer to by
/// index: as members of their nodes they would make files with many occurrences several times as large.
class GlbAttributes
{
public:
    /// The members of the extras of `node`, without braces: the index of its product under "product", the attributes of
    /// the occurrence under "attributes". Empty when it has none.
    std::string membersOf(const osg::NodePtr& node);
    /// Whether nodes referred to a product.
    bool hasProducts() const { return !m_products.empty(); }
    /// Adds the list of the attributes of these products to `json`.
    void addProducts(std::string& json) const;

private:
    std::size_t numberOf(const osg::AttributeAttachment::Ptr& product);

    std::unordered_map<const osg::FieldContainer*, std::size_t> m_numbers; ///< by attachment
    std::unordered_map<std::string, std::size_t> m_known;                  ///< by what stands in the list
    std::vector<const std::string*> m_products;                            ///< keys of these, by index
};

/// The members of the extras of `material`.
std::string materialMembers(const osg::MaterialPtr& material);

/// Attributes as one JSON object, by their names. Texts become strings, numbers numbers (reals with a point or an
/// exponent), a list an object with its texts under "value"; what has a unit one with "value" and "unit", a date or a
/// real that is no number one with "value" and the "type" "date" or "real". A name that occurs several times has a list
/// of its values. `files/gltf/ExtrasValues.h` reads it.
std::string attributesText(const osg::AttributeList& attributes);

/// The text of `json` with `members` among its extras.
std::string withExtras(Json json, const std::string& members);

} // namespace files::glb
