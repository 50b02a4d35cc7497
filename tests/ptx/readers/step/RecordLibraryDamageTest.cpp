// Damaged texts, read by our records and by OCCT's own parser: where the parser is content both have the same entities.
// Where it complains ours have at least as many, unless they find nothing wrong with the text.

#include "tests/ptx/readers/step/ReadModel.h"
#include "tests/roads/ptxconvert/TempFolder.h"
#include "tests/support/StepText.h"
#include "tests/support/TextMutations.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <set>

using namespace ptxtest;

namespace
{

enum Outcome : int {
    Same,
    OursGoOn,
    OursHaveMore,
    OursAreWhole,
    MissingIsTold,
    BothFail,
    Crash,
    OtherEntities,
    FewerEntities,
    Count
};
constexpr std::array<const char*, Count> Words = {"the same entities",
                                                  "ours go on where the parser fails",
                                                  "ours have at least those of a parser that complains",
                                                  "ours find nothing to complain of where the parser does",
                                                  "ours tell of a missing entity where OCCT takes another",
                                                  "neither can read it",
                                                  "OCCT crashes",
                                                  "OTHER ENTITIES",
                                                  "FEWER ENTITIES"};

std::size_t distinct(const ReadModel& model)
{
    return std::set<int>(model.numbers.begin(), model.numbers.end()).size();
}

auto unresolved(const ReadModel& model)
{
    return std::count_if(model.reports.begin(), model.reports.end(),
                         [](const std::string& report) { return report.ends_with("entity is unresolved"); });
}

Outcome compared(const std::string& path)
{
    const ReadModel parsers = readByParser(path);
    const ReadModel ours = readByRecords(path);
    if (!parsers.isRead)
        return ours.isRead ? OursGoOn : BothFail;
    if (parsers.complaints > 0 && ours.losses.empty())
        return OursAreWhole;
    // Of several entities with one number OCCT keeps all, where references lead to one of them.
    if (parsers.complaints > 0)
        return distinct(ours) >= distinct(parsers) ? OursHaveMore : FewerEntities;
    if (ours.numbers != parsers.numbers)
        return OtherEntities;
    // OCCT takes the number of a missing entity for that of a record.
    if (unresolved(ours) > unresolved(parsers))
        return MissingIsTold;
    return ours.reports == parsers.reports && ours.text == parsers.text ? Same : OtherEntities;
}

/// In a process of its own, because OCCT crashes on some of them.
Outcome comparedApart(const std::string& path)
{
    std::cout.flush();
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(compared(path));
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? static_cast<Outcome>(WEXITSTATUS(status)) : Crash;
}

using Table = std::array<int, Count>;

void readMutated(const std::string& text, unsigned seeds, const std::string& name, Table& table)
{
    const TempFolder folder;
    for (unsigned seed = 0; seed < seeds; ++seed) {
        Random random(seed);
        std::string mutated = text;
        mutate(random, mutated);
        const Outcome outcome = comparedApart(folder.write("mutated.stp", mutated));
        ++table.at(outcome);
        EXPECT_LT(outcome, OtherEntities) << name << ", seed " << seed;
    }
}

void tell(const Table& table)
{
    for (std::size_t i = 0; i < table.size(); ++i)
        if (table[i] > 0)
            std::cout << table[i] << " times " << Words[i] << '\n';
}

} // namespace

TEST(RecordLibraryDamage, OfAMadeFileLoseNothingThatTheParserReads)
{
    StepText text;
    StepProduct part = text.product("part");
    text.box(part, {1, 2, 3}, {5, 7, 9});
    text.color(part.solid, {0.25, 0.5, 0.75});
    Table table{};
    readMutated(text.text(), 100, "box", table);
    tell(table);
    EXPECT_GT(table[Same], 0);
    EXPECT_GT(table[OursGoOn] + table[OursHaveMore], 0);
}

TEST(RecordLibraryDamage, OfTheCorpusLoseNothingThatTheParserReads)
{
    constexpr std::uintmax_t Largest = 100'000;
    const char* corpus = std::getenv("ZN_CORPUS");
    std::error_code missing;
    Table table{};
    for (const auto& entry : std::filesystem::directory_iterator(std::string(corpus ? corpus : "") + "/step", missing))
        if (entry.is_regular_file() && entry.file_size() <= Largest)
            readMutated(contentOf(entry.path().string()), 20, entry.path().filename().string(), table);
    if (table == Table{})
        GTEST_SKIP() << "ZN_CORPUS names no folder with STEP files";
    tell(table);
}
