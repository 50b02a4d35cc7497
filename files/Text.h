#pragma once

#include <QCoreApplication>

namespace files
{

/// A text for people, in their language.
inline QString tr(const char* text)
{
    return QCoreApplication::translate("files", text);
}

} // namespace files
