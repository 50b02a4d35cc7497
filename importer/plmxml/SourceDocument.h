#pragma once

#include <QString>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

namespace importer::plmxml
{

/// The elements of a PLMXML document as they are written, and where they stand. Elements and texts live as long as this
/// does.
class SourceDocument
{
public:
    /// Reads the regular file `file`. Null for one that is none, cannot be read, is no XML or begins with another
    /// element than PLMXML.
    static std::unique_ptr<SourceDocument> read(const QString& file);
    /// The same of a text.
    static std::unique_ptr<SourceDocument> parse(std::string text);

    SourceDocument(const SourceDocument&) = delete;
    SourceDocument& operator=(const SourceDocument&) = delete;

    /// The element PLMXML.
    pugi::xml_node root() const { return m_xml.document_element(); }
    /// The name of an element without a prefix that stands for the namespace of PLMXML; empty for what is no element
    /// and for elements of other namespaces.
    std::string_view nameOf(const pugi::xml_node& node) const;
    /// Whether `node` is an element with this name, without such a prefix.
    bool isCalled(const pugi::xml_node& node, std::string_view name) const
    {
        // Few documents have prefixes, and most names are looked at in vain.
        return node.name() == name ? node.type() == pugi::node_element : !m_prefixes.empty() && nameOf(node) == name;
    }
    /// The line that the name of an element stands in, from 1.
    int lineOf(const pugi::xml_node& node) const;

private:
    SourceDocument() = default;
    bool take(std::string text);

    std::string m_text;
    std::vector<std::size_t> m_lineEnds;
    std::vector<std::string> m_prefixes; ///< those of PLMXML
    pugi::xml_document m_xml;
};

/// The children of `parent` that are elements called `name`, without a foreign prefix.
template <class Visit>
void eachChild(const SourceDocument& document, const pugi::xml_node& parent, std::string_view name, const Visit& visit)
{
    for (pugi::xml_node child = parent.first_child(); child; child = child.next_sibling())
        if (document.isCalled(child, name))
            visit(child);
}

} // namespace importer::plmxml
