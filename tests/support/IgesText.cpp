#include "tests/support/IgesText.h"

#include "tests/roads/ptxconvert/DecimalText.h"

#include <cstdio>

namespace ptxtest
{

namespace
{

/// Collects the lines of one section.
class Section
{
public:
    explicit Section(char letter) : m_letter(letter) {}

    void add(std::string line)
    {
        line.resize(72, ' ');
        char tail[16];
        std::snprintf(tail, sizeof tail, "%c%7d\n", m_letter, ++m_lines);
        m_text += line + tail;
    }

    int lines() const { return m_lines; }
    const std::string& text() const { return m_text; }

private:
    char m_letter;
    int m_lines = 0;
    std::string m_text;
};

std::string corner(Triple p)
{
    return "," + decimalText(p.x, 6) + "," + decimalText(p.y, 6) + "," + decimalText(p.z, 6);
}

std::string column(int value)
{
    char text[16];
    std::snprintf(text, sizeof text, "%8d", value);
    return text;
}

// Items may be split over lines only between each other.
std::vector<std::string> wrapped(const std::string& parameters, std::size_t width)
{
    std::vector<std::string> lines(1);
    std::size_t start = 0;
    while (start < parameters.size()) {
        std::size_t end = parameters.find_first_of(",;", start);
        const std::string item = parameters.substr(start, end + 1 - start);
        if (lines.back().size() + item.size() > width)
            lines.emplace_back();
        lines.back() += item;
        start = end + 1;
    }
    return lines;
}

} // namespace

void IgesText::patch(Triple a, Triple b, Triple c, Triple d, int color, const std::string& label)
{
    m_entities.push_back({128, 0,
                          "128,1,1,1,1,0,0,1,0,0,0.,0.,1.,1.,0.,0.,1.,1.,1.,1.,1.,1." + corner(a) + corner(b) +
                              corner(c) + corner(d) + ",0.,1.,0.,1.;",
                          color, label});
}

void IgesText::externalFile(const std::string& name)
{
    m_entities.push_back({416, 1, "416," + std::to_string(name.size()) + "H" + name + ";", 0, {}});
}

std::string IgesText::text(bool inInches) const
{
    Section start('S');
    Section global('G');
    Section directory('D');
    Section parameters('P');
    start.add("hand-made patches");
    const std::string unit = inInches ? "1,4HINCH" : "2,2HMM";
    for (const std::string& line :
         wrapped("1H,,1H;,7Hpatches,5Hf.igs,4Htest,1H1,32,38,6,308,15,7Hpatches,1.," + unit +
                     ",1,0.01,15H20240101.000000,1.E-5,1000.,1Ha,1Hb,11,0,15H20240101.000000;",
                 72))
        global.add(line);
    for (const Entity& entity : m_entities) {
        const int place = directory.lines() + 1;
        const std::vector<std::string> lines = wrapped(entity.parameters, 64);
        directory.add(column(entity.type) + column(parameters.lines() + 1) + column(0) + column(0) + column(0) +
                      column(0) + column(0) + column(0) + "00000000");
        directory.add(column(entity.type) + column(0) + column(entity.color) + column(static_cast<int>(lines.size())) +
                      column(entity.form) + std::string(24 - entity.label.size(), ' ') + entity.label + column(0));
        for (std::string line : lines) {
            line.resize(64, ' ');
            parameters.add(line + column(place));
        }
    }
    char counts[64];
    std::snprintf(counts, sizeof counts, "S%7dG%7dD%7dP%7d", start.lines(), global.lines(), directory.lines(),
                  parameters.lines());
    Section terminate('T');
    terminate.add(counts);
    return start.text() + global.text() + directory.text() + parameters.text() + terminate.text();
}

} // namespace ptxtest
