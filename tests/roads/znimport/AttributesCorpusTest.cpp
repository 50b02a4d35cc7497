// Attributes of real STEP files: the GLB file has as many as the text of the file.

#include "tests/files/glb/GlbFile.h"
#include "tests/roads/znimport/ToolRun.h"

#include <QRegularExpression>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace
{

using nlohmann::json;

/// The entities of a STEP file by their number, read without the reader under test: a text for each, without line ends.
class StepScan
{
public:
    explicit StepScan(const QString& path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QString statement;
        bool isText = false;
        for (const QChar c : QString::fromLatin1(file.readAll())) {
            isText = isText != (c == QLatin1Char('\''));
            if (c == QLatin1Char(';') && !isText)
                take(std::exchange(statement, QString()));
            else if (c != QLatin1Char('\n') && c != QLatin1Char('\r'))
                statement += c;
        }
    }

    /// How many values the file gives its products: the items of representations that belong to properties of product
    /// definitions, but for those that validate others, holes, and numbers of a kind that the reader does not know.
    int attributes() const
    {
        int count = 0;
        for (const auto& [number, text] : m_entities)
            if (text.startsWith(QLatin1String("PROPERTY_DEFINITION_REPRESENTATION")))
                count += valuesOf(text);
        return count;
    }

private:
    void take(const QString& statement)
    {
        static const QRegularExpression form(QStringLiteral("^\\s*#(\\d+)\\s*=\\s*(.*)$"));
        const QRegularExpressionMatch match = form.match(statement);
        if (match.hasMatch())
            m_entities[match.captured(1).toInt()] = match.captured(2);
    }

    static std::vector<int> references(const QString& text)
    {
        static const QRegularExpression strings(QStringLiteral("'[^']*'"));
        static const QRegularExpression reference(QStringLiteral("#(\\d+)"));
        std::vector<int> found;
        auto matches = reference.globalMatch(QString(text).remove(strings));
        while (matches.hasNext())
            found.push_back(matches.next().captured(1).toInt());
        return found;
    }

    QString entity(int number) const
    {
        const auto found = m_entities.find(number);
        return found == m_entities.end() ? QString() : found->second;
    }

    int valuesOf(const QString& link) const
    {
        const std::vector<int> ends = references(link);
        const QString property = entity(ends.at(0));
        const std::vector<int> owner = references(property);
        static const QRegularExpression product(
            QStringLiteral("^PRODUCT_DEFINITION(_WITH_ASSOCIATED_DOCUMENTS)?\\s*\\("));
        if (!property.startsWith(QLatin1String("PROPERTY_DEFINITION")) || owner.size() != 1 ||
            !product.match(entity(owner[0])).hasMatch() ||
            property.section(QLatin1Char('\''), 1, 1).contains(QLatin1String("validation")))
            return 0;
        const QString values = entity(ends.at(1));
        int count = 0;
        for (const int item : references(values))
            count += isValue(entity(item), values) ? 1 : 0;
        return count;
    }

    /// The name of a material stands before the text, which may be empty.
    static bool isValue(const QString& item, const QString& representation)
    {
        if (item.startsWith(QLatin1String("DESCRIPTIVE_REPRESENTATION_ITEM")))
            return !item.contains(QRegularExpression(QStringLiteral(",\\s*(''|\\$)\\s*\\)"))) ||
                   representation.contains(QLatin1String("'material name'"));
        static const QRegularExpression number(QStringLiteral("(MEASURE|VALUE|INTEGER)_REPRESENTATION_ITEM"));
        return item.contains(number) && !item.contains(QLatin1String("NUMERIC_MEASURE"));
    }

    std::map<int, QString> m_entities;
};

/// Names that the reader gives itself.
const std::set<std::string> ownNames = {"Product", "Product id",        "Version",         "Document",
                                        "Layer",   "Validation volume", "Validation area", "Validation centroid"};

std::size_t pairsIn(const json& glb)
{
    std::size_t count = 0;
    for (const json& product : glb.value("extras", json::object()).value("products", json::array()))
        for (const auto& [name, value] : product.items())
            count += ownNames.contains(name) ? 0 : value.is_array() ? value.size() : 1;
    return count;
}

class AttributesCorpus : public ToolRun, public testing::WithParamInterface<const char*>
{
};

} // namespace

TEST_P(AttributesCorpus, TheGlbHasAsManyAttributesAsTheText)
{
    const QString file = qEnvironmentVariable("ZN_CORPUS") + text("/step/") + text(GetParam());
    if (!QFile::exists(file))
        GTEST_SKIP() << "ZN_CORPUS names no folder with step/" << GetParam() << " in it";
    const int expected = StepScan(file).attributes();
    EXPECT_GT(expected, 0);
    const Ending run = znimport({file, text("-o"), path("out.glb")});
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_EQ(pairsIn(GlbFile(path("out.glb")).json), static_cast<std::size_t>(expected));
}

class AttributesSizeCorpus : public ToolRun, public testing::WithParamInterface<const char*>
{
protected:
    double sizeOfGlb(const QString& file, const char* attributes) const
    {
        EXPECT_EQ(znimport({file, text("-o"), path("out.glb"), text("--attributes"), text(attributes)}).exitCode, 0);
        return double(QFile(path("out.glb")).size());
    }
};

