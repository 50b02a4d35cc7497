#include "tests/support/StepText.h"

#include "tests/roads/ptxconvert/DecimalText.h"

#include <algorithm>

namespace ptxtest
{

namespace
{

std::string ref(int entity)
{
    return "#" + std::to_string(entity);
}

std::string refs(const std::vector<int>& entities)
{
    std::string text = "(";
    for (const int entity : entities)
        text += (text.size() > 1 ? "," : "") + ref(entity);
    return text + ")";
}

std::string real(double value)
{
    return decimalText(value, 12);
}

std::string triple(Triple value)
{
    return "(" + real(value.x) + "," + real(value.y) + "," + real(value.z) + ")";
}

Triple minus(Triple a, Triple b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

} // namespace

StepText::StepText(LengthUnit unit)
{
    m_application = add("APPLICATION_CONTEXT('core data for automotive mechanical design processes')");
    add("APPLICATION_PROTOCOL_DEFINITION('international standard','automotive_design',2000," + ref(m_application) +
        ")");
    addUnits(unit);
    m_origin = placement({}, {0, 0, 1}, {1, 0, 0});
}

int StepText::add(const std::string& entity)
{
    m_entities.push_back(entity);
    return static_cast<int>(m_entities.size());
}

void StepText::addUnits(LengthUnit unit)
{
    int length = 0;
    if (unit == LengthUnit::Inch) {
        const int millimetre = add("(LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT(.MILLI.,.METRE.))");
        const int factor = add("LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4)," + ref(millimetre) + ")");
        const int exponents = add("DIMENSIONAL_EXPONENTS(1.,0.,0.,0.,0.,0.,0.)");
        length =
            add("(CONVERSION_BASED_UNIT('INCH'," + ref(factor) + ") LENGTH_UNIT() NAMED_UNIT(" + ref(exponents) + "))");
    } else {
        length = add(std::string("(LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT(") +
                     (unit == LengthUnit::Metre ? "$" : ".MILLI.") + ",.METRE.))");
    }
    const int angle = add("(NAMED_UNIT(*) PLANE_ANGLE_UNIT() SI_UNIT($,.RADIAN.))");
    const int solidAngle = add("(NAMED_UNIT(*) SI_UNIT($,.STERADIAN.) SOLID_ANGLE_UNIT())");
    const int accuracy =
        add("UNCERTAINTY_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.E-07)," + ref(length) + ",'distance_accuracy_value','')");
    m_context = add("(GEOMETRIC_REPRESENTATION_CONTEXT(3) GLOBAL_UNCERTAINTY_ASSIGNED_CONTEXT((" + ref(accuracy) +
                    ")) GLOBAL_UNIT_ASSIGNED_CONTEXT(" + refs({length, angle, solidAngle}) +
                    ") REPRESENTATION_CONTEXT('',''))");
}

StepProduct StepText::product(const std::string& name)
{
    StepProduct result;
    const int context = add("PRODUCT_CONTEXT(''," + ref(m_application) + ",'mechanical')");
    const int product = add("PRODUCT('" + name + "','" + name + "','',(" + ref(context) + "))");
    const int formation = add("PRODUCT_DEFINITION_FORMATION('',''," + ref(product) + ")");
    const int design = add("PRODUCT_DEFINITION_CONTEXT('part definition'," + ref(m_application) + ",'design')");
    result.definition = add("PRODUCT_DEFINITION('design',''," + ref(formation) + "," + ref(design) + ")");
    result.shapeDefinition = add("PRODUCT_DEFINITION_SHAPE('',''," + ref(result.definition) + ")");
    result.representation = newRepresentation(result);
    add("SHAPE_DEFINITION_REPRESENTATION(" + ref(result.shapeDefinition) + "," + ref(result.representation) + ")");
    return result;
}

// Its items are known at the end alone; until then the entity is empty.
int StepText::newRepresentation(const StepProduct& product)
{
    const int entity = add("");
    m_representations.push_back({entity, product.definition, {m_origin}});
    return entity;
}

int StepText::point(Triple p)
{
    return add("CARTESIAN_POINT(''," + triple(p) + ")");
}

int StepText::direction(Triple d)
{
    return add("DIRECTION(''," + triple(d) + ")");
}

int StepText::placement(Triple origin, Triple axis, Triple reference)
{
    const int p = point(origin);
    const int z = direction(axis);
    const int x = direction(reference);
    return add("AXIS2_PLACEMENT_3D(''," + ref(p) + "," + ref(z) + "," + ref(x) + ")");
}

int StepText::edge(int from, int to, bool& isForward)
{
    for (const Edge& known : m_edges) {
        isForward = known.from == from;
        if ((known.from == from && known.to == to) || (known.from == to && known.to == from))
            return known.entity;
    }
    isForward = true;
    const Triple along = minus(m_corners[static_cast<std::size_t>(to)], m_corners[static_cast<std::size_t>(from)]);
    const int start = point(m_corners[static_cast<std::size_t>(from)]);
    const int vector = add("VECTOR(''," + ref(direction(along)) + ",1.)");
    const int line = add("LINE(''," + ref(start) + "," + ref(vector) + ")");
    const int entity = add("EDGE_CURVE(''," + ref(m_vertices[static_cast<std::size_t>(from)]) + "," +
                           ref(m_vertices[static_cast<std::size_t>(to)]) + "," + ref(line) + ",.T.)");
    m_edges.push_back({from, to, entity});
    return entity;
}

int StepText::face(const std::array<int, 4>& corners, Triple origin, Triple normal, Triple reference)
{
    std::vector<int> oriented;
    for (std::size_t i = 0; i < 4; ++i) {
        bool isForward = false;
        const int curve = edge(corners[i], corners[(i + 1) % 4], isForward);
        oriented.push_back(add("ORIENTED_EDGE('',*,*," + ref(curve) + (isForward ? ",.T.)" : ",.F.)")));
    }
    const int loop = add("EDGE_LOOP(''," + refs(oriented) + ")");
    const int bound = add("FACE_BOUND(''," + ref(loop) + ",.T.)");
    const int plane = add("PLANE(''," + ref(placement(origin, normal, reference)) + ")");
    return add("ADVANCED_FACE('',(" + ref(bound) + ")," + ref(plane) + ",.T.)");
}

void StepText::box(StepProduct& product, Triple low, Triple high)
{
    m_edges.clear();
    m_corners.clear();
    m_vertices.clear();
    for (int i = 0; i < 8; ++i) {
        m_corners.push_back({i & 1 ? high.x : low.x, i & 2 ? high.y : low.y, i & 4 ? high.z : low.z});
        m_vertices.push_back(add("VERTEX_POINT(''," + ref(point(m_corners.back())) + ")"));
    }
    product.faces = {face({0, 4, 6, 2}, low, {-1, 0, 0}, {0, 1, 0}), face({1, 3, 7, 5}, high, {1, 0, 0}, {0, 1, 0}),
                     face({0, 1, 5, 4}, low, {0, -1, 0}, {1, 0, 0}), face({2, 6, 7, 3}, high, {0, 1, 0}, {1, 0, 0}),
                     face({0, 2, 3, 1}, low, {0, 0, -1}, {1, 0, 0}), face({4, 5, 7, 6}, high, {0, 0, 1}, {1, 0, 0})};
    const int shell = add("CLOSED_SHELL(''," + refs({product.faces.begin(), product.faces.end()}) + ")");
    product.solid = add("MANIFOLD_SOLID_BREP(''," + ref(shell) + ")");
    for (Representation& representation : m_representations)
        if (representation.entity == product.representation) {
            representation.items.push_back(product.solid);
            representation.isBrep = true;
        }
}

StepOccurrence StepText::place(const StepProduct& parent, const StepProduct& child, const std::string& name,
                               Triple offset, Triple axis, Triple reference)
{
    StepOccurrence result;
    result.place = placement(offset, axis, reference);
    result.usage = add("NEXT_ASSEMBLY_USAGE_OCCURRENCE('" + std::to_string(m_entities.size()) + "','" + name + "',''," +
                       ref(parent.definition) + "," + ref(child.definition) + ",$)");
    result.shapeDefinition = add("PRODUCT_DEFINITION_SHAPE('Placement',''," + ref(result.usage) + ")");
    const int transformation =
        add("ITEM_DEFINED_TRANSFORMATION('',''," + ref(m_origin) + "," + ref(result.place) + ")");
    const int relation = add("(REPRESENTATION_RELATIONSHIP('',''," + ref(child.representation) + "," +
                             ref(parent.representation) + ") REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(" +
                             ref(transformation) + ") SHAPE_REPRESENTATION_RELATIONSHIP())");
    add("CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(" + ref(relation) + "," + ref(result.shapeDefinition) + ")");
    for (Representation& representation : m_representations)
        if (representation.entity == parent.representation)
            representation.items.push_back(result.place);
    return result;
}

void StepText::keepIn(const StepProduct& product, const std::string& name)
{
    const int type = add("DOCUMENT_TYPE('geometry')");
    const int file = add("DOCUMENT_FILE('" + name + "','','',#" + std::to_string(type) + ",'',$)");
    add("DOCUMENT_REPRESENTATION_TYPE('digital'," + ref(file) + ")");
    add("APPLIED_DOCUMENT_REFERENCE(" + ref(file) + ",'',(" + ref(product.definition) + "))");
    const int role = add("IDENTIFICATION_ROLE('external document id and location',$)");
    const int source = add("EXTERNAL_SOURCE(IDENTIFIER(''))");
    add("APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('" + name + "'," + ref(role) + "," + ref(source) + ",(" +
        ref(file) + "))");
}

void StepText::keepInDocument(StepProduct& product, const std::string& name)
{
    const int type = add("DOCUMENT_TYPE('')");
    const int document = add("DOCUMENT('','" + name + "',''," + ref(type) + ")");
    std::string& definition = m_entities[static_cast<std::size_t>(product.definition) - 1];
    definition.insert(definition.find('('), "_WITH_ASSOCIATED_DOCUMENTS");
    definition.insert(definition.size() - 1, ",(" + ref(document) + ")");
}

int StepText::surfaceStyle(Triple rgb, double transparency)
{
    const int color = add("COLOUR_RGB(''," + real(rgb.x) + "," + real(rgb.y) + "," + real(rgb.z) + ")");
    const int fill = add("FILL_AREA_STYLE('',(" + ref(add("FILL_AREA_STYLE_COLOUR(''," + ref(color) + ")")) + "))");
    std::vector<int> styles = {add("SURFACE_STYLE_FILL_AREA(" + ref(fill) + ")")};
    if (transparency > 0) {
        const int transparent = add("SURFACE_STYLE_TRANSPARENT(" + real(transparency) + ")");
        styles.push_back(add("SURFACE_STYLE_RENDERING_WITH_PROPERTIES(.NORMAL_SHADING.," + ref(color) + ",(" +
                             ref(transparent) + "))"));
    }
    return add("SURFACE_STYLE_USAGE(.BOTH.," + ref(add("SURFACE_SIDE_STYLE(''," + refs(styles) + ")")) + ")");
}

int StepText::color(int item, Triple rgb, double transparency)
{
    const int assignment = add("PRESENTATION_STYLE_ASSIGNMENT((" + ref(surfaceStyle(rgb, transparency)) + "))");
    m_styles.push_back(add("STYLED_ITEM('',(" + ref(assignment) + ")," + ref(item) + ")"));
    return m_styles.back();
}

void StepText::overrideColor(const StepOccurrence& occurrence, const StepProduct& part, int styled, Triple rgb)
{
    const int representation = add("SHAPE_REPRESENTATION('',(" + ref(occurrence.place) + ")," + ref(m_context) + ")");
    add("SHAPE_DEFINITION_REPRESENTATION(" + ref(occurrence.shapeDefinition) + "," + ref(representation) + ")");
    const int style =
        add("PRESENTATION_STYLE_BY_CONTEXT((" + ref(surfaceStyle(rgb, 0)) + ")," + ref(representation) + ")");
    m_styles.push_back(
        add("OVER_RIDING_STYLED_ITEM('',(" + ref(style) + ")," + ref(part.solid) + "," + ref(styled) + ")"));
}

void StepText::overrideColor(const StepProduct& top, const StepOccurrence& outer, const StepOccurrence& inner,
                             const StepProduct& part, int styled, Triple rgb)
{
    StepOccurrence chain;
    chain.usage = add("SPECIFIED_HIGHER_USAGE_OCCURRENCE('','',$," + ref(top.definition) + "," + ref(part.definition) +
                      ",$," + ref(outer.usage) + "," + ref(inner.usage) + ")");
    chain.shapeDefinition = add("PRODUCT_DEFINITION_SHAPE('SHUO',$," + ref(chain.usage) + ")");
    chain.place = inner.place;
    overrideColor(chain, part, styled, rgb);
}

std::string StepText::text()
{
    for (const Representation& representation : m_representations)
        m_entities[static_cast<std::size_t>(representation.entity) - 1] =
            std::string(representation.isBrep ? "ADVANCED_BREP_SHAPE_REPRESENTATION" : "SHAPE_REPRESENTATION") +
            "(''," + refs(representation.items) + "," + ref(m_context) + ")";
    if (!m_styles.empty())
        add("MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION(''," + refs(m_styles) + "," + ref(m_context) +
            ")");
    std::string result = "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
                         "FILE_NAME('fixture','2024-01-01T00:00:00',(''),(''),'','','');\n"
                         "FILE_SCHEMA(('AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }'));\nENDSEC;\nDATA;\n";
    for (std::size_t i = 0; i < m_entities.size(); ++i)
        result += ref(static_cast<int>(i) + 1) + "=" + m_entities[i] + ";\n";
    m_styles.clear();
    return result + "ENDSEC;\nEND-ISO-10303-21;\n";
}

} // namespace ptxtest
