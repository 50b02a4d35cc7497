#pragma once

#include <QString>

#include <optional>

namespace render
{

/// How the surfaces of a picture are drawn.
enum class SnapshotLook {
    Plain,  ///< diffuse and vertex colours, as drawings have them, with lines at creases
    Studio, ///< physically based, with textures, in the light of an environment
};

/// What a name stands for: a look, or the reason why there is none.
struct LookChoice {
    std::optional<SnapshotLook> look; ///< none for an unknown name
    QString error;                    ///< names the text and all known looks; empty when there is a look
};

/// The look of this name (plain, studio; in any case).
LookChoice lookFromText(const QString& text);

/// The name of `look` as `lookFromText` takes it.
QString lookName(SnapshotLook look);

} // namespace render
