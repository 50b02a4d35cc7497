#pragma once

#include "host/znKernelServices/znBaseService.h"

#include <QHash>

#include <cstddef>
#include <cstdio>
#include <typeinfo>

namespace zn
{
class StandaloneSession;
}

/// Finds the host's services by their type.
class ZN_HOST_EXPORT znKernelServiceFactory
{
public:
    /// The only one; never null, valid as long as the program runs.
    static znKernelServiceFactory* the();

    /// The service of type `T`, which belongs to the host. Null, with a line on the standard error stream, when the
    /// host has none or lists none under that type; null without a word when what it lists is no `T`.
    template <class T>
    T* get() const;

private:
    friend class zn::StandaloneSession;

    QHash<std::size_t, znBaseService*> m_services;
};

template <class T>
T* znKernelServiceFactory::get() const
{
    const auto found = m_services.find(typeid(T).hash_code());
    if (found == m_services.end()) {
        std::fprintf(stderr, "znKernelServiceFactory: couldn't find class '%s'!\n", typeid(T).name());
        return nullptr;
    }
    if (!found.value()) {
        std::fprintf(stderr, "znKernelServiceFactory: service '%s' is NULL!\n", typeid(T).name());
        return nullptr;
    }
    return dynamic_cast<T*>(found.value());
}
