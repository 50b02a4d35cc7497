#pragma once

#include <QString>

namespace zn
{

/// Path of a program that belongs to this installation: beside the running program, else in the folder of programs that
/// stands beside the folder of this library, else on the PATH. Only `name` when it is in none of them.
QString installedProgram(const QString& name);

} // namespace zn
