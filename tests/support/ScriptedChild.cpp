// A process that does what a script tells it, so that tests can have any run of a child process they like.
//
//     zn_scripted_child [--script TEXT] [--external-parts] [--set NAME=VALUE]... [--references... VALUE]...
//                       [INPUT [OUTPUT]]
//
// The script is TEXT, where ';' ends a line as well; otherwise the environment variable ZN_CHILD_SCRIPT; otherwise the
// content of INPUT. One command a line, blanks part words, "double quotes" hold a word with blanks together,
// '#' begins a comment line. A script that runs to its end exits with 0, a wrong one with 98.
//
// clang-format off
//     progress TEXT            writes TEXT to OUTPUT.tmp as the converter does: at offset 0, blank-padded, untruncated
//     progress-bytes HEX       the same with bytes given as hexadecimal digits, unpadded
//     progress-replaced TEXT   writes TEXT to another file, which then takes the place of OUTPUT.tmp
//     output TEXT              writes OUTPUT (under another name, then renamed)
//     output-from FILE         the same with the content of FILE
//     log TEXT                 appends a line to OUTPUT.log
//     write FILE TEXT          writes a file
//     append FILE TEXT         appends a line
//     remove FILE
//     arguments FILE           writes the command line's arguments, one a line
//     pid FILE                 writes the process id
//     stdout TEXT              writes a line; stderr TEXT likewise
//     flood-stderr BYTES       writes that many bytes
//     wait MS
//     wait-for FILE            until the file is there, half a minute at most
//     ignore-stop              ignores SIGTERM
//     exit-on-stop CODE        exits with CODE at SIGTERM
//     grandchild MS FILE       leaves a child behind that lives MS milliseconds, its id in FILE
//     crash SIGNAL             dies of the signal with that number
//     exit CODE
//     if-external-parts COMMAND...   runs COMMAND if the argument was given; unless-external-parts is the opposite
//     if-exists FILE COMMAND...      runs COMMAND if the file is there; unless-exists is the opposite
// clang-format on

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace
{

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

struct CommandLine {
    Words all;
    std::string script;
    std::string input;
    std::string output;
    bool hasScript = false;
    bool externalParts = false;
};

[[noreturn]] void failScript(const std::string& why)
{
    std::cerr << "scripted child: " << why << std::endl;
    std::_Exit(98);
}

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        failScript("cannot read " + path);
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

CommandLine parseArguments(int argc, char** argv)
{
    CommandLine line;
    line.all.assign(argv + 1, argv + argc);
    for (auto word = line.all.begin(); word != line.all.end(); ++word) {
        const bool hasValue = std::next(word) != line.all.end();
        if (*word == "--external-parts") {
            line.externalParts = true;
        } else if ((*word == "--set" || word->starts_with("--references")) && hasValue) {
            ++word;
        } else if (*word == "--script" && hasValue) {
            line.hasScript = true;
            line.script = *++word;
            std::replace(line.script.begin(), line.script.end(), ';', '\n');
        } else {
            (line.input.empty() ? line.input : line.output) = *word;
        }
    }
    return line;
}

std::string scriptOf(const CommandLine& line)
{
    if (line.hasScript) {
        return line.script;
    }
    const char* const fromEnvironment = std::getenv("ZN_CHILD_SCRIPT");
    return fromEnvironment ? fromEnvironment : readFile(line.input);
}

Words splitWords(const std::string& line)
{
    std::istringstream stream(line);
    Words words;
    while (stream >> std::ws && stream.peek() != EOF) {
        std::string word;
        if (stream.peek() == '"') {
            stream.get();
            std::getline(stream, word, '"');
        } else {
            stream >> word;
        }
        words.push_back(word);
    }
    return words;
}

std::string joinFrom(const Words& words, std::size_t first)
{
    std::string text;
    for (std::size_t i = first; i < words.size(); ++i) {
        text += (i == first ? "" : " ") + words[i];
    }
    return text;
}

std::string bytesOf(const std::string& hex)
{
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
    }
    return bytes;
}

void writeFile(const std::string& path, const std::string& text, std::ios::openmode mode = std::ios::trunc)
{
    std::ofstream file(path, std::ios::binary | mode);
    if (!(file << text << std::flush)) {
        failScript("cannot write " + path);
    }
}

void waitFor(const std::string& path)
{
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!fs::exists(path)) {
        if (std::chrono::steady_clock::now() > limit) {
            failScript("waited in vain for " + path);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

void waitMilliseconds(const std::string& count)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(std::stol(count)));
}

void leaveGrandchild(const std::string& milliseconds, const std::string& pidFile)
{
    const pid_t child = ::fork();
    if (child == 0) {
        waitMilliseconds(milliseconds);
        std::_Exit(0);
    }
    writeFile(pidFile, std::to_string(child));
}

void floodErrors(const std::string& count)
{
    const std::string block(std::min<std::size_t>(std::stoul(count), 65536), 'x');
    for (std::size_t left = std::stoul(count); left > 0;) {
        const ssize_t written = ::write(STDERR_FILENO, block.data(), std::min(left, block.size()));
        if (written < 0) {
            failScript("cannot write to standard error");
        }
        left -= static_cast<std::size_t>(written);
    }
}

[[noreturn]] void crash(int number)
{
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    ::signal(number, SIG_DFL);
    ::raise(number);
    failScript("signal " + std::to_string(number) + " does not kill");
}

