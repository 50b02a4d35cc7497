// Writes the manual pages and the completions of the programs from their option tables:  make_manual FOLDER
#include "ptx/core/CommandLine.h"
#include "tools/manual/Manual.h"
#include "tools/znimport/CommandLine.h"

#include <fstream>

namespace
{

manual::Program importTool()
{
    manual::Program program;
    program.name = "znimport";
    program.summary = "imports 3D and CAD files into a scene, shows and writes it";
    program.version = ZN_VERSION;
    program.synopsis = "[OPTION]... FILE...";
    program.exitCodes = znimport::exitCodesText().toStdString();
    program.related = {"ptxconvert"};
    for (const znimport::OptionRow& row : znimport::optionTable()) {
        manual::Option option;
        if (row.shortName)
            option.names.push_back(std::string("-") + row.shortName);
        option.names.push_back(std::string("--") + row.name);
        option.value = row.valueName ? row.valueName : "";
        option.help = row.help;
        program.options.push_back(option);
    }
    return program;
}

manual::Program converter()
{
    manual::Program program;
    program.name = "ptxconvert";
    program.summary = "converts a CAD file into a scene file";
    program.version = ZN_VERSION;
    program.synopsis = std::string(ptx::core::synopsis()).substr(program.name.size() + 1);
    program.notes = ptx::core::filesText();
    program.exitCodes = ptx::core::exitCodesText();
    program.related = {"znimport"};
    for (const ptx::core::OptionRow& row : ptx::core::optionTable())
        program.options.push_back({{row.name}, row.valueName ? row.valueName : "", row.help});
    return program;
}

bool write(const std::string& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary);
    file << text;
    return bool(file.flush());
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    const std::string folder = argv[1];
    for (const manual::Program& program : {importTool(), converter()})
        if (!write(folder + '/' + program.name + ".1", manual::page(program)) ||
            !write(folder + '/' + program.name + ".bash", manual::completion(program)))
            return 1;
    return 0;
}
