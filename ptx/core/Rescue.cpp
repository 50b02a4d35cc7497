#include "ptx/core/Rescue.h"

#include "protocol/FileNames.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace ptx::core
{

namespace
{

// Beside those of protocol::partmark; nobody but the next attempt reads them.
constexpr char Crashed = 'x';
constexpr char LeftOut = 'l';

constexpr std::size_t Nothing = static_cast<std::size_t>(-1);

/// What this thread lets the kernel work on. The kernel has threads of its own, which have none.
thread_local std::size_t placeOfThread = Nothing;

std::string contentOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

Rescue::Rescue(const std::string& path, int attempt) : m_path(path), m_attempt(attempt)
{
    m_marks.emplace(path, attempt == 0 ? std::string("0.") : lettersAfterCrash());
}

Rescue::~Rescue()
{
    if (m_marks->isOpen())
        ::unlink(m_path.c_str());
}

/// Where the thread of the crash is known, what it worked on is to blame; otherwise all that was at work. Work ahead
/// takes the blame alone: without it the next attempt shows what else there is.
std::string Rescue::lettersAfterCrash()
{
    std::string letters = contentOf(m_path);
    letters.resize(std::max(letters.size(), FirstPart), protocol::partmark::Waits);
    const char blamed = letters.find(Crashed) != letters.npos ? Crashed : protocol::partmark::Started;
    m_translationCrashes = std::clamp(letters[Crashes] - '0', 0, MostAttempts);
    m_hasCrashedAhead = letters[Ahead] == blamed || letters[Ahead] == LeftOut;
    blame(letters, letters[Ahead] == blamed ? LeftOut : blamed);
    letters[Crashes] = static_cast<char>('0' + m_translationCrashes);
    letters[Ahead] = m_hasCrashedAhead ? LeftOut : protocol::partmark::Waits;
    return letters;
}

void Rescue::blame(std::string& letters, char blamed)
{
    m_translationCrashes += letters[Translation] == blamed ? 1 : 0;
    letters[Translation] = protocol::partmark::Waits;
    for (std::size_t i = FirstPart; i < letters.size(); ++i) {
        const bool isLost = letters[i] == blamed || letters[i] == LeftOut;
        letters[i] = isLost ? LeftOut : protocol::partmark::Waits;
        if (isLost)
            m_lostParts.insert(i - FirstPart);
    }
}

Rescue::Mark::Mark(Rescue& rescue, std::size_t place) : m_rescue(rescue), m_place(place)
{
    rescue.m_marks->set(place, protocol::partmark::Started);
    placeOfThread = place;
    ++rescue.m_atWork;
    rescue.m_ahead += place == Ahead ? 1 : 0;
}

Rescue::Mark::~Mark()
{
    --m_rescue.m_atWork;
    placeOfThread = Nothing;
    if (m_place != Ahead || --m_rescue.m_ahead == 0)
        m_rescue.m_marks->set(m_place, protocol::partmark::Ended);
}

bool Rescue::noteCrash() const
{
    if (m_atWork == 0 || !m_marks->isOpen())
        return false;
    if (placeOfThread != Nothing)
        m_marks->set(placeOfThread, Crashed);
    return true;
}

} // namespace ptx::core
