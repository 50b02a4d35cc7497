#include "tools/znimport/DocumentReport.h"

#include "host/znKernel/znFileIOHelper.h"

namespace znimport
{

namespace
{

double number(std::size_t value)
{
    return static_cast<double>(value);
}

QJsonObject jsonOf(const importer::DanglingReference& reference)
{
    return {{QStringLiteral("line"), reference.line},
            {QStringLiteral("element"), reference.element},
            {QStringLiteral("id"), reference.id},
            {QStringLiteral("attribute"), reference.attribute},
            {QStringLiteral("target"), reference.target}};
}

} // namespace

QJsonObject documentReport(const QString& file)
{
    if (!znFileIOHelper::isPLMXMLFile(file))
        return {};
    const auto facts = importer::readDocumentFacts(file);
    if (!facts)
        return {};
    return {{QStringLiteral("instances"), number(facts->instances)},
            {QStringLiteral("parts"), number(facts->parts)},
            {QStringLiteral("partFiles"), number(facts->files)},
            {QStringLiteral("occurrences"), number(facts->occurrences)},
            {QStringLiteral("materials"), number(facts->materials)},
            {QStringLiteral("danglingReferences"), number(facts->danglingCount)},
            {QStringLiteral("dangling"), danglingReport(facts->dangling)}};
}

QJsonArray danglingReport(const std::vector<importer::DanglingReference>& references)
{
    QJsonArray list;
    for (const importer::DanglingReference& reference : references)
        list.append(jsonOf(reference));
    return list;
}

} // namespace znimport
