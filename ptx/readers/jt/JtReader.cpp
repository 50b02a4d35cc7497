#include "ptx/readers/jt/JtReader.h"

#include "files/scenefile/ConvertedTree.h"
#include "protocol/Formats.h"
#include "ptx/readers/jt/JtFile.h"
#include "ptx/readers/jt/PartFileReader.h"

namespace ptx::jt
{

namespace
{

constexpr std::size_t LeastHeader = 105;

readers::Match probe(std::string_view head, std::uint64_t size)
{
    return size >= LeastHeader && container::isJtHeader(head) ? readers::Match::Certain : readers::Match::No;
}

bool refersToParts(const std::string& path)
{
    return !partNamesIn(path).empty();
}

bool isMissingAnything(const model::Model& model)
{
    for (const model::Product& product : model.products)
        for (const std::string& tag : product.tags)
            if (osg::scenefile::converted::missingPart(tag))
                return true;
    return false;
}

core::Outcome<model::Model> readJt(const model::Job& job)
{
    job.progress.begin(core::Stage::ReadAndProcess);
    core::Outcome<model::Model> model = readWithParts(job);
    if (!model)
        return model;
    if (core::Trouble trouble = readers::requireExternalParts(job.externalParts, !model.value().references.empty()))
        return *trouble;
    if (!model.value().bodies.empty() || !model.value().references.empty())
        return model;
    if (isMissingAnything(model.value()))
        return core::Failure{core::ExitCode::Damaged, "no mesh of the JT file can be read; the log tells why"};
    return core::Failure{core::ExitCode::NothingToImport, "the file is a JT file, but it holds no meshes"};
}

constexpr readers::Format Row = {
    protocol::format::Jt.name, protocol::format::Jt.extensions, probe, readJt, refersToParts, false, partNamesIn};

} // namespace

const readers::Format& format()
{
    return Row;
}

} // namespace ptx::jt
