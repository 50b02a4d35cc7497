#pragma once

#include "tests/support/StepText.h"

#include <string>
#include <vector>

namespace ptxtest
{

/// A reference to an entity.
std::string ref(int entity);

/// Writes a STEP text of a box of 30 x 20 x 10 units, with views of it from the front, and annotations that tell of it.
class DraughtingText
{
public:
    explicit DraughtingText(LengthUnit unit = LengthUnit::Millimetre, const std::string& part = "part");

    int add(const std::string& entity) { return m_step.add(entity); }

    /// A camera before the box that nothing draws. @return its number
    int camera(const std::string& name, const std::string& projection = ".PARALLEL.", const std::string& y = "-100.");
    /// A blue line of two points and two red triangles. @return the number of the callout
    int callout(const std::string& name);
    /// The part's own shape as an item of drawings.
    int mappedShape() { return mapped(m_part.representation); }
    /// The same of the other part that hold() made.
    int mappedOther() { return mapped(m_other.representation); }
    /// A shape that is none of a product's, made of `items`, as an item of drawings.
    int mappedItems(const std::vector<int>& items);
    /// The solid of the last box of the part.
    int solid() const { return m_part.solid; }
    /// Another box of the part, as large as the first, to the right of it. @return its solid
    int secondBox();
    /// A draughting model of `items`.
    int draw(const std::vector<int>& items);
    /// A camera in a drawing of its own.
    void view(const std::string& name, const std::string& projection = ".PARALLEL.", const std::string& y = "-100.");

    /// Puts the part into an assembly "top", as `names` at x = 100, 200 ...; if `withAnother`, also another part, as
    /// "beside".
    std::vector<StepOccurrence> hold(const std::vector<std::string>& names, bool withAnother = false);
    /// Puts the part into an assembly "group" as `names`, and this one into "top" as `groups`, turned to the left about
    /// Z, at x = 1000, 2000 ...
    void holdTwice(const std::vector<std::string>& names, const std::vector<std::string>& groups);
    /// Gives `use` of the part another colour than the part has.
    void overrideColor(const StepOccurrence& use);

    std::string text() { return m_step.text(); }

private:
    int mapped(int representation);
    int line();
    int square();
    int style();
    int origin();

    StepText m_step;
    StepProduct m_part;
    StepProduct m_other;
};

} // namespace ptxtest
