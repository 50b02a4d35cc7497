#include "ptx/core/CommandLine.h"

#include "protocol/FileNames.h"
#include "protocol/Options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>

namespace ptx::core
{

namespace
{

namespace option = protocol::option;

constexpr char ProgramName[] = "ptxconvert";
constexpr char Again[] = "--again";
constexpr std::ptrdiff_t WordsOfAttempt = 3; ///< the option and its numbers

constexpr std::array<const char*, 3> SandboxWords = {"on", "off", "require"};

/// Those that this program ends with.
struct CodeText {
    ExitCode code;
    const char* text;
};

constexpr CodeText CodeTexts[] = {
    {ExitCode::Success, "written"},
    {ExitCode::WrongUse, "wrong use"},
    {ExitCode::InputUnreadable, "input unreadable"},
    {ExitCode::NoExternalParts, "no external parts"},
    {ExitCode::Unsupported, "format not supported"},
    {ExitCode::Damaged, "input damaged"},
    {ExitCode::OutputFailed, "output not written"},
    {ExitCode::MemoryLimit, "memory limit"},
    {ExitCode::TimeLimit, "time limit"},
    {ExitCode::StallLimit, "stall limit"},
    {ExitCode::Cancelled, "cancelled"},
    {ExitCode::NothingToImport, "nothing to import"},
};

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
        if (m_line.task != CommandLine::Task::Convert)
            return std::nullopt;
        if (!m_line.folder.empty())
            return takeInputs();
        return m_line.jobs == 0 ? takePaths() : wrongUse(std::string(option::Jobs) + " needs " + option::Folder);
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

    Trouble takeOption(const std::string& name)
    {
        if (name == "--")
            m_optionsEnded = true;
        else if (name == option::ExternalParts)
            m_line.externalParts = true;
        else if (name == option::Help)
            m_line.task = CommandLine::Task::Help;
        else if (name == option::Version)
            m_line.task = CommandLine::Task::Version;
        else if (name == option::Uv)
            return takeUv();
        else if (name == option::HelpSettings)
            m_line.task = CommandLine::Task::HelpSettings;
        else if (name == option::Set)
            return takeSetting();
        else if (name == option::Folder)
            return takeFolder(name, m_line.folder);
        else if (name == option::Jobs)
            return takeJobs();
        else if (name == option::References)
            return takeRule();
        else if (name == option::Sandbox)
            return takeSandbox();
        else if (name == option::ReferencesBelow)
            return takeFolder(name, m_line.references.top);
        else if (name == option::AllowReferences)
            return takeFolder(name, m_line.references.folders.emplace_back());
        else if (name == Again)
            return takeAttempt();
        else
            return wrongUse("unknown option " + name);
        return std::nullopt;
    }

    Trouble takeSetting()
    {
        if (m_next == m_arguments.size())
            return wrongUse(std::string(option::Set) + " needs name=value");
        return assign(m_arguments[m_next++]);
    }

    Trouble assign(const std::string& assignment)
    {
        if (const auto wrong = m_line.settings.assign(assignment))
            return wrongUse(*wrong);
        m_line.assignments.push_back(assignment);
        return std::nullopt;
    }

    Trouble takeFolder(const std::string& name, std::string& folder)
    {
        if (m_next == m_arguments.size() || m_arguments[m_next].empty())
            return wrongUse(name + " needs a folder");
        folder = absolutePath(m_arguments[m_next++]);
        return std::nullopt;
    }

    Trouble takeRule()
    {
        const std::string word = m_next == m_arguments.size() ? std::string() : m_arguments[m_next++];
        const auto rule = files::references::ruleOf(word);
        if (!rule)
            return wrongUse(std::string(option::References) + " needs parts, below or none");
        m_line.references.rule = *rule;
        return std::nullopt;
    }

    Trouble takeSandbox()
    {
        const auto sandbox = sandboxOf(m_next == m_arguments.size() ? std::string() : m_arguments[m_next++]);
        if (!sandbox)
            return wrongUse(std::string(option::Sandbox) + " needs on, off or require");
        m_line.sandbox = *sandbox;
        return std::nullopt;
    }

    Trouble takeUv()
    {
        const std::string word = m_next == m_arguments.size() ? std::string() : m_arguments[m_next++];
        if (word != "surface" && word != "none")
            return wrongUse(std::string(option::Uv) + " needs surface or none");
        return assign(std::string(protocol::setting::SurfaceUv) + (word == "surface" ? "=1" : "=0"));
    }

