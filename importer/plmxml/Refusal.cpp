#include "importer/plmxml/Refusal.h"

#include "importer/plmxml/PlaceWalk.h"

#include <QCoreApplication>

namespace importer::plmxml
{

namespace
{

/// Where the texts of this file stand.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(importer::plmxml::Refusal)
};

/// Of an id in a sentence.
constexpr int longestShownId = 100;

/// Large ones roughly.
QString countText(double places)
{
    constexpr double exact = 1e9;
    return places < exact ? QString::number(places, 'f', 0) : QString::number(places, 'g', 3);
}

QString placeOf(const Refusal& refusal)
{
    return Texts::tr("%1 \"%2\" in line %3").arg(refusal.element, refusal.id).arg(refusal.line);
}

} // namespace

QString describe(const Refusal& refusal)
{
    using Why = Refusal::Why;
    switch (refusal.why) {
    case Why::NoElement:
        return Texts::tr("the document has no element \"%1\" that a structure begins with")
            .arg(refusal.id.left(longestShownId));
    case Why::NoMemory:
        return Texts::tr("there is not enough memory for this document");
    case Why::Ring:
        return Texts::tr("the structure contains itself: %1 leads back to a part that is around it")
            .arg(placeOf(refusal));
    case Why::TooDeep:
        return Texts::tr("the structure is deeper than %1 levels at %2").arg(PlaceWalk::MaxDepth).arg(placeOf(refusal));
    case Why::TooLarge:
        return Texts::tr("the structure has more than %1 places; %2 places a part that is at %3 of them")
            .arg(refusal.allowed)
            .arg(placeOf(refusal), countText(refusal.places));
    case Why::NoPlace:
        break;
    }
    return Texts::tr("the document places no part: it has no instance, no part and no occurrence at the top of a "
                     "product structure");
}

} // namespace importer::plmxml
