#include "tests/roads/PlmxmlEvaluation.h"

#include <algorithm>
#include <cctype>
#include <limits>
#include <sstream>

#include <tinyxml.h>

namespace dialects
{

namespace
{

using Matrix = std::array<double, 16>;
using Element = const TiXmlElement*;

std::string get(Element element, const char* attribute)
{
    const char* const value = element ? element->Attribute(attribute) : nullptr;
    return value ? value : "";
}

std::string idIn(const std::string& reference)
{
    return reference.substr(reference.find('#') + 1);
}

std::vector<std::string> words(const std::string& list)
{
    std::istringstream in(list);
    std::vector<std::string> found;
    for (std::string word; in >> word;)
        found.push_back(idIn(word));
    return found;
}

/// Row vectors.
std::array<double, 3> moved(const std::array<double, 3>& p, const Matrix& m)
{
    return {p[0] * m[0] + p[1] * m[4] + p[2] * m[8] + m[12], p[0] * m[1] + p[1] * m[5] + p[2] * m[9] + m[13],
            p[0] * m[2] + p[1] * m[6] + p[2] * m[10] + m[14]};
}

/// The child Transform, in millimetres.
bool readMatrix(Element element, double unit, Matrix& matrix)
{
    const Element transform = element ? element->FirstChildElement("Transform") : nullptr;
    if (!transform)
        return false;
    std::istringstream in(transform->GetText());
    for (double& number : matrix)
        in >> number;
    for (std::size_t i = 12; i < 15; ++i)
        matrix[i] *= unit;
    return true;
}

/// By a list of matrices from the inside to the outside instead of their product.
class Evaluation
{
public:
    Evaluation(Dialect dialect, const std::string& text) : m_dialect(dialect)
    {
        m_xml.Parse(text.c_str(), nullptr, TIXML_ENCODING_UTF8);
        m_root = m_xml.RootElement();
        m_unit = text.find("__TC-VIS_NO_UNITS") == std::string::npos ? 1000 : 1;
    }

    std::vector<WorldBox> boxes()
    {
        if (m_dialect == Dialect::Pdm)
            occurrences();
        else
            place(find(m_root, "root"), {}, {});
        if (m_dialect == Dialect::Flat)
            unplaced();
        std::sort(m_boxes.begin(), m_boxes.end());
        return m_boxes;
    }

private:
    /// The element with this id, wherever it stands.
    Element find(Element below, const std::string& id) const
    {
        for (Element child = below->FirstChildElement(); child; child = child->NextSiblingElement()) {
            if (get(child, "id") == id)
                return child;
            if (const Element found = find(child, id))
                return found;
        }
        return nullptr;
    }

    void occurrences()
    {
        const Element view = m_root->FirstChildElement("ProductView");
        for (Element each = view->FirstChildElement(); each; each = each->NextSiblingElement())
            if (isLeaf(view, each)) {
                const Element file = find(m_root, "f" + get(each, "instancedRef").substr(2));
                show(get(file, "locationRef"), chainOf(each));
            }
    }

    static bool isLeaf(Element view, Element occurrence)
    {
        for (Element each = view->FirstChildElement(); each; each = each->NextSiblingElement())
            if (idIn(get(each, "parentRef")) == get(occurrence, "id"))
                return false;
        return true;
    }

    /// The own transform leads to the top; the instance's into the occurrence above.
    std::vector<Matrix> chainOf(Element occurrence) const
    {
        std::vector<Matrix> chain;
        for (Matrix matrix; occurrence; occurrence = find(m_root, idIn(get(occurrence, "parentRef")))) {
            if (readMatrix(occurrence, m_unit, matrix)) {
                chain.push_back(matrix);
                break;
            }
            if (readMatrix(find(m_root, idIn(get(occurrence, "instanceRefs"))), m_unit, matrix))
                chain.push_back(matrix);
            if (get(occurrence, "parentRef").empty())
                break;
        }
        return chain;
    }

    void place(Element instance, std::vector<Matrix> chain, std::vector<std::string> path)
    {
        path.push_back(get(instance, "id"));
        Matrix matrix;
        if (overridden(path, matrix) || readMatrix(instance, m_unit, matrix))
            chain.insert(chain.begin(), matrix);
        fill(find(m_root, idIn(get(instance, "partRef"))), chain, path);
    }

    /// Parts that no instance refers to.
    void unplaced()
    {
        for (Element part = m_root->FirstChildElement("Part"); part; part = part->NextSiblingElement("Part")) {
            Element instance = m_root->FirstChildElement("Instance");
            while (instance && idIn(get(instance, "partRef")) != get(part, "id"))
                instance = instance->NextSiblingElement("Instance");
            if (!instance)
                fill(part, {}, {});
        }
    }

    void fill(Element part, const std::vector<Matrix>& chain, const std::vector<std::string>& path)
    {
        for (const std::string& child : words(get(part, "instanceRefs")))
            place(find(m_root, child), chain, path);
        for (Element shape = part->FirstChildElement(); shape; shape = shape->NextSiblingElement())
            showAll(shape, chain);
    }

    bool overridden(const std::vector<std::string>& path, Matrix& matrix) const
    {
        const Element definition = m_root->FirstChildElement("ProductDef");
        const Element view = definition ? definition->FirstChildElement("ProductView") : nullptr;
        for (Element each = view ? view->FirstChildElement() : nullptr; each; each = each->NextSiblingElement())
            if (words(get(each, "instanceRefs")) == path)
                return readMatrix(each, m_unit, matrix);
        return false;
    }

    void showAll(Element shape, const std::vector<Matrix>& chain)
    {
        if (get(shape, "format") == "OBJ")
            show(get(shape, "location"), chain);
        for (Element piece = shape->FirstChildElement("CompoundRep"); piece;
             piece = piece->NextSiblingElement("CompoundRep")) {
            std::vector<Matrix> longer = chain;
            if (Matrix matrix; readMatrix(piece, m_unit, matrix))
                longer.insert(longer.begin(), matrix);
            show(get(piece, "location"), longer);
        }
    }

    void show(const std::string& location, const std::vector<Matrix>& chain)
    {
        const int file = location[location.size() - 5] - '0';
        constexpr double far = std::numeric_limits<double>::max();
        WorldBox box = {far, far, far, -far, -far, -far};
        for (std::array<double, 3> corner :
             {std::array<double, 3>{0, 0, 0}, std::array<double, 3>{100, 0, 0}, std::array<double, 3>{0, 200, 0},
              std::array<double, 3>{0, 0, 300.0 + 10 * file}}) {
            for (const Matrix& matrix : chain)
                corner = moved(corner, matrix);
            for (std::size_t i = 0; i < 3; ++i) {
                box[i] = std::min(box[i], corner[i]);
                box[i + 3] = std::max(box[i + 3], corner[i]);
            }
        }
        m_boxes.push_back(box);
    }

    Dialect m_dialect;
    TiXmlDocument m_xml;
    Element m_root = nullptr;
    double m_unit = 1000;
    std::vector<WorldBox> m_boxes;
};

} // namespace

std::vector<WorldBox> boxesOf(Dialect dialect, const std::string& document)
{
    return Evaluation(dialect, document).boxes();
}

} // namespace dialects
