#pragma once

#include "host/OSGSystem/Math.h"
#include "ptx/readers/step/facets/Point.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// What the annotations of a STEP text draw, without any meaning of them for shapes.
namespace ptx::step::annotations
{

using facets::Point;

/// What one colour draws.
struct Strokes {
    osg::Color4f color;
    std::vector<Point> points;
    std::vector<std::uint32_t> lines;     ///< two points each
    std::vector<std::uint32_t> triangles; ///< three points each
};

/// A value with its unit.
struct Measure {
    std::optional<double> number; ///< none where nothing that can be read tells
    std::string unit;             ///< "mm", "in", "deg" ...; empty when it is another one

    friend bool operator==(const Measure&, const Measure&) = default;
};

/// What an annotation tells of the shape.
struct Meaning {
    std::string what;     ///< "diameter", "linear distance", "flatness tolerance", "datum" ...
    Measure value;        ///< of a dimension, or the size of a tolerance
    Measure lower, upper; ///< limits of a dimension, from its value on
    std::string datums;   ///< letters: "A|B-C"

    friend bool operator==(const Meaning&, const Meaning&) = default;
};

/// Annotations that belong together, as a dimension and its arrows do.
struct Callout {
    std::string name;
    std::vector<std::string> kinds;    ///< "datum", "position" ...: each once
    std::vector<std::string> texts;    ///< for whose letters the text names a font alone
    std::vector<Meaning> meanings;     ///< each once
    std::vector<Strokes> strokes;      ///< by colour
    std::uint32_t context = 0;         ///< number of the context with its unit; 0 when nothing tells
    std::uint32_t product = 0;         ///< number of the product definition it belongs to; 0 when nothing tells
    std::vector<std::uint32_t> models; ///< numbers of the draughting models that list it, rising
    bool isHidden = false;             ///< it was not seen when the text was written
};

/// How much was found and drawn.
struct Counts {
    std::size_t occurrences = 0; ///< of annotations
    std::size_t polylines = 0;
    std::size_t points = 0; ///< of the polylines
    std::size_t circles = 0;
    std::size_t triangles = 0;
    std::size_t joints = 0;        ///< triangles of two points, which join strips and are not drawn
    std::size_t placeholders = 0;  ///< they tell where an annotation goes, and draw nothing
    std::size_t outOfRange = 0;    ///< numbers of points that there are not
    std::size_t guessedAngles = 0; ///< curves that end at angles for which no unit is assigned
    bool isCut = false;            ///< the rest would be too much
    bool areModelsCut = false;     ///< so many models list callouts that the rest of them is not told
};

/// All annotations of a text.
struct Drawing {
    std::vector<Callout> callouts;
    Counts counts;
    std::map<std::string, std::size_t> unread;        ///< entities that nothing is drawn for, by type
    std::map<std::string, std::size_t> notUnderstood; ///< what annotations mean beside, by type
};

} // namespace ptx::step::annotations
