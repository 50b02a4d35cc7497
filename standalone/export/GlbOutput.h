#pragma once

#include <QSaveFile>

#include <cstdint>

namespace glb
{

/// A file that comes into being at one stroke: it is written under another name beside its target and takes the
/// target's name when it is complete. Destroyed before that, it leaves nothing. Failures are thrown as `WriteFailure`.
class GlbOutput
{
public:
    explicit GlbOutput(const QString& target);

    void write(const void* data, std::uint64_t size);
    void writeNumber(std::uint32_t number);
    /// Fills up to the next multiple of four bytes.
    void pad(char filler);
    std::uint64_t position() const { return m_position; }
    void commit();

private:
    QSaveFile m_file;
    std::uint64_t m_position = 0;
};

} // namespace glb
