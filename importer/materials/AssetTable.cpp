#include "importer/materials/AssetTable.h"

#include "files/Failure.h"
#include "files/FileBytes.h"

#include <nlohmann/json.hpp>

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cctype>
#include <new>

namespace importer::materials
{

namespace
{

/// Where the texts of this file stand.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(importer::materials::AssetTable)
};

using Json = nlohmann::json;

/// The members of rows, in the order of RowKind.
constexpr std::array<const char*, rowKinds> kindNames = {"occurrence", "part", "material", "attribute", "color"};
constexpr const char* assetMember = "asset";
constexpr const char* rowsMember = "rows";

class TableReader
{
public:
    explicit TableReader(const QString& file) : m_task(file, {}) {}

    AssetTable read();

private:
    Json parsed();
    TableRow row(const Json& json, const QString& place) const;
    void member(const std::string& name, const Json& value, const QString& place, TableRow& row) const;
    static std::string color(const std::string& text);
    [[noreturn]] void fail(const QString& message, const QString& place) const
    {
        m_task.fail(files::ErrorCode::Damaged, message, place);
    }

    files::ReadTask m_task;
};

AssetTable TableReader::read()
{
    const Json json = parsed();
    if (!json.is_object() || !json.contains(rowsMember) || !json[rowsMember].is_array())
        fail(Texts::tr("a table of materials is an object with a list \"rows\""), QStringLiteral("/"));
    for (const auto& item : json.items())
        if (item.key() != rowsMember)
            fail(Texts::tr("\"%1\" is not known").arg(QString::fromStdString(item.key())), QStringLiteral("/"));
    AssetTable table;
    table.file = m_task.path();
    for (const Json& entry : json[rowsMember])
        table.rows.push_back(row(entry, placeOf(table.rows.size())));
    return table;
}

Json TableReader::parsed()
{
    const files::FileBytes bytes = files::readFile(m_task, m_task.path());
    const std::string_view text = bytes.text();
    try {
        return Json::parse(text.begin(), text.end());
    } catch (const Json::parse_error& error) {
        const std::string_view before = text.substr(0, error.byte > 0 ? error.byte - 1 : 0);
        const auto line = 1 + std::count(before.begin(), before.end(), '\n');
        fail(Texts::tr("this is no JSON text"), files::linePlace(static_cast<std::uint64_t>(line)));
    }
}

/// A colour as it is compared; empty for what is none.
std::string TableReader::color(const std::string& text)
{
    constexpr std::size_t length = 7;
    const bool isColor = text.size() == length && text[0] == '#' &&
                         std::all_of(text.begin() + 1, text.end(), [](unsigned char c) { return std::isxdigit(c); });
    return isColor ? QString::fromStdString(text).toLower().toStdString() : std::string();
}

void TableReader::member(const std::string& name, const Json& value, const QString& place, TableRow& row) const
{
    if (!value.is_string() || value.get_ref<const std::string&>().empty())
        fail(Texts::tr("this is no text, or an empty one"), place);
    const std::string& text = value.get_ref<const std::string&>();
    if (name == assetMember) {
        row.asset = text;
        return;
    }
    const auto* const kind = std::find(kindNames.begin(), kindNames.end(), name);
    if (kind == kindNames.end())
        fail(Texts::tr("\"%1\" is not known").arg(QString::fromStdString(name)), place);
    if (!row.pattern.empty())
        fail(Texts::tr("a row looks at one thing only"), place);
    row.kind = static_cast<RowKind>(kind - kindNames.begin());
    row.pattern = row.kind == RowKind::Color ? color(text) : text;
    if (row.pattern.empty())
        fail(Texts::tr("a colour is written as \"#rrggbb\""), place);
    if (row.kind == RowKind::Attribute && text.find('=') == std::string::npos)
        fail(Texts::tr("an attribute is written as \"name=value\""), place);
}

TableRow TableReader::row(const Json& json, const QString& place) const
{
    if (!json.is_object())
        fail(Texts::tr("a row is an object"), place);
    TableRow result;
    for (const auto& item : json.items())
        member(item.key(), item.value(), place + QLatin1Char('/') + QString::fromStdString(item.key()), result);
    if (result.asset.empty())
        fail(Texts::tr("a row needs the name or the uuid of an \"asset\""), place);
    if (result.pattern.empty())
        fail(Texts::tr("a row needs one of \"occurrence\", \"part\", \"material\", \"attribute\" and \"color\""),
             place);
    return result;
}

} // namespace

files::Expected<AssetTable> readAssetTable(const QString& file)
{
    try {
        return TableReader(file).read();
    } catch (const files::Failure& failure) {
        return failure.error();
    } catch (const std::bad_alloc&) {
        return files::Error{{Texts::tr("There is not enough memory for the file."), file, {}},
                            files::ErrorCode::OutOfMemory};
    }
}

QString placeOf(std::size_t row)
{
    return QStringLiteral("/rows/%1").arg(static_cast<qulonglong>(row));
}

QString describe(const TableRow& row)
{
    return QStringLiteral("%1 \"%2\"")
        .arg(QLatin1String(kindNames[static_cast<std::size_t>(row.kind)]), QString::fromStdString(row.pattern));
}

} // namespace importer::materials
