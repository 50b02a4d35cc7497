#include "importer/plmxml/LanguageTexts.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace importer::plmxml
{

namespace
{

/// Of documents and items that name none.
constexpr const char* DefaultLanguage = "en";

/// "en-US" and "en_us" are one language.
std::string languageIn(const pugi::xml_node& element, const char* attribute, const std::string& otherwise)
{
    std::string language = element.attribute(attribute).value();
    std::transform(language.begin(), language.end(), language.begin(),
                   [](unsigned char c) { return c == '_' ? '-' : static_cast<char>(std::tolower(c)); });
    return language.empty() ? otherwise : language;
}

std::string_view withoutCountry(std::string_view language)
{
    return language.substr(0, language.find('-'));
}

bool isText(const SourceDocument& document, const pugi::xml_node& element)
{
    return document.nameOf(element) == "Text";
}

} // namespace

LanguageTexts::LanguageTexts(const SourceDocument& document, References& references)
    : m_document(document), m_references(references),
      m_language(languageIn(document.root(), "language", DefaultLanguage))
{
}

std::string LanguageTexts::find(const pugi::xml_node& element, const char* attribute, const char* reference)
{
    const std::string own = element.attribute(attribute).value();
    const pugi::xml_node text =
        element.attribute(reference) ? m_references.follow(element, reference, ElementKind::Other) : pugi::xml_node();
    if (!isText(m_document, text))
        return own;
    const Choice& choice = choiceOf(text);
    if (choice.preferred)
        return choice.preferred.child_value();
    return own.empty() ? choice.otherwise.child_value() : own;
}

const LanguageTexts::Choice& LanguageTexts::choiceOf(const pugi::xml_node& text)
{
    const auto known = m_choices.find(text.hash_value());
    return known != m_choices.end() ? known->second : m_choices.emplace(text.hash_value(), choose(text)).first->second;
}

LanguageTexts::Choice LanguageTexts::choose(const pugi::xml_node& text) const
{
    const std::string wanted = languageIn(text, "primary", m_language);
    Choice choice;
    pugi::xml_node first;
    eachChild(m_document, text, "Item", [&](const pugi::xml_node& item) {
        const std::string language = languageIn(item, "language", DefaultLanguage);
        const bool isRelated = withoutCountry(language) == withoutCountry(wanted);
        if (*item.child_value() == 0)
            return;
        if (!choice.preferred && language == wanted)
            choice.preferred = item;
        if (!choice.otherwise && isRelated)
            choice.otherwise = item;
        if (!first)
            first = item;
    });
    if (!choice.otherwise)
        choice.otherwise = first;
    return choice;
}

bool hasLanguageTexts(const ElementIndex& index)
{
    const std::vector<pugi::xml_node>& all = index.all(ElementKind::Other);
    return std::any_of(all.begin(), all.end(),
                       [&index](const pugi::xml_node& element) { return isText(index.document(), element); });
}

QStringList languagesOf(const ElementIndex& index)
{
    constexpr std::size_t most = 100;
    std::set<std::string> languages;
    for (const pugi::xml_node& text : index.all(ElementKind::Other)) {
        if (!isText(index.document(), text))
            continue;
        eachChild(index.document(), text, "Item", [&languages](const pugi::xml_node& item) {
            if (languages.size() < most)
                languages.insert(languageIn(item, "language", DefaultLanguage));
        });
    }
    QStringList list;
    for (const std::string& language : languages)
        list.append(shownText(language));
    return list;
}

} // namespace importer::plmxml