volatile sig_atomic_t stopCode = 0;

void exitOnStop(int code)
{
    stopCode = code;
    ::signal(SIGTERM, [](int) { ::_exit(stopCode); });
}

class Child
{
public:
    explicit Child(CommandLine line) : m_line(std::move(line)) { fillTable(); }

    void runScript(const std::string& script)
    {
        std::istringstream lines(script);
        for (std::string line; std::getline(lines, line);) {
            const Words words = splitWords(line);
            if (!words.empty() && words[0][0] != '#') {
                run(words);
            }
        }
    }

private:
    using Command = std::function<void(const Words&)>;

    void run(const Words& words)
    {
        const auto found = m_commands.find(words[0]);
        if (found == m_commands.end()) {
            failScript("unknown command " + words[0]);
        }
        found->second(words);
    }

    void runIf(bool condition, const Words& words, std::size_t first)
    {
        if (condition) {
            run(Words(words.begin() + static_cast<std::ptrdiff_t>(first), words.end()));
        }
    }

    void writeProgress(const std::string& bytes)
    {
        if (m_progress < 0) {
            m_progress = ::open((m_line.output + ".tmp").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
        }
        if (::pwrite(m_progress, bytes.data(), bytes.size(), 0) < 0) {
            failScript("cannot write the progress file");
        }
    }

    void replaceProgress(const std::string& bytes)
    {
        ::close(std::exchange(m_progress, -1));
        writeFile(m_line.output + ".next", bytes);
        fs::rename(m_line.output + ".next", m_line.output + ".tmp");
    }

    void writeOutput(const std::string& bytes) const
    {
        writeFile(m_line.output + ".part", bytes);
        fs::rename(m_line.output + ".part", m_line.output);
    }

    void fillTable()
    {
        fillFileCommands();
        fillProcessCommands();
        fillConditions();
    }

    void fillFileCommands()
    {
        m_commands["progress"] = [this](const Words& words) {
            std::string text = joinFrom(words, 1);
            text.resize(std::max<std::size_t>(text.size(), 30), ' ');
            writeProgress(text + '\n');
        };
        m_commands["progress-bytes"] = [this](const Words& words) { writeProgress(bytesOf(words.at(1))); };
        m_commands["progress-replaced"] = [this](const Words& words) { replaceProgress(joinFrom(words, 1) + '\n'); };
        m_commands["output"] = [this](const Words& words) { writeOutput(joinFrom(words, 1)); };
        m_commands["output-from"] = [this](const Words& words) { writeOutput(readFile(words.at(1))); };
        m_commands["log"] = [this](const Words& words) {
            writeFile(m_line.output + ".log", joinFrom(words, 1) + '\n', std::ios::app);
        };
        m_commands["write"] = [](const Words& words) { writeFile(words.at(1), joinFrom(words, 2)); };
        m_commands["append"] = [](const Words& words) {
            writeFile(words.at(1), joinFrom(words, 2) + '\n', std::ios::app);
        };
        m_commands["remove"] = [](const Words& words) { fs::remove(words.at(1)); };
        m_commands["arguments"] = [this](const Words& words) {
            for (const std::string& argument : m_line.all) {
                writeFile(words.at(1), argument + '\n', std::ios::app);
            }
        };
        m_commands["pid"] = [](const Words& words) { writeFile(words.at(1), std::to_string(::getpid())); };
    }

    void fillProcessCommands()
    {
        m_commands["stdout"] = [](const Words& words) { std::cout << joinFrom(words, 1) << std::endl; };
        m_commands["stderr"] = [](const Words& words) { std::cerr << joinFrom(words, 1) << std::endl; };
        m_commands["flood-stderr"] = [](const Words& words) { floodErrors(words.at(1)); };
        m_commands["wait"] = [](const Words& words) { waitMilliseconds(words.at(1)); };
        m_commands["wait-for"] = [](const Words& words) { waitFor(words.at(1)); };
        m_commands["ignore-stop"] = [](const Words&) { ::signal(SIGTERM, SIG_IGN); };
        m_commands["exit-on-stop"] = [](const Words& words) { exitOnStop(std::stoi(words.at(1))); };
        m_commands["grandchild"] = [](const Words& words) { leaveGrandchild(words.at(1), words.at(2)); };
        m_commands["crash"] = [](const Words& words) { crash(std::stoi(words.at(1))); };
        m_commands["exit"] = [](const Words& words) { std::exit(std::stoi(words.at(1))); };
    }

    void fillConditions()
    {
        m_commands["if-external-parts"] = [this](const Words& words) { runIf(m_line.externalParts, words, 1); };
        m_commands["unless-external-parts"] = [this](const Words& words) { runIf(!m_line.externalParts, words, 1); };
        m_commands["if-exists"] = [this](const Words& words) { runIf(fs::exists(words.at(1)), words, 2); };
        m_commands["unless-exists"] = [this](const Words& words) { runIf(!fs::exists(words.at(1)), words, 2); };
    }

    const CommandLine m_line;
    std::map<std::string, Command> m_commands;
    int m_progress = -1;
};

} // namespace

int main(int argc, char** argv)
{
    try {
        const CommandLine line = parseArguments(argc, argv);
        Child(line).runScript(scriptOf(line));
    } catch (const std::exception& exception) {
        failScript(exception.what());
    }
    return 0;
}
