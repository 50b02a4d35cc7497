#pragma once

#include "host/OSGSystem/Node.h"
#include "scene/Attributes.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace importer::inventory
{

/// Where the measures of a part come from.
enum class MeasureOrigin {
    None,  ///< it has none
    Exact, ///< the converter's, of the exact surfaces
    Mesh,  ///< its triangles, which differ by their tolerance
    Sum    ///< those of what it consists of
};

/// A product as it stands in a parts list.
struct PartsListRow {
    unsigned level = 0;    ///< how many products are around it; 0 throughout a flat list
    std::string product;   ///< its name
    std::size_t count = 0; ///< in the scene in a flat list, in one of the product around it in an indented one
    std::string path;      ///< the id of its first occurrence, see `osg::OccurrenceIds`
    std::string material;
    std::optional<double> density; ///< in g/cm3
    std::optional<double> area;    ///< in mm2
    std::optional<double> volume;  ///< in mm3
    std::optional<double> mass;    ///< in kg
    MeasureOrigin origin = MeasureOrigin::None;
    osg::AttributeList attributes; ///< of the product
};

enum class PartsListLevels {
    Flat,    ///< each product that consists of no others, once
    Indented ///< assemblies too, each followed by what one of it consists of
};

/// The products below `root` that are shown. Products are the nodes that have attributes of a product; a geometry with
/// no product around it counts as one that is called as its node. Occurrences are of one product when their attributes
/// and their meshes are the same.
std::vector<PartsListRow> partsList(const osg::NodePtr& root, PartsListLevels levels);

} // namespace importer::inventory
