#include "ptx/occt/DocumentColors.h"

#include <Quantity_ColorRGBA.hxx>
#include <TDF_LabelSequence.hxx>
#include <TopExp_Explorer.hxx>
#include <XCAFDoc_ShapeTool.hxx>

#include <algorithm>
#include <cmath>
#include <vector>

namespace ptx::occt
{

namespace
{

// The way to linear values and back leaves a trace in the last digits.
float rounded(double value)
{
    return static_cast<float>(std::round(std::clamp(value, 0.0, 1.0) * 1e5) / 1e5);
}

model::Appearance displayed(const Quantity_ColorRGBA& color)
{
    double red = 0;
    double green = 0;
    double blue = 0;
    color.GetRGB().Values(red, green, blue, Quantity_TOC_sRGB);
    return {rounded(red), rounded(green), rounded(blue), rounded(color.Alpha())};
}

struct ColoredShape {
    TopoDS_Shape shape;
    int appearance;
};

void bind(const ColoredShape& colored, TopAbs_ShapeEnum kind, occt::meshing::ShapeBody& body)
{
    for (TopExp_Explorer part(colored.shape, kind); part.More(); part.Next())
        body.marks.Bind(part.Current(), {colored.appearance});
}

} // namespace

int DocumentColors::find(const TDF_Label& label, XCAFDoc_ColorType type) const
{
    Quantity_ColorRGBA color;
    return m_tool->GetColor(label, type, color) ? m_table.indexOf(displayed(color)) : model::NoAppearance;
}

int DocumentColors::of(const TDF_Label& label) const
{
    const int surface = find(label, XCAFDoc_ColorSurf);
    return surface != model::NoAppearance ? surface : find(label, XCAFDoc_ColorGen);
}

int DocumentColors::ofCurves(const TDF_Label& label) const
{
    const int curves = find(label, XCAFDoc_ColorCurv);
    return curves != model::NoAppearance ? curves : of(label);
}

void DocumentColors::collect(const TDF_Label& part, occt::meshing::ShapeBody& body) const
{
    TDF_LabelSequence labels;
    XCAFDoc_ShapeTool::GetSubShapes(part, labels);
    std::vector<ColoredShape> found;
    for (const TDF_Label& label : labels) {
        const TopoDS_Shape shape = XCAFDoc_ShapeTool::GetShape(label);
        const bool isCurve = !shape.IsNull() && shape.ShapeType() >= TopAbs_WIRE;
        const int appearance = isCurve ? ofCurves(label) : of(label);
        if (!shape.IsNull() && appearance != model::NoAppearance)
            found.push_back({shape, appearance});
    }
    std::stable_sort(found.begin(), found.end(), [](const ColoredShape& a, const ColoredShape& b) {
        return a.shape.ShapeType() < b.shape.ShapeType();
    });
    for (const ColoredShape& colored : found)
        bind(colored, colored.shape.ShapeType() < TopAbs_WIRE ? TopAbs_FACE : TopAbs_EDGE, body);
}

} // namespace ptx::occt
