#include "tools/znimport/StructureText.h"

#include "tools/znimport/DocumentReport.h"

#include <QJsonArray>

namespace znimport
{

namespace
{

double number(std::size_t value)
{
    return static_cast<double>(value);
}

QJsonObject jsonOf(const zn::StructureFile& file)
{
    QJsonObject json{{QStringLiteral("written"), file.written},
                     {QStringLiteral("format"), file.format},
                     {QStringLiteral("line"), file.line},
                     {QStringLiteral("found"), file.found},
                     {QStringLiteral("places"), file.places}};
    if (!file.foundBy.isEmpty())
        json[QStringLiteral("foundBy")] = file.foundBy;
    if (!file.whyNot.isEmpty())
        json[QStringLiteral("whyNot")] = file.whyNot;
    return json;
}

QJsonArray passedReport(const std::vector<zn::PassedOccurrence>& occurrences)
{
    QJsonArray list;
    for (const zn::PassedOccurrence& occurrence : occurrences)
        list.append(QJsonObject{{QStringLiteral("line"), occurrence.line},
                                {QStringLiteral("id"), occurrence.id},
                                {QStringLiteral("instanceRefs"), occurrence.path}});
    return list;
}

QJsonObject jsonOf(const zn::LeftOutShape& shape)
{
    return {{QStringLiteral("line"), shape.line},       {QStringLiteral("element"), shape.element},
            {QStringLiteral("id"), shape.id},           {QStringLiteral("part"), shape.part},
            {QStringLiteral("written"), shape.written}, {QStringLiteral("format"), shape.format},
            {QStringLiteral("whyNot"), shape.whyNot}};
}

QJsonObject leftOutReport(const zn::DocumentStructure& document)
{
    QJsonObject counts;
    for (const auto& [why, count] : document.leftOutCounts)
        counts[why] = number(count);
    return counts;
}

QString placesText(double places)
{
    return places == 1 ? QStringLiteral("1 place") : QStringLiteral("%1 places").arg(places, 0, 'f', 0);
}

} // namespace

QString describePartFiles(const zn::DocumentStructure& document)
{
    QString text;
    int readable = 0;
    int missing = 0;
    for (const zn::StructureFile& file : document.files) {
        if (file.places == 0)
            continue;
        const bool isThere = !file.found.isEmpty();
        ++(isThere ? readable : missing);
        text += QStringLiteral("  %1 %2 (%3)\n")
                    .arg(isThere ? QStringLiteral("read   ") : QStringLiteral("missing"),
                         isThere ? file.found : file.written, placesText(file.places));
    }
    return QStringLiteral("part files: %1 would be read, %2 missing\n").arg(readable).arg(missing) + text;
}

QJsonObject structureReport(const zn::DocumentStructure& document)
{
    QJsonArray files;
    for (const zn::StructureFile& file : document.files)
        files.append(jsonOf(file));
    QJsonArray leftOut;
    for (const zn::LeftOutShape& shape : document.leftOut)
        leftOut.append(jsonOf(shape));
    return {{QStringLiteral("normalised"), document.isNormalised},
            {QStringLiteral("treeFrom"), document.treeFrom},
            {QStringLiteral("view"), document.view},
            {QStringLiteral("otherViews"), QJsonArray::fromStringList(document.otherViews)},
            {QStringLiteral("roots"), number(document.roots)},
            {QStringLiteral("places"), document.occurrences},
            {QStringLiteral("leaves"), document.leaves},
            {QStringLiteral("hiddenLeaves"), document.hiddenLeaves},
            {QStringLiteral("leavesWithoutShape"), document.leavesWithoutShape},
            {QStringLiteral("placesWithShape"), document.shapePlaces},
            {QStringLiteral("parts"), number(document.parts)},
            {QStringLiteral("depth"), number(document.depth)},
            {QStringLiteral("userValues"), number(document.userValues)},
            {QStringLiteral("duplicateIds"), number(document.duplicateIds)},
            {QStringLiteral("conditionsNotEvaluated"), number(document.conditions)},
            {QStringLiteral("shapesInside"), number(document.internalShapes)},
            {QStringLiteral("viewIsChoice"), document.isSelection},
            {QStringLiteral("occurrencesClaimedTwice"), number(document.placedTwice)},
            {QStringLiteral("occurrencesWithoutPlace"), number(document.unplacedCount)},
            {QStringLiteral("withoutPlace"), passedReport(document.unplaced)},
            {QStringLiteral("occurrencesRepeated"), number(document.repeatedCount)},
            {QStringLiteral("repeated"), passedReport(document.repeated)},
            {QStringLiteral("badTransforms"), number(document.badTransforms)},
            {QStringLiteral("badMaterialNumbers"), number(document.badMaterialNumbers)},
            {QStringLiteral("languages"), QJsonArray::fromStringList(document.languages)},
            {QStringLiteral("lengthsOfPartFiles"), document.hasNoUnits},
            {QStringLiteral("countsCut"), document.isCut},
            {QStringLiteral("danglingReferences"), number(document.danglingCount)},
            {QStringLiteral("dangling"), danglingReport(document.dangling)},
            {QStringLiteral("representationsLeftOut"), leftOutReport(document)},
            {QStringLiteral("leftOut"), leftOut},
            {QStringLiteral("files"), files}};
}

} // namespace znimport
