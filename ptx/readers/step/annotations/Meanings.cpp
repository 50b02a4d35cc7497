#include "ptx/readers/step/annotations/Meanings.h"

#include "ptx/readers/step/p21/StepString.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace ptx::step::annotations
{

namespace
{

/// Parameters of a geometric tolerance: its size, and the datums of those that have some.
constexpr std::size_t Magnitude = 2;
constexpr std::size_t Datums = 4;
/// Of a datum its letter; of a reference to datums what it refers to.
constexpr std::size_t Letter = 4;

/// "flatness tolerance" for FLATNESS_TOLERANCE
std::string wordsOf(std::string_view type)
{
    std::string words(type);
    std::transform(words.begin(), words.end(), words.begin(),
                   [](unsigned char letter) { return letter == '_' ? ' ' : static_cast<char>(std::tolower(letter)); });
    return words;
}

std::string textOf(std::string_view quoted)
{
    return quoted.empty() ? std::string() : p21::decodedString(quoted);
}

/// Parts of a shape that an annotation points at, without being what it means.
bool isPlace(std::string_view type)
{
    return type.ends_with("SHAPE_ASPECT") || type == "PRODUCT_DEFINITION_SHAPE";
}

} // namespace

Meanings::Meanings(const p21::Entities& entities, const Census& census, std::map<std::string, std::size_t>& unread)
    : m_entities(entities)
{
    for (const std::uint32_t number : census.values)
        m_values.try_emplace(entities.at(number).reference(0), entities.at(number).reference(1));
    for (const std::uint32_t number : census.deviations)
        m_deviations.try_emplace(entities.at(number).reference(1), entities.at(number).reference(0));
    for (const std::uint32_t number : census.aspects)
        if (const p21::Fields relation = entities.at(number); entities.isA(relation.reference(3), "DATUM"))
            m_datums.try_emplace(relation.reference(2), relation.reference(3));
    for (const std::uint32_t number : census.links) {
        const p21::Fields link = entities.at(number);
        const std::uint32_t definition = link.reference(2);
        const std::string_view type = entities.at(definition).type();
        if (meaningOf(definition))
            m_definitions[link.reference(4)].push_back(definition);
        else if (definition != 0 && !isPlace(type))
            ++unread[std::string(type)];
    }
}

std::vector<Meaning> Meanings::of(std::uint32_t number) const
{
    constexpr std::size_t Most = 32; // an annotation means few things
    std::vector<Meaning> meanings;
    const auto found = m_definitions.find(number);
    for (std::size_t i = 0; found != m_definitions.end() && i < std::min(Most, found->second.size()); ++i)
        if (std::optional<Meaning> meaning = meaningOf(found->second[i]);
            meaning && std::find(meanings.begin(), meanings.end(), *meaning) == meanings.end())
            meanings.push_back(std::move(*meaning));
    return meanings;
}

std::optional<Meaning> Meanings::meaningOf(std::uint32_t definition) const
{
    if (std::optional<Meaning> found = dimension(definition))
        return found;
    if (std::optional<Meaning> found = tolerance(definition))
        return found;
    return datumFeature(definition);
}

std::optional<Meaning> Meanings::dimension(std::uint32_t definition) const
{
    const p21::Fields fields = m_entities.at(definition);
    const bool isSize = fields.type().starts_with("DIMENSIONAL_SIZE") || fields.type() == "ANGULAR_SIZE";
    if (!isSize && !fields.type().starts_with("DIMENSIONAL_LOCATION") && fields.type() != "ANGULAR_LOCATION" &&
        fields.type() != "DIRECTED_DIMENSIONAL_LOCATION")
        return std::nullopt;
    Meaning meaning;
    meaning.what = textOf(fields.text(isSize ? 1 : 0));
    if (meaning.what.empty())
        meaning.what = wordsOf(fields.type());
    if (const auto value = m_values.find(definition); value != m_values.end()) {
        const p21::Fields items = m_entities.own(value->second, "REPRESENTATION", 0).list(1);
        for (std::size_t i = 0; i < items.size() && !meaning.value.number; ++i)
            meaning.value = measureOf(items.reference(i));
    }
    if (const auto deviation = m_deviations.find(definition); deviation != m_deviations.end()) {
        const p21::Fields limits = m_entities.at(deviation->second);
        meaning.lower = measureOf(limits.reference(0));
        meaning.upper = measureOf(limits.reference(1));
    }
    return meaning;
}

std::optional<Meaning> Meanings::tolerance(std::uint32_t definition) const
{
    Meaning meaning;
    for (const p21::Fields& member : m_entities.members(definition))
        if (const std::string_view type = member.type(); type.ends_with("_TOLERANCE") &&
                                                         type != "PLUS_MINUS_TOLERANCE" &&
                                                         (meaning.what.empty() || type != "GEOMETRIC_TOLERANCE"))
            meaning.what = wordsOf(type);
    if (meaning.what.empty())
        return std::nullopt;
    meaning.value = measureOf(m_entities.own(definition, "GEOMETRIC_TOLERANCE", 0).reference(Magnitude));
    const p21::Fields datums = m_entities.own(definition, "GEOMETRIC_TOLERANCE_WITH_DATUM_REFERENCE", Datums).list(0);
    for (std::size_t i = 0; i < datums.size(); ++i)
        if (const std::string more = letters(datums.reference(i), 0); !more.empty())
            meaning.datums += (meaning.datums.empty() ? "" : "|") + more;
    return meaning;
}

std::optional<Meaning> Meanings::datumFeature(std::uint32_t definition) const
{
    if (!m_entities.isA(definition, "DATUM_FEATURE") && !m_entities.isA(definition, "DATUM"))
        return std::nullopt;
    Meaning meaning;
    meaning.what = "datum";
    const auto datum = m_datums.find(definition);
    meaning.datums = letters(datum == m_datums.end() ? definition : datum->second, 0);
    return meaning;
}

/// The letters of a datum, of common ones with a hyphen between them, or of a system with a bar.
std::string Meanings::letters(std::uint32_t number, int depth) const
{
    constexpr int Deepest = 6;
    constexpr std::size_t Most = 8;
    const p21::Fields fields = m_entities.at(number);
    if (fields.type() == "DATUM")
        return textOf(fields.text(Letter));
    if (depth > Deepest)
        return {};
    if (fields.type() == "DATUM_REFERENCE")
        return letters(fields.reference(1), depth + 1);
    if (const std::uint32_t base = fields.reference(Letter); base != 0)
        return letters(base, depth + 1);
    const char* between = fields.type() == "DATUM_SYSTEM" ? "|" : "-";
    // Common datums are a list with a type of its own.
    p21::Fields parts = fields.list(Letter);
    if (parts.size() == 1 && parts.list(0))
        parts = parts.list(0);
    std::string all;
    for (std::size_t i = 0; i < std::min(Most, parts.size()); ++i)
        if (const std::string more = letters(parts.reference(i), depth + 1); !more.empty())
            all += (all.empty() ? "" : between) + more;
    return all;
}

Measure Meanings::measureOf(std::uint32_t number) const
{
    const bool isItem = m_entities.at(number).type() == "MEASURE_REPRESENTATION_ITEM";
    const p21::Fields fields = m_entities.own(number, "MEASURE_WITH_UNIT", isItem ? 1 : 0);
    const p21::Fields typed = fields.list(0);
    Measure measure;
    measure.number = typed ? typed.real(0) : fields.real(0);
    if (measure.number)
        measure.unit = unitOf(fields.reference(1));
    return measure;
}

std::string Meanings::unitOf(std::uint32_t number) const
{
    if (m_entities.isA(number, "CONVERSION_BASED_UNIT")) {
        const std::string name = wordsOf(textOf(m_entities.own(number, "CONVERSION_BASED_UNIT", 1).text(0)));
        return name == "inch" ? "in" : name == "degree" || name == "degrees" ? "deg" : name;
    }
    const p21::Fields si = m_entities.own(number, "SI_UNIT", 1);
    const std::string_view name = si.enumeration(1);
    const std::string_view prefix = si.enumeration(0);
    if (name == ".RADIAN.")
        return "rad";
    if (name != ".METRE.")
        return {};
    return prefix == ".MILLI." ? "mm" : prefix == ".CENTI." ? "cm" : prefix == ".MICRO." ? "um" : "m";
}

} // namespace ptx::step::annotations
