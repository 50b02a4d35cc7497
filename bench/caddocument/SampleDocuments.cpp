#include "bench/caddocument/SampleDocuments.h"

#include <fstream>
#include <string>

#include <unistd.h>

namespace
{

constexpr const char* opening = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                                "<PLMXML xmlns=\"http://www.plmxml.org/Schemas/PLMXMLSchema\" schemaVersion=\"6\">\n"
                                "<ProductDef id=\"pd1\" name=\"Assembly\">\n";
constexpr const char* closing = "</ProductDef>\n</PLMXML>\n";

void writeInstance(std::ostream& out, std::size_t number)
{
    const auto id = std::to_string(number);
    out << "<Instance id=\"inst" << id << "\" name=\"Bolt M8x" << number % 60 << "\" partRef=\"#part" << number % 1000
        << "\">\n<UserData id=\"ud" << id << "\" type=\"AttributesInContext\">\n"
        << "<UserValue title=\"SequenceNumber\" type=\"int\" value=\"" << id << "\"></UserValue>\n"
        << "<UserValue title=\"OccurrenceName\" value=\"Position " << id << "\"></UserValue></UserData>\n"
        << "<Transform id=\"tr" << id << "\">0.866025403784 -0.5 0 0 0.5 0.866025403784 0 0 0 0 1 0 0." << number % 997
        << " 1." << number % 991 << " 0.0" << number % 983 << " 1</Transform></Instance>\n";
}

} // namespace

SampleFolder::SampleFolder()
    : m_folder(std::filesystem::temp_directory_path() / ("zn_caddocument_bench_" + std::to_string(getpid())))
{
    std::filesystem::create_directories(m_folder);
}

SampleFolder::~SampleFolder()
{
    std::error_code error;
    std::filesystem::remove_all(m_folder, error);
}

std::filesystem::path SampleFolder::instances(std::size_t count) const
{
    const auto path = m_folder / ("instances" + std::to_string(count) + ".plmxml");
    if (std::filesystem::exists(path))
        return path;
    std::ofstream out(path, std::ios::binary);
    out << opening << "<InstanceGraph id=\"ig1\" rootRefs=\"#inst0\">\n";
    for (std::size_t i = 0; i < count; ++i)
        writeInstance(out, i);
    out << "</InstanceGraph>\n" << closing;
    return path;
}

std::filesystem::path SampleFolder::occurrences(std::size_t count) const
{
    const auto path = m_folder / ("occurrences" + std::to_string(count) + ".plmxml");
    std::ofstream out(path, std::ios::binary);
    out << opening;
    for (std::size_t i = 0; i < count; ++i)
        out << "<Occurrence id=\"occ" << i << "\" instanceRefs=\"#inst0 #inst" << i % 10 << " #inst" << i % 1000
            << " #inst" << i << "\"/>\n";
    out << closing;
    return path;
}
