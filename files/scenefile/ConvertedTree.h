#pragma once

#include "scene/Tags.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>

/// Words that the converter writes into a scene and that others read out of it.
///
/// The root of a converted tree bears `ConvertedTag`. Facts of the CAD file are tags of the form "key=value": those of
/// the file on the root, those of products and occurrences on their nodes. A key occurs as often as the file gives it.
/// What is an attribute (AttributeTags.h) stands in the scene as one, and not as a tag, but for the facts of the file.
namespace osg::scenefile::converted
{

/// On the root of a tree that the converter made, and on nothing else.
inline constexpr char ConvertedTag[] = "ptx::converted";

/// On a node above what is drawn beside a product to tell of it, one child for each callout. Not active at first.
inline constexpr const auto& PmiTag = AnnotationsTag;

inline constexpr char FormatKey[] = "ptx::format";             ///< root: the format of the CAD file, e.g. "STEP"
inline constexpr char UnitKey[] = "ptx::unit";                 ///< root: the length unit of the CAD file, e.g. "INCH"
inline constexpr char ProductKey[] = "ptx::product";           ///< node: the product's name
inline constexpr char ProductIdKey[] = "ptx::product-id";      ///< node: what the product is filed under
inline constexpr char DescriptionKey[] = "ptx::description";   ///< node: of the product, for a person
inline constexpr char VersionKey[] = "ptx::version";           ///< node: of the product
inline constexpr char DocumentKey[] = "ptx::document";         ///< node: a document that tells of the product
inline constexpr char DesignatorKey[] = "ptx::designator";     ///< node: the place in the assembly, as drawings name it
inline constexpr char OccurrenceKey[] = "ptx::occurrence";     ///< node: the occurrence's name where the node's differs
inline constexpr char LayerKey[] = "ptx::layer";               ///< node: a layer it is on
inline constexpr char MaterialKey[] = "ptx::material";         ///< node: the physical material
inline constexpr char DensityKey[] = "ptx::density";           ///< node: of the physical material, in g/cm3
inline constexpr char AttributePrefix[] = "ptx::attribute::";  ///< node: a user attribute, see AttributeTags.h
inline constexpr char VolumeKey[] = "ptx::validation::volume"; ///< node: as the CAD system computed it, in mm3
inline constexpr char AreaKey[] = "ptx::validation::area";     ///< node: the same, in mm2
inline constexpr char CentroidKey[] = "ptx::validation::centroid"; ///< node: the same, three numbers in mm
inline constexpr char MissingPrefix[] = "ptx::missing=";           ///< node: see MissingPart
inline constexpr char LeftOutPrefix[] = "ptx::left-out=";          ///< node: see LeftOut

/// A part that belongs at a node but is not there.
struct MissingPart {
    std::string file;   ///< absolute path
    std::string reason; ///< for a person; without line ends

    friend bool operator==(const MissingPart&, const MissingPart&) = default;
};

/// The tag of a node that `part` is missing from.
inline std::string missingTag(const MissingPart& part)
{
    return MissingPrefix + part.reason + "\n" + part.file;
}

/// What `tag` says when it is the tag of a missing part.
inline std::optional<MissingPart> missingPart(const std::string& tag)
{
    const std::size_t start = sizeof MissingPrefix - 1;
    const std::size_t end = tag.find('\n');
    if (!tag.starts_with(MissingPrefix) || end == std::string::npos)
        return std::nullopt;
    return MissingPart{tag.substr(end + 1), tag.substr(start, end - start)};
}

/// What a file has beside its parts and the converter does not bring in. The parts are complete without it.
struct LeftOut {
    std::string file; ///< absolute path
    std::string what; ///< for a person, many of them: "segments of PMI"; without line ends
    std::size_t count = 0;

    friend bool operator==(const LeftOut&, const LeftOut&) = default;
};

/// The tag that tells of `content`.
inline std::string leftOutTag(const LeftOut& content)
{
    return LeftOutPrefix + std::to_string(content.count) + " " + content.what + "\n" + content.file;
}

/// What `tag` says when it is one of content that is left out.
inline std::optional<LeftOut> leftOut(const std::string& tag)
{
    const std::size_t start = sizeof LeftOutPrefix - 1;
    const std::size_t end = tag.find('\n');
    if (!tag.starts_with(LeftOutPrefix) || end == std::string::npos)
        return std::nullopt;
    LeftOut content = {tag.substr(end + 1), {}, 0};
    const auto [words, fault] = std::from_chars(tag.data() + start, tag.data() + end, content.count);
    if (fault != std::errc() || words == tag.data() + end || *words != ' ')
        return std::nullopt;
    content.what.assign(words + 1, tag.data() + end);
    return content;
}

/// Whether `root` is the root of a tree that the converter made.
inline bool isConvertedTree(const AttachmentContainerPtr& root)
{
    const std::vector<std::string>& tags = tagsOf(root);
    return std::find(tags.begin(), tags.end(), ConvertedTag) != tags.end();
}

/// The tag that says `value` of `key`.
inline std::string tag(const std::string& key, const std::string& value)
{
    return key + "=" + value;
}

} // namespace osg::scenefile::converted