TEST_P(AttributesSizeCorpus, AttributesAddLittleToAGlb)
{
    const QString file = qEnvironmentVariable("ZN_CORPUS") + text("/") + text(GetParam());
    if (!QFile::exists(file))
        GTEST_SKIP() << "ZN_CORPUS names no folder with " << GetParam() << " in it";
    const double none = sizeOfGlb(file, "none");
    const double all = sizeOfGlb(file, "all");
    EXPECT_GT(all, none);
    EXPECT_LE(all, 1.15 * none);
}

INSTANTIATE_TEST_SUITE_P(, AttributesSizeCorpus, testing::Values("jt/CoffeeMaker.jt", "step/SCDR.stp"));

class MeasuredCorpus : public AttributesCorpus
{
};

/// The systems that wrote these files measured their own parts.
TEST_P(MeasuredCorpus, ExactMeasuresAreThoseOfTheSystemThatWroteTheFile)
{
    const QString file = qEnvironmentVariable("ZN_CORPUS") + text("/step/") + text(GetParam());
    if (!QFile::exists(file))
        GTEST_SKIP() << "ZN_CORPUS names no folder with step/" << GetParam() << " in it";
    ASSERT_EQ(znimport({file, text("--bom"), path("parts.json")}).exitCode, 0);
    QFile list(path("parts.json"));
    ASSERT_TRUE(list.open(QIODevice::ReadOnly));
    int compared = 0;
    const json parts = json::parse(list.readAll().toStdString())["parts"];
    for (const json& part : parts)
        for (const json& attribute : part["attributes"])
            for (const auto& [name, member] : {std::pair("Validation volume", "volume"), {"Validation area", "area"}})
                if (attribute["name"] == name) {
                    const double expected = attribute["value"].get<double>();
                    EXPECT_EQ(part["measured"], "exact");
                    EXPECT_NEAR(part[member].get<double>(), expected, 0.001 * expected) << part["product"];
                    ++compared;
                }
    EXPECT_EQ(compared, 2 * static_cast<int>(parts.size()));
}

INSTANTIATE_TEST_SUITE_P(, MeasuredCorpus, testing::Values("dm1-id-214.stp", "extref-s1-tu-203/s1-tu-203.stp"));

// Files whose products are described by other means as well (a Description of the product itself, raw materials) stand
// in tests of their own.
INSTANTIATE_TEST_SUITE_P(, AttributesCorpus,
                         testing::Values("Bowden_Module.step", "nist_stc_06_asme1_ap242-e3.stp",
                                         "nist_ctc_01_asme1_ap242-e1.stp", "nist_ctc_03_asme1_ap242-e2.stp",
                                         "CON_XUNPU_FPC-05F-24PH20.step", "FS_Hotend_Mount_Bambu_X1C.step",
                                         "Afterburner-ERCF-PCB.step", "eight_cyl.stp", "conical-surface.step",
                                         "MovedBlock.step", "TransformedComponent.step"));

class JtAttributesCorpus : public ToolRun, public testing::WithParamInterface<const char*>
{
};

/// The figures were decoded by other programs, which tell the names of parts with the extension of their files.
TEST_P(JtAttributesCorpus, PartsAreProductsAtAllTheirPlaces)
{
    const QString folder = qEnvironmentVariable("ZN_CORPUS") + text("/jt/");
    QFile figures(folder + text("EXPECTED.json"));
    if (!QFile::exists(folder + text(GetParam())) || !figures.open(QIODevice::ReadOnly))
        GTEST_SKIP() << "ZN_CORPUS names no folder with jt/" << GetParam() << " and figures in it";
    const json expected = json::parse(figures.readAll().toStdString())["files"][GetParam()];
    const Ending run = znimport({folder + text(GetParam()), text("-o"), path("out.glb")});
    ASSERT_EQ(run.exitCode, 0) << run.errors.toStdString();
    const json glb = GlbFile(path("out.glb")).json;
    std::set<std::string> parts;
    for (const std::string name : expected["partNames"])
        parts.insert(name.substr(0, name.rfind(".part")));
    std::set<std::string> found;
    std::size_t occurrences = 0;
    for (const json& node : glb["nodes"])
        if (node.contains("extras") && node["extras"].contains("product")) {
            const json& product = glb["extras"]["products"][node["extras"]["product"].get<std::size_t>()];
            if (const std::string name = product["Product"].get<std::string>(); parts.contains(name)) {
                found.insert(name);
                ++occurrences;
            }
        }
    EXPECT_GT(parts.size(), 0u);
    EXPECT_EQ(found, parts);
    EXPECT_EQ(occurrences, expected["partOccurrences"].get<std::size_t>());
}

// Files whose assemblies bear the names of their parts have more nodes of these names.
INSTANTIATE_TEST_SUITE_P(, JtAttributesCorpus,
                         testing::Values("CoffeeMaker.jt", "butterflyvalve_v8.0.jt", "butterflyvalve_v9.5.jt",
                                         "butterflyvalve_v10.0.jt", "example_block_jt10.3.jt",
                                         "opening_protection_plate1_jt8.0.jt"));
