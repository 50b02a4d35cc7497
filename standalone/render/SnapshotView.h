#pragma once

#include <QString>

#include <optional>

namespace render
{

/// Where the eye is. Z is up; the front looks along +Y with X to the right, as drawings have it. The iso view stands to
/// the right of the front and above it.
enum class View { Iso, Front, Back, Left, Right, Top, Bottom };

/// What a name stands for: a view, or the reason why there is none.
struct ViewChoice {
    std::optional<View> view;
    QString error; ///< names the text and all known views; empty when there is a view
};

/// The view of this name (iso, front, back, left, right, top, bottom; in any case).
ViewChoice viewFromText(const QString& text);

/// The name of `view` as `viewFromText` takes it.
QString viewName(View view);

} // namespace render
