#include "files/glb/GlbNames.h"

#include <QByteArray>
#include <QTextCodec>

#include <algorithm>
#include <cctype>
#include <cmath>

namespace files::glb
{

namespace
{

bool isHexDigit(char c)
{
    return std::isxdigit(static_cast<unsigned char>(c)) != 0;
}

bool isControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

bool isUtf8(const QByteArray& text)
{
    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(text.constData(), text.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

bool isEncodedThroughout(std::string_view name)
{
    for (std::size_t i = name.find('%'); i != std::string_view::npos; i = name.find('%', i + 1))
        if (i + 2 >= name.size() || !isHexDigit(name[i + 1]) || !isHexDigit(name[i + 2]))
            return false;
    return true;
}

int byteOf(float share)
{
    return std::isfinite(share) ? static_cast<int>(std::lround(std::clamp(share, 0.0f, 1.0f) * 255)) : 0;
}

/// Degrees around the circle of colours, red at 0, green at 120. `least` and `most` differ.
float hueOf(const osg::Color3f& color, float least, float most)
{
    const float range = most - least;
    if (most == color.red)
        return std::fmod((color.green - color.blue) / range * 60 + 360, 360.0f);
    if (most == color.green)
        return (color.blue - color.red) / range * 60 + 120;
    return (color.red - color.green) / range * 60 + 240;
}

std::string_view hueWord(float hue, float lightest)
{
    struct End {
        float degrees;
        std::string_view word;
    };
    constexpr End ends[] = {{15, "red"},   {45, "orange"},  {70, "yellow"}, {165, "green"}, {200, "turquoise"},
                            {260, "blue"}, {300, "purple"}, {345, "pink"},  {361, "red"}};
    const std::string_view word =
        std::find_if(std::begin(ends), std::end(ends), [&](const End& end) { return hue < end.degrees; })->word;
    return word == "orange" && lightest < 0.7f ? "brown" : word;
}

} // namespace

std::string decodedName(std::string_view name)
{
    if (name.find('%') == std::string_view::npos || !isEncodedThroughout(name))
        return std::string(name);
    const QByteArray decoded = QByteArray::fromPercentEncoding(QByteArray(name.data(), static_cast<int>(name.size())));
    if (!isUtf8(decoded) || std::any_of(decoded.begin(), decoded.end(), isControl))
        return std::string(name);
    return decoded.toStdString();
}

std::string_view colorWord(const osg::Color3f& color)
{
    const auto [least, most] = std::minmax({color.red, color.green, color.blue});
    if (!(most > 0.12f))
        return "black";
    if (most - least < 0.12f * most)
        return least > 0.93f ? "white" : "grey";
    return hueWord(hueOf(color, least, most), most);
}

std::string colorName(const osg::Color3f& color)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::string name(colorWord(color));
    name += " #";
    for (const int byte : {byteOf(color.red), byteOf(color.green), byteOf(color.blue)}) {
        name += digits[byte / 16];
        name += digits[byte % 16];
    }
    return name;
}

bool isColorCode(std::string_view name)
{
    return name.size() >= 7 && name[0] == '#' && std::all_of(name.begin() + 1, name.begin() + 7, isHexDigit);
}

std::string UniqueNames::unique(const std::string& name)
{
    std::string result = name;
    while (m_uses.find(result) != m_uses.end())
        result = name + " " + std::to_string(++m_uses[name]);
    m_uses[result] = 1;
    return result;
}

} // namespace files::glb
