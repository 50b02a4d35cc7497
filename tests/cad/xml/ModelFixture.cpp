#include "tests/cad/xml/ModelFixture.h"

#include <fstream>
#include <new>
#include <sstream>
#include <stdexcept>
#include <typeinfo>

#include <unistd.h>

namespace HB::XML::CAD
{

const LoadOutcome plainException{"std::exception", std::exception().what()};

namespace
{

std::string typeName(const std::exception& error)
{
    if (typeid(error) == typeid(std::exception))
        return "std::exception";
    if (typeid(error) == typeid(std::invalid_argument))
        return "std::invalid_argument";
    if (typeid(error) == typeid(std::out_of_range))
        return "std::out_of_range";
    return typeid(error) == typeid(std::bad_alloc) ? "std::bad_alloc" : "another type";
}

} // namespace

ModelTest::ModelTest()
    : m_folder(std::filesystem::temp_directory_path() / ("zn cadxml Übung " + std::to_string(getpid())))
{
    std::filesystem::create_directories(m_folder);
}

ModelTest::~ModelTest()
{
    std::filesystem::remove_all(m_folder);
}

std::string ModelTest::write(std::string_view name, std::string_view bytes) const
{
    const auto path = m_folder / name;
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path.string();
}

void ModelTest::load(std::string_view text)
{
    m_document.load(write("document ä.plmxml", text));
}

CADProductDef& ModelTest::loadProductDef(std::string_view content, std::string_view attributes)
{
    std::ostringstream text;
    text << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PLMXML><ProductDef " << attributes << ">" << content
         << "</ProductDef></PLMXML>\n";
    load(text.str());
    return *m_document.getProductDef(m_document.getProductDefCount() - 1);
}

testing::AssertionResult isGeneratedId(const CADBase& element, const std::string& parentId, const std::string& suffix)
{
    std::ostringstream expected;
    expected << parentId << suffix << static_cast<const void*>(&element);
    if (element.getId() == expected.str())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "the id is " << element.getId() << ", expected " << expected.str();
}

void PrintTo(const LoadOutcome& outcome, std::ostream* out)
{
    *out << outcome.type << " \"" << outcome.text << '"';
}

LoadOutcome outcomeOf(CADDocument& document, const std::string& fileName)
{
    try {
        document.load(fileName);
    } catch (const std::exception& error) {
        return {typeName(error), error.what()};
    }
    return loaded;
}

} // namespace HB::XML::CAD
