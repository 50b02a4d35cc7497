#pragma once

#include "host/HostExport.h"

#include <QString>

/// A heading under which variant sets stand. Belongs to the session.
class ZN_HOST_EXPORT znVariantGroup
{
public:
    /// Made by znVariants, under a name that no other group has.
    explicit znVariantGroup(const QString& name) : m_name(name) {}

    /// The name that it was made with.
    const QString& getName() const { return m_name; }

private:
    QString m_name;
};
