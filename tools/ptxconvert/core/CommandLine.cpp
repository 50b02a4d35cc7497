#include "tools/ptxconvert/core/CommandLine.h"

#include <algorithm>
#include <filesystem>

namespace ptx
{

namespace
{

Failure wrongUse(const std::string& message)
{
    return {ExitCode::WrongUse, message};
}

std::string absolutePath(const std::string& path)
{
    std::error_code error;
    const auto absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal().string();
}

class Parser
{
public:
    explicit Parser(const std::vector<std::string>& arguments) : m_arguments(arguments) {}

    Trouble parse()
    {
        while (m_next < m_arguments.size())
            if (Trouble trouble = take(m_arguments[m_next++]))
                return trouble;
        return m_line.task == CommandLine::Task::Convert ? takePaths() : std::nullopt;
    }

    CommandLine& line() { return m_line; }

private:
    Trouble take(const std::string& argument)
    {
        if (m_optionsEnded || argument.size() < 2 || argument[0] != '-') {
            m_paths.push_back(argument);
            return std::nullopt;
        }
        return takeOption(argument);
    }

    Trouble takeOption(const std::string& option)
    {
        if (option == "--")
            m_optionsEnded = true;
        else if (option == "--external-parts")
            m_line.externalParts = true;
        else if (option == "--help")
            m_line.task = CommandLine::Task::Help;
        else if (option == "--version")
            m_line.task = CommandLine::Task::Version;
        else if (option == "--help-settings")
            m_line.task = CommandLine::Task::HelpSettings;
        else if (option == "--set")
            return takeSetting();
        else
            return wrongUse("unknown option " + option);
        return std::nullopt;
    }

    Trouble takeSetting()
    {
        if (m_next == m_arguments.size())
            return wrongUse("--set needs name=value");
        const std::string& assignment = m_arguments[m_next++];
        if (const auto wrong = m_line.settings.assign(assignment))
            return wrongUse(*wrong);
        m_line.assignments.push_back(assignment);
        return std::nullopt;
    }

    Trouble takePaths()
    {
        if (m_paths.size() != 2 || m_paths[0].empty() || m_paths[1].empty())
            return wrongUse("exactly one INPUT and one OUTPUT are needed");
        m_line.input = absolutePath(m_paths[0]);
        m_line.output = absolutePath(m_paths[1]);
        if (m_line.input == m_line.output)
            return wrongUse("INPUT and OUTPUT are the same file");
        return std::nullopt;
    }

    const std::vector<std::string>& m_arguments;
    std::size_t m_next = 0;
    bool m_optionsEnded = false;
    std::vector<std::string> m_paths;
    CommandLine m_line;
};

} // namespace

Outcome<CommandLine> parseCommandLine(const std::vector<std::string>& arguments)
{
    Parser parser(arguments);
    if (Trouble trouble = parser.parse())
        return *trouble;
    return parser.line();
}

const std::vector<OptionRow>& optionTable()
{
    static const std::vector<OptionRow> table = {
        {"--external-parts", nullptr, "keep references to part files instead of loading them"},
        {"--set", "name=value", "change a setting; may be given several times"},
        {"--help-settings", nullptr, "list the settings with their ranges and defaults"},
        {"--version", nullptr, "print the versions of this program and its CAD kernel"},
        {"--help", nullptr, "print this text"},
    };
    return table;
}

const char* synopsis()
{
    return "ptxconvert [--external-parts] [--set name=value]... INPUT OUTPUT";
}

const char* summary()
{
    return "Converts the CAD file INPUT into the scene file OUTPUT.";
}

const char* filesText()
{
    return "Beside OUTPUT it writes OUTPUT.tmp (progress) and OUTPUT.log.\n";
}

const char* exitCodesText()
{
    return "Exit codes: 0 written, 2 wrong use, 3 input unreadable, 5 no external parts, 6 format not supported,\n"
           "7 input damaged, 8 output not written, 10 memory limit, 11 time limit, 12 stall limit, 21 cancelled,\n"
           "25 nothing to import, 128 + n fatal signal n.\n";
}

std::string usageText()
{
    constexpr std::size_t column = 19;
    std::string text = std::string("Usage: ") + synopsis() + '\n' + summary() + "\n\n";
    for (const OptionRow& row : optionTable()) {
        std::string option = row.name;
        if (row.valueName)
            option += std::string(" ") + row.valueName;
        option.resize(std::max(column, option.size() + 1), ' ');
        text += "  " + option + row.help + '\n';
    }
    return text + '\n' + filesText() + exitCodesText();
}

} // namespace ptx
