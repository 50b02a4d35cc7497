#include "tests/roads/PlmxmlDialects.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

namespace dialects
{

namespace
{

using Matrix = std::array<double, 16>;
constexpr Matrix Unmoved = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// A part placed in another.
struct Child {
    int part;
    Matrix placed;
};

/// Has children or a file.
struct Part {
    std::vector<Child> children;
    int file = 0;
};

Matrix product(const Matrix& inner, const Matrix& outer)
{
    Matrix result{};
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            for (int i = 0; i < 4; ++i)
                result[static_cast<std::size_t>(row * 4 + column)] +=
                    inner[static_cast<std::size_t>(row * 4 + i)] * outer[static_cast<std::size_t>(i * 4 + column)];
    return result;
}

class Maker
{
public:
    Maker(Dialect dialect, unsigned seed, int places) : m_dialect(dialect), m_random(seed)
    {
        makeParts(4);
        while (places > 1 && (placesBelow(0) < places || placesBelow(0) > 3 * places))
            makeParts(14);
    }

    std::string make()
    {
        std::string content = m_dialect == Dialect::Pdm ? pdm() : graph();
        return "<?xml version='1.0' encoding='utf-8'?>\n<PLMXML xmlns='http://www.plmxml.org/Schemas/PLMXMLSchema' "
               "xmlns:f='urn:foreign' schemaVersion='6'>\n" +
               content + "</PLMXML>\n";
    }

private:
    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }
    double number(double least, double most) { return std::uniform_real_distribution<double>(least, most)(m_random); }

    void makeParts(int most)
    {
        const int assemblies = 1 + pick(most);
        const int leaves = 1 + pick(most);
        m_parts.assign(static_cast<std::size_t>(assemblies + leaves), {});
        for (int i = 0; i < assemblies + leaves; ++i)
            fill(i, assemblies, most);
    }

    int placesBelow(int part) const
    {
        int count = 1;
        for (const Child& child : m_parts[static_cast<std::size_t>(part)].children)
            count += placesBelow(child.part);
        return count;
    }

    /// Later parts only, so that nothing contains itself.
    void fill(int index, int assemblies, int most)
    {
        Part& part = m_parts[static_cast<std::size_t>(index)];
        part.file = pick(PartFiles);
        const int later = static_cast<int>(m_parts.size()) - index - 1;
        for (int i = 0; index < assemblies && i < 1 + pick(most - 1); ++i)
            part.children.push_back({index + 1 + pick(std::min(later, 4)), matrix()});
    }

