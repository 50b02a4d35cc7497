#pragma once

#include <QByteArray>
#include <QString>

#include <ostream>

/// Lets GoogleTest show Qt's texts as texts.
inline void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QByteArray& bytes, std::ostream* stream)
{
    *stream << '"' << bytes.toStdString() << '"';
}
