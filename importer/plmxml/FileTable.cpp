#include "importer/plmxml/FileTable.h"

namespace importer::plmxml
{

namespace
{

QString text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<int>(utf8.size()));
}

} // namespace

std::uint32_t FileTable::add(const pugi::xml_node& element, const char* location, const char* format)
{
    return add(element, text(location), text(format), {});
}

std::uint32_t FileTable::addElement(const pugi::xml_node& element, const Reference& reference)
{
    return reference.file.empty() ? None
                                  : add(element, text(reference.file), QStringLiteral("PLMXML"), text(reference.id));
}

std::vector<DocumentElement> FileTable::exchangeElements(const QString& folder)
{
    std::vector<DocumentElement> elements;
    for (ShapeFile& file : m_files)
        if (!file.id.isEmpty() && file.isThere() && file.places > 0) {
            elements.push_back({file.found.path, file.id});
            file.standIn = elements.back().standIn(folder);
        }
    return elements;
}

std::uint32_t FileTable::add(const pugi::xml_node& element, const QString& written, const QString& format,
                             const QString& id)
{
    const QString path = cleanLocation(written);
    const int rank = m_formats.rankOf(path, format);
    if (path.isEmpty() || rank == FileFormats::NoShape)
        return None;
    const QString key = id.isEmpty() ? path : path + QLatin1Char('#') + id;
    const auto known = m_byPath.find(key);
    if (known != m_byPath.end())
        return known.value();
    const auto index = static_cast<std::uint32_t>(m_files.size());
    m_byPath.insert(key, index);
    const std::string name(m_document.nameOf(element));
    m_files.push_back({written,
                       path,
                       format,
                       id,
                       m_finder.find(path),
                       rank,
                       name + " '" + element.attribute("id").value() + "'",
                       m_document.lineOf(element),
                       0,
                       {},
                       false,
                       false});
    return index;
}

} // namespace importer::plmxml
