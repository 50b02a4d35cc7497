#pragma once

#include "host/HostExport.h"

#include <QString>

#include <cstdint>

/// Something in the scene that can be brought to one of several states by name. Belongs to the session.
class ZN_HOST_EXPORT znVariant
{
public:
    virtual ~znVariant() = default;
    znVariant(const znVariant&) = delete;
    znVariant& operator=(const znVariant&) = delete;

    /// The name of the material or node when the variant was made.
    const QString& getName() const { return m_name; }
    /// The container id of the material or node. A variant does not keep it alive.
    std::uint32_t getTargetId() const { return m_targetId; }

    /// Brings the target to the state of this name. False when the target is gone or has no such state; then nothing
    /// changes.
    virtual bool apply(const QString& stateName) = 0;

protected:
    /// For the two kinds of variants: `targetId` is the container id of what is switched.
    znVariant(const QString& name, std::uint32_t targetId) : m_name(name), m_targetId(targetId) {}

private:
    QString m_name;
    std::uint32_t m_targetId;
};
