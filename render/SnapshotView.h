#pragma once

#include "host/OSGSystem/Math.h"
#include "scene/ViewTags.h"

#include <QString>

#include <optional>
#include <vector>

namespace render
{

/// Where the eye is. Z is up; the front looks along +Y with X to the right, as drawings have it. The iso view stands to
/// the right of the front and above it.
enum class View { Iso, Front, Back, Left, Right, Top, Bottom };

/// An eye that stands somewhere in the scene: it looks along the negative Z axis of its placement, with Y upwards.
struct Eye {
    osg::Matrix placement;     ///< in the world, millimetres; a scale in it does not count
    bool isPerspective = true; ///< a parallel projection otherwise
    float fieldOfView = 45;    ///< of a perspective: degrees from the lower to the upper edge of the picture
    float height = 1000;       ///< otherwise: millimetres from the lower to the upper edge
    /// Of the window that must lie in the picture, its width by its height: a narrower picture shows more above and
    /// below it. 0: no matter.
    float aspect = 0;
    /// Half-spaces that things are seen in, in the space of the eye, as scene/ViewTags.h has them.
    std::vector<osg::HalfSpace> sections = {};
};

/// What a name stands for: a view, or the reason why there is none.
struct ViewChoice {
    std::optional<View> view; ///< none for an unknown name
    QString error;            ///< names the text and all known views; empty when there is a view
};

/// The view of this name (iso, front, back, left, right, top, bottom; in any case).
ViewChoice viewFromText(const QString& text);

/// The name of `view` as `viewFromText` takes it.
QString viewName(View view);

} // namespace render
