#include "importer/plmxml/FileTable.h"

namespace importer::plmxml
{

std::uint32_t FileTable::add(const pugi::xml_node& element, const char* location, const char* format)
{
    const QString written = QString::fromUtf8(location);
    const QString path = cleanLocation(written);
    const QString word = QString::fromUtf8(format);
    const int rank = m_formats.rankOf(path, word);
    if (path.isEmpty() || rank == FileFormats::NoShape)
        return None;
    const auto known = m_byPath.find(path);
    if (known != m_byPath.end())
        return known.value();
    const auto index = static_cast<std::uint32_t>(m_files.size());
    m_byPath.insert(path, index);
    std::string name(m_document.nameOf(element));
    m_files.push_back({written, path, word, m_finder.find(path), rank,
                       name + " '" + element.attribute("id").value() + "'", m_document.lineOf(element)});
    return index;
}

} // namespace importer::plmxml
