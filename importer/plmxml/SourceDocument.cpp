#include "importer/plmxml/SourceDocument.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace importer::plmxml
{

namespace
{

constexpr std::string_view Namespace = "http://www.plmxml.org/Schemas/PLMXMLSchema";
constexpr std::string_view Declaration = "xmlns:";

std::vector<std::string> prefixesOf(const pugi::xml_node& root)
{
    std::vector<std::string> prefixes;
    for (const pugi::xml_attribute& attribute : root.attributes())
        if (const std::string_view name = attribute.name();
            name.starts_with(Declaration) && attribute.value() == Namespace)
            prefixes.emplace_back(name.substr(Declaration.size()));
    return prefixes;
}

std::vector<std::size_t> lineEndsOf(std::string_view text)
{
    std::vector<std::size_t> ends;
    for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1))
        ends.push_back(at);
    return ends;
}

} // namespace

std::unique_ptr<SourceDocument> SourceDocument::read(const QString& file)
{
    // Opening a pipe would wait for a writer.
    QFile source(file);
    if (!QFileInfo(file).isFile() || !source.open(QIODevice::ReadOnly))
        return nullptr;
    std::string text(static_cast<std::size_t>(source.size()), '\0');
    if (source.read(text.data(), source.size()) != source.size())
        return nullptr;
    return parse(std::move(text));
}

std::unique_ptr<SourceDocument> SourceDocument::parse(std::string text)
{
    std::unique_ptr<SourceDocument> document(new SourceDocument);
    return document->take(std::move(text)) ? std::move(document) : nullptr;
}

bool SourceDocument::take(std::string text)
{
    m_text = std::move(text);
    m_lineEnds = lineEndsOf(m_text);
    // Line breaks in names stay what they are, as with the loader's parser.
    constexpr unsigned flags = pugi::parse_default & ~pugi::parse_wconv_attribute;
    if (!m_xml.load_buffer_inplace(m_text.data(), m_text.size(), flags))
        return false;
    m_prefixes = prefixesOf(root());
    return nameOf(root()) == "PLMXML";
}

std::string_view SourceDocument::nameOf(const pugi::xml_node& node) const
{
    if (node.type() != pugi::node_element)
        return {};
    const std::string_view name = node.name();
    const std::size_t colon = name.find(':');
    if (colon == std::string_view::npos)
        return name;
    const bool isOurs = std::find(m_prefixes.begin(), m_prefixes.end(), name.substr(0, colon)) != m_prefixes.end();
    return isOurs ? name.substr(colon + 1) : std::string_view();
}

int SourceDocument::lineOf(const pugi::xml_node& node) const
{
    const auto offset = static_cast<std::size_t>(std::max<std::ptrdiff_t>(node.offset_debug(), 0));
    return static_cast<int>(std::lower_bound(m_lineEnds.begin(), m_lineEnds.end(), offset) - m_lineEnds.begin()) + 1;
}

} // namespace importer::plmxml
