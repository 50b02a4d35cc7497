#include "ptx/occt/ExactMeasures.h"

#include "files/scenefile/ConvertedTree.h"
#include "ptx/occt/OcctGuard.h"

#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <TopExp_Explorer.hxx>

#include <charconv>
#include <cmath>

namespace ptx::occt
{

namespace
{

using namespace osg::scenefile::converted;

constexpr double Precision = 1e-6; ///< relative, of an integration

std::string measureTag(const char* key, double value)
{
    char text[32];
    return tag(key, std::string(text, std::to_chars(text, text + sizeof text, value).ptr));
}

/// Each solid by itself: files have solids that are inside out.
double volumeOf(const TopoDS_Shape& shape)
{
    double volume = 0;
    for (TopExp_Explorer solids(shape, TopAbs_SOLID); solids.More(); solids.Next()) {
        GProp_GProps properties;
        BRepGProp::VolumeProperties(solids.Current(), properties, Precision);
        volume += std::abs(properties.Mass());
    }
    return volume;
}

double areaOf(const TopoDS_Shape& shape)
{
    GProp_GProps properties;
    BRepGProp::SurfaceProperties(shape, properties, Precision);
    return properties.Mass();
}

std::vector<std::string> tagsOf(const TopoDS_Shape& shape)
{
    std::vector<std::string> tags;
    if (const double area = areaOf(shape); std::isfinite(area) && area > 0)
        tags.push_back(measureTag(ExactAreaKey, area));
    if (const double volume = volumeOf(shape); std::isfinite(volume) && volume > 0)
        tags.push_back(measureTag(ExactVolumeKey, volume));
    return tags;
}

} // namespace

void addExactMeasures(const std::vector<meshing::ShapeBody>& shapes, const model::Job& job, model::Model& model)
{
    if (!job.settings.isOn(core::Setting::ExactMeasures))
        return;
    for (model::Product& product : model.products) {
        if (product.body >= shapes.size())
            continue;
        const core::Trouble trouble = guarded("measuring", [&]() -> core::Trouble {
            const std::vector<std::string> tags = tagsOf(shapes[product.body].shape);
            product.tags.insert(product.tags.end(), tags.begin(), tags.end());
            return std::nullopt;
        });
        if (trouble)
            job.log.warning("\"" + product.name + "\" has no exact measures: " + trouble->message);
    }
}

} // namespace ptx::occt
