#pragma once

#include <QString>

namespace files
{

/// Something to tell about a file.
struct Note {
    QString message; ///< for people; without file and place
    QString file;    ///< the file that it is about, which may be one that the main file refers to
    QString place;   ///< where in the file, as near as it is known: a line, a byte or an element; may be empty

    /// File, message and place in one line.
    QString toString() const;
    /// Equal texts.
    friend bool operator==(const Note&, const Note&) = default;
};

} // namespace files
