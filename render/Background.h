#pragma once

#include "render/Snapshot.h"

#include <QString>

#include <optional>

namespace render
{

/// What a text stands for: a backdrop, or the reason why there is none.
struct BackgroundChoice {
    std::optional<Backdrop> backdrop; ///< none for an error
    QString error;                    ///< names the text and what is possible; empty when there is a backdrop
};

/// The backdrop of a text: "transparent", a colour (#rrggbb, or a name that Qt knows), or the path of a picture of at
/// most `maxPixels` pixels. A colour or a picture keeps the shadow of the model.
BackgroundChoice backgroundFromText(const QString& text, std::size_t maxPixels = SnapshotLimits().maxPixels);

} // namespace render
