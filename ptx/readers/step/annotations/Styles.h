#pragma once

#include "ptx/readers/step/annotations/Entities.h"
#include "ptx/readers/step/annotations/Pen.h"

namespace ptx::step::annotations
{

/// The colours of annotations.
class Styles
{
public:
    /// `entities` outlives this object.
    explicit Styles(const Entities& entities) : m_entities(entities) {}

    /// What the list of assignments `styles` says; black where it says nothing.
    Style of(const Fields& styles) const;

private:
    struct Found;

    void look(std::uint32_t style, Found& found) const;
    std::optional<osg::Color4f> colorOf(std::uint32_t number) const;

    const Entities& m_entities;
};

} // namespace ptx::step::annotations
