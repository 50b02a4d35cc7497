#include "importer/inventory/PartsListFile.h"

#include "files/OutputFile.h"
#include "files/scenefile/AttributeTags.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <string_view>
#include <unordered_map>

namespace importer::inventory
{

namespace
{

using namespace osg::scenefile::converted;

/// Where the texts of this file stand.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(importer::PartsListFile)
};

/// Attributes that have columns of their own.
constexpr std::array<std::string_view, 5> ownColumns = {ProductName, MaterialName, DensityName, ExactVolumeName,
                                                        ExactAreaName};

const char* word(MeasureOrigin origin)
{
    switch (origin) {
    case MeasureOrigin::Exact:
        return "exact";
    case MeasureOrigin::Mesh:
        return "mesh";
    case MeasureOrigin::Sum:
        return "sum";
    case MeasureOrigin::None:
        break;
    }
    return "";
}

QString qtText(const std::string& text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

bool isColumn(const osg::Attribute& attribute)
{
    return std::find(ownColumns.begin(), ownColumns.end(), attribute.name) == ownColumns.end();
}

/// The names of the columns for attributes, in alphabetical order; the frequent ones where there are too many.
std::vector<std::string> attributeColumns(const std::vector<PartsListRow>& rows, QStringList& warnings)
{
    std::map<std::string, std::size_t> counts;
    for (const PartsListRow& row : rows)
        for (const osg::Attribute& attribute : row.attributes)
            if (isColumn(attribute))
                ++counts[attribute.name];
    std::vector<std::pair<std::size_t, std::string>> names;
    for (const auto& [name, count] : counts)
        names.emplace_back(count, name);
    std::stable_sort(names.begin(), names.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    if (names.size() > mostAttributeColumns) {
        warnings << Texts::tr("the parts list has columns for %1 of %2 attributes")
                        .arg(mostAttributeColumns)
                        .arg(names.size());
        names.resize(mostAttributeColumns);
    }
    std::vector<std::string> columns;
    for (auto& [count, name] : names)
        columns.push_back(std::move(name));
    std::sort(columns.begin(), columns.end());
    return columns;
}

/// Whether spreadsheets would take the cell for a formula. What is a number as a whole is none.
bool isLikeFormula(const std::string& text)
{
    constexpr std::string_view starts = "=+-@\t\r\n";
    if (text.empty() || starts.find(text.front()) == std::string_view::npos)
        return false;
    double number = 0;
    const char* const first = text.data() + (text.front() == '+' && text.find('-') != 1 ? 1 : 0);
    const auto end = std::from_chars(first, text.data() + text.size(), number);
    return end.ec != std::errc() || end.ptr != text.data() + text.size();
}

void addCell(const std::string& text, QByteArray& line)
{
    if (!line.isEmpty() && line.back() != '\n')
        line += ',';
    // Valid UTF-8 in any case, of letters that a table can show.
    QString letters = qtText(isLikeFormula(text) ? "'" + text : text);
    for (QChar& letter : letters)
        if (letter.category() == QChar::Other_Control && letter != u'\t' && letter != u'\r' && letter != u'\n')
            letter = QChar::ReplacementCharacter;
    QByteArray bytes = letters.toUtf8();
    if (text.find_first_of(",\"\r\n") != std::string::npos)
        bytes = '"' + bytes.replace("\"", "\"\"") + '"';
    line += bytes;
}

void addNumber(const std::optional<double>& number, QByteArray& line)
{
    addCell(number ? osg::textOf(osg::AttributeValue(*number)) : std::string(), line);
}

/// The places of columns by name.
using Columns = std::unordered_map<std::string_view, std::size_t>;

/// Unit and value: a column may hold values of several units.
std::vector<std::string> cellsOf(const PartsListRow& row, const Columns& columns)
{
    std::vector<std::string> cells(columns.size());
    for (const osg::Attribute& attribute : row.attributes)
        if (const auto column = columns.find(attribute.name); column != columns.end()) {
            std::string& text = cells[column->second];
            text += (text.empty() ? "" : "; ") + osg::textOf(attribute);
        }
    return cells;
}

QByteArray csvText(const std::vector<PartsListRow>& rows, QStringList& warnings)
{
    const std::vector<std::string> columns = attributeColumns(rows, warnings);
    Columns places;
    for (const std::string& name : columns)
        places.emplace(name, places.size());
    QByteArray text = "level";
    for (const char* name :
         {"product", "count", "path", "material", "density g/cm3", "area mm2", "volume mm3", "mass kg", "measured"})
        addCell(name, text);
    for (const std::string& name : columns)
        addCell(name, text);
    for (const PartsListRow& row : rows) {
        QByteArray line = QByteArray::number(row.level);
        for (const std::string& cell : {row.product, std::to_string(row.count), row.path, row.material})
            addCell(cell, line);
        for (const std::optional<double>& number : {row.density, row.area, row.volume, row.mass})
            addNumber(number, line);
        addCell(word(row.origin), line);
        for (const std::string& cell : cellsOf(row, places))
            addCell(cell, line);
        text += "\r\n" + line;
    }
    return text + "\r\n";
}

struct ValueJson {
    QJsonValue operator()(const std::string& text) const { return qtText(text); }
    QJsonValue operator()(std::int64_t number) const { return static_cast<qint64>(number); }
    QJsonValue operator()(double number) const { return number; }
    QJsonValue operator()(bool isTrue) const { return isTrue; }
    QJsonValue operator()(const osg::AttributeDate& date) const { return qtText(date.text); }
    QJsonValue operator()(const std::vector<std::string>& items) const
    {
        QJsonArray list;
        for (const std::string& item : items)
            list.append(qtText(item));
        return list;
    }
};

QJsonArray jsonOf(const osg::AttributeList& attributes)
{
    QJsonArray list;
    for (const osg::Attribute& attribute : attributes) {
        QJsonObject object{{QStringLiteral("name"), qtText(attribute.name)},
                           {QStringLiteral("value"), std::visit(ValueJson(), attribute.value)}};
        if (!attribute.unit.empty())
            object[QStringLiteral("unit")] = qtText(attribute.unit);
        list.append(object);
    }
    return list;
}

QJsonObject jsonOf(const PartsListRow& row)
{
    const auto number = [](const std::optional<double>& value) { return value ? QJsonValue(*value) : QJsonValue(); };
    return {{QStringLiteral("level"), static_cast<int>(row.level)},
            {QStringLiteral("product"), qtText(row.product)},
            {QStringLiteral("count"), static_cast<double>(row.count)},
            {QStringLiteral("path"), qtText(row.path)},
            {QStringLiteral("material"), qtText(row.material)},
            {QStringLiteral("density"), number(row.density)},
            {QStringLiteral("area"), number(row.area)},
            {QStringLiteral("volume"), number(row.volume)},
            {QStringLiteral("mass"), number(row.mass)},
            {QStringLiteral("measured"), QString::fromLatin1(word(row.origin))},
            {QStringLiteral("attributes"), jsonOf(row.attributes)}};
}

QByteArray jsonText(const std::vector<PartsListRow>& rows, PartsListLevels levels)
{
    QJsonArray parts;
    for (const PartsListRow& row : rows)
        parts.append(jsonOf(row));
    const QString form = levels == PartsListLevels::Flat ? QStringLiteral("flat") : QStringLiteral("indented");
    return QJsonDocument(QJsonObject{{QStringLiteral("format"), QStringLiteral("znimport-bom")},
                                     {QStringLiteral("version"), 1},
                                     {QStringLiteral("levels"), form},
                                     {QStringLiteral("parts"), parts}})
        .toJson();
}

} // namespace

PartsListWritten writePartsList(const std::vector<PartsListRow>& rows, PartsListLevels levels, const QString& file)
{
    PartsListWritten result;
    const bool isJson = QFileInfo(file).suffix().compare(QLatin1String("json"), Qt::CaseInsensitive) == 0;
    const QByteArray text = isJson ? jsonText(rows, levels) : csvText(rows, result.warnings);
    files::OutputFile target(file);
    target.write(text.constData(), static_cast<std::uint64_t>(text.size()));
    if (const files::Expected<void> written = target.commit(); !written)
        result.error = QStringLiteral("%1: %2").arg(file, written.error().message);
    return result;
}

} // namespace importer::inventory