    Trouble takeJobs()
    {
        constexpr unsigned most = 1024;
        const std::string text = m_next == m_arguments.size() ? std::string() : m_arguments[m_next++];
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), m_line.jobs);
        if (error != std::errc() || end != text.data() + text.size() || m_line.jobs < 1 || m_line.jobs > most)
            return wrongUse(std::string(option::Jobs) + " needs a number from 1 to " + std::to_string(most));
        return std::nullopt;
    }

    Trouble takeInputs()
    {
        if (m_paths.empty() || std::find(m_paths.begin(), m_paths.end(), "") != m_paths.end())
            return wrongUse(std::string("at least one INPUT is needed with ") + option::Folder);
        m_line.task = CommandLine::Task::ConvertSeveral;
        for (const std::string& each : m_paths)
            m_line.inputs.push_back(absolutePath(each));
        return std::nullopt;
    }

    /// Number of the attempt and time of the first, as commandOfAttempt writes them.
    Trouble takeAttempt()
    {
        if (m_next + 2 > m_arguments.size())
            return wrongUse(std::string(Again) + " needs two numbers");
        m_line.attempt = static_cast<int>(numberOf(m_arguments[m_next++]));
        m_line.begun = numberOf(m_arguments[m_next++]);
        return std::nullopt;
    }

    static std::int64_t numberOf(const std::string& text)
    {
        std::int64_t number = 0;
        std::from_chars(text.data(), text.data() + text.size(), number);
        return number;
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

files::references::Policy CommandLine::referencePolicy() const
{
    files::references::Policy policy = references;
    if (policy.top.empty())
        policy.top = std::filesystem::path(input).parent_path().string();
    return policy;
}

const char* word(Sandbox sandbox)
{
    return SandboxWords[static_cast<std::size_t>(sandbox)];
}

std::optional<Sandbox> sandboxOf(std::string_view word)
{
    const auto found =
        std::find_if(SandboxWords.begin(), SandboxWords.end(), [word](const char* each) { return word == each; });
    return found == SandboxWords.end() ? std::nullopt
                                       : std::optional(static_cast<Sandbox>(found - SandboxWords.begin()));
}

Outcome<CommandLine> parseCommandLine(const std::vector<std::string>& arguments)
{
    Parser parser(arguments);
    if (Trouble trouble = parser.parse())
        return *trouble;
    return parser.line();
}

std::vector<std::string> commandOfAttempt(int attempt, std::int64_t begun, const std::vector<std::string>& arguments)
{
    std::vector<std::string> words = {ProgramName, Again, std::to_string(attempt), std::to_string(begun)};
    const bool isAnew = !arguments.empty() && arguments.front() == Again;
    words.insert(words.end(), arguments.begin() + (isAnew ? WordsOfAttempt : 0), arguments.end());
    return words;
}

const std::vector<OptionRow>& optionTable()
{
    static const std::vector<OptionRow> table = {
        {option::ExternalParts, nullptr, "keep references to part files instead of loading them"},
        {option::Set, "name=value", "change a setting; may be given several times"},
        {option::Folder, "DIR", "convert several inputs, each in a process of its own, into this folder"},
        {option::Jobs, "N", "how many of these at a time, from 1 to 1024; one for each core if not given"},
        {option::References, "RULE",
         "which part files are read: parts for those wherever INPUT says, below for those below its folder, or none"},
        {option::ReferencesBelow, "DIR", "the folder that is meant by below, in place of INPUT's own"},
        {option::AllowReferences, "DIR", "read part files below this folder all the same; may be given several times"},
        {option::Sandbox, "WISH",
         "on locks the conversion in as far as the kernel can (without it, too), off does not, require ends without"},
        {option::Uv, "KIND",
         "texture coordinates of exact surfaces: surface for their own parameters, a picture for each metre, or none"},
        {option::HelpSettings, nullptr, "list the settings with their ranges and defaults"},
        {option::Version, nullptr, "print the versions of this program and its CAD kernel"},
        {option::Help, nullptr, "print this text"},
    };
    return table;
}

const char* synopsis()
{
    return "ptxconvert [--external-parts] [--set name=value]... {INPUT OUTPUT | -o DIR [-j N] INPUT...}";
}

const char* summary()
{
    return "Converts the CAD file INPUT into the scene file OUTPUT.";
}

std::string filesText()
{
    return std::string("Beside OUTPUT it writes OUTPUT") + protocol::ProgressSuffix + " (progress) and OUTPUT" +
           protocol::LogSuffix + ".\n";
}

std::string exitCodesText()
{
    constexpr std::size_t widest = 104;
    std::string text;
    std::string line = "Exit codes:";
    for (const CodeText& row : CodeTexts) {
        const std::string item = ' ' + std::to_string(protocol::number(row.code)) + ' ' + row.text + ',';
        if (line.size() + item.size() > widest) {
            text += line + '\n';
            line.clear();
        }
        line += line.empty() ? item.substr(1) : item;
    }
    return text + line + ' ' + std::to_string(protocol::SignalBase) + " + n fatal signal n.\n";
}

std::string usageText()
{
    constexpr std::size_t column = 19;
    std::string text = std::string("Usage: ") + synopsis() + '\n' + summary() + "\n\n";
    for (const OptionRow& row : optionTable()) {
        std::string words = row.name;
        if (row.valueName)
            words += std::string(" ") + row.valueName;
        words.resize(std::max(column, words.size() + 1), ' ');
        text += "  " + words + row.help + '\n';
    }
    return text + '\n' + filesText() + exitCodesText();
}

} // namespace ptx::core
