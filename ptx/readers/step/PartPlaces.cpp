#include "ptx/readers/step/PartPlaces.h"

#include "ptx/occt/OcctText.h"

#include <TDF_LabelSequence.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS_Shape.hxx>
#include <XCAFDoc_ShapeTool.hxx>

#include <algorithm>
#include <utility>

namespace ptx::step
{

namespace
{

/// A way up from a product that has not come to the top yet.
struct Way {
    TDF_Label top;
    PartPlace place;
};

/// `path` below an occurrence `name`. One that nobody reads to its end keeps its lower part.
std::string below(const std::string& name, const std::string& path)
{
    constexpr std::size_t Longest = 200;
    if (path.empty())
        return name;
    return path.size() > Longest ? path : name + "/" + path;
}

Way stepUp(const Way& way, const TDF_Label& occurrence)
{
    const gp_Trsf own = XCAFDoc_ShapeTool::GetLocation(occurrence).Transformation();
    return {occurrence.Father(), {own * way.place.place, below(occt::nameOf(occurrence), way.place.path)}};
}

// Each open way leads to a place at least, so that no more of them are needed than places may still be added.
PartPlaces findPlaces(const TDF_Label& product)
{
    PartPlaces found;
    std::vector<Way> open = {{product, {}}};
    while (!open.empty()) {
        const Way way = std::move(open.back());
        open.pop_back();
        TDF_LabelSequence users;
        const int count = XCAFDoc_ShapeTool::GetUsers(way.top, users);
        if (count == 0) {
            found.places.push_back(way.place);
            continue;
        }
        const std::size_t room = PartPlaces::Most - found.places.size() - open.size();
        const int taken = static_cast<int>(std::min(static_cast<std::size_t>(count), room));
        found.isInner = true;
        found.isCut = found.isCut || taken < count;
        for (int i = taken; i >= 1; --i)
            open.push_back(stepUp(way, users.Value(i)));
    }
    return found;
}

} // namespace

const PartPlaces& PlaceFinder::of(const TDF_Label& product)
{
    if (!m_known.IsBound(product))
        m_known.Bind(product, findPlaces(product));
    return m_known.Find(product);
}

} // namespace ptx::step
