// A JT assembly of twelve part files, by itself and as the parts of a PLMXML document. The expected places are the
// numbers of the file's own placements, multiplied from the inside to the outside by another program.

#include "tests/roads/CorpusImport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <array>

using namespace corpustest;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::Not;

namespace
{

/// A part with its place: three axes and the origin, in millimetres.
struct Part {
    const char* name;
    const char* file;
    std::array<double, 12> place;
};

constexpr std::array<double, 12> Bail = {0, 0, -1, 0, 1, 0, 1, 0, 0, 90.5, 8, 31};
constexpr std::array<double, 12> Handle = {0, 1, 0, 0, 0, -1, -1, 0, 0, 48, 41, 18};
constexpr std::array<double, 12> Spool = {1, 0, 0, 0, 0, -1, 0, 1, 0, 99, 0, 0};

constexpr std::array<Part, 12> Parts = {{
    {"Part1", "part1.jt", Bail},
    {"Part4", "part4.jt", Bail},
    {"Part5", "part5.jt", Bail},
    {"bail_wire2", "bail_wire2.jt", Bail},
    {"body", "body.jt", {1, 0, 0, 0, 0, -1, 0, 1, 0, 0, 0, 0}},
    {"button", "button.jt", Spool},
    {"drag_knob", "drag_knob.jt", {-0.371391, 0, -0.928477, -0.928477, 0, 0.371391, 0, 1, 0, 8.964238, 0, -15.893828}},
    {"handle", "handle.jt", Handle},
    {"handle1_2", "handle1_2.jt", Handle},
    {"handle_2", "handle_2.jt", {0, 1, 0, 0, 0, -1, -1, 0, 0, 48, 68, 69}},
    {"rotor", "rotor.jt", {1, 0, 0, 0, 1, 0, 0, 0, 1, 73, 0, 0}},
    {"spool", "spool.jt", Spool},
}};

// Parts of two colours have two geometries.
const std::vector<std::string> Places = {
    "Part1 90.50 8.00 31.00 0.00 0.00 -1.00 0.00 1.00 0.00 1.00 0.00 0.00",
    "Part1 90.50 8.00 31.00 0.00 0.00 -1.00 0.00 1.00 0.00 1.00 0.00 0.00",
    "Part4 90.50 8.00 31.00 0.00 0.00 -1.00 0.00 1.00 0.00 1.00 0.00 0.00",
    "Part5 90.50 8.00 31.00 0.00 0.00 -1.00 0.00 1.00 0.00 1.00 0.00 0.00",
    "bail_wire2 90.50 8.00 31.00 0.00 0.00 -1.00 0.00 1.00 0.00 1.00 0.00 0.00",
    "body 0.00 0.00 0.00 1.00 0.00 0.00 0.00 0.00 -1.00 0.00 1.00 0.00",
    "body 0.00 0.00 0.00 1.00 0.00 0.00 0.00 0.00 -1.00 0.00 1.00 0.00",
    "button 99.00 0.00 0.00 1.00 0.00 0.00 0.00 0.00 -1.00 0.00 1.00 0.00",
    "drag_knob 8.96 0.00 -15.89 -0.37 0.00 -0.93 -0.93 0.00 0.37 0.00 1.00 0.00",
    "drag_knob 8.96 0.00 -15.89 -0.37 0.00 -0.93 -0.93 0.00 0.37 0.00 1.00 0.00",
    "handle 48.00 41.00 18.00 0.00 1.00 0.00 0.00 0.00 -1.00 -1.00 0.00 0.00",
    "handle 48.00 41.00 18.00 0.00 1.00 0.00 0.00 0.00 -1.00 -1.00 0.00 0.00",
    "handle1_2 48.00 41.00 18.00 0.00 1.00 0.00 0.00 0.00 -1.00 -1.00 0.00 0.00",
    "handle_2 48.00 68.00 69.00 0.00 1.00 0.00 0.00 0.00 -1.00 -1.00 0.00 0.00",
    "rotor 73.00 0.00 0.00 1.00 0.00 0.00 0.00 1.00 0.00 0.00 0.00 1.00",
    "spool 99.00 0.00 0.00 1.00 0.00 0.00 0.00 0.00 -1.00 0.00 1.00 0.00",
    "spool 99.00 0.00 0.00 1.00 0.00 0.00 0.00 0.00 -1.00 0.00 1.00 0.00",
};

const std::vector<float> WholeBox = {-5.14036f, -40.86388f, -41.12313f, 129, 80.5f, 83.16896f};

std::vector<float> numbersOf(const Box& box)
{
    return {box.low.x, box.low.y, box.low.z, box.high.x, box.high.y, box.high.z};
}

std::vector<float> wholeBox(const Import& import)
{
    std::vector<float> whole = numbersOf(import.boxes.begin()->second);
    for (const auto& [name, box] : import.boxes)
        for (std::size_t i = 0; i < 6; ++i)
            whole[i] = i < 3 ? std::min(whole[i], numbersOf(box)[i]) : std::max(whole[i], numbersOf(box)[i]);
    return whole;
}

auto isNear(const std::vector<float>& numbers)
{
    return testing::Pointwise(testing::FloatNear(1e-3f), numbers);
}

void expectComplete(const Import& import)
{
    EXPECT_EQ(import.result.state, znCADFileTypes::JobSucceeded) << import.result.error.toStdString();
    EXPECT_TRUE(import.result.missing.empty());
    EXPECT_THAT(import.matrices, ElementsAreArray(Places));
    ASSERT_EQ(import.boxes.size(), Parts.size());
    EXPECT_THAT(wholeBox(import), isNear(WholeBox));
}

class JtAssemblyCorpusTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!QFile::exists(m_file))
            GTEST_SKIP() << "ZN_CORPUS names no folder with jt/fishing_reel.jt in it";
    }

    /// A document beside copies of the part files, each in its place; translations are in metres there.
    QString writeDocument(const QTemporaryDir& folder) const
    {
        QString instances, parts, roots;
        for (const Part& part : Parts) {
            const QString name = QString::fromUtf8(part.name);
            const QString file = QString::fromUtf8(part.file);
            EXPECT_TRUE(QFile::copy(m_folder + QStringLiteral("fishing_reel/") + file, folder.filePath(file)));
            QString place;
            for (std::size_t i = 0; i < 12; ++i)
                place += QString::number(i < 9 ? part.place[i] : part.place[i] / 1000, 'g', 9) +
                         (i % 3 < 2 ? QStringLiteral(" ")
                          : i < 9   ? QStringLiteral(" 0 ")
                                    : QStringLiteral(" 1"));
            roots += QStringLiteral("i-%1 ").arg(name);
            instances += QStringLiteral("<Instance id='i-%1' name='I %1' partRef='#p-%1'><Transform type='general'>%2"
                                        "</Transform></Instance>\n")
                             .arg(name, place);
            parts += QStringLiteral("<Part id='p-%1' name='%1' type='solid'><Representation id='r-%1' format='JT' "
                                    "location='%2'/></Part>\n")
                         .arg(name, file);
        }
        QFile document(folder.filePath(QStringLiteral("reel.plmxml")));
        EXPECT_TRUE(document.open(QIODevice::WriteOnly));
        document.write(QStringLiteral("<PLMXML>\n<ProductDef id='pd'>\n<InstanceGraph rootRefs='%1'>\n%2"
                                      "</InstanceGraph>\n%3</ProductDef>\n</PLMXML>\n")
                           .arg(roots, instances, parts)
                           .toUtf8());
        return document.fileName();
    }

    const QString m_folder = qEnvironmentVariable("ZN_CORPUS") + QStringLiteral("/jt/");
    const QString m_file = m_folder + QStringLiteral("fishing_reel.jt");
};

} // namespace

TEST_F(JtAssemblyCorpusTest, EveryPartIsInItsPlaceWhateverTheNumberOfProcesses)
{
    const Import two = import(m_file, "2");
    expectComplete(two);
    EXPECT_THAT(two.tree, HasSubstr("[ExtReference]"));
    const Import one = import(m_file, "1");
    expectComplete(one);
    const Import dissolved = import(m_file, "2", "dissolve");
    expectComplete(dissolved);
    EXPECT_THAT(dissolved.tree, Not(HasSubstr("[ExtReference]")));
}

TEST_F(JtAssemblyCorpusTest, AsPartsOfADocumentAllIsWhereTheAssemblyHasIt)
{
    const QTemporaryDir folder(QDir::tempPath() + QString::fromUtf8("/jt plmxml äö XXXXXX"));
    const QString document = writeDocument(folder);
    const Import assembly = import(m_file, "2");
    for (const char* processes : {"2", "1"}) {
        const Import import = corpustest::import(document, processes);
        expectComplete(import);
        for (const auto& [name, box] : assembly.boxes) {
            ASSERT_TRUE(import.boxes.contains(name)) << name;
            EXPECT_THAT(numbersOf(import.boxes.at(name)), isNear(numbersOf(box))) << name;
        }
    }
}
