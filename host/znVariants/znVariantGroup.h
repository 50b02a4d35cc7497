#pragma once

#include "host/HostExport.h"

#include <QString>

/// A heading under which variant sets stand. Belongs to the session.
class ZN_HOST_EXPORT znVariantGroup
{
public:
    explicit znVariantGroup(const QString& name) : m_name(name) {}

    const QString& getName() const { return m_name; }

private:
    QString m_name;
};
