#pragma once

#include "scene/Attributes.h"

#include <optional>
#include <string>
#include <vector>

/// Attributes in the form of tags, as converters tell them.
///
/// A user attribute is "ptx::attribute::NAME=VALUE" when it is a text, and "ptx::attribute:TYPE::NAME=VALUE" or
/// "ptx::attribute:TYPE:UNIT::NAME=VALUE" with the type text, integer, real, boolean ("true" or "false"), date
/// (ISO 8601) or list (line ends between the texts). In name and unit "%25" stands for "%", "%3D" for "=" and "%3A" for
/// ":". The other keys of ConvertedTree.h that tell of a node become attributes of fixed names.
namespace osg::scenefile::converted
{

inline constexpr char ProductName[] = "Product";       ///< text: the name of the product
inline constexpr char ProductIdName[] = "Product id";  ///< text
inline constexpr char VersionName[] = "Version";       ///< text
inline constexpr char MaterialName[] = "Material";     ///< text: the physical material
inline constexpr char DensityName[] = "Density";       ///< real, in g/cm3
inline constexpr char DesignatorName[] = "Designator"; ///< text, of the occurrence
inline constexpr char OccurrenceName[] = "Occurrence"; ///< text, of the occurrence, where its node is named otherwise

inline constexpr char ExactVolumeName[] = "Exact volume"; ///< real, in mm3: of the surfaces of the product itself
inline constexpr char ExactAreaName[] = "Exact area";     ///< real, in mm2: the same

inline constexpr char KindName[] = "Kind"; ///< text, of a callout: what it tells, "position" for one
/// Of a callout, texts: what it means ("diameter"), and the datums of it ("A|B-C"). Several have line ends between
/// them.
inline constexpr char MeaningName[] = "Meaning";
inline constexpr char DatumsName[] = "Datums";
/// Of a callout, reals: the value of the first dimension, its limits from there on, and the size of the first
/// tolerance. Those of the second one end with " 2", and so on.
inline constexpr char ValueName[] = "Value";
inline constexpr char LowerName[] = "Lower deviation";
inline constexpr char UpperName[] = "Upper deviation";
inline constexpr char ToleranceName[] = "Tolerance";
inline constexpr char TextName[] = "Text"; ///< text, of a callout: what its letters say where they are not drawn

/// The tag of a user attribute.
std::string attributeTag(const Attribute& attribute);

/// The attribute that `tag` tells; none for any other tag. A value that is not of its type becomes a text.
std::optional<Attribute> attributeOf(const std::string& tag);

/// Takes the attributes out of `tags`, which keeps the rest in its order.
AttributeList takeAttributes(std::vector<std::string>& tags);

} // namespace osg::scenefile::converted
