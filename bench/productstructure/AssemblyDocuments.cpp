#include "bench/productstructure/AssemblyDocuments.h"

#include <algorithm>
#include <fstream>
#include <string>

#include <unistd.h>

namespace
{

constexpr std::size_t groupSize = 100;
constexpr std::size_t partCount = 1000;

void writeGraph(std::ostream& out, std::size_t instances)
{
    out << "<InstanceGraph id=\"ig\" rootRefs=\"#top\">\n<Instance id=\"top\" partRef=\"#assembly\"/>\n";
    for (std::size_t i = 0; i < instances; ++i)
        out << "<Instance id=\"i" << i << "\" name=\"Bolt " << i % 60 << "\" partRef=\"#p" << i % partCount
            << "\"><Transform id=\"t" << i << "\">0.866025403784 -0.5 0 0 0.5 0.866025403784 0 0 0 0 1 0 0." << i % 997
            << " 1." << i % 991 << " 0.0" << i % 983 << " 1</Transform></Instance>\n";
    for (std::size_t first = 0; first < instances; first += groupSize)
        out << "<Instance id=\"g" << first << "\" partRef=\"#group" << first << "\"/>\n";
    out << "</InstanceGraph>\n";
}

void writeParts(std::ostream& out, std::size_t instances)
{
    out << "<Part id=\"assembly\" name=\"Assembly\" instanceRefs=\"";
    for (std::size_t first = 0; first < instances; first += groupSize)
        out << "#g" << first << ' ';
    out << "\"/>\n";
    for (std::size_t first = 0; first < instances; first += groupSize) {
        out << "<Part id=\"group" << first << "\" name=\"Group\" instanceRefs=\"";
        for (std::size_t i = first; i < std::min(first + groupSize, instances); ++i)
            out << "#i" << i << ' ';
        out << "\"/>\n";
    }
    for (std::size_t i = 0; i < partCount; ++i)
        out << "<Part id=\"p" << i << "\" name=\"Bolt M8x" << i % 60 << "\"><Representation id=\"r" << i
            << "\" format=\"JT\" location=\"parts/bolt%20" << i << ".jt\"/></Part>\n";
}

void writeView(std::ostream& out, std::size_t instances)
{
    out << "<ProductView id=\"view\" state=\"active\">\n";
    for (std::size_t i = 0; i < instances; ++i)
        out << "<Occurrence id=\"o" << i << "\" instanceRefs=\"#top #g" << i / groupSize * groupSize << " #i" << i
            << "\" transformRef=\"#t" << (i + 1) % instances << "\"/>\n";
    out << "</ProductView>\n";
}

} // namespace

AssemblyDocuments::AssemblyDocuments()
    : m_folder(std::filesystem::temp_directory_path() / ("zn_productstructure_bench_" + std::to_string(getpid())))
{
    std::filesystem::create_directories(m_folder);
}

AssemblyDocuments::~AssemblyDocuments()
{
    std::error_code error;
    std::filesystem::remove_all(m_folder, error);
}

std::filesystem::path AssemblyDocuments::assembly(std::size_t instances, bool occurrences) const
{
    const auto path = m_folder / ((occurrences ? "occurrences" : "instances") + std::to_string(instances) + ".plmxml");
    if (std::filesystem::exists(path))
        return path;
    std::ofstream out(path, std::ios::binary);
    out << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<PLMXML>\n<ProductDef id=\"pd\">\n";
    writeGraph(out, instances);
    writeParts(out, instances);
    if (occurrences)
        writeView(out, instances);
    out << "</ProductDef>\n</PLMXML>\n";
    return path;
}
