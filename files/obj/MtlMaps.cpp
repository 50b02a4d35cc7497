#include "files/obj/MtlMaps.h"

#include "files/TexturePlacement.h"
#include "files/obj/TextLines.h"

#include <array>
#include <map>
#include <vector>

namespace files::obj
{

namespace
{

/// Takes options off the front of a statement.
class MapOptions
{
public:
    explicit MapOptions(std::string_view statement) : m_rest(statement) {}

    std::optional<MtlMap> run();

private:
    using Option = bool (MapOptions::*)(std::string_view name);
    static const std::map<std::string_view, Option>& options();

    bool offset(std::string_view) { return takeNumbers(m_offset, 1); }
    bool scale(std::string_view) { return takeNumbers(m_scale, 1); }
    bool turbulence(std::string_view name);
    bool range(std::string_view name);
    bool clamp(std::string_view);
    bool correction(std::string_view name);
    bool multiplier(std::string_view);
    bool channel(std::string_view);
    bool skip(std::string_view) { return !takeWord().empty(); }

    std::string_view nextWord() const { return m_rest.substr(0, m_rest.find_first_of(" \t")); }
    std::string_view takeWord();
    bool takeNumbers(std::array<float, 3>& numbers, std::size_t atLeast);

    std::string_view m_rest;
    MtlMap m_map;
    std::array<float, 3> m_offset = {0, 0, 0};
    std::array<float, 3> m_scale = {1, 1, 1};
};

const std::map<std::string_view, MapOptions::Option>& MapOptions::options()
{
    static const std::map<std::string_view, Option> table = {
        {"-o", &MapOptions::offset},      {"-s", &MapOptions::scale},         {"-t", &MapOptions::turbulence},
        {"-mm", &MapOptions::range},      {"-clamp", &MapOptions::clamp},     {"-cc", &MapOptions::correction},
        {"-bm", &MapOptions::multiplier}, {"-imfchan", &MapOptions::channel}, {"-blendu", &MapOptions::skip},
        {"-blendv", &MapOptions::skip},   {"-boost", &MapOptions::skip},      {"-texres", &MapOptions::skip},
        {"-type", &MapOptions::skip},
    };
    return table;
}

std::string_view MapOptions::takeWord()
{
    const std::string_view word = nextWord();
    const std::size_t next = m_rest.find_first_not_of(" \t", word.size());
    m_rest = next == std::string_view::npos ? std::string_view() : m_rest.substr(next);
    return word;
}

/// Up to three numbers; those that are not there stay.
bool MapOptions::takeNumbers(std::array<float, 3>& numbers, std::size_t atLeast)
{
    std::size_t count = 0;
    for (; count < numbers.size(); ++count) {
        const std::optional<float> number = numberOf(nextWord());
        if (!number)
            break;
        numbers[count] = *number;
        takeWord();
    }
    return count >= atLeast;
}

bool MapOptions::turbulence(std::string_view name)
{
    std::array<float, 3> numbers = {0, 0, 0};
    const bool isGood = takeNumbers(numbers, 1);
    if (numbers != std::array<float, 3>{0, 0, 0})
        m_map.leftOut << textOf(name);
    return isGood;
}

bool MapOptions::range(std::string_view name)
{
    const std::optional<float> base = numberOf(takeWord());
    const std::optional<float> gain = numberOf(takeWord());
    if (base != 0.0f || gain != 1.0f)
        m_map.leftOut << textOf(name);
    return base && gain;
}

bool MapOptions::clamp(std::string_view)
{
    const std::string_view word = takeWord();
    const auto wrap = word == "on" ? osg::TextureSampler::Wrap::Clamp : osg::TextureSampler::Wrap::Repeat;
    m_map.placement.sampler.wrapU = m_map.placement.sampler.wrapV = wrap;
    return !word.empty();
}

bool MapOptions::correction(std::string_view name)
{
    const std::string_view word = takeWord();
    if (word == "on")
        m_map.leftOut << textOf(name);
    return !word.empty();
}

bool MapOptions::multiplier(std::string_view)
{
    const std::optional<float> number = numberOf(takeWord());
    m_map.multiplier = number.value_or(1.0f);
    return number.has_value();
}

bool MapOptions::channel(std::string_view)
{
    const std::string_view word = takeWord();
    m_map.channel = word.empty() ? char(0) : word.front();
    return word.size() == 1;
}

/// Coordinates are multiplied by the scale and moved by the offset, as by programs that write these options.
std::optional<MtlMap> MapOptions::run()
{
    while (true) {
        const auto option = options().find(nextWord());
        if (option == options().end())
            break;
        takeWord();
        if (!(this->*option->second)(option->first))
            return std::nullopt;
    }
    m_map.file = textOf(m_rest);
    place(m_map.placement, {m_scale[0], 0, m_offset[0], 0, m_scale[1], m_offset[1]});
    return m_map.file.isEmpty() ? std::nullopt : std::optional(std::move(m_map));
}

} // namespace

std::optional<MtlMap> mapOf(std::string_view statement)
{
    return MapOptions(statement).run();
}

} // namespace files::obj
