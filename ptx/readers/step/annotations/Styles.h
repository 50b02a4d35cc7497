#pragma once

#include "ptx/readers/step/annotations/Pen.h"
#include "ptx/readers/step/p21/Entities.h"

namespace ptx::step::annotations
{

/// The colours of annotations.
class Styles
{
public:
    /// `entities` outlives this object.
    explicit Styles(const p21::Entities& entities) : m_entities(entities) {}

    /// What the list of assignments `styles` says; black where it says nothing.
    Style of(const p21::Fields& styles) const;

private:
    struct Found;

    void look(std::uint32_t style, Found& found) const;

    const p21::Entities& m_entities;
};

} // namespace ptx::step::annotations
