#include "tools/manual/Manual.h"

namespace manual
{

namespace
{

/// The text as roff shows it to the letter: dashes that can be copied, no line that begins as a macro.
std::string escaped(const std::string& text)
{
    std::string result;
    bool lineBegins = true;
    for (const char letter : text) {
        if (lineBegins && (letter == '.' || letter == '\''))
            result += "\\&";
        if (letter == '-')
            result += "\\-";
        else if (letter == '\\')
            result += "\\e";
        else
            result += letter;
        lineBegins = letter == '\n';
    }
    return result;
}

std::string bold(const std::string& text)
{
    return "\\fB" + escaped(text) + "\\fR";
}

std::string optionText(const Option& option)
{
    std::string text = ".TP\n";
    for (const std::string& name : option.names)
        text += (text.back() == '\n' ? "" : ", ") + bold(name);
    if (!option.value.empty())
        text += " \\fI" + escaped(option.value) + "\\fR";
    return text + '\n' + escaped(option.help) + '\n';
}

} // namespace

std::string page(const Program& program)
{
    std::string text = ".TH " + program.name + " 1 \"\" \"" + program.name + ' ' + program.version + "\"\n";
    text += ".SH NAME\n" + program.name + " \\- " + escaped(program.summary) + '\n';
    text += ".SH SYNOPSIS\n.B " + program.name + "\n" + escaped(program.synopsis) + '\n';
    text += ".SH OPTIONS\n";
    for (const Option& option : program.options)
        text += optionText(option);
    if (!program.notes.empty())
        text += ".SH FILES\n" + escaped(program.notes) + '\n';
    text += ".SH EXIT STATUS\n" + escaped(program.exitCodes) + "\n.SH SEE ALSO\n";
    for (const std::string& other : program.related)
        text += ".BR " + other + " (1)\n";
    return text;
}

std::string completion(const Program& program)
{
    std::string words;
    std::string withValue;
    for (const Option& option : program.options)
        for (const std::string& name : option.names) {
            words += (words.empty() ? "" : " ") + name;
            if (!option.value.empty())
                withValue += (withValue.empty() ? "" : "|") + name;
        }
    const std::string function = "_zn_complete_" + program.name;
    return "# bash completion for " + program.name + "\n" + function +
           "()\n{\n"
           "    local word=${COMP_WORDS[COMP_CWORD]}\n"
           "    local before=${COMP_WORDS[COMP_CWORD - 1]}\n"
           "    COMPREPLY=()\n"
           "    case $before in\n    " +
           withValue +
           ") ;;\n"
           "    *)\n        if [[ $word == -* ]]; then\n"
           "            mapfile -t COMPREPLY < <(compgen -W '" +
           words +
           "' -- \"$word\")\n"
           "            return\n        fi\n        ;;\n    esac\n"
           "    mapfile -t COMPREPLY < <(compgen -f -- \"$word\")\n"
           "}\ncomplete -o filenames -F " +
           function + ' ' + program.name + '\n';
}

} // namespace manual
