#include "tests/roads/ptxconvert/DraughtingText.h"

namespace ptxtest
{

namespace
{

std::string list(const std::vector<int>& items)
{
    std::string text;
    for (const int item : items)
        text += (text.empty() ? "" : ",") + ref(item);
    return "(" + text + ")";
}

} // namespace

std::string ref(int entity)
{
    return "#" + std::to_string(entity);
}

DraughtingText::DraughtingText(LengthUnit unit, const std::string& part) : m_step(unit), m_part(m_step.product(part))
{
    m_step.box(m_part, {0, 0, 0}, {30, 20, 10});
}

int DraughtingText::camera(const std::string& name, const std::string& projection, const std::string& y)
{
    const int eye = add("CARTESIAN_POINT('',(15.," + y + ",5.))");
    const int along = add("DIRECTION('',(0.,1.,0.))");
    const int left = add("DIRECTION('',(-1.,0.,0.))");
    const int system = add("AXIS2_PLACEMENT_3D(''," + ref(eye) + "," + ref(along) + "," + ref(left) + ")");
    const int zero = add("CARTESIAN_POINT('',(0.,0.,0.))");
    const int window = add("PLANAR_BOX('',60.,50.," + ref(origin()) + ")");
    const int volume =
        add("VIEW_VOLUME(" + projection + "," + ref(zero) + ",100.,0.,.F.,0.,.F.,.F.," + ref(window) + ")");
    return add("CAMERA_MODEL_D3('" + name + "'," + ref(system) + "," + ref(volume) + ")");
}

int DraughtingText::callout(const std::string& name)
{
    const int set = add("TESSELLATED_GEOMETRIC_SET('datum',(" + ref(line()) + "," + ref(square()) + "))");
    const int occurrence = add("TESSELLATED_ANNOTATION_OCCURRENCE('',(" + ref(style()) + ")," + ref(set) + ")");
    return add("DRAUGHTING_CALLOUT('" + name + "',(" + ref(occurrence) + "))");
}

int DraughtingText::mappedItems(const std::vector<int>& items)
{
    return mapped(add("SHAPE_REPRESENTATION(''," + list(items) + "," + ref(m_step.context()) + ")"));
}

int DraughtingText::secondBox()
{
    m_step.box(m_part, {40, 0, 0}, {70, 20, 10});
    return m_part.solid;
}

int DraughtingText::mapped(int representation)
{
    const int placement = origin();
    const int map = add("REPRESENTATION_MAP(" + ref(placement) + "," + ref(representation) + ")");
    return add("MAPPED_ITEM(''," + ref(map) + "," + ref(placement) + ")");
}

int DraughtingText::draw(const std::vector<int>& items)
{
    return add("DRAUGHTING_MODEL(''," + list(items) + "," + ref(m_step.context()) + ")");
}

void DraughtingText::view(const std::string& name, const std::string& projection, const std::string& y)
{
    draw({camera(name, projection, y)});
}

std::vector<StepOccurrence> DraughtingText::hold(const std::vector<std::string>& names, bool withAnother)
{
    const StepProduct top = m_step.product("top");
    std::vector<StepOccurrence> uses;
    for (const std::string& name : names)
        uses.push_back(m_step.place(top, m_part, name, {100. * static_cast<double>(uses.size() + 1), 0, 0}));
    if (withAnother) {
        m_other = m_step.product("another");
        m_step.box(m_other, {0, 0, 0}, {5, 5, 5});
        m_step.place(top, m_other, "beside", {0, 50, 0});
    }
    return uses;
}

void DraughtingText::holdTwice(const std::vector<std::string>& names, const std::vector<std::string>& groups)
{
    const StepProduct group = m_step.product("group");
    const StepProduct top = m_step.product("top");
    double x = 0;
    for (const std::string& name : names)
        m_step.place(group, m_part, name, {x += 100, 0, 0});
    x = 0;
    for (const std::string& name : groups)
        m_step.place(top, group, name, {x += 1000, 0, 0}, {0, 0, 1}, {0, 1, 0});
}

void DraughtingText::overrideColor(const StepOccurrence& use)
{
    m_step.overrideColor(use, m_part, m_step.color(m_part.solid, {0, 1, 0}), {1, 1, 0});
}

int DraughtingText::line()
{
    const int points = add("COORDINATES_LIST('',2,((1.,2.,3.),(4.,2.,3.)))");
    return add("TESSELLATED_CURVE_SET(''," + ref(points) + ",((1,2)))");
}

int DraughtingText::square()
{
    const int points = add("COORDINATES_LIST('',4,((0.,0.,20.),(1.,0.,20.),(0.,1.,20.),(1.,1.,20.)))");
    return add("COMPLEX_TRIANGULATED_SURFACE_SET(''," + ref(points) + ",4,(),(),((1,2,3,4)),())");
}

int DraughtingText::style()
{
    const int blue = add("DRAUGHTING_PRE_DEFINED_COLOUR('blue')");
    const int curve = add("CURVE_STYLE('',$,$," + ref(blue) + ")");
    const int red = add("FILL_AREA_STYLE_COLOUR(''," + ref(add("COLOUR_RGB('',1.,0.,0.)")) + ")");
    const int area = add("FILL_AREA_STYLE('',(" + ref(red) + "))");
    return add("PRESENTATION_STYLE_ASSIGNMENT((" + ref(curve) + "," + ref(area) + "))");
}

int DraughtingText::origin()
{
    return add("AXIS2_PLACEMENT_3D(''," + ref(add("CARTESIAN_POINT('',(0.,0.,0.))")) + ",$,$)");
}

} // namespace ptxtest
