#include "tests/house/Layers.h"

#include <algorithm>

namespace house
{

namespace
{

// "a/b" holds what lies in a/b and below it, and the header and source a/b.*; "a/b/*" what lies right in a/b.
using Places = std::vector<std::string_view>;

enum class Foreign { Any, Portable, StandardAndTinyXml };

struct Layer {
    std::string_view place;
    Places mayInclude;
    Foreign foreign = Foreign::Any;
    Places never = {}; // of what `mayInclude` holds
};

constexpr std::string_view vocabulary = "import/filetypes";
constexpr std::string_view platform = "import/Platform"; // the one place of the library for systems that differ

Places together(Places places, const Places& more)
{
    places.insert(places.end(), more.begin(), more.end());
    return places;
}

// The first row whose place holds a file is the one for it.
std::vector<Layer> makeLayers()
{
    const Places leaves{"protocol", vocabulary};
    const Places library = together({"host", "import", "converter", "loader", "optimization", "cad", "plmxml"}, leaves);
    const Places scene = together({"host", "scene"}, leaves);
    const Places formats = together(scene, {"files/*", "files/references"});
    const Places host = together(scene, {"files", "geometry", "render", "standalone"});
    const Places converter = together(scene, {"files", "ptx"});
    const Places all = together(together(host, library), {"importer", "ptx", "tools"});
    return {
        {vocabulary, {vocabulary}, Foreign::Portable},
        {"protocol", {"protocol", vocabulary}, Foreign::Portable},
        {platform, library},
        {"host", {"host", vocabulary}, Foreign::Portable},
        {"cad/xml", {"cad/xml"}, Foreign::StandardAndTinyXml},
        {"import", library, Foreign::Portable},
        {"converter", library, Foreign::Portable},
        {"loader", library, Foreign::Portable},
        {"optimization", library, Foreign::Portable},
        {"cad", library, Foreign::Portable},
        {"plmxml", library, Foreign::Portable},
        {"scene", scene},
        {"files/*", formats},
        {"files/references", {"files/references"}, Foreign::Portable},
        {"files/glb", together(formats, {"files/glb", "geometry/rays"})},
        {"files/gltf", together(formats, {"files/gltf"})},
        {"files/meshes", together(formats, {"files/gltf", "files/meshes", "files/obj", "files/ply", "files/vrml"})},
        {"files/obj", together(formats, {"files/obj"})},
        {"files/ply", together(formats, {"files/ply"})},
        {"files/scenefile", together(formats, {"files/scenefile"})},
        {"files/vrml", together(formats, {"files/vrml"})},
        {"geometry", together(scene, {"geometry"})},
        {"render", together(formats, {"geometry/rays", "render"})},
        {"standalone/startup", host},
        {"standalone/session", together(scene, {"geometry", "standalone/session", "standalone/znUtils"})},
        {"standalone", host, Foreign::Any, {"standalone/startup"}},
        {"ptx/core", together(leaves, {"ptx/core", "files/references"})},
        {"ptx/readers/*", together(scene, {"files", "ptx/core", "ptx/model", "ptx/readers/*"})},
        {"ptx/readers/jt", converter, Foreign::Any, {"ptx/occt"}},
        {"ptx/readers/stl", converter, Foreign::Any, {"ptx/occt"}},
        {"ptx", converter, Foreign::Any, {"ptx/conversion", "ptx/tessellation"}},
        {"importer/plmxml", together(scene, {"cad/xml", "files", "importer/plmxml"})},
        {"importer", together(together(host, library), {"importer"})},
        {"tools/ptxconvert/documents", together(converter, {"tools/ptxconvert", "importer/plmxml"})},
        {"tools/ptxconvert", together(converter, {"tools/ptxconvert"})},
        {"tools/ptxtessellate", together(converter, {"tools/ptxtessellate"})},
        {"tools/znimport", all, Foreign::Any, {"ptx", "tools/ptxconvert", "tools/ptxtessellate"}},
        {"tools", all},
        {"examples", all, Foreign::Any, {"ptx", "tools"}},
    };
}

const std::vector<Layer>& layers()
{
    static const std::vector<Layer> rows = makeLayers();
    return rows;
}

bool holds(std::string_view place, std::string_view file)
{
    if (place.ends_with("/*"))
        return folderOf(file) == place.substr(0, place.size() - 2);
    return file.starts_with(place) && file.size() > place.size() &&
           (file[place.size()] == '/' || file[place.size()] == '.');
}

bool heldByAny(const Places& places, std::string_view file)
{
    return std::ranges::any_of(places, [file](std::string_view place) { return holds(place, file); });
}

const Layer* layerOf(std::string_view file)
{
    const auto row = std::ranges::find_if(layers(), [file](const Layer& layer) { return holds(layer.place, file); });
    return row == layers().end() ? nullptr : &*row;
}

bool isOurs(std::string_view included)
{
    return std::ranges::any_of(ownFolders(), [&](const std::string& folder) { return isBelow(folder, included); });
}

// Standard headers are all lower case and have no suffix.
bool isStandardOrTinyXml(std::string_view included)
{
    return included == "tinyxml.h" ||
           included.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_") == std::string_view::npos;
}

// What is there on every system: Qt's headers of classes, Boost, and the above.
bool isPortable(std::string_view included)
{
    const bool isQt = included.starts_with('Q') && included.find('.') == std::string_view::npos;
    return isQt || included.starts_with("boost/") || isStandardOrTinyXml(included);
}

bool isAllowedForeign(Foreign foreign, std::string_view included)
{
    switch (foreign) {
    case Foreign::Portable:
        return isPortable(included);
    case Foreign::StandardAndTinyXml:
        return isStandardOrTinyXml(included);
    case Foreign::Any:
        break;
    }
    return true;
}

bool isAllowed(const Layer& layer, const std::string& file, const std::string& included)
{
    if (!isOurs(included))
        return isAllowedForeign(layer.foreign, included);
    if (folderOf(file) == folderOf(included))
        return true;
    return heldByAny(layer.mayInclude, included) && (!heldByAny(layer.never, included) || heldByAny(layer.never, file));
}

} // namespace

std::vector<Finding> brokenLayers(const std::vector<SourceFile>& files)
{
    std::vector<Finding> broken;
    for (const SourceFile& file : files) {
        const Layer* layer = layerOf(file.path);
        for (const Include& include : file.includes) {
            if (layer && !isAllowed(*layer, file.path, include.included))
                broken.push_back({file.path, include.line, include.included});
        }
    }
    return broken;
}

} // namespace house
