#pragma once

#include <QString>
#include <QStringList>

namespace zn
{

/// A command line that `QProcess::splitCommand` takes apart into exactly these words; none of them may be empty.
QString joinCommand(const QStringList& words);

/// The name of the file that the conversion of `input` makes, without folder and extension: the input's own name and a
/// short hash of its absolute path, so that files of one name from two folders do not meet.
QString convertedName(const QString& input);

/// The program that the setting names; without one the `ptxconvert` beside this program, else the one on the PATH.
QString converterProgram(const QString& setting);

} // namespace zn
