#include "ptx/readers/step/annotations/Annotations.h"

#include "ptx/readers/step/annotations/Curves.h"
#include "ptx/readers/step/annotations/Homes.h"
#include "ptx/readers/step/annotations/Listings.h"
#include "ptx/readers/step/annotations/Meanings.h"
#include "ptx/readers/step/annotations/Styles.h"
#include "ptx/readers/step/annotations/Symbols.h"
#include "ptx/readers/step/annotations/Tessellation.h"
#include "ptx/readers/step/p21/StepString.h"

#include <algorithm>
#include <unordered_set>

namespace ptx::step::annotations
{

namespace
{

/// A text of the file for a person; empty when it is blank.
std::string wordsOf(std::string_view quoted)
{
    std::string words = quoted.empty() ? std::string() : p21::decodedString(quoted);
    return words.find_first_not_of(' ') == std::string::npos ? std::string() : words;
}

void addOnce(std::vector<std::string>& list, std::string word)
{
    if (!word.empty() && std::find(list.begin(), list.end(), word) == list.end())
        list.push_back(std::move(word));
}

class AnnotationReader
{
public:
    AnnotationReader(const p21::Records& records, const p21::EntityIndex& index, const Census& census)
        : m_entities(records, index), m_census(census), m_homes(m_entities, census), m_listings(m_entities, census),
          m_meanings(m_entities, census, m_drawing.notUnderstood), m_styles(m_entities), m_pen(m_drawing),
          m_curves(m_entities, m_pen), m_tessellation(m_entities, m_pen), m_symbols(m_entities, m_pen)
    {
        m_occurrences.insert(census.occurrences.begin(), census.occurrences.end());
        for (const std::uint32_t placeholder : census.placeholders)
            m_occurrences.erase(placeholder);
        m_drawing.counts.occurrences = m_occurrences.size();
        m_drawing.counts.placeholders = census.placeholders.size();
    }

    Drawing read()
    {
        for (const std::uint32_t number : m_census.otherStyle)
            addOtherStyle(number);
        for (const std::uint32_t number : m_census.callouts)
            addCallout(number);
        for (const std::uint32_t number : m_census.occurrences)
            if (m_occurrences.contains(number))
                addAlone(number);
        m_drawing.counts.areModelsCut = m_listings.isCut();
        return std::move(m_drawing);
    }

private:
    /// A set of curves within others may have a colour of its own.
    void addOtherStyle(std::uint32_t number)
    {
        const p21::Fields styled = m_entities.own(number, "STYLED_ITEM", 1);
        const std::uint32_t item = styled.reference(1);
        if (!isCurveSet(item))
            return;
        const Style style = m_styles.of(styled.list(0));
        const p21::Fields curves = m_entities.at(item).list(1);
        for (std::size_t i = 0; i < curves.size(); ++i)
            m_otherColors.insert_or_assign(curves.reference(i), style.line);
    }

    bool isCurveSet(std::uint32_t item) const
    {
        const std::string_view type = m_entities.at(item).type();
        return type == "GEOMETRIC_CURVE_SET" || type == "GEOMETRIC_SET";
    }

    void addCallout(std::uint32_t number)
    {
        Callout callout = newCallout(number);
        m_pen.begin(callout);
        const p21::Fields contents = m_entities.own(number, "DRAUGHTING_CALLOUT", 1).list(0);
        for (std::size_t i = 0; i < contents.size(); ++i) {
            m_listings.addTo(callout, contents.reference(i));
            addOccurrence(contents.reference(i), callout);
        }
        keep(std::move(callout));
    }

    void addAlone(std::uint32_t number)
    {
        Callout callout = newCallout(number);
        m_pen.begin(callout);
        addOccurrence(number, callout);
        keep(std::move(callout));
    }

    Callout newCallout(std::uint32_t number)
    {
        const Home home = m_homes.of(number);
        Callout callout;
        callout.name = wordsOf(m_entities.nameOf(number));
        callout.context = home.context;
        m_curves.useContext(home.context);
        callout.product = home.product;
        m_listings.addTo(callout, number);
        callout.meanings = m_meanings.of(number);
        return callout;
    }

    void keep(Callout callout)
    {
        if (!callout.strokes.empty() || !callout.texts.empty())
            m_drawing.callouts.push_back(std::move(callout));
    }

    /// Draws the occurrence `number` unless that is none, or was drawn before.
    void addOccurrence(std::uint32_t number, Callout& callout)
    {
        if (m_occurrences.erase(number) == 0)
            return;
        const p21::Fields styled = m_entities.own(number, "STYLED_ITEM", 1);
        m_pen.use(m_styles.of(styled.list(0)));
        const std::uint32_t item = styled.reference(1);
        if (callout.name.empty())
            callout.name = wordsOf(m_entities.nameOf(number));
        if (m_tessellation.isSet(item)) {
            addOnce(callout.kinds, wordsOf(m_entities.nameOf(item)));
            m_tessellation.drawSet(item);
        } else if (isCurveSet(item)) {
            addOnce(callout.kinds, wordsOf(m_entities.nameOf(item)));
            drawCurves(m_entities.at(item).list(1));
        } else if (m_entities.at(item).type() == "ANNOTATION_FILL_AREA") {
            m_curves.fill(m_entities.at(item).list(1));
        } else if (!m_symbols.draw(number, item)) {
            m_curves.draw(item, m_pen.style().line);
        }
    }

    void drawCurves(const p21::Fields& curves)
    {
        for (std::size_t i = 0; i < curves.size() && m_pen.take(1); ++i) {
            const auto other = m_otherColors.find(curves.reference(i));
            m_curves.draw(curves.reference(i), other == m_otherColors.end() ? m_pen.style().line : other->second);
        }
    }

    Drawing m_drawing;
    p21::Entities m_entities;
    const Census& m_census;
    Homes m_homes;
    Listings m_listings;
    Meanings m_meanings;
    Styles m_styles;
    Pen m_pen;
    Curves m_curves;
    Tessellation m_tessellation;
    Symbols m_symbols;
    std::unordered_set<std::uint32_t> m_occurrences; ///< that are still to be drawn
    std::unordered_map<std::uint32_t, osg::Color4f> m_otherColors;
};

} // namespace

Drawing readAnnotations(const p21::Records& records, const p21::EntityIndex& index)
{
    const Census census = takeCensus(records);
    return census.isEmpty() ? Drawing() : AnnotationReader(records, index, census).read();
}

} // namespace ptx::step::annotations
