#include "tests/roads/ptxconvert/ExpectedFigures.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdlib>

namespace jttest
{

namespace
{

QString field(const char* name)
{
    return QString::fromUtf8(name);
}

std::size_t count(const QJsonObject& row, const char* name)
{
    return static_cast<std::size_t>(row[field(name)].toInt());
}

Figures figuresOf(const QString& file, const QJsonObject& row)
{
    Figures figures;
    figures.file = file.toStdString();
    figures.version = row[field("version")].toString().toStdString();
    figures.millimetres = row[field("units")].toString().toLower() == field("inches") ? 25.4 : 1;
    for (const QJsonValue& nodes : row[field("nodes")].toObject())
        figures.nodes += static_cast<std::size_t>(nodes.toInt());
    figures.instanceNodes = count(row, "instanceNodes");
    figures.partOccurrences = count(row, "partOccurrences");
    figures.triangles = count(row, "lod0TrianglesPlaced");
    for (const QJsonValue& length : row[field("bbox")].toArray())
        figures.box.push_back(static_cast<float>(length.toDouble()));
    for (const QJsonValue& name : row[field("externalFiles")].toArray())
        figures.externalFiles.push_back(name.toString().toStdString());
    return figures;
}

} // namespace

std::string corpusFolder()
{
    const char* corpus = std::getenv("ZN_CORPUS");
    return corpus ? std::string(corpus) + "/jt/" : std::string();
}

std::vector<Figures> expectedFigures()
{
    QFile file(QString::fromStdString(corpusFolder() + "EXPECTED.json"));
    std::vector<Figures> all;
    if (corpusFolder().empty() || !file.open(QIODevice::ReadOnly))
        return all;
    const QJsonObject rows = QJsonDocument::fromJson(file.readAll()).object()[field("files")].toObject();
    for (auto row = rows.begin(); row != rows.end(); ++row)
        all.push_back(figuresOf(row.key(), row.value().toObject()));
    return all;
}

} // namespace jttest
