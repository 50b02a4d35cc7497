#include "tools/znimport/Report.h"

#include "files/OutputFile.h"
#include "importer/inventory/AttributeChoice.h"
#include "tools/znimport/DocumentReport.h"
#include "tools/znimport/StructureText.h"

#include <QFileInfo>
#include <QJsonDocument>

#include <algorithm>
#include <map>

namespace znimport
{

namespace
{

QJsonObject jsonOf(const zn::SceneCounts& counts)
{
    const auto number = [](std::size_t value) { return static_cast<double>(value); };
    return {{QStringLiteral("nodes"), number(counts.nodes)},
            {QStringLiteral("geometries"), number(counts.geometries)},
            {QStringLiteral("materials"), number(counts.materials)},
            {QStringLiteral("triangles"), number(counts.triangles)},
            {QStringLiteral("references"), number(counts.references)},
            {QStringLiteral("placedGeometries"), number(counts.placedGeometries)},
            {QStringLiteral("placedTriangles"), number(counts.placedTriangles)}};
}

QJsonObject jsonOf(const zn::TreeStep& step)
{
    return {{QStringLiteral("name"), step.name},
            {QStringLiteral("seconds"), step.seconds},
            {QStringLiteral("before"), jsonOf(step.before)},
            {QStringLiteral("after"), jsonOf(step.after)}};
}

QJsonObject jsonOf(const zn::MissingPart& part)
{
    return {{QStringLiteral("file"), part.file},
            {QStringLiteral("reason"), part.reason},
            {QStringLiteral("places"), QJsonArray::fromStringList(part.instances)}};
}

QJsonObject jsonOf(const zn::LeftOutContent& content)
{
    QJsonObject object{{QStringLiteral("what"), content.what},
                       {QStringLiteral("count"), static_cast<double>(content.count)}};
    if (content.files > 0)
        object[QStringLiteral("files")] = static_cast<double>(content.files);
    return object;
}

QJsonObject jsonOf(const zn::MaterialRow& row)
{
    return {{QStringLiteral("row"), row.row},
            {QStringLiteral("asset"), row.asset},
            {QStringLiteral("places"), static_cast<double>(row.places)},
            {QStringLiteral("matched"), row.hasMatched}};
}

template <class T>
QJsonArray jsonOf(const std::vector<T>& values)
{
    QJsonArray list;
    for (const T& value : values)
        list.append(jsonOf(value));
    return list;
}

/// Names as long as nobody reads them are cut.
QString keyOf(const std::string& name)
{
    constexpr int longest = 200;
    const QString text = QString::fromStdString(name);
    return text.size() > longest ? text.left(longest) + QStringLiteral("...") : text;
}

/// Those that occur most often, where there are too many names, and how many more there are.
void addAttributeCounts(const osg::NodePtr& root, QJsonObject& file)
{
    constexpr std::size_t mostNames = 10'000;
    const std::map<std::string, std::size_t> all = importer::inventory::countAttributes(root);
    std::vector<std::pair<std::string, std::size_t>> names(all.begin(), all.end());
    std::stable_sort(names.begin(), names.end(), [](const auto& a, const auto& b) { return a.second > b.second; });
    if (names.size() > mostNames)
        file[QStringLiteral("attributeNamesLeftOut")] = static_cast<double>(names.size() - mostNames);
    names.resize(std::min(names.size(), mostNames));
    QJsonObject counts;
    for (const auto& [name, count] : names) {
        const QString key = keyOf(name);
        counts[key] = counts[key].toDouble() + static_cast<double>(count);
    }
    if (!counts.isEmpty())
        file[QStringLiteral("attributes")] = counts;
}

QString stateOf(const zn::ImportResult& result)
{
    if (result.cancelled)
        return QStringLiteral("cancelled");
    if (result.state == znCADFileTypes::JobSucceeded)
        return QStringLiteral("succeeded");
    return result.node ? QStringLiteral("partial") : QStringLiteral("failed");
}

QJsonArray warningsOf(const zn::ImportResult& result)
{
    QStringList lines = result.messages;
    lines.removeAll(result.error);
    return QJsonArray::fromStringList(lines);
}

double secondsOf(const QElapsedTimer& timer)
{
    return double(timer.elapsed()) / 1000;
}

std::optional<QString> writeFile(const QString& path, const QByteArray& text)
{
    files::OutputFile file(path);
    file.write(text.constData(), static_cast<std::uint64_t>(text.size()));
    const files::Expected<void> written = file.commit();
    return written ? std::nullopt : std::optional(QStringLiteral("%1: %2").arg(path, written.error().message));
}

} // namespace

void Report::add(const zn::ImportResult& result)
{
    QJsonObject file{{QStringLiteral("file"), QFileInfo(result.file).absoluteFilePath()},
                     {QStringLiteral("state"), stateOf(result)},
                     {QStringLiteral("seconds"), secondsOf(m_import)},
                     {QStringLiteral("warnings"), warningsOf(result)},
                     {QStringLiteral("missing"), jsonOf(result.missing)},
                     {QStringLiteral("leftOut"), jsonOf(result.leftOut)},
                     {QStringLiteral("counts"), jsonOf(zn::countScene(result.node))},
                     {QStringLiteral("folded"), static_cast<double>(result.folded)},
                     {QStringLiteral("steps"), jsonOf(result.steps)}};
    if (result.wrongNormals)
        file[QStringLiteral("wrongNormals")] =
            QJsonObject{{QStringLiteral("offPlane"), static_cast<double>(result.wrongNormals->offPlane)},
                        {QStringLiteral("inverted"), static_cast<double>(result.wrongNormals->inverted)},
                        {QStringLiteral("repaired"), result.repairedNormals}};
    if (!result.materialRows.empty())
        file[QStringLiteral("materialTable")] = jsonOf(result.materialRows);
    addAttributeCounts(result.node, file);
    if (!result.error.isEmpty())
        file[QStringLiteral("error")] = result.error;
    if (const QJsonObject document = documentReport(result.file); !document.isEmpty())
        file[QStringLiteral("document")] = document;
    if (result.document)
        file[QStringLiteral("structure")] = structureReport(*result.document);
    m_files.append(file);
}

void Report::addOutput(const QString& file)
{
    m_outputs.append(QFileInfo(file).absoluteFilePath());
}

std::optional<QString> Report::write(const QString& file, const osg::NodePtr& scene, int exitCode) const
{
    QJsonObject report{{QStringLiteral("format"), QStringLiteral("znimport-report")},
                       {QStringLiteral("version"), version},
                       {QStringLiteral("generator"), QStringLiteral("znimport " ZN_VERSION)},
                       {QStringLiteral("exitCode"), exitCode},
                       {QStringLiteral("seconds"), secondsOf(m_run)},
                       {QStringLiteral("files"), m_files},
                       {QStringLiteral("outputs"), m_outputs},
                       {QStringLiteral("scene"), jsonOf(zn::countScene(scene))},
                       {QStringLiteral("warnings"), QJsonArray::fromStringList(m_warnings)}};
    if (!m_error.isEmpty())
        report[QStringLiteral("error")] = m_error;
    return writeFile(file, QJsonDocument(report).toJson());
}

} // namespace znimport
