#pragma once

#include "host/HostExport.h"

#include <QString>

class znVariant;

/// What a variant set wants of one variant: an entry of the set, which owns it.
class ZN_HOST_EXPORT znVariantState
{
public:
    /// Made by znVariantSet; `variant` is not null.
    znVariantState(znVariant* variant, const QString& stateName) : m_stateName(stateName), m_variant(variant) {}

    /// The name of the state that applying the set brings the variant to; may be written. Empty: nothing changes.
    QString m_stateName;

    /// Never null; belongs to the session.
    znVariant* getVariant() const { return m_variant; }

private:
    znVariant* m_variant;
};
