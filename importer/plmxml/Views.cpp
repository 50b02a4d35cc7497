#include "importer/plmxml/Views.h"

#include <unordered_set>

namespace importer::plmxml
{

namespace
{

bool isMarked(const pugi::xml_node& view, const char* attribute, std::string_view value)
{
    return view.attribute(attribute).value() == value;
}

/// The view that the document or a product definition refers to as its default.
pugi::xml_node defaultView(const Reading& reading)
{
    std::vector<pugi::xml_node> owners = {reading.document.root()};
    const std::vector<pugi::xml_node>& definitions = reading.index.all(ElementKind::ProductDef);
    owners.insert(owners.end(), definitions.begin(), definitions.end());
    for (const pugi::xml_node& owner : owners)
        if (const pugi::xml_node view =
                reading.references.follow(owner, "defaultProductViewRef", ElementKind::ProductView))
            return view;
    return {};
}

} // namespace

pugi::xml_node chooseView(const Reading& reading)
{
    const std::vector<pugi::xml_node>& views = reading.index.all(ElementKind::ProductView);
    for (const pugi::xml_node& view : views)
        if (isMarked(view, "state", "active"))
            return view;
    if (const pugi::xml_node view = defaultView(reading))
        return view;
    for (const pugi::xml_node& view : views)
        if (isMarked(view, "default", "true"))
            return view;
    for (const pugi::xml_node& view : views)
        if (childOf(reading, view, "Occurrence"))
            return view;
    return views.empty() ? pugi::xml_node() : views.front();
}

/// Of occurrences in one another the outer one comes first.
std::vector<pugi::xml_node> occurrencesOf(const Reading& reading, const pugi::xml_node& view)
{
    std::vector<pugi::xml_node> occurrences;
    std::unordered_set<std::size_t> taken;
    for (const pugi::xml_node& occurrence : reading.index.all(ElementKind::Occurrence)) {
        const pugi::xml_node above = occurrence.parent();
        const ElementKind kind = kindOfName(reading.document.nameOf(above));
        const bool isTaken = kind == ElementKind::Occurrence    ? taken.contains(above.hash_value())
                             : kind == ElementKind::ProductView ? above == view
                                                                : !view;
        if (!isTaken)
            continue;
        taken.insert(occurrence.hash_value());
        occurrences.push_back(occurrence);
    }
    return occurrences;
}

QString titleOf(const Reading& reading, const pugi::xml_node& view)
{
    const QString name = QString::fromStdString(nameOf(reading, view));
    return name.isEmpty() ? QString::fromUtf8(view.attribute("id").value()) : name;
}

} // namespace importer::plmxml
