#pragma once

#include "ptx/readers/jt/JtReader.h"
#include "ptx/scene/SceneBuilder.h"
#include "tests/roads/ptxconvert/TempFolder.h"
#include "tests/support/jt/FileWriter.h"

#include <gtest/gtest.h>

namespace jttest
{

/// Reads hand-made files by the reader alone, without a process.
class ReadRun
{
public:
    const ptxtest::TempFolder& folder() const { return m_folder; }

    std::string write(const FileWriter& writer, const std::string& name = "input.jt") const
    {
        return m_folder.write(name, writer.file());
    }

    ptx::core::Outcome<ptx::model::Model>
    readFile(const std::string& path, const std::vector<std::string>& assignments = {}, bool externalParts = false)
    {
        for (const std::string& assignment : assignments)
            EXPECT_FALSE(m_settings.assign(assignment)) << assignment;
        ptx::core::Limits limits(m_settings, 0);
        ptx::core::Progress progress;
        ptx::core::Log log(logPath());
        ptx::core::Rescue rescue(m_folder.file("parts"), 0);
        return ptx::jt::format().read({path, 0, externalParts, m_settings, limits, progress, log, rescue});
    }

    /// Empty, with a complaint, when the file cannot be read.
    ptx::model::Model read(const FileWriter& writer, const std::vector<std::string>& assignments = {})
    {
        ptx::core::Outcome<ptx::model::Model> model = readFile(write(writer), assignments);
        EXPECT_TRUE(model) << model.failure().message;
        return model ? std::move(model.value()) : ptx::model::Model();
    }

    std::string log() const { return ptxtest::contentOf(logPath()); }
    bool hasWarnings() const { return log().find("Warning") != std::string::npos; }

private:
    std::string logPath() const { return m_folder.file("log"); }

    ptxtest::TempFolder m_folder;
    ptx::core::Settings m_settings;
};

/// The length of the legs of the one triangle that a body holds, in millimetres; -1 if it holds anything else.
inline float legOf(const ptx::model::Model& model, std::size_t product)
{
    const std::size_t body = model.products.at(product).body;
    if (body == ptx::model::NoBody || model.bodies.at(body).pieces.size() != 1)
        return -1;
    const osg::Mesh& mesh = *model.bodies[body].pieces[0].mesh;
    return mesh.triangles.size() == 3 ? mesh.positions[1].x - mesh.positions[0].x : -1;
}

} // namespace jttest
