#pragma once

#include <string_view>
#include <vector>

/// What the model takes of a document: which elements may stand in which, and what of their attributes is read.
/// Everything else is skipped, an element together with what is in it. The classes' load operations take the same.
namespace HB::XML::CAD
{

/// What the value of an attribute says.
enum class CADValue {
    Plain,           ///< a word, a number, a text
    Unused,          ///< read, but nothing that becomes of a document depends on it
    Instances,       ///< leads to one instance or several
    Roots,           ///< leads to instances or to parts
    Part,            ///< leads to a part
    Representations, ///< leads to representations
    Transform,       ///< leads to a transform
    Material,        ///< leads to a material
    Occurrences      ///< leads to one occurrence or several
};

/// One attribute of an element.
struct CADAttributeRule {
    std::string_view name; ///< to the letter
    CADValue value;        ///< what its text is
};

/// One element, under one of the names that it may have. All have the attributes `id` and `name`.
struct CADElementRule {
    std::string_view name;                    ///< to the letter
    std::vector<std::string_view> children;   ///< the elements that it takes
    std::vector<CADAttributeRule> attributes; ///< its own, references in the order in which they are followed
};

/// One row for each element from `ProductDef` downwards. The root `PLMXML` takes its first `ProductDef` alone.
const std::vector<CADElementRule>& grammar();

/// The row of an element; null for one that the model does not know.
const CADElementRule* findElementRule(std::string_view name);

/// Whether `parent` takes `child`.
bool takesChild(std::string_view parent, std::string_view child);

} // namespace HB::XML::CAD
