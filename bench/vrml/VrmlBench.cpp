// How long a VRML file takes to become a tree, against a bare scan that only converts the numbers in it.
//
// "ratio" is the time of the reader over the time of the scan; "MB/s" is the speed of the reader.

#include "bench/support/Ratio.h"
#include "standalone/startup/BuiltInReaders.h"

#include <QFile>
#include <QTemporaryDir>

#include <charconv>
#include <cmath>
#include <cstdlib>

namespace
{

constexpr int rows = 460;

enum class Normals { Given, Made };

void appendNumber(QByteArray& text, double number, int digits = 6)
{
    text += QByteArray::number(number, 'f', digits);
    text += ' ';
}

/// A wavy sheet of `rows` x `rows` points, in triangles.
QByteArray sheet(Normals normals)
{
    QByteArray points, directions, corners;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < rows; ++column) {
            const double wave = std::sin(row * 0.05) * std::cos(column * 0.07);
            for (const double number : {column * 1.25, row * 1.25, wave * 40})
                appendNumber(points, number);
            for (const double number : {wave * 0.6, 0.0, std::sqrt(1 - wave * wave * 0.36)})
                appendNumber(directions, number);
            points += ",\n";
            directions += ",\n";
            const int here = row * rows + column;
            if (row + 1 == rows || column + 1 == rows)
                continue;
            for (const int corner : {here, here + 1, here + rows + 1, -1, here, here + rows + 1, here + rows, -1})
                corners += QByteArray::number(corner) + ',';
            corners += '\n';
        }
    }
    QByteArray text =
        "#VRML V2.0 utf8\nShape { geometry IndexedFaceSet { creaseAngle 0.5\ncoord Coordinate { point [\n";
    text += points + "] }\ncoordIndex [\n" + corners + "]\n";
    if (normals == Normals::Given)
        text += "normal Normal { vector [\n" + directions + "] }\n";
    return text + "} }\n";
}

/// Converts what begins like a number, and passes over the rest.
double scan(const QByteArray& text)
{
    double sum = 0;
    const char* const end = text.constData() + text.size();
    for (const char* c = text.constData(); c != end;) {
        float number = 0;
        const bool isStart = (*c >= '0' && *c <= '9') || *c == '-';
        const char* next = isStart ? std::from_chars(c, end, number).ptr : c;
        sum += double(number);
        c = next == c ? c + 1 : next;
    }
    return sum;
}

void readSheet(benchmark::State& state, Normals normals)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("sheet.wrl"));
    const QByteArray text = sheet(normals);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        std::abort();
    file.close();
    double best = 1e9;
    reportRatio(
        state,
        [&] {
            double sum = 0;
            const double seconds = secondsOf([&] { sum = scan(text); });
            benchmark::DoNotOptimize(sum);
            return seconds;
        },
        [&] {
            osg::RefPtr<osg::NodePtr> root;
            const double seconds = secondsOf([&] { root = zn::startup::builtInReaders().read(path).value(); });
            if (!root.get())
                std::abort();
            best = std::min(best, seconds);
            return seconds;
        });
    state.counters["MB"] = text.size() / 1e6;
    state.counters["MB/s"] = text.size() / 1e6 / best;
}

BENCHMARK_CAPTURE(readSheet, normalsGiven, Normals::Given)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readSheet, normalsMade, Normals::Made)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
