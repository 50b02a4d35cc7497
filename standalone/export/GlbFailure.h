#pragma once

#include "standalone/export/GlbWriter.h"

#include <QCoreApplication>

#include <exception>

namespace glb
{

/// A text for people, in their language.
inline QString tr(const char* text)
{
    return QCoreApplication::translate("glb", text);
}

/// How the parts of the writer leave their work; `write` turns it into a value.
class WriteFailure : public std::exception
{
public:
    WriteFailure(WriteErrorCode code, const QString& message) : m_error{code, message, {}} {}
    const WriteError& error() const { return m_error; }
    const char* what() const noexcept override { return "WriteFailure"; }

private:
    WriteError m_error;
};

} // namespace glb
