#pragma once

#include "files/TextNumbers.h"
#include "files/glb/GlbJson.h"
#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Node.h"
#include "scene/Attributes.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace files::glb
{

/// Makes the text of attributes. Lists follow each other that have the same names in the same order, as those of the
/// parts of a file mostly do: what does not depend on the values is made once for them.
class AttributeWriter
{
public:
    /// Adds the attributes as one JSON object, by their names. Texts become strings, numbers numbers (reals with a
    /// point or an exponent), a list an object with its texts under "value"; what has a unit one with "value" and
    /// "unit", a date or a real that is no number one with "value" and the "type" "date" or "real". A name that occurs
    /// several times has a list of its values. `files/gltf/ExtrasValues.h` reads it.
    void add(const osg::AttributeList& attributes, std::string& json);

private:
    /// An attribute of the list by its index, with what stands around its value.
    struct Member {
        std::size_t index = 0;
        std::string before; ///< the name, where it is the first of this name
        bool isLastOfSeveral = false;
    };

    void lookAtNames(const osg::AttributeList& attributes);

    std::vector<std::string> m_names; ///< of the last list
    std::vector<Member> m_members;    ///< by name
};

/// The attributes of a file as members of `extras`. Those of products stand once, in a list that the nodes refer to by
/// index: as members of their nodes they would make files with many occurrences several times as large.
class GlbAttributes
{
public:
    /// The members of the extras of a node with these attributes, each of which may be null, without braces: the index
    /// of its product under "product", the attributes of the occurrence under "attributes". Empty when it has none.
    std::string members(const osg::AttributeAttachment::Ptr& occurrence, const osg::AttributeAttachment::Ptr& product);
    /// Whether nodes referred to a product.
    bool hasProducts() const { return !m_products.texts().empty(); }
    /// The entries of the list of the attributes of these products, with a comma before each.
    std::vector<std::string_view> products() const { return m_products.pieces(); }

private:
    std::size_t numberOf(const osg::AttributeAttachment& product);
    std::size_t add(const osg::AttributeAttachment& product);

    AttributeWriter m_writer;
    std::string m_entry;                                                   ///< of the last product
    std::unordered_map<const osg::FieldContainer*, std::size_t> m_numbers; ///< of attachments that several nodes hold
    files::TextPool m_products;                                            ///< the entries of the list
};

/// The members of the extras of `material`.
std::string materialMembers(const osg::MaterialPtr& material);

/// What AttributeWriter makes of one list.
std::string attributesText(const osg::AttributeList& attributes);

/// The text of `json` with `members` among its extras.
std::string withExtras(Json json, const std::string& members);

} // namespace files::glb
