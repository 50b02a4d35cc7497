#pragma once

#include "standalone/session/SettingGroups.h"

#include <QMap>
#include <QString>
#include <QStringList>

namespace zn::kernel
{

/// A command line that `QProcess::splitCommand` takes apart into exactly these words; none of them may be empty.
QString joinCommand(const QStringList& words);

/// The name of the file that the conversion of `input` makes, without folder and extension: the input's own name, cut
/// when it is very long, and a short hash of its absolute path, so that files of one name from two folders do not meet.
QString convertedName(const QString& input);

/// What the words of an argument template stand for.
struct TemplateValues {
    QString input;
    QString output;
    bool externalParts = false;
    QMap<QString, QString> fields = {}; ///< further names in braces
};

/// One of `words`, of which there is at least one: the same for the same key, all of them about as often.
QString chosenWord(const QStringList& words, const QString& key);

/// The words of a template, which are split as a command line is. `{input}` and `{output}` stand for the files;
/// `{external:WORD}` is WORD when external parts are wanted, and `{inlined:WORD}` when they are not, else nothing; the
/// names of further fields stand for their values; `{oneof:A,B,C}` is the chosen word of these for the output. What is
/// in no such braces stays as it is; a word of which nothing is left is dropped.
QStringList filledTemplate(const QString& argumentTemplate, const TemplateValues& values);

/// What the converter's option for settings takes to change `setting`, one of `protocol::setting`.
QString converterOption(const char* setting, int value);

/// What the converter's programs are told of locking themselves in; nothing where they do it by themselves.
QStringList sandboxWords(ConvertSettings::Sandbox sandbox);

/// The program that the setting names; without one the installed `ptxconvert`.
QString converterProgram(const QString& setting);

} // namespace zn::kernel