    /// Turned, moved, now and then scaled or mirrored.
    Matrix matrix()
    {
        const double a = number(0, 6.28);
        const double b = number(0, 6.28);
        const Matrix roundZ = {std::cos(a), std::sin(a), 0, 0, -std::sin(a), std::cos(a), 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
        const Matrix roundX = {1, 0, 0, 0, 0, std::cos(b), std::sin(b), 0, 0, -std::sin(b), std::cos(b), 0, 0, 0, 0, 1};
        Matrix result = product(roundZ, roundX);
        const double scale = pick(5) == 0 ? number(0.5, 2) : 1;
        const double mirror = pick(7) == 0 ? -1 : 1;
        for (std::size_t i = 0; i < 11; ++i)
            result[i] *= i < 4 ? scale * mirror : scale;
        for (std::size_t i = 12; i < 15; ++i)
            result[i] = number(-2, 2);
        return result;
    }

    static std::string transform(const Matrix& matrix, double unit = 1)
    {
        std::string text = "<Transform>";
        for (std::size_t i = 0; i < 16; ++i) {
            char digits[40];
            std::snprintf(digits, sizeof digits, "%s%.12g", i ? " " : "",
                          i >= 12 && i < 15 ? matrix[i] * unit : matrix[i]);
            text += digits;
        }
        return text + "</Transform>";
    }

    std::string location(int file)
    {
        static const char* const forms[] = {"part%d.obj", ".\\PART%d.obj", "./part%d.obj", "C:\\lib\\part%d.obj",
                                            "p%%61rt%d.obj"};
        char text[40];
        std::snprintf(text, sizeof text, forms[m_dialect == Dialect::Graph ? 0 : pick(5)], file);
        return text;
    }

    std::string pdm()
    {
        m_view.clear();
        addOccurrence(0, "root", Unmoved, -1, Unmoved);
        std::string text = "<ProductView " + std::string(pick(2) ? "rootRefs='o0'" : "primaryOccurrenceRef='o0'") +
                           ">\n" + m_view + "</ProductView>\n";
        for (std::size_t i = 0; i < m_parts.size(); ++i) {
            const std::string n = std::to_string(i);
            text += "<ProductRevision id='r" + n + "' name='P" + n + "' masterRef='#m" + n +
                    "'><AssociatedDataSet dataSetRef='#d" + n + "'/></ProductRevision><Product id='m" + n +
                    "'/><DataSet id='d" + n + "' memberRefs='#q" + n + " #f" + n + "'/><ExternalFile id='q" + n +
                    "' format='qaf' locationRef='x.qaf'/><ExternalFile id='f" + n + "' format='obj' locationRef='" +
                    location(m_parts[i].file) + "'/>\n";
        }
        return text + "<ProductDef><InstanceGraph>\n" + m_instances + "</InstanceGraph></ProductDef>\n";
    }

    /// Gives the number of the occurrence. Its transform may be left to its instance.
    int addOccurrence(int part, const std::string& name, const Matrix& own, int parent, const Matrix& outer)
    {
        const int number = m_occurrences++;
        const std::string n = std::to_string(number);
        const Matrix world = product(own, outer);
        std::string children;
        const std::vector<Child> below = m_parts[static_cast<std::size_t>(part)].children;
        for (std::size_t i = 0; i < below.size(); ++i) {
            const std::string childName = childId(static_cast<std::size_t>(part), i);
            children += " o" + std::to_string(addOccurrence(below[i].part, childName, below[i].placed, number, world));
        }
        const bool hasInstance = pick(3) > 0;
        const bool hasTransform = !hasInstance || pick(4) > 0;
        const bool isListed = pick(4) > 0;
        std::string text =
            "<Occurrence id='o" + n + "' name='" + name + "' instancedRef='#r" + std::to_string(part) + "'";
        if (isListed && !children.empty())
            text += " occurrenceRefs='" + children + "'";
        if (parent >= 0)
            text += " parentRef='#o" + std::to_string(parent) + "'";
        if (hasInstance) {
            text += " instanceRefs='#i" + n + "'";
            m_instances += "<ProductInstance id='i" + n + "'>" + transform(own) + "</ProductInstance>\n";
        }
        m_view += text + ">" + (hasTransform ? transform(world) : std::string()) + "</Occurrence>\n";
        return number;
    }

    std::string graph()
    {
        const bool hasUnits = m_dialect != Dialect::Automotive || pick(3) > 0;
        const double unit = hasUnits ? 1 : 1000;
        const std::string unmoved = m_dialect == Dialect::Graph ? transform(Unmoved) : std::string();
        std::string instances = instance("root", 0, unmoved);
        std::string parts;
        for (std::size_t i = 0; i < m_parts.size(); ++i) {
            for (std::size_t child = 0; child < m_parts[i].children.size(); ++child)
                instances += instance(childId(i, child), m_parts[i].children[child].part,
                                      transform(m_parts[i].children[child].placed, unit));
            parts += part(i, unit);
        }
        if (m_dialect == Dialect::Flat)
            return parts + instances;
        const std::string units =
            hasUnits ? "" : "<UserData><UserValue title='__TC-VIS_NO_UNITS' value='true'/></UserData>";
        return "<ProductDef>" + units + "<InstanceGraph rootRefs='root'>\n" + instances +
               "<f:GeneralObject><UserData/></f:GeneralObject></InstanceGraph>\n" + parts + view() + "</ProductDef>\n";
    }

    static std::string childId(std::size_t part, std::size_t child)
    {
        return "i" + std::to_string(part) + "_" + std::to_string(child);
    }

    static std::string instance(const std::string& id, int part, const std::string& transform)
    {
        return "<Instance id='" + id + "' name='" + id + "' partRef='#p" + std::to_string(part) + "'>" + transform +
               "</Instance>\n";
    }

    std::string part(std::size_t index, double unit)
    {
        std::string children;
        for (std::size_t i = 0; i < m_parts[index].children.size(); ++i)
            children += " " + childId(index, i);
        const std::string n = std::to_string(index);
        if (!children.empty())
            return "<Part id='p" + n + "' name='P" + n + "' instanceRefs='" + children + "'/>\n";
        return "<Part id='p" + n + "' name='P" + n + "' type='solid'>" + shape(m_parts[index].file, unit) + "</Part>\n";
    }

    std::string shape(int file, double unit)
    {
        if (m_dialect == Dialect::CadSystem)
            return "<Representation format='SEPrt' location='a.par'/><Representation format='OBJ' location='" +
                   location(file) + "'/>";
        if (m_dialect != Dialect::Automotive)
            return "<Representation format='OBJ' location='" + location(file) + "'/>";
        std::string pieces;
        for (int i = 0; i < 1 + pick(3); ++i)
            pieces += "<CompoundRep name='C' format='OBJ' location='" + location(pick(PartFiles)) + "'>" +
                      (pick(2) ? transform(matrix(), unit) : std::string()) + "<f:Table/></CompoundRep>";
        return "<Representation>" + pieces + "</Representation>";
    }

    /// Occurrences with whole paths; those of a session move what they name.
    std::string view()
    {
        if (m_dialect != Dialect::Session && m_dialect != Dialect::CadSystem)
            return {};
        std::string text;
        addPaths(0, "#root", text);
        return "<ProductView>\n" + text + "</ProductView>\n";
    }

    void addPaths(int part, const std::string& path, std::string& text)
    {
        const std::vector<Child>& children = m_parts[static_cast<std::size_t>(part)].children;
        for (std::size_t i = 0; i < children.size(); ++i) {
            const std::string below = path + " #" + childId(static_cast<std::size_t>(part), i);
            const bool isCad = m_dialect == Dialect::CadSystem;
            if (isCad || pick(3) == 0)
                text += "<Occurrence instanceRefs='" + below + "'" + (isCad ? " name='O'>" : ">") +
                        (isCad ? std::string() : transform(matrix())) + "</Occurrence>\n";
            addPaths(children[i].part, below, text);
        }
    }

    Dialect m_dialect;
    std::mt19937 m_random;
    std::vector<Part> m_parts;
    std::string m_view;
    std::string m_instances;
    int m_occurrences = 0;
};

} // namespace

std::string makeDocument(Dialect dialect, unsigned seed, int places)
{
    return Maker(dialect, seed, places).make();
}

} // namespace dialects
