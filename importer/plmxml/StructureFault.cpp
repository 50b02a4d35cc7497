#include "importer/plmxml/StructureFault.h"

#include "importer/plmxml/PlaceWalk.h"
#include "importer/plmxml/References.h"

#include <QCoreApplication>

#include <algorithm>

namespace importer::plmxml
{

namespace
{

/// Where the texts of this file stand.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(importer::plmxml::StructureFault)
};

/// Of the kinds that placements are made of.
pugi::xml_node elementOf(const ElementIndex& index, const StructurePlacement& placement)
{
    for (const ElementKind kind : {ElementKind::Instance, ElementKind::Part, ElementKind::Occurrence}) {
        const std::vector<pugi::xml_node>& all = index.all(kind);
        const auto found = std::find_if(all.begin(), all.end(), [&placement](const pugi::xml_node& element) {
            return element.hash_value() == placement.element;
        });
        if (found != all.end())
            return *found;
    }
    return {};
}

/// Large ones roughly.
QString countText(double places)
{
    constexpr double exact = 1e9;
    return places < exact ? QString::number(places, 'f', 0) : QString::number(places, 'g', 3);
}

} // namespace

QString describe(const StructureFault& fault, const ElementIndex& index, const Structure& structure)
{
    const pugi::xml_node element = elementOf(index, structure.placements[fault.placement]);
    const QString where =
        Texts::tr("%1 \"%2\" in line %3")
            .arg(shownText(index.document().nameOf(element)), shownText(element.attribute("id").value()))
            .arg(index.document().lineOf(element));
    switch (fault.kind) {
    case StructureFault::Kind::Ring:
        return Texts::tr("the structure contains itself: %1 leads back to a part that is around it").arg(where);
    case StructureFault::Kind::TooDeep:
        return Texts::tr("the structure is deeper than %1 levels at %2").arg(PlaceWalk::MaxDepth).arg(where);
    case StructureFault::Kind::TooLarge:
        break;
    }
    return Texts::tr("the structure has more than %1 places; %2 places a part that is at %3 of them")
        .arg(fault.allowed)
        .arg(where, countText(fault.places));
}

} // namespace importer::plmxml
