#pragma once

#include "files/glb/GlbJson.h"
#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Node.h"
#include "scene/Attributes.h"

#include <unordered_map>

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
    /// The attributes of the products that nodes referred to so far.
    const JsonList& products() const { return m_products; }

private:
    std::size_t numberOf(const osg::AttributeAttachment::Ptr& product);

    std::unordered_map<const osg::FieldContainer*, std::size_t> m_numbers; ///< by attachment
    std::unordered_map<std::string, std::size_t> m_known;                  ///< by what stands in the list
    JsonList m_products;
};

/// The members of the extras of `material`.
std::string materialMembers(const osg::MaterialPtr& material);

/// Attributes as one JSON object. Texts and dates become strings, numbers numbers, a list an object with its texts
/// under "value", a real with a unit one with "value" and "unit". A name that occurs several times has a list of its
/// values.
std::string attributesText(const osg::AttributeList& attributes);

/// The text of `json` with `members` among its extras.
std::string withExtras(const Json& json, const std::string& members);

} // namespace files::glb
