#pragma once

#include <array>
#include <string>
#include <vector>

namespace ptxtest
{

struct Triple {
    double x = 0, y = 0, z = 0;
};

enum class LengthUnit { Millimetre, Metre, Inch };

/// A product in the text, by the numbers of its entities.
struct StepProduct {
    int definition = 0;
    int shapeDefinition = 0;
    int representation = 0;
    int solid = 0;              ///< of the last box added
    std::array<int, 6> faces{}; ///< of that box: x low, x high, y low, y high, z low, z high
};

/// An occurrence in the text, by the numbers of its entities.
struct StepOccurrence {
    int usage = 0;
    int shapeDefinition = 0;
    int place = 0;
};

/// Writes STEP text by hand, entity by entity, so that every number in a fixture is known without asking a CAD kernel.
/// Lengths are in the unit of the text. Texts go in as they are: quotes and letters beyond ASCII are the caller's.
class StepText
{
public:
    explicit StepText(LengthUnit unit = LengthUnit::Millimetre);

    /// A product without geometry.
    StepProduct product(const std::string& name);
    /// Adds a box from `low` to `high` to `product`.
    void box(StepProduct& product, Triple low, Triple high);
    /// Puts `child` into `parent`: moved by `offset`, turned so that its axes are `axis` (z) and `reference` (x).
    StepOccurrence place(const StepProduct& parent, const StepProduct& child, const std::string& name, Triple offset,
                         Triple axis = {0, 0, 1}, Triple reference = {1, 0, 0});

    /// Says that the geometry of `product` lies in the file `name`.
    void keepIn(const StepProduct& product, const std::string& name);
    /// The same in the older way, without entities for files.
    void keepInDocument(StepProduct& product, const std::string& name);

    /// Gives a solid or face a colour; the coverage is what the transparency leaves over.
    int color(int item, Triple rgb, double transparency = 0);
    /// Gives one occurrence of `part` a colour that overrides `styled`, the style that `color` returned for its solid.
    void overrideColor(const StepOccurrence& occurrence, const StepProduct& part, int styled, Triple rgb);
    /// The same for the occurrence `inner` within `outer` alone.
    void overrideColor(const StepProduct& top, const StepOccurrence& outer, const StepOccurrence& inner,
                       const StepProduct& part, int styled, Triple rgb);

    /// Adds an entity, "NAME(...)", and gives its number.
    int add(const std::string& entity);
    int context() const { return m_context; }

    /// The whole file.
    std::string text();

private:
    int point(Triple p);
    int direction(Triple d);
    int placement(Triple origin, Triple axis, Triple reference);
    int face(const std::array<int, 4>& corners, Triple origin, Triple normal, Triple reference);
    int edge(int from, int to, bool& isForward);
    int surfaceStyle(Triple rgb, double transparency);
    void addUnits(LengthUnit unit);
    int newRepresentation(const StepProduct& product);

    struct Edge {
        int from, to, entity;
    };
    struct Representation {
        int entity, product;
        std::vector<int> items;
        bool isBrep = false;
    };

    std::vector<std::string> m_entities;
    std::vector<Edge> m_edges;
    std::vector<Triple> m_corners;
    std::vector<int> m_vertices;
    std::vector<Representation> m_representations;
    std::vector<int> m_styles;
    int m_application = 0;
    int m_context = 0;
    int m_origin = 0;
};

} // namespace ptxtest
