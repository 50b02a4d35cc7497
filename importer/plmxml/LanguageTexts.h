#pragma once

#include "importer/plmxml/References.h"

#include <QStringList>

#include <string>
#include <unordered_map>

namespace importer::plmxml
{

/// The texts that a document has in several languages. An attribute such as "name" says a thing in one, and another
/// such as "nameRef" leads to a text with items, each in its language.
class LanguageTexts
{
public:
    /// Of the document whose references are followed by `references`. Both must outlive this.
    LanguageTexts(const SourceDocument& document, References& references);

    /// What is said in the preferred language counts: that of the text, else that of the document. Where no item is in
    /// it, the attribute counts, and where that is empty the item of the same language in another country, else the
    /// first. Empty if there is none.
    std::string find(const pugi::xml_node& element, const char* attribute, const char* reference);

private:
    /// Items of a text; null ones for none.
    struct Choice {
        pugi::xml_node preferred;
        pugi::xml_node otherwise;
    };

    const Choice& choiceOf(const pugi::xml_node& text);
    Choice choose(const pugi::xml_node& text) const;

    const SourceDocument& m_document;
    References& m_references;
    std::string m_language;                            ///< of the document
    std::unordered_map<std::size_t, Choice> m_choices; ///< by text: many may refer to one with many items
};

/// Whether a document has such texts at all.
bool hasLanguageTexts(const ElementIndex& index);

/// The languages of their items, sorted and each once; of more than a hundred the first that are met.
QStringList languagesOf(const ElementIndex& index);

} // namespace importer::plmxml
