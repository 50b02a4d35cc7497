#include "bench/places/PlacesFiles.h"

#include "tests/support/StepText.h"
#include "tests/support/jt/FileWriter.h"

#include <algorithm>
#include <fstream>

#include <unistd.h>

namespace
{

constexpr int groupSize = 100;
constexpr int partCount = 100;

std::string numbers(const char* before, int from, int to, int step)
{
    std::string text;
    for (int i = from; i < to; i += step)
        text += before + std::to_string(i) + ' ';
    return text;
}

std::string part(int number)
{
    const std::string n = std::to_string(number + 1);
    return "solid bolt\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex " + n + " 0 0\nvertex 0 " + n +
           " 0\nendloop\nendfacet\nendsolid bolt\n";
}

std::string instance(int number)
{
    const std::string n = std::to_string(number);
    return "<Instance id=\"i" + n + "\" name=\"Bolt " + std::to_string(number % 60) + "\" partRef=\"#p" +
           std::to_string(number % partCount) + "\"><Transform id=\"t" + n +
           "\">0.866025403784 -0.5 0 0 0.5 0.866025403784 0 0 0 0 1 0 0." + std::to_string(number % 997) + " 1." +
           std::to_string(number % 991) + " 0.0" + std::to_string(number % 983) + " 1</Transform></Instance>\n";
}

} // namespace

PlacesFiles::PlacesFiles(int places)
    : m_places(places),
      m_folder(std::filesystem::temp_directory_path() / ("zn_places_bench_" + std::to_string(getpid())))
{
    std::filesystem::create_directories(m_folder);
}

PlacesFiles::~PlacesFiles()
{
    std::error_code error;
    std::filesystem::remove_all(m_folder, error);
}

std::string PlacesFiles::write(const std::string& name, const std::string& text) const
{
    std::ofstream(m_folder / name, std::ios::binary) << text;
    return path(name);
}

std::string PlacesFiles::plmxml() const
{
    std::string text = "<PLMXML>\n<ProductDef id=\"pd\">\n<InstanceGraph id=\"ig\" rootRefs=\"#top\">\n"
                       "<Instance id=\"top\" partRef=\"#assembly\"/>\n";
    for (int i = 0; i < m_places; ++i)
        text += instance(i);
    std::string parts =
        "<Part id=\"assembly\" name=\"Assembly\" instanceRefs=\"" + numbers("#g", 0, m_places, groupSize) + "\"/>\n";
    for (int first = 0; first < m_places; first += groupSize) {
        const std::string n = std::to_string(first);
        text += "<Instance id=\"g" + n + "\" partRef=\"#group" + n + "\"/>\n";
        parts += "<Part id=\"group" + n + "\" name=\"Group\" instanceRefs=\"" +
                 numbers("#i", first, std::min(first + groupSize, m_places), 1) + "\"/>\n";
    }
    for (int i = 0; i < partCount; ++i) {
        const std::string n = std::to_string(i);
        write("bolt" + n + ".stl", part(i));
        parts += "<Part id=\"p" + n + "\" name=\"Bolt M8x" + n + "\"><Representation id=\"r" + n +
                 "\" format=\"STL\" location=\"bolt" + n + ".stl\"/></Part>\n";
    }
    return write("places.plmxml", text + "</InstanceGraph>\n" + parts + "</ProductDef>\n</PLMXML>\n");
}

std::string PlacesFiles::step() const
{
    ptxtest::StepText step;
    ptxtest::StepProduct box = step.product("part");
    step.box(box, {}, {1, 2, 3});
    const ptxtest::StepProduct top = step.product("top");
    for (int i = 0; i < m_places; ++i)
        step.place(top, box, "place " + std::to_string(i), {4.0 * (i % groupSize), 4.0 * (i / groupSize), 0});
    return write("places.stp", step.text());
}

std::string PlacesFiles::jt() const
{
    jttest::FileWriter writer;
    jttest::Ids instances;
    constexpr jttest::Id root = 1, top = 2, bolt = 3, triangle = 4, first = 10;
    // Numbers from 10000 on are the writer's own up to here.
    constexpr jttest::Id beyond = 100'000'000;
    for (int i = 0; i < m_places; ++i)
        instances.push_back(i < 1000 ? first + 2 * i : beyond + 2 * i);
    writer.partition(root, {top});
    writer.part(top, instances);
    writer.part(bolt, {triangle});
    writer.triangle(triangle, 5);
    for (int i = 0; i < m_places; ++i) {
        const jttest::Id id = instances[static_cast<std::size_t>(i)];
        writer.move(id + 1, 6.0 * (i % groupSize), 6.0 * (i / groupSize), 0);
        writer.instance(id, bolt, {{id + 1}, false});
    }
    return write("places.jt", writer.file());
}
