#include "importer/plmxml/Reading.h"

namespace importer::plmxml
{

pugi::xml_node childOf(const Reading& reading, const pugi::xml_node& element, std::string_view name)
{
    for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling())
        if (reading.document.isCalled(child, name))
            return child;
    return {};
}

/// A child wins over the attribute, and the last child over those before it.
std::optional<Matrix4> transformOf(const Reading& reading, const pugi::xml_node& element)
{
    pugi::xml_node transform;
    eachChild(reading.document, element, "Transform", [&transform](const pugi::xml_node& child) { transform = child; });
    if (!transform)
        transform = reading.references.follow(element, "transformRef", ElementKind::Transform);
    if (!transform)
        return std::nullopt;
    const std::optional<Matrix4> matrix = matrixOf(transform);
    reading.facts.badTransforms += matrix ? 0 : 1;
    return matrix;
}

std::string textOf(const pugi::xml_node& element, const char* attribute)
{
    return element.attribute(attribute).value();
}

std::string nameOf(const Reading& reading, const pugi::xml_node& element)
{
    return reading.languages.find(element, "name", "nameRef");
}

pugi::xml_node otherOf(const Reading& reading, const pugi::xml_node& element, const char* attribute)
{
    return element ? reading.references.follow(element, attribute, ElementKind::Other) : pugi::xml_node();
}

} // namespace importer::plmxml
